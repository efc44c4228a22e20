#include "merge/problems.h"

#include <map>
#include <set>

#include "support/error.h"

namespace {

constexpr size_t kListed = 20;
constexpr size_t kDocumentsNamed = 3;

const char* kind_text(PROBLEM::KIND kind, bool one) {
  switch (kind) {
    case PROBLEM::KIND::no_cell:
      return one ? "placeholder without a cell" : "placeholders without a cell";
    case PROBLEM::KIND::no_table:
      return one ? "placeholder of an identifier no table serves"
                 : "placeholders of identifiers no table serves";
    case PROBLEM::KIND::no_art:
      return one ? "frame whose art was not found" : "frames whose art was not found";
    case PROBLEM::KIND::print_check:
      return one ? "frame that fails a print check" : "frames that fail a print check";
    case PROBLEM::KIND::table_finding:
      return one ? "finding in a table" : "findings in the tables";
    case PROBLEM::KIND::numeral_cell:
      return one ? "numeral-font cell that is not a whole number"
                 : "numeral-font cells that are not whole numbers";
    case PROBLEM::KIND::not_copied:
      return one ? "part of the template not copied (-keep copies it)"
                 : "parts of the template not copied (-keep copies them)";
  }
  return "";
}

std::string documents_text(const std::set<long long>& documents) {
  if (documents.empty()) return "";
  std::string text = documents.size() == 1 ? " (document " : " (documents ";
  size_t named = 0;
  for (long long document : documents) {
    if (named == kDocumentsNamed) {
      return text + ", ... " + std::to_string(documents.size()) + " in all)";
    }
    text += (named++ ? ", " : "") + std::to_string(document);
  }
  return text + ")";
}

}  // namespace

void refuse_problems(const std::vector<PROBLEM>& problems) {
  if (problems.empty()) return;
  std::string message = "ormel: -strict: nothing written, " + std::to_string(problems.size()) +
                        (problems.size() == 1 ? " problem:\n" : " problems:\n");
  for (size_t i = 0; i < problems.size() && i < kListed; ++i) {
    const PROBLEM& problem = problems[i];
    message += "  ";
    if (problem.document > 0) message += "document " + std::to_string(problem.document) + ": ";
    message += problem.text + "\n";
  }
  if (problems.size() > kListed) {
    message += "  and " + std::to_string(problems.size() - kListed) + " more\n";
  }
  throw Error(message);
}

std::string problems_summary(long long written, const std::vector<PROBLEM>& problems) {
  if (problems.empty()) return "";
  std::map<PROBLEM::KIND, std::pair<size_t, std::set<long long>>> by_kind;
  for (const PROBLEM& problem : problems) {
    auto& [count, documents] = by_kind[problem.kind];
    ++count;
    if (problem.document > 0) documents.insert(problem.document);
  }
  std::string line = "ormel: " + std::to_string(written) +
                     (written == 1 ? " document written" : " documents written");
  for (const auto& [kind, found] : by_kind) {
    line += "; " + std::to_string(found.first) + " " + kind_text(kind, found.first == 1) +
            documents_text(found.second);
  }
  return line + "; see -report\n";
}
