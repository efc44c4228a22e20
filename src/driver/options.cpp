#include "driver/options.h"

#include <algorithm>

#include "art/barcode.h"
#include "support/numbers.h"
#include "support/output.h"
#include "support/strings.h"

namespace {

constexpr const char* kVersion = "1.00";
constexpr long long kMaxCount = 999999999999999999LL;

// Sets one setting from an option's value; false (with a reason in why, or none) refuses it.
using SETTER = bool (*)(const std::string& value, SETTINGS& settings, std::string& why);

struct OPTION {
  const char* name;  // without its dash; ends with '=' when the option takes a value
  const char* value_help;
  const char* help;
  SETTER set;
};

// Copies a value into a setting of the given capacity; a longer value is refused rather
// than cut.
template <size_t CAPACITY, std::string SETTINGS::*FIELD>
bool set_text(const std::string& value, SETTINGS& settings, std::string&) {
  if (value.size() > CAPACITY) return false;
  settings.*FIELD = value;
  return true;
}

template <bool SETTINGS::*FIELD>
bool set_flag(const std::string&, SETTINGS& settings, std::string&) {
  settings.*FIELD = true;
  return true;
}

bool set_table_form(const std::string& value, SETTINGS& settings, std::string& why) {
  why = "not raw, tsv or csv";
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

bool set_each(const std::string& value, SETTINGS& settings, std::string& why) {
  long long each = 0;
  if (!read_decimal(value, SETTINGS::kMaxEach, &each) || each < 1) {
    why = "not a number from 1 to 1024";
    return false;
  }
  settings.each = static_cast<int>(each);
  return true;
}

bool set_skip(const std::string& value, SETTINGS& settings, std::string& why) {
  if (read_decimal(value, kMaxCount, &settings.skip)) return true;
  why = "not a number of rows";
  return false;
}

// A name ending in ".pdf" or ".png", in any case, asks for rendered pages.
OUTPUT_FORM form_of(const std::string& name) {
  std::string end = name.size() >= 4 ? name.substr(name.size() - 4) : "";
  for (char& c : end) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
  if (end == ".pdf") return OUTPUT_FORM::pdf;
  if (end == ".png") return OUTPUT_FORM::png;
  return OUTPUT_FORM::document;
}

bool set_out(const std::string& value, SETTINGS& settings, std::string& why) {
  if (value.empty()) {
    why = "no file name";
    return false;
  }
  settings.out = value;
  settings.form = form_of(value);
  return true;
}

bool set_dpi(const std::string& value, SETTINGS& settings, std::string& why) {
  long long dpi = 0;
  if (!read_decimal(value, SETTINGS::kMaxDpi, &dpi) || dpi < 1) {
    why = "not a number from 1 to 2400";
    return false;
  }
  settings.dpi = static_cast<int>(dpi);
  return true;
}

bool set_shard(const std::string& value, SETTINGS& settings, std::string& why) {
  why = "not I/M, two numbers with 1 <= I <= M";
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

// "ID:KIND[,ID:KIND...]": placed-art identifiers whose cells are barcode data.
bool set_barcodes(const std::string& value, SETTINGS& settings, std::string& why) {
  size_t start = 0;
  for (;;) {
    const size_t end = value.find(',', start);
    const std::string item = value.substr(start, end - start);
    const size_t colon = item.find(':');
    const std::string id = item.substr(0, colon);
    const std::string kind = colon == std::string::npos ? "" : item.substr(colon + 1);
    if (id.empty() || id.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ") != std::string::npos) {
      why = "\"" + item + "\": not ID:KIND with an identifier of capitals";
      return false;
    }
    if (!barcode_kind(kind)) {
      why = "\"" + item + "\": the kind is one of " + barcode_kind_names();
      return false;
    }
    for (const auto& known : settings.barcodes) {
      if (known.first == id) {
        why = id + " is given twice";
        return false;
      }
    }
    settings.barcodes.emplace_back(id, kind);
    if (end == std::string::npos) return true;
    start = end + 1;
  }
}

// In the order a single-dash argument is matched against them; "v" comes last.
const OPTION kOptions[] = {
    {"rx=", "new", "placeholders that also name a font (-rx=new)",
     [](const std::string& value, SETTINGS& settings, std::string&) {
       settings.rx = value == "new";
       return true;
     }},
    {"rm=", "y", "remove placeholders and placed art whose cell is empty or missing (-rm=y)",
     [](const std::string& value, SETTINGS& settings, std::string&) {
       settings.rm = value == "y";
       return true;
     }},
    {"home=", "DIR/", "the folder that placed-art cells name files in",
     set_text<SETTINGS::kHomeDirCapacity, &SETTINGS::home_dir>},
    {"fit=", "min|max", "scale new placed art to fit inside its frame (min) or to fill it",
     set_text<SETTINGS::kFitCapacity, &SETTINGS::fit>},
    {"refpt=", "CORNER", "align new placed art to lowerleft, lowerright, upperleft or upperright",
     set_text<SETTINGS::kRefptCapacity, &SETTINGS::refpt>},
    {"table=", "raw|tsv|csv", "how tables are read", set_table_form},
    {"table-encoding=", "NAME", "what tsv and csv tables were saved in, if not UTF-8 or UTF-16",
     [](const std::string& value, SETTINGS& settings, std::string&) {
       settings.table_encoding = value;
       return true;
     }},
    {"encoding=", "NAME", "the encoding of the document's text (an iconv name)",
     [](const std::string& value, SETTINGS& settings, std::string&) {
       settings.encoding = value;
       return true;
     }},
    {"report", nullptr, "say on standard error what became of each placeholder",
     set_flag<&SETTINGS::report>},
    {"keep", nullptr, "copy the template whole, rewrite only what the tables change",
     set_flag<&SETTINGS::keep>},
    {"each=", "N", "one document per N rows of the tables (with -out=)", set_each},
    {"skip=", "K", "the first K rows of every table are headers", set_skip},
    {"out=", "PATTERN", "where documents go: # is the number, {ID-row-col} a cell", set_out},
    {"shard=", "I/M", "make only documents I, I+M, I+2M, ...", set_shard},
    {"dpi=", "N", "the resolution of PNG proofs (-out=NAME.png), 150 by default", set_dpi},
    {"barcode=", "ID:KIND,...", "placed art ID takes barcodes of its cells (with -keep)",
     set_barcodes},
    {"strict", nullptr, "write nothing unless every placeholder and frame gets its cell",
     set_flag<&SETTINGS::strict>},
    {"sync", nullptr, "each file written reaches the disk before it takes its name",
     set_flag<&SETTINGS::sync>},
};

bool takes_value(const OPTION& option) {
  const std::string_view name = option.name;
  return name.back() == '=';
}

std::string_view base_name(const OPTION& option) {
  std::string_view name = option.name;
  if (takes_value(option)) name.remove_suffix(1);
  return name;
}

OPTION_OUTCOME refuse(const std::string& arg, const std::string& why, std::string& diagnostics) {
  if (!why.empty()) diagnostics += arg + ": " + why + "\n";
  return OPTION_OUTCOME::usage_error;
}

size_t edit_distance(std::string_view a, std::string_view b) {
  std::vector<size_t> row(b.size() + 1);
  for (size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (size_t i = 1; i <= a.size(); ++i) {
    size_t diagonal = row[0];
    row[0] = i;
    for (size_t j = 1; j <= b.size(); ++j) {
      const size_t above = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] != b[j - 1])});
      diagonal = above;
    }
  }
  return row[b.size()];
}

