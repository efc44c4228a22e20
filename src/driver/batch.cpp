#include "driver/batch.h"

#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>
#include <set>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "document/ai_document.h"
#include "document/not_copied.h"
#include "driver/batch_options.h"
#include "driver/diagnostics.h"
#include "driver/options.h"
#include "driver/output_names.h"
#include "driver/progress.h"
#include "driver/run.h"
#include "driver/table_loader.h"
#include "support/atomic_file.h"
#include "support/charset.h"
#include "support/escapes.h"
#include "support/output.h"
#include "support/report.h"
#include "table/tab_text.h"
#include "text/point_text.h"

namespace {

constexpr size_t kAllRows = std::numeric_limits<size_t>::max();

// The table arguments after the template: one table for every text placeholder (generic),
// or arguments of the forms "ID=file" and "PREFIX-ID=file".
struct TABLE_ARGUMENTS {
  std::vector<TABLE_ARGUMENT> cut;
  bool generic = false;

  // False when one of several arguments holds no "=".
  bool read(const std::vector<std::string>& args, size_t first) {
    if (first + 1 == args.size() && args[first].find('=') == std::string::npos) {
      generic = true;
      cut.push_back({"", args[first], false});
      return true;
    }
    for (size_t i = first; i < args.size(); ++i) {
      std::optional<TABLE_ARGUMENT> argument = cut_table_argument(args[i]);
      if (!argument) return false;
      cut.push_back(*argument);
    }
    return true;
  }
  std::vector<std::string> ids() const {
    std::vector<std::string> all;
    for (const TABLE_ARGUMENT& argument : cut) all.push_back(argument.id);
    return all;
  }
};

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

class BATCH {
 public:
  BATCH(AI_DOCUMENT& document, const TABLE_ARGUMENTS& table_arguments, TABLE_LOADER& loader,
        const std::string& template_path);
  // The one document of a run without "-each".
  void make_one(Output& out, std::string& diagnostics);
  // The documents of "-each" that this shard makes, each into its own file.
  void make_each(const NAME_PATTERN& pattern);

 private:
  long long document_count() const;
  // Lets every table show the rows of document number's block.
  void show_block(long long number);
  // The document's tables applied to the template as analysed.
  void apply_tables();
  void write_file(const std::string& name);
  std::optional<std::string> cell_text(size_t table, long long row, long long col) const;
  std::vector<std::string> all_names(const NAME_PATTERN& pattern);
  std::vector<long long> shard_documents(long long total) const;
  void check_targets(const std::vector<std::string>& names,
                     const std::vector<long long>& numbers) const;
  void check_not_an_input(const std::string& name, const std::string& prefix) const;
  void make_document(long long number, const std::string& name, PROGRESS& progress);

