// One run of ormel: options, loading and analysis of the template, one replacement pass
// per table argument, and printing of the new document.
#pragma once

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

// The parts of a run that a batch (driver/batch.h) shares.

// Appends the usage line to diagnostics; returns the status of a usage error.
int usage(std::string& diagnostics);
// The template as the options read it ("-keep" or the designed reading), not yet analysed.
// Starts the expansion pool from its size.
AI_DOCUMENT read_template(const std::string& path);
// The new document, its closing line included; what is written refers to the template's
// bytes until out is flushed.
void print_document(const AI_DOCUMENT& doc, Output& out);