std::string help_text() {
  std::string text =
      "usage: ormel [options] TEMPLATE TABLE\n"
      "       ormel [options] TEMPLATE ID=TABLE|PREFIX-ID=TABLE...\n"
      "\n"
      "TEMPLATE is an Illustrator document. One TABLE without \"=\" gives the text\n"
      "placeholders of every identifier their cells; ID=TABLE those of identifier ID;\n"
      "PREFIX-ID=TABLE (such as EPS-LOGO=logos.txt) names the files of placed art ID.\n"
      "The document goes to standard output, or to files with -out=.\n"
      "\n"
      "Options (each also as --name or --name=value):\n";
  for (const OPTION& option : kOptions) {
    std::string form =
        "  -" + std::string(option.name) + (option.value_help ? option.value_help : "");
    form.resize(std::max<size_t>(form.size() + 1, 22), ' ');
    text += form + option.help + "\n";
  }
  text +=
      "  -v, --version       print the version\n"
      "  --help              print this summary\n"
      "\n"
      "Exit status: 0 done, 1 usage error, 2 error (nothing written), 3 documents written\n"
      "with placeholders or frames left without their cells.\n";
  return text;
}

}  // namespace

std::string nearest_option(const std::string& name) {
  std::string best = "help";
  size_t best_distance = edit_distance(name, best);
  auto consider = [&](std::string_view candidate) {
    const size_t distance = edit_distance(name, candidate);
    if (distance < best_distance) {
      best_distance = distance;
      best = std::string(candidate);
    }
  };
  consider("version");
  for (const OPTION& option : kOptions) consider(base_name(option));
  return best;
}

