#include "driver/run.h"

#include "driver/options.h"
#include "merge/batch.h"
#include "support/settings.h"
#include "support/strings.h"

namespace {

int usage(std::string& diagnostics) {
  diagnostics += kUsage;
  diagnostics += '\n';
  return kUsageStatus;
}

}  // namespace

int run(const std::vector<std::string>& args, Output& out, std::string& diagnostics,
        bool leave_document_to_exit) {
  SETTINGS settings;
  settings.leave_document_to_exit = leave_document_to_exit;
  size_t next = 1;
  for (; next < args.size() && starts_with(args[next], "-"); ++next) {
    switch (apply_option(args[next], settings, out, diagnostics)) {
      case OPTION_OUTCOME::go_on:
        break;
      case OPTION_OUTCOME::done:
        return 0;
      case OPTION_OUTCOME::usage_error:
        return usage(diagnostics);
    }
  }
  if (args.size() <= 2 || next == args.size()) return usage(diagnostics);
  if (!check_batch_options(settings, diagnostics) || !check_art_options(settings, diagnostics)) {
    return usage(diagnostics);
  }
  const int status = make_documents(settings, args, next, out, diagnostics);
  return status == kUsageStatus ? usage(diagnostics) : status;
}
