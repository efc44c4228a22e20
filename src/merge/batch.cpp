#include "merge/batch.h"

#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <deque>
#include <limits>
#include <memory>
#include <optional>
#include <set>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "merge/merge.h"
#include "merge/output_names.h"
#include "merge/progress.h"
#include "merge/table_loader.h"
#include "output/pages.h"
#include "support/atomic_file.h"
#include "support/charset.h"
#include "support/error.h"
#include "support/escapes.h"
#include "support/output.h"
#include "support/report.h"
#include "support/settings.h"
#include "table/tab_text.h"

namespace {

constexpr size_t kAllRows = std::numeric_limits<size_t>::max();

// An input file as the file system knows it, so that no output replaces one.
struct FILE_ID {
  dev_t device;
  ino_t inode;
  bool operator<(const FILE_ID& other) const {
    return device != other.device ? device < other.device : inode < other.inode;
  }
};

std::optional<FILE_ID> file_id(const std::string& path) {
  struct stat status;
  if (::stat(path.c_str(), &status) != 0) return std::nullopt;
  return FILE_ID{status.st_dev, status.st_ino};
}

void write_to_stderr(const std::string& text) {
  std::fwrite(text.data(), 1, text.size(), stderr);
  std::fflush(stderr);
}

// Every line of text with the prefix before it.
std::string prefixed(const std::string& prefix, const std::string& text) {
  std::string lines;
  for (size_t start = 0; start < text.size();) {
    size_t end = text.find('\n', start);
    end = end == std::string::npos ? text.size() : end + 1;
    lines += prefix;
    lines.append(text, start, end - start);
    start = end;
  }
  return lines;
}

class DOCUMENTS {
 public:
  DOCUMENTS(MERGE& run, const std::string& template_path);
  // Cuts the table arguments from first on and reads their tables in turn; without "-each"
  // each table is applied as soon as it is read, as the arguments come. False when one of
  // several arguments holds no "=".
  bool read_tables(const std::vector<std::string>& args, size_t first, TABLE_LOADER& loader);
  // The one document of a run without "-each".
  void make_one(Output& out, std::string& diagnostics);
  // The documents of "-each" that this shard makes, each into its own file.
  void make_each(const NAME_PATTERN& pattern);
  // The documents of "-each" that this shard makes, each a page of the one PDF book.
  void make_book(const std::string& book);

  std::vector<std::string> ids() const;
  bool generic() const { return arguments.size() == 1 && arguments[0].every_id; }

 private:
  long long document_count() const;
  // Lets every table show the rows of document number's block.
  void show_block(long long number);
  void write_file(const std::string& name);
  void render_one();
  void write_documents(const std::vector<std::string>& names,
                       const std::vector<long long>& numbers);
  std::optional<std::string> cell_text(size_t table, long long row, long long col) const;
  std::vector<std::string> all_names(const NAME_PATTERN& pattern);
  std::vector<long long> shard_documents(long long total) const;
  void check_targets(const std::vector<std::string>& names,
                     const std::vector<long long>& numbers) const;
  void check_not_an_input(const std::string& name, const std::string& prefix) const;
  void make_document(long long number, const std::string& name, PROGRESS& progress);

