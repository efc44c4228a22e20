// The replaceable part of a placed-art block: its placement, parsed from the block's words,
// pointed at the EPS file a table cell names and fitted into the old frame, and written
// back as the block's six lines.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <tuple>

#include "placed/kept_placed_art.h"
#include "placed/op_bquote.h"
#include "support/analysed_state.h"

class AI_DOCUMENT;
class EMBEDDED_FILES;
class Output;
class PATCHES;
class STACK;
class TAB_TEXT;
struct EPS_BBOX;

class AI_PLACED_ART_REPLACE {
 public:
  static constexpr char kEndOperator[] = "~";

  // Parses the words of lines first up to, not including, last.
  void setup(const AI_DOCUMENT& doc, int first, int last);
  // The same for "-keep", which rewrites the template's bytes rather than printing anew.
  void setup_kept(const AI_DOCUMENT& doc, int first, int last);
  void patch_kept(EMBEDDED_FILES& files, PATCHES& patches) const {
    kept->patch(*this, files, patches);
  }
  // The ten number words are read as numbers; file is kept as written.
  void setup_bquote(const char* a, const char* b, const char* c, const char* d, const char* tx,
                    const char* ty, const char* llx, const char* lly, const char* urx,
                    const char* ury, const char* file);
  // If the file name holds a placeholder for id: takes its cell as the new file, reads that
  // file's box below the home directory and fits the new art into the old frame.
  void setup_tabtxt(const char* id, const TAB_TEXT& table);
  // The block's six lines, or nothing when it has no data and "-rm=y" removes it.
  void print(Output& out) const;
  // Reports the placeholder of the file name when no table argument reached it.
  void report_unreplaced() const;
  // Returns to the placement as analysed, for the next document of a batch ("-each=").
  void restore_analysed();

  static double getMinimum(double v1, double v2, double v3, double v4);
  static double getMaximum(double v1, double v2, double v3, double v4);

  int file_type = 0;
  OP_BQUOTE bquote;
  int no_data = 0;
  // The file on the local disk that the last cell named, if it can name one.
  std::optional<std::string> new_file;

 private:
  void read_word(const STACK& stack);
  // Fits the new art and says how, for the report.
  std::string fit(const EPS_BBOX& art);

  // Whether a table argument's identifier matched the file name.
  bool reached = false;
  std::unique_ptr<KEPT_PLACEMENT> kept;
  // What a cell changes: the placement, no_data, new_file and reached.
  using SUBSTITUTED = std::tuple<OP_BQUOTE, int, std::optional<std::string>, bool>;
  ANALYSED_STATE<SUBSTITUTED> analysed;
};
