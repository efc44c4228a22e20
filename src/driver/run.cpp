#include "driver/run.h"

#include "document/ai_document.h"
#include "document/kept_printer.h"
#include "document/not_copied.h"
#include "driver/batch.h"
#include "driver/batch_options.h"
#include "driver/options.h"
#include "driver/table_loader.h"
#include "support/output.h"
#include "support/report.h"
#include "table/tab_text.h"
#include "text/point_text.h"

namespace {

constexpr int kDone = 0;
constexpr int kUsageError = 1;
// Neither 0 nor 1: the options ask the run to go on.
constexpr int kGoOn = -1;

// Copies an option's value into its setting; a value beyond the setting's capacity is
// refused rather than cut.
bool set_value(std::string& setting, const std::string& arg, size_t prefix, size_t capacity) {
  if (arg.size() - prefix > capacity) return false;
  setting = arg.substr(prefix);
  return true;
}

bool set_table_form(const std::string& value) {
  if (value == "raw") {
    option_table = TABLE_FORM::raw;
  } else if (value == "tsv") {
    option_table = TABLE_FORM::tsv;
  } else if (value == "csv") {
    option_table = TABLE_FORM::csv;
  } else {
    return false;
  }
  return true;
}

// Applies one option; options are compared by prefix, the first that matches applies, and
// an argument that matches none is ignored.
int apply_option(const std::string& arg, Output& out, std::string& diagnostics) {
  if (starts_with(arg, "-rx=")) {
    option_rx = arg.compare(4, std::string::npos, "new") == 0;
  } else if (starts_with(arg, "-rm=")) {
    option_rm = arg.compare(4, std::string::npos, "y") == 0;
  } else if (starts_with(arg, "-home=")) {
    if (!set_value(option_home_dir, arg, 6, kHomeDirCapacity)) return usage(diagnostics);
  } else if (starts_with(arg, "-fit=")) {
    if (!set_value(option_fit, arg, 5, kFitCapacity)) return usage(diagnostics);
  } else if (starts_with(arg, "-refpt=")) {
    if (!set_value(option_refpt, arg, 7, kRefptCapacity)) return usage(diagnostics);
  } else if (starts_with(arg, "-table=")) {
    if (!set_table_form(arg.substr(7))) return usage(diagnostics);
  } else if (starts_with(arg, "-encoding=")) {
    option_encoding = arg.substr(10);
  } else if (starts_with(arg, "-report")) {
    option_report = 1;
  } else if (starts_with(arg, "-keep")) {
    option_keep = 1;
  } else if (is_batch_option(arg)) {
    if (!set_batch_option(arg, diagnostics)) return usage(diagnostics);
  } else if (starts_with(arg, "-v")) {
    out.printf("%s\n", kVersion);
    return kDone;
  }
  return kGoOn;
}

// One table argument: "ID=file" replaces text placeholders of ID, "PREFIX-ID=file" points
// placed art of ID at new EPS files. Returns false when the argument holds no "=".
bool apply_table_argument(const std::string& arg, AI_DOCUMENT& doc, TABLE_LOADER& tables,
                          TAB_TEXT& table) {
  const std::optional<TABLE_ARGUMENT> cut = cut_table_argument(arg);
  if (!cut) return false;
  tables.load(cut->file, doc, table);
  add_to_expansion_pool(table.byte_count());
  if (cut->placed) {
    doc.setup_replace_placed_art(cut->id.c_str(), table);
  } else {
    doc.setup_replace_text(cut->id.c_str(), table);
  }
  return true;
}

}  // namespace

int usage(std::string& diagnostics) {
  diagnostics += kUsage;
  diagnostics += '\n';
  return kUsageError;
}

std::unique_ptr<AI_DOCUMENT> read_template(const std::string& path) {
  FileBytes bytes = AI_DOCUMENT::read_file(path.c_str());
  reset_expansion_pool(bytes.view().size());
  if (option_keep == 1) {
    return std::make_unique<AI_DOCUMENT>(std::move(bytes), AI_DOCUMENT::KEEP_BYTES());
  }
  return std::make_unique<AI_DOCUMENT>(std::move(bytes));
}

bool leave_document_to_exit = false;

namespace {

// The document left to the exit. The pointer stays, so leak checkers see it held.
AI_DOCUMENT* left_to_exit = nullptr;

}  // namespace

void done_with(std::unique_ptr<AI_DOCUMENT> doc) {
  if (!leave_document_to_exit) return;
  delete left_to_exit;
  left_to_exit = doc.release();
}

void print_document(const AI_DOCUMENT& doc, Output& out) {
  if (option_keep == 1) {
    // The template's own last "%%EOF" line is copied: no closing line is added.
    print_kept(doc, out);
  } else {
    doc.print_new(out);
    out.printf("%s%s", "%%EOF", "\r");
  }
}

int run(const std::vector<std::string>& args, Output& out, std::string& diagnostics) {
  reset_options();
  size_t next = 1;
  for (; next < args.size() && starts_with(args[next], "-"); ++next) {
    int status = apply_option(args[next], out, diagnostics);
    if (status != kGoOn) return status;
  }
  if (args.size() <= 2 || next == args.size()) return usage(diagnostics);
  if (batch_requested()) return run_batch(args, next, out, diagnostics);
  run_report().start(option_report == 1);
  TABLE_LOADER tables;

  std::unique_ptr<AI_DOCUMENT> document = read_template(args[next]);
  AI_DOCUMENT& doc = *document;
  doc.analyze_doc();
  if (++next == args.size()) return usage(diagnostics);

  TAB_TEXT table;
  if (next + 1 == args.size() && args[next].find('=') == std::string::npos) {
    tables.load(args[next], doc, table);
    add_to_expansion_pool(table.byte_count());
    doc.setup_replace_text(table);
  } else {
    for (; next < args.size(); ++next) {
      if (!apply_table_argument(args[next], doc, tables, table)) return usage(diagnostics);
    }
  }
  print_document(doc, out);
  // The output refers to the template's bytes until it is flushed.
  out.flush();
  if (run_report().enabled()) {
    doc.report_unreplaced();
    report_not_copied(doc);
    diagnostics += run_report().text();
  }
  done_with(std::move(document));
  return kDone;
}
