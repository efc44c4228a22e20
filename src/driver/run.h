// One run of ormel: the options read into the run's settings, then the documents made
// (merge/batch.h).
#pragma once

#include <string>
#include <vector>

class Output;

constexpr const char* kUsage =
    "ormel [-options] templatefile textfile|([TXID=file|EPS-TXID=file)..]";

// args holds the command name and its arguments. Returns the exit status (0 done, 1 usage
// error, with the usage line appended to diagnostics); every other failure throws Error
// before anything has been written to out. leave_document_to_exit: the process ends when
// run returns, so the run leaves its document to the exit rather than taking apart, object
// by object, a model that the exit drops anyway (tests and fuzzers, which make many runs in
// one process, leave it unset).
int run(const std::vector<std::string>& args, Output& out, std::string& diagnostics,
        bool leave_document_to_exit = false);
