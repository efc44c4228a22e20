// A placed-art file read with the reason it could not be, as a report tells the user: the
// system's words for a missing or unreadable file, or that it is no regular file. A FIFO
// or a device never blocks the read.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

// Up to limit bytes from the start of the regular file at path; nothing, with the reason
// in why, when it cannot be read. too_large, when given, is set when the file holds more.
std::optional<std::string> read_art_file(const std::string& path, size_t limit, std::string& why,
                                         bool* too_large = nullptr);