  MERGE& merge;
  const SETTINGS& settings;
  std::vector<TABLE_ARGUMENT> arguments;
  // A deque: cells point into each table's own buffer, which must not move.
  std::deque<TAB_TEXT> tables;
  std::set<FILE_ID> inputs;
  // Cells converted from UTF-8 go back into it for file names.
  std::unique_ptr<UTF8_FROM> utf8;
  // Where Ghostscript's pages of the documents go, when the run renders them.
  std::unique_ptr<PAGES> pages;
};

DOCUMENTS::DOCUMENTS(MERGE& run, const std::string& template_path)
    : merge(run), settings(run.settings()) {
  if (std::optional<FILE_ID> id = file_id(template_path)) inputs.insert(*id);
}

// Tables are read whole, once. With "-each" the row limit of raw tables applies to a block,
// which "-each=" keeps within it; without, to the rows after the headers.
static_assert(SETTINGS::kMaxEach <= TAB_TEXT::kMaxRecords,
              "a block of -each= must fit a table's row limit");
bool DOCUMENTS::read_tables(const std::vector<std::string>& args, size_t first,
                            TABLE_LOADER& loader) {
  const size_t skip = static_cast<size_t>(settings.skip);
  const size_t max_records = settings.each > 0 || skip > kAllRows - TAB_TEXT::kMaxRecords
                                 ? kAllRows
                                 : skip + TAB_TEXT::kMaxRecords;
  const bool one_table = first + 1 == args.size() && args[first].find('=') == std::string::npos;
  for (size_t i = first; i < args.size(); ++i) {
    std::optional<TABLE_ARGUMENT> argument =
        one_table ? TABLE_ARGUMENT{"", args[i], false, true} : cut_table_argument(args[i]);
    if (!argument) return false;
    arguments.push_back(*argument);
    TAB_TEXT& table = tables.emplace_back();
    loader.load(argument->file, merge.document(), table, max_records);
    if (std::optional<FILE_ID> id = file_id(argument->file)) inputs.insert(*id);
    if (settings.each > 0) continue;
    table.set_block(skip, kAllRows);
    merge.apply(*argument, table);
  }
  if (settings.table != TABLE_FORM::raw && !loader.encoding().empty()) {
    utf8 = std::make_unique<UTF8_FROM>(loader.encoding());
  }
  return true;
}

std::vector<std::string> DOCUMENTS::ids() const {
  std::vector<std::string> all;
  for (const TABLE_ARGUMENT& argument : arguments) all.push_back(argument.id);
  return all;
}

long long DOCUMENTS::document_count() const {
  size_t rows = 0;
  for (const TAB_TEXT& table : tables)
    rows = std::max(rows, static_cast<size_t>(table.rec_count()));
  const size_t skip = static_cast<size_t>(settings.skip);
  if (rows <= skip) return 0;
  const size_t each = static_cast<size_t>(settings.each);
  return static_cast<long long>((rows - skip + each - 1) / each);
}

void DOCUMENTS::show_block(long long number) {
  const size_t each = static_cast<size_t>(settings.each);
  const size_t first = static_cast<size_t>(settings.skip) + static_cast<size_t>(number - 1) * each;
  for (TAB_TEXT& table : tables) table.set_block(first, each);
}

void DOCUMENTS::write_file(const std::string& name) {
  if (pages) {
    Output document;
    merge.print(document);
    pages->add(document.text());
    return;
  }
  ATOMIC_FILE file(name);
  Output out(file.descriptor());
  merge.print(out);
  out.flush();
  file.commit();
}

void DOCUMENTS::check_not_an_input(const std::string& name, const std::string& prefix) const {
  struct stat status;
  if (::stat(name.c_str(), &status) != 0) return;
  if (S_ISDIR(status.st_mode)) fail("%sa folder has that name\n", prefix.c_str());
  if (inputs.count(FILE_ID{status.st_dev, status.st_ino})) {
    fail("%san input of this run has that name\n", prefix.c_str());
  }
}

// The one document's page, its failures named by the file as a batch's are.
void DOCUMENTS::render_one() {
  pages = std::make_unique<ONE_FILE_PAGES>(settings, settings.out);
  try {
    write_file(settings.out);
    pages->finish();
  } catch (const Error& error) {
    throw Error(settings.out + ": " + error.what());
  }
}

void DOCUMENTS::make_one(Output& out, std::string& diagnostics) {
  if (settings.out.empty()) {
    merge.print(out);
    out.flush();
  } else {
    check_not_an_input(settings.out, "");
    if (settings.form == OUTPUT_FORM::document) {
      write_file(settings.out);
    } else {
      render_one();
    }
  }
  if (merge.report().enabled()) {
    merge.report_unreplaced();
    merge.report_not_copied();
    diagnostics += merge.report().text();
  }
}

// A cell's bytes as its text: escapes decoded, and back in UTF-8 when the table was
// converted from it.
std::optional<std::string> DOCUMENTS::cell_text(size_t table, long long row, long long col) const {
  const char* cell = tables[table].get_field(row - 1, col - 1);
  if (!cell) return std::nullopt;
  const std::string text = ps_string_decode(cell);
  return utf8 && tables[table].escaped() ? utf8->convert(text) : text;
}

// Every document's name, this shard's and the others', so that every shard finds the same
// clash before it writes anything.
std::vector<std::string> DOCUMENTS::all_names(const NAME_PATTERN& pattern) {
  const long long total = document_count();
  std::vector<std::string> names;
  names.reserve(static_cast<size_t>(total));
  auto cell = [this](size_t table, long long row, long long col) {
    return cell_text(table, row, col);
  };
  std::unordered_map<std::string_view, long long> taken;
  for (long long number = 1; number <= total; ++number) {
    show_block(number);
    names.push_back(pattern.name(number, cell));
  }
  for (long long number = 1; number <= total; ++number) {
    const std::string& name = names[static_cast<size_t>(number - 1)];
    auto [first, fresh] = taken.emplace(name, number);
    if (!fresh) {
      fail("documents %lld and %lld would both be written to %s\n", first->second, number,
           name.c_str());
    }
  }
  return names;
}

std::vector<long long> DOCUMENTS::shard_documents(long long total) const {
  std::vector<long long> numbers;
  for (long long number = 1; number <= total; ++number) {
    if (settings.shards == 0 || (number - 1) % settings.shards == settings.shard - 1) {
      numbers.push_back(number);
    }
  }
  return numbers;
}

// A folder that is missing or cannot be written, or a name that a folder or an input of
// the run holds, would fail in the middle of the batch: they fail before it.
void DOCUMENTS::check_targets(const std::vector<std::string>& names,
                              const std::vector<long long>& numbers) const {
  std::set<std::string> folders;
  for (long long number : numbers) {
    const std::string& name = names[static_cast<size_t>(number - 1)];
    const std::string prefix = "document " + std::to_string(number) + " (" + name + "): ";
    const std::string folder = folder_of(name);
    if (folders.insert(folder).second && ::access(folder.c_str(), W_OK | X_OK) != 0) {
      fail("%scannot write into %s: %s\n", prefix.c_str(), folder.c_str(), std::strerror(errno));
    }
    check_not_an_input(name, prefix);
  }
}

void DOCUMENTS::make_document(long long number, const std::string& name, PROGRESS& progress) {
  merge.start_document();
  show_block(number);
  for (size_t i = 0; i < tables.size(); ++i) merge.apply(arguments[i], tables[i]);
  write_file(name);
  if (merge.report().enabled()) {
    merge.report_unreplaced();
    progress.erase();
    write_to_stderr(prefixed("document " + std::to_string(number) + ": ", merge.report().text()));
  }
  progress.document_done();
}

void DOCUMENTS::make_each(const NAME_PATTERN& pattern) {
  merge.remember_printed_lines();
  const std::vector<std::string> names = all_names(pattern);
  const std::vector<long long> numbers = shard_documents(static_cast<long long>(names.size()));
  check_targets(names, numbers);
  if (settings.form != OUTPUT_FORM::document && !numbers.empty()) {
    std::vector<std::string> shard_names;
    for (long long number : numbers) shard_names.push_back(names[static_cast<size_t>(number - 1)]);
    pages = std::make_unique<PAGE_FILES>(settings, std::move(shard_names));
  }
  write_documents(names, numbers);
}

void DOCUMENTS::make_book(const std::string& book) {
  merge.remember_printed_lines();
  const long long total = document_count();
  const std::vector<long long> numbers = shard_documents(total);
  if (numbers.empty()) return;
  check_not_an_input(book, "");
  pages = std::make_unique<ONE_FILE_PAGES>(settings, book);
  write_documents(std::vector<std::string>(static_cast<size_t>(total), book), numbers);
  pages->finish();
}

void DOCUMENTS::write_documents(const std::vector<std::string>& names,
                                const std::vector<long long>& numbers) {
  // The report's lines about the tables and the template come once, before the documents'.
  if (merge.report().enabled()) {
    merge.report_not_copied();
    write_to_stderr(merge.report().text());
  }
  PROGRESS progress(static_cast<long long>(numbers.size()), ::isatty(STDERR_FILENO) == 1);
  for (long long number : numbers) {
    const std::string& name = names[static_cast<size_t>(number - 1)];
    try {
      make_document(number, name, progress);
    } catch (const Error& error) {
      throw Error("document " + std::to_string(number) + " (" + name + "): " + error.what());
    }
  }
}

}  // namespace

int make_documents(const SETTINGS& settings, const std::vector<std::string>& args,
                   size_t template_at, Output& out, std::string& diagnostics) {
  MERGE merge(settings);
  TABLE_LOADER loader(settings, merge.report());
  merge.read_template(args[template_at]);
  if (template_at + 1 == args.size()) return kUsageStatus;
  DOCUMENTS documents(merge, args[template_at]);
  if (!documents.read_tables(args, template_at + 1, loader)) return kUsageStatus;
  if (settings.each == 0) {
    documents.make_one(out, diagnostics);
    return 0;
  }
  std::string problem;
  if (std::optional<std::string> book = book_name(settings.out, settings, &problem)) {
    documents.make_book(*book);
    return 0;
  }
  NAME_PATTERN pattern;
  if (!problem.empty() ||
      !pattern.parse(settings.out, documents.ids(), documents.generic(), &problem)) {
    diagnostics += "-out=" + settings.out + ": " + problem + "\n";
    return kUsageStatus;
  }
  documents.make_each(pattern);
  return 0;
}
