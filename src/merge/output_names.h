// The file names of a batch's documents, made from the pattern of "-out=": a run of "#" is
// the document number, zero-padded to the run's width (a wider number is written whole);
// "{ID-row-column}" is that cell of the document's block in the table of identifier ID,
// made safe as a part of a file name (see safe_name_part); any other text stands as written.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

struct SETTINGS;

class NAME_PATTERN {
 public:
  // The text of a cell as a file name wants it (escapes decoded, in UTF-8 where the table
  // was converted), or nothing when the block has no such cell: table is the index of the
  // table argument, row and col count from 1.
  using CELL_TEXT =
      std::function<std::optional<std::string>(size_t table, long long row, long long col)>;

  // ids are the table arguments' identifiers in command-line order; the first with a cell's
  // identifier gives it, and in a generic run (one table for every identifier) the one table
  // gives every cell. A brace without its end or one that names no cell ("{PR-0-1}",
  // "{PR}"), or an identifier no argument has, returns false with the reason in problem.
  bool parse(const std::string& pattern, const std::vector<std::string>& ids, bool generic,
             std::string* problem);
  // The name of document number. An empty or missing cell, or a name one of whose parts is
  // longer than a file name may be, fails the run naming the document.
  std::string name(long long number, const CELL_TEXT& cell_text) const;

 private:
  struct PART {
    enum class KIND { text, number, cell } kind;
    std::string text;  // the text, or the cell's placeholder as written
    size_t width = 0;  // of a number
    size_t table = 0;  // of a cell
    long long row = 0;
    long long col = 0;
  };
  std::vector<PART> parts;
};

// Text made safe to stand in a file name: "/", the characters Windows forbids in names
// (< > : " \ | ? *) and control characters (below 0x20, and 0x7F) become "_", and so does a
// "." that would begin the name's part (at_part_start), so that no cell makes a hidden
// file, "." or "..". Other bytes (UTF-8 among them) stay. Once the whole name is made, a
// part of it that is a device's name on Windows (CON, NUL, COM1, ... with any extension)
// gets a "_" before it, and one that ends in a space or a dot gets a "_" in its place.
std::string safe_name_part(const std::string& text, bool at_part_start);

// The name as the shares of Windows and Mac compare names: letters of ASCII and Latin-1 in
// lower case, so that two names that differ only in case are found to clash.
std::string case_folded(const std::string& name);

// The name of the one PDF of a batch, when pattern (ending in ".pdf") names no document by "#"
// or a cell: the PDF of the run, or with "-shard=I/M" that of the shard, I in place of
// "{shard}". Nothing when the batch writes a file per document, or when problem says why
// it cannot run (every shard would write the same PDF).
std::optional<std::string> book_name(const std::string& pattern, const SETTINGS& settings,
                                     std::string* problem);
