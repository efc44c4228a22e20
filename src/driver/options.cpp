#include "driver/options.h"

#include "art/barcode.h"
#include "support/numbers.h"
#include "support/output.h"
#include "support/strings.h"

namespace {

constexpr const char* kVersion = "1.00";
constexpr long long kMaxCount = 999999999999999999LL;

// Copies an option's value into its setting; a value beyond the setting's capacity is
// refused rather than cut.
bool set_value(std::string& setting, const std::string& arg, size_t prefix, size_t capacity) {
  if (arg.size() - prefix > capacity) return false;
  setting = arg.substr(prefix);
  return true;
}

bool set_table_form(const std::string& value, SETTINGS& settings) {
  if (value == "raw") {
    settings.table = TABLE_FORM::raw;
  } else if (value == "tsv") {
    settings.table = TABLE_FORM::tsv;
  } else if (value == "csv") {
    settings.table = TABLE_FORM::csv;
  } else {
    return false;
  }
  return true;
}

bool set_each(const std::string& value, SETTINGS& settings) {
  long long each = 0;
  if (!read_decimal(value, SETTINGS::kMaxEach, &each) || each < 1) return false;
  settings.each = static_cast<int>(each);
  return true;
}

bool set_shard(const std::string& value, SETTINGS& settings) {
  const size_t slash = value.find('/');
  if (slash == std::string::npos) return false;
  long long index = 0;
  long long count = 0;
  if (!read_decimal(value.substr(0, slash), kMaxCount, &index) ||
      !read_decimal(value.substr(slash + 1), kMaxCount, &count) || index < 1 || index > count) {
    return false;
  }
  settings.shard = index;
  settings.shards = count;
  return true;
}

// "ID:KIND[,ID:KIND...]": identifiers of capital letters, as placeholders have them, each
// given once.
bool set_barcodes(const std::string& value, SETTINGS& settings, std::string& diagnostics) {
  size_t start = 0;
  for (;;) {
    const size_t end = value.find(',', start);
    const std::string item = value.substr(start, end - start);
    const size_t colon = item.find(':');
    const std::string id = item.substr(0, colon);
    const std::string kind = colon == std::string::npos ? "" : item.substr(colon + 1);
    if (id.empty() || id.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ") != std::string::npos) {
      diagnostics += "-barcode=: \"" + item + "\": not ID:KIND with an identifier of capitals\n";
      return false;
    }
    if (!barcode_kind(kind)) {
      diagnostics +=
          "-barcode=: \"" + item + "\": the kind is one of " + barcode_kind_names() + "\n";
      return false;
    }
    for (const auto& known : settings.barcodes) {
      if (known.first == id) {
        diagnostics += "-barcode=: " + id + " is given twice\n";
        return false;
      }
    }
    settings.barcodes.emplace_back(id, kind);
    if (end == std::string::npos) return true;
    start = end + 1;
  }
}

OPTION_OUTCOME refuse(const std::string& arg, const char* why, std::string& diagnostics) {
  diagnostics += arg + ": " + why + "\n";
  return OPTION_OUTCOME::usage_error;
}

// The options of batches: "-each=N", "-skip=K", "-out=PATTERN" and "-shard=I/M".
OPTION_OUTCOME apply_batch_option(const std::string& arg, SETTINGS& settings,
                                  std::string& diagnostics) {
  const std::string value = arg.substr(arg.find('=') + 1);
  if (starts_with(arg, "-each=")) {
    if (!set_each(value, settings)) return refuse(arg, "not a number from 1 to 1024", diagnostics);
  } else if (starts_with(arg, "-skip=")) {
    if (!read_decimal(value, kMaxCount, &settings.skip)) {
      return refuse(arg, "not a number of rows", diagnostics);
    }
  } else if (starts_with(arg, "-out=")) {
    if (value.empty()) return refuse(arg, "no file name", diagnostics);
    settings.out = value;
  } else if (!set_shard(value, settings)) {
    return refuse(arg, "not I/M, two numbers with 1 <= I <= M", diagnostics);
  }
  return OPTION_OUTCOME::go_on;
}

bool is_batch_option(const std::string& arg) {
  return starts_with(arg, "-each=") || starts_with(arg, "-skip=") || starts_with(arg, "-out=") ||
         starts_with(arg, "-shard=");
}

}  // namespace

OPTION_OUTCOME apply_option(const std::string& arg, SETTINGS& settings, Output& out,
                            std::string& diagnostics) {
  bool fits = true;
  if (starts_with(arg, "-rx=")) {
    settings.rx = arg.compare(4, std::string::npos, "new") == 0;
  } else if (starts_with(arg, "-rm=")) {
    settings.rm = arg.compare(4, std::string::npos, "y") == 0;
  } else if (starts_with(arg, "-home=")) {
    fits = set_value(settings.home_dir, arg, 6, SETTINGS::kHomeDirCapacity);
  } else if (starts_with(arg, "-fit=")) {
    fits = set_value(settings.fit, arg, 5, SETTINGS::kFitCapacity);
  } else if (starts_with(arg, "-refpt=")) {
    fits = set_value(settings.refpt, arg, 7, SETTINGS::kRefptCapacity);
  } else if (starts_with(arg, "-table=")) {
    fits = set_table_form(arg.substr(7), settings);
  } else if (starts_with(arg, "-encoding=")) {
    settings.encoding = arg.substr(10);
  } else if (starts_with(arg, "-report")) {
    settings.report = true;
  } else if (starts_with(arg, "-keep")) {
    settings.keep = true;
  } else if (starts_with(arg, "-barcode=")) {
    fits = set_barcodes(arg.substr(9), settings, diagnostics);
  } else if (is_batch_option(arg)) {
    return apply_batch_option(arg, settings, diagnostics);
  } else if (starts_with(arg, "-v")) {
    out.printf("%s\n", kVersion);
    return OPTION_OUTCOME::done;
  }
  return fits ? OPTION_OUTCOME::go_on : OPTION_OUTCOME::usage_error;
}

bool check_art_options(const SETTINGS& settings, std::string& diagnostics) {
  if (!settings.barcodes.empty() && !settings.keep) {
    diagnostics += "-barcode= needs -keep: barcodes exist only embedded in the document\n";
    return false;
  }
  return true;
}

bool check_batch_options(const SETTINGS& settings, std::string& diagnostics) {
  if (settings.each > 0 && settings.out.empty()) {
    diagnostics += "-each=N needs -out=PATTERN\n";
    return false;
  }
  if (settings.shards > 0 && settings.each == 0) {
    diagnostics += "-shard=I/M needs -each=N\n";
    return false;
  }
  return true;
}
