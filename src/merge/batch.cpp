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
#include "merge/problems.h"
#include "merge/progress.h"
#include "merge/table_loader.h"
#include "merge/targets.h"
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
  // The one document of a run without "-each". Returns the exit status.
  int make_one(Output& out, std::string& diagnostics);
  // The documents of "-each" that this shard makes, each into its own file. Returns the
  // exit status: 3 when a document was left without something.
  int make_each(const NAME_PATTERN& pattern);
  // The documents of "-each" that this shard makes, each a page of the one PDF book.
  int make_book(const std::string& book);

  std::vector<std::string> ids() const;
  // The files that the cells of a placed-art table name are inputs too.
  void add_art_inputs(const std::string& id, const TAB_TEXT& table);
  bool generic() const { return arguments.size() == 1 && arguments[0].every_id; }

 private:
  long long document_count() const;
  // Lets every table show the rows of document number's block.
  void show_block(long long number);
  void write_file(const std::string& name);
  std::optional<std::string> cell_text(size_t table, long long row, long long col) const;
  std::vector<std::string> all_names(const NAME_PATTERN& pattern);
  std::vector<long long> shard_documents(long long total) const;
  // Applies the tables to document number, from the template as analysed.
  void apply_tables(long long number);
  // "-strict": every document of this shard is made without being written, and any problem
  // fails the run before the first file is written.
  void check_each(const std::vector<long long>& numbers);
  void make_document(long long number, const std::string& name, PROGRESS& progress);
  void render_one();
  // Before the first document of a batch: the report's lines about the tables and the
  // template, and the check of "-strict".
  void prepare(const std::vector<long long>& numbers);
  // The documents, the summary line of what they left undone, and the exit status.
  int write_documents(const std::vector<std::string>& names, const std::vector<long long>& numbers);

  MERGE& merge;
  const SETTINGS& settings;
  std::vector<TABLE_ARGUMENT> arguments;
  // A deque: cells point into each table's own buffer, which must not move.
  std::deque<TAB_TEXT> tables;
  TARGETS targets;
  // Cells converted from UTF-8 go back into it for file names.
  std::unique_ptr<UTF8_FROM> utf8;
  // Where Ghostscript's pages of the documents go, when the run renders them.
  std::unique_ptr<PAGES> pages;
};

DOCUMENTS::DOCUMENTS(MERGE& run, const std::string& template_path)
    : merge(run), settings(run.settings()) {
  targets.add_input(template_path);
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
    targets.add_input(argument->file);
    if (argument->placed) add_art_inputs(argument->id, table);
    if (settings.each > 0) continue;
    table.set_block(skip, kAllRows);
    merge.apply(*argument, table);
  }
  if (settings.table != TABLE_FORM::raw && !loader.encoding().empty()) {
    utf8 = std::make_unique<UTF8_FROM>(loader.encoding());
  }
  return true;
}

