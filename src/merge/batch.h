// The documents of a run, one path for one document and for many. The template is read and
// analysed once, then every table argument in command-line order is cut and its table read.
// Without "-each=N" the run makes one document, each table applied as it is read (after the
// "-skip=" header rows), to standard output or to "-out=FILE". With "-each=N" every table is
// cut into blocks of N rows, and document k is made exactly as a single run on tables
// holding only block k, its rows renumbered from 1; each document goes to its own file,
// named from the "-out=" pattern, and "-shard=I/M" makes only every M-th of them.
// When "-out=" ends in ".pdf" or ".png" the documents go to Ghostscript instead, each a page:
// of one PDF of the run (or shard) when the pattern names no document, else of its own file.
//
// Everything that can fail before a document is made (the template, the tables, every file
// name) fails before the first file is written. A failure inside a document names it
// ("document 7 (label-0007.ai): ..."); the documents before it are complete, and no part
// of it remains.
#pragma once

#include <string>
#include <vector>

class Output;
struct SETTINGS;

// The status of a run whose arguments do not fit the command line's forms: the caller
// adds the usage line.
constexpr int kUsageStatus = 1;
// The status of a batch that wrote its documents but left a placeholder or frame without its
// cell, or met a finding about its tables or template.
constexpr int kUndoneStatus = 3;

// args as the command line gives them, template_at the index of the template argument.
// out receives the one document when there is no "-out="; diagnostics the reasons of a
// usage error and, for one document, the report (a batch of "-each" writes its report to
// standard error as each document is done). Returns 0, kUsageStatus or kUndoneStatus; every
// other failure throws Error. With "-strict" every document is checked before anything is
// written, and a document left without anything fails the run.
int make_documents(const SETTINGS& settings, const std::vector<std::string>& args,
                   size_t template_at, Output& out, std::string& diagnostics);
