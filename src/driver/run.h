// One run of ormel: options, loading and analysis of the template, one replacement pass
// per table argument, and printing of the new document.
#pragma once

#include <string>
#include <vector>

class Output;

constexpr const char* kUsage =
    "ormel [-options] templatefile textfile|([TXID=file|EPS-TXID=file)..]";
constexpr const char* kVersion = "1.00";

// args holds the command name and its arguments. Returns the exit status (0 done, 1 usage
// error, with the usage line appended to diagnostics); every other failure throws Error
// before anything has been written to out.
int run(const std::vector<std::string>& args, Output& out, std::string& diagnostics);