  AI_DOCUMENT& doc;
  const TABLE_ARGUMENTS& arguments;
  // Sized once: cells point into each table's own buffer.
  std::vector<TAB_TEXT> tables;
  size_t template_bytes;
  std::set<FILE_ID> inputs;
  // Cells converted from UTF-8 go back into it for file names.
  std::unique_ptr<UTF8_FROM> utf8;
};

// Tables are read whole, once. With "-each" the row limit of raw tables applies to a block,
// which "-each=" keeps within it; without, to the rows after the headers.
static_assert(kMaxEach <= TAB_TEXT::kMaxRecords, "a block of -each= must fit a table's row limit");
BATCH::BATCH(AI_DOCUMENT& document, const TABLE_ARGUMENTS& table_arguments, TABLE_LOADER& loader,
             const std::string& template_path)
    : doc(document),
      arguments(table_arguments),
      tables(table_arguments.cut.size()),
      template_bytes(document.source().size()) {
  const size_t skip = static_cast<size_t>(option_skip);
  const size_t max_records = option_each > 0 || skip > kAllRows - TAB_TEXT::kMaxRecords
                                 ? kAllRows
                                 : skip + TAB_TEXT::kMaxRecords;
  for (size_t i = 0; i < tables.size(); ++i) {
    loader.load(arguments.cut[i].file, doc, tables[i], max_records);
  }
  if (option_table != TABLE_FORM::raw && !loader.encoding().empty()) {
    utf8 = std::make_unique<UTF8_FROM>(loader.encoding());
  }
  if (std::optional<FILE_ID> id = file_id(template_path)) inputs.insert(*id);
  for (const TABLE_ARGUMENT& argument : arguments.cut) {
    if (std::optional<FILE_ID> id = file_id(argument.file)) inputs.insert(*id);
  }
}

long long BATCH::document_count() const {
  size_t rows = 0;
  for (const TAB_TEXT& table : tables)
    rows = std::max(rows, static_cast<size_t>(table.rec_count()));
  const size_t skip = static_cast<size_t>(option_skip);
  if (rows <= skip) return 0;
  const size_t each = static_cast<size_t>(option_each);
  return static_cast<long long>((rows - skip + each - 1) / each);
}

void BATCH::show_block(long long number) {
  const size_t each = static_cast<size_t>(option_each);
  const size_t first = static_cast<size_t>(option_skip) + static_cast<size_t>(number - 1) * each;
  for (TAB_TEXT& table : tables) table.set_block(first, each);
}

// As a single run applies its arguments, each to the document as the ones before left it.
void BATCH::apply_tables() {
  reset_expansion_pool(template_bytes);
  for (size_t i = 0; i < tables.size(); ++i) {
    const TABLE_ARGUMENT& argument = arguments.cut[i];
    add_to_expansion_pool(tables[i].byte_count());
    if (arguments.generic) {
      doc.setup_replace_text(tables[i]);
    } else if (argument.placed) {
      doc.setup_replace_placed_art(argument.id.c_str(), tables[i]);
    } else {
      doc.setup_replace_text(argument.id.c_str(), tables[i]);
    }
  }
}

void BATCH::write_file(const std::string& name) {
  ATOMIC_FILE file(name);
  Output out(file.descriptor());
  print_document(doc, out);
  out.flush();
  file.commit();
}

void BATCH::check_not_an_input(const std::string& name, const std::string& prefix) const {
  struct stat status;
  if (::stat(name.c_str(), &status) != 0) return;
  if (S_ISDIR(status.st_mode)) fail("%sa folder has that name\n", prefix.c_str());
  if (inputs.count(FILE_ID{status.st_dev, status.st_ino})) {
    fail("%san input of this run has that name\n", prefix.c_str());
  }
}

void BATCH::make_one(Output& out, std::string& diagnostics) {
  for (TAB_TEXT& table : tables) table.set_block(static_cast<size_t>(option_skip), kAllRows);
  apply_tables();
  if (option_out.empty()) {
    print_document(doc, out);
    out.flush();
  } else {
    check_not_an_input(option_out, "");
    write_file(option_out);
  }
  if (run_report().enabled()) {
    doc.report_unreplaced();
    report_not_copied(doc);
    diagnostics += run_report().text();
  }
}

// A cell's bytes as its text: escapes decoded, and back in UTF-8 when the table was
// converted from it.
std::optional<std::string> BATCH::cell_text(size_t table, long long row, long long col) const {
  const char* cell = tables[table].get_field(row - 1, col - 1);
  if (!cell) return std::nullopt;
  const std::string text = ps_string_decode(cell);
  return utf8 && tables[table].escaped() ? utf8->convert(text) : text;
}

// Every document's name, this shard's and the others', so that every shard finds the same
// clash before it writes anything.
std::vector<std::string> BATCH::all_names(const NAME_PATTERN& pattern) {
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

std::vector<long long> BATCH::shard_documents(long long total) const {
  std::vector<long long> numbers;
  for (long long number = 1; number <= total; ++number) {
    if (option_shards == 0 || (number - 1) % option_shards == option_shard - 1) {
      numbers.push_back(number);
    }
  }
  return numbers;
}

// A folder that is missing or cannot be written, or a name that a folder or an input of
// the run holds, would fail in the middle of the batch: they fail before it.
void BATCH::check_targets(const std::vector<std::string>& names,
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

void BATCH::make_document(long long number, const std::string& name, PROGRESS& progress) {
  doc.restore_analysed();
  run_report().start(option_report == 1);
  show_block(number);
  apply_tables();
  write_file(name);
  if (run_report().enabled()) {
    doc.report_unreplaced();
    progress.erase();
    write_to_stderr(prefixed("document " + std::to_string(number) + ": ", run_report().text()));
  }
  progress.document_done();
}

void BATCH::make_each(const NAME_PATTERN& pattern) {
  doc.remember_printed_lines();
  const std::vector<std::string> names = all_names(pattern);
  const std::vector<long long> numbers = shard_documents(static_cast<long long>(names.size()));
  check_targets(names, numbers);
  // The report's lines about the tables and the template come once, before the documents'.
  if (run_report().enabled()) {
    report_not_copied(doc);
    write_to_stderr(run_report().text());
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

int run_batch(const std::vector<std::string>& args, size_t template_at, Output& out,
              std::string& diagnostics) {
  if (!check_batch_options(diagnostics)) return usage(diagnostics);
  TABLE_ARGUMENTS arguments;
  if (template_at + 1 == args.size() || !arguments.read(args, template_at + 1)) {
    return usage(diagnostics);
  }
  NAME_PATTERN pattern;
  std::string problem;
  if (option_each > 0 && !pattern.parse(option_out, arguments.ids(), arguments.generic, &problem)) {
    diagnostics += "-out=" + option_out + ": " + problem + "\n";
    return usage(diagnostics);
  }
  run_report().start(option_report == 1);
  TABLE_LOADER loader;
  std::unique_ptr<AI_DOCUMENT> doc = read_template(args[template_at]);
  doc->analyze_doc();
  {
    BATCH batch(*doc, arguments, loader, args[template_at]);
    if (option_each > 0) {
      batch.make_each(pattern);
    } else {
      batch.make_one(out, diagnostics);
    }
  }
  done_with(std::move(doc));
  return 0;
}
