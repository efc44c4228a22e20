// ormel: merges tables into an Illustrator template and writes the new document to standard
// output, or its documents to files.
#include <unistd.h>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "driver/run.h"
#include "support/error.h"
#include "support/output.h"

int main(int argc, char** argv) {
  std::string diagnostics;
  try {
    Output out(STDOUT_FILENO);
    std::vector<std::string> args(argv, argv + argc);
    int status = run(args, out, diagnostics, true);
    out.flush();
    std::fputs(diagnostics.c_str(), stderr);
    return status;
  } catch (const Error& error) {
    std::fputs(error.what(), stderr);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "ormel: %s\n", error.what());
  }
  return kFailureStatus;
}
