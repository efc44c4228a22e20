// Reads a whole file into memory, for the template and the tables.
#pragma once

#include <string>

// Returns the file's bytes. Reads to the end also when the size is not known in advance
// (a pipe given as a path). Throws Error with open_error or read_error when the file cannot
// be opened or read, and "fstat error\n" when its status cannot be read.
std::string read_whole_file(const char* path, const char* open_error, const char* read_error);