OPTION_OUTCOME OPTION_READER::apply(const std::string& arg, Output& out, std::string& diagnostics) {
  if (starts_with(arg, "--")) return apply_long(arg, out, diagnostics);
  for (const OPTION& option : kOptions) {
    if (!starts_with(arg, std::string("-") + option.name)) continue;
    std::string why;
    const std::string value = arg.substr(std::string_view(option.name).size() + 1);
    if (!option.set(value, settings, why)) return refuse(arg, why, diagnostics);
    return OPTION_OUTCOME::go_on;
  }
  if (starts_with(arg, "-v")) {
    out.printf("%s\n", kVersion);
    return OPTION_OUTCOME::done;
  }
  unknown.push_back(arg);
  return OPTION_OUTCOME::go_on;
}

OPTION_OUTCOME OPTION_READER::apply_long(const std::string& arg, Output& out,
                                         std::string& diagnostics) {
  const size_t equals = arg.find('=');
  const std::string name = arg.substr(2, equals == std::string::npos ? equals : equals - 2);
  const bool valued = equals != std::string::npos;
  if ((name == "help" || name == "version") && !valued) {
    out.printf("%s", name == "help" ? help_text().c_str() : (std::string(kVersion) + "\n").c_str());
    return OPTION_OUTCOME::done;
  }
  for (const OPTION& option : kOptions) {
    if (base_name(option) != name) continue;
    if (valued != takes_value(option)) {
      return refuse(arg, valued ? "takes no value" : "needs a value (--" + name + "=...)",
                    diagnostics);
    }
    std::string why;
    if (!option.set(valued ? arg.substr(equals + 1) : "", settings, why)) {
      return refuse(arg, why.empty() ? "not a value it takes" : why, diagnostics);
    }
    return OPTION_OUTCOME::go_on;
  }
  diagnostics += "unknown option --" + name + "; did you mean --" + nearest_option(name) + "?\n";
  return OPTION_OUTCOME::usage_error;
}

OPTION_OUTCOME OPTION_READER::finish(std::string& diagnostics) const {
  if (settings.strict && !unknown.empty()) {
    const std::string& arg = unknown.front();
    const std::string name =
        arg.substr(1, arg.find('=') == std::string::npos ? std::string::npos : arg.find('=') - 1);
    diagnostics += "unknown option " + arg + "; did you mean -" + nearest_option(name) + "?\n";
    return OPTION_OUTCOME::usage_error;
  }
  if (settings.each > 0 && settings.out.empty()) {
    diagnostics += "-each=N needs -out=PATTERN\n";
    return OPTION_OUTCOME::usage_error;
  }
  if (settings.shards > 0 && settings.each == 0) {
    diagnostics += "-shard=I/M needs -each=N\n";
    return OPTION_OUTCOME::usage_error;
  }
  if (!settings.barcodes.empty() && !settings.keep) {
    diagnostics += "-barcode= needs -keep: barcodes exist only embedded in the document\n";
    return OPTION_OUTCOME::usage_error;
  }
  return OPTION_OUTCOME::go_on;
}
