// Fuzzes a whole run. An input that begins with "+" runs with -keep (the "+" is not part of
// what follows). The input is cut at lines "%%--" into: option words (separated by blanks),
// the template, a text table, a placed-art table, then EPS files, which are written as
// e0.eps, e1.eps, ... into a scratch home folder. A text table that begins with "*" is given
// as the one table for every identifier; otherwise the run gets "TX=" the text table and
// "EPS-PH=" the placed-art table. Option words "-out=" and "--out=" are dropped: a run must not
// write files where the input says (without one, "-each=" is a usage error and "-skip="
// writes to out).
#include <unistd.h>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "driver/run.h"
#include "support/error.h"
#include "support/output.h"

namespace {

std::vector<std::string> cut(const std::string& input) {
  static const std::string kSeparator = "\n%%--\n";
  std::vector<std::string> parts;
  size_t start = 0;
  for (size_t found; (found = input.find(kSeparator, start)) != std::string::npos;
       start = found + kSeparator.size()) {
    parts.push_back(input.substr(start, found - start));
  }
  parts.push_back(input.substr(start));
  parts.resize(parts.size() < 4 ? 4 : parts.size());
  return parts;
}

const std::string& scratch_home() {
  static const std::string home = [] {
    char pattern[] = "/tmp/ormel-fuzz-XXXXXX";
    const char* made = mkdtemp(pattern);
    if (!made) std::abort();
    return std::string(made);
  }();
  return home;
}

void write_file(const std::string& path, const std::string& bytes) {
  FILE* file = std::fopen(path.c_str(), "wb");
  if (!file) std::abort();
  std::fwrite(bytes.data(), 1, bytes.size(), file);
  std::fclose(file);
}

std::vector<std::string> arguments(const std::vector<std::string>& parts, bool keep) {
  const std::string& home = scratch_home();
  std::vector<std::string> args = {"ormel"};
  if (keep) args.push_back("-keep");
  size_t start = 0;
  const std::string& words = parts[0];
  while (start <= words.size()) {
    size_t end = words.find(' ', start);
    if (end == std::string::npos) end = words.size();
    const std::string word = words.substr(start, end - start);
    const bool out = word.compare(0, 5, "-out=") == 0 || word.compare(0, 6, "--out=") == 0;
    if (!word.empty() && word[0] == '-' && !out) args.push_back(word);
    start = end + 1;
  }
  args.push_back("-home=" + home + "/");
  write_file(home + "/template.ai", parts[1]);
  write_file(home + "/text.txt", parts[2]);
  write_file(home + "/placed.txt", parts[3]);
  for (size_t i = 4; i < parts.size(); ++i) {
    write_file(home + "/e" + std::to_string(i - 4) + ".eps", parts[i]);
  }
  args.push_back(home + "/template.ai");
  if (!parts[2].empty() && parts[2][0] == '*') {
    args.push_back(home + "/text.txt");
  } else {
    args.push_back("TX=" + home + "/text.txt");
    args.push_back("EPS-PH=" + home + "/placed.txt");
  }
  return args;
}

// What -keep copies of a template: from "%!PS-Adobe" through the line of its last "%%EOF".
std::string kept_part(const std::string& bytes) {
  const size_t start = bytes.find("%!PS-Adobe");
  const size_t eof = bytes.rfind("%%EOF");
  if (start == std::string::npos || eof == std::string::npos || eof < start) return "";
  size_t end = bytes.find_first_of("\r\n", eof);
  if (end != std::string::npos) end += bytes.compare(end, 2, "\r\n") == 0 ? 2 : 1;
  return bytes.substr(start, end == std::string::npos ? std::string::npos : end - start);
}

// Whether nothing can change the template: empty tables, no "-rm=y" (which removes what
// has no cell) and no "-rx=new" (whose placeholders set fonts whether there is a cell or not).
bool changes_nothing(const std::vector<std::string>& parts, const std::vector<std::string>& args) {
  for (const std::string& arg : args) {
    if (arg.compare(0, 4, "-rm=") == 0 || arg.compare(0, 4, "-rx=") == 0) return false;
  }
  return parts[2].empty() && parts[3].empty();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const bool plus = size > 0 && data[0] == '+';
  const std::vector<std::string> parts =
      cut(std::string(reinterpret_cast<const char*>(data) + plus, size - plus));
  const std::vector<std::string> args = arguments(parts, plus);
  // "+" or the option words ask for -keep (options match by prefix, long ones whole).
  bool keep = false;
  for (const std::string& arg : args)
    keep = keep || arg.compare(0, 5, "-keep") == 0 || arg == "--keep";
  Output out;
  std::string diagnostics;
  try {
    int status = run(args, out, diagnostics);
    const std::string_view text = out.text();
    bool complete = text.size() >= 6 && text.compare(text.size() - 6, 6, "%%EOF\r") == 0;
    if (keep) {
      // The copy ends with the template's own last "%%EOF" line, and is the template's
      // bytes themselves when no cell can change them.
      complete = text.compare(0, 10, "%!PS-Adobe") == 0 && text.find("%%EOF") != std::string::npos;
      if (complete && changes_nothing(parts, args) && text != kept_part(parts[1])) std::abort();
    }
    const bool told = text == "1.00\n" || text.compare(0, 12, "usage: ormel") == 0;
    if (status == 0 && !complete && !told) std::abort();
    if (status == 1 && (!text.empty() || diagnostics.empty())) std::abort();
  } catch (const Error& error) {
    // A failure is never silent and never leaves part of a document behind.
    if (!out.text().empty() || error.what()[0] == '\0') std::abort();
  }
  return 0;
}
