// A batch: many documents from one template, read and analysed once. With "-each=N" every
// table argument's table is cut into blocks of N rows (after the "-skip=" header rows), and
// document k is made exactly as a single run on tables holding only block k, its rows
// renumbered from 1; each document goes to its own file, named from the "-out=" pattern,
// and "-shard=I/M" makes only every M-th of them. Without "-each" the one document is made
// from the tables' rows after the headers, to "-out=FILE" or standard output.
//
// Everything that can fail before a document is made (the command line, the template, the
// tables, every file name) fails before the first file is written. A failure inside a
// document names it ("document 7 (label-0007.ai): ..."); the documents before it are
// complete, and no part of it remains.
#pragma once

#include <string>
#include <vector>

class Output;

// args as run() takes them, template_at the index of the template argument, the options
// already read. out receives the one document when there is no "-out="; diagnostics the
// usage line and, for one document, the report. A batch of "-each" writes its report to
// standard error as each document is done. Returns the exit status (0 or 1, usage); every
// other failure throws Error.
int run_batch(const std::vector<std::string>& args, size_t template_at, Output& out,
              std::string& diagnostics);
