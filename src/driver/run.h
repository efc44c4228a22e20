// One run of ormel: options, loading and analysis of the template, one replacement pass
// per table argument, and printing of the new document.
#pragma once

#include <memory>
#include <string>
#include <vector>

class AI_DOCUMENT;
class Output;

constexpr const char* kUsage =
    "ormel [-options] templatefile textfile|([TXID=file|EPS-TXID=file)..]";
constexpr const char* kVersion = "1.00";

// args holds the command name and its arguments. Returns the exit status (0 done, 1 usage
// error, with the usage line appended to diagnostics); every other failure throws Error
// before anything has been written to out.
int run(const std::vector<std::string>& args, Output& out, std::string& diagnostics);

// Set by main, whose process ends when run returns: the run then leaves its document to the
// exit rather than taking apart, object by object, a model that the exit drops anyway.
// Tests and fuzzers, which make many runs in one process, leave it unset.
extern bool leave_document_to_exit;

// The parts of a run that a batch (driver/batch.h) shares.

// Appends the usage line to diagnostics; returns the status of a usage error.
int usage(std::string& diagnostics);
// The template as the options read it ("-keep" or the default reading), not yet analysed.
// Starts the expansion pool from its size.
std::unique_ptr<AI_DOCUMENT> read_template(const std::string& path);
// Called once a run is done with its document: frees it, or leaves it to the exit.
void done_with(std::unique_ptr<AI_DOCUMENT> doc);
// The new document, its closing line included; what is written refers to the template's
// bytes until out is flushed.
void print_document(const AI_DOCUMENT& doc, Output& out);