void DOCUMENTS::add_art_inputs(const std::string& id, const TAB_TEXT& table) {
  for (long long row = 0; row < table.rec_count(); ++row) {
    for (long long col = 0; const char* cell = table.get_field(row, col); ++col) {
      if (!*cell) continue;
      const std::optional<std::string> path = merge.art_path(id, cell, table.escaped());
      if (!path) continue;
      targets.add_input(*path);
    }
  }
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
  try {
    ATOMIC_FILE file(name);
    Output out(file.descriptor());
    merge.print(out);
    out.flush();
    file.commit(settings.sync);
  } catch (const Error& error) {
    if (error.reason().empty()) throw;
    throw Error(error.what() + ("cannot write " + name + ": " + error.reason() + "\n"));
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

int DOCUMENTS::make_one(Output& out, std::string& diagnostics) {
  if (settings.strict) {
    merge.report_unreplaced();
    merge.report_not_copied();
    refuse_problems(merge.report().problems());
    if (merge.report().enabled()) diagnostics += merge.report().text();
  }
  if (settings.out.empty()) {
    merge.print(out);
    out.flush();
  } else {
    remove_dead_temporaries(folder_of(settings.out));
    targets.check(settings.out, settings.out + ": ");
    if (settings.form == OUTPUT_FORM::document) {
      write_file(settings.out);
    } else {
      render_one();
    }
  }
  if (merge.report().enabled() && !settings.strict) {
    merge.report_unreplaced();
    merge.report_not_copied();
    diagnostics += merge.report().text();
  }
  return 0;
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
  for (long long number = 1; number <= total; ++number) {
    show_block(number);
    names.push_back(pattern.name(number, cell));
  }
  check_clashes(names);
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

void DOCUMENTS::apply_tables(long long number) {
  merge.start_document();
  merge.report().set_document(number);
  show_block(number);
  for (size_t i = 0; i < tables.size(); ++i) merge.apply(arguments[i], tables[i]);
  merge.report_unreplaced();
}

void DOCUMENTS::check_each(const std::vector<long long>& numbers) {
  for (long long number : numbers) {
    try {
      apply_tables(number);
    } catch (const Error& error) {
      throw Error("document " + std::to_string(number) + ": " + error.what());
    }
  }
  refuse_problems(merge.report().problems());
}

void DOCUMENTS::make_document(long long number, const std::string& name, PROGRESS& progress) {
  apply_tables(number);
  write_file(name);
  if (merge.report().enabled()) {
    progress.erase();
    write_to_stderr(prefixed("document " + std::to_string(number) + ": ", merge.report().text()));
  }
  progress.document_done();
}

int DOCUMENTS::make_each(const NAME_PATTERN& pattern) {
  merge.remember_printed_lines();
  const std::vector<std::string> names = all_names(pattern);
  if (names.empty()) {
    fail("no document to make: no table has a row after the %lld header rows\n", settings.skip);
  }
  const std::vector<long long> numbers = shard_documents(static_cast<long long>(names.size()));
  targets.check_all(names, numbers);
  prepare(numbers);
  if (settings.form != OUTPUT_FORM::document && !numbers.empty()) {
    std::vector<std::string> shard_names;
    for (long long number : numbers) shard_names.push_back(names[static_cast<size_t>(number - 1)]);
    pages = std::make_unique<PAGE_FILES>(settings, std::move(shard_names));
  }
  return write_documents(names, numbers);
}

int DOCUMENTS::make_book(const std::string& book) {
  merge.remember_printed_lines();
  const long long total = document_count();
  if (total == 0) {
    fail("no document to make: no table has a row after the %lld header rows\n", settings.skip);
  }
  const std::vector<long long> numbers = shard_documents(total);
  if (numbers.empty()) return 0;
  targets.check(book, book + ": ");
  prepare(numbers);
  pages = std::make_unique<ONE_FILE_PAGES>(settings, book);
  const int status =
      write_documents(std::vector<std::string>(static_cast<size_t>(total), book), numbers);
  pages->finish();
  return status;
}

void DOCUMENTS::prepare(const std::vector<long long>& numbers) {
  merge.report_not_copied();
  if (merge.report().enabled()) write_to_stderr(merge.report().text());
  if (settings.strict) check_each(numbers);
}

int DOCUMENTS::write_documents(const std::vector<std::string>& names,
                               const std::vector<long long>& numbers) {
  PROGRESS progress(static_cast<long long>(numbers.size()), ::isatty(STDERR_FILENO) == 1);
  for (long long number : numbers) {
    const std::string& name = names[static_cast<size_t>(number - 1)];
    try {
      make_document(number, name, progress);
    } catch (const Error& error) {
      throw Error("document " + std::to_string(number) + " (" + name + "): " + error.what());
    }
  }
  const std::string summary =
      problems_summary(static_cast<long long>(numbers.size()), merge.report().problems());
  write_to_stderr(summary);
  return summary.empty() ? 0 : kUndoneStatus;
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
  if (settings.each == 0) return documents.make_one(out, diagnostics);
  std::string problem;
  if (std::optional<std::string> book = book_name(settings.out, settings, &problem)) {
    return documents.make_book(*book);
  }
  NAME_PATTERN pattern;
  if (!problem.empty() ||
      !pattern.parse(settings.out, documents.ids(), documents.generic(), &problem)) {
    diagnostics += "-out=" + settings.out + ": " + problem + "\n";
    return kUsageStatus;
  }
  return documents.make_each(pattern);
}
