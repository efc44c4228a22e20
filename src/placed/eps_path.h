// Turning a placed-art cell, a colon-separated path as the layout program writes it, into a
// path on the local disk: base names, separators and the bytes a local file name cannot
// carry as they are.
#pragma once

#include <optional>
#include <string>
#include <string_view>

// What follows the last ':' or '\\' of s; s itself when it holds neither.
std::string_view basename(std::string_view s);

// Replaces every byte from by to, in place, and returns s. A byte with its high bit set
// starts a two-byte character: it and the byte after it are passed over unchanged.
std::string& mb_char_replace(char from, char to, std::string& s);

class ENCODE {
 public:
  // s with each 8-bit byte, each '/' and a leading '.' written as ':' and two lowercase
  // hexadecimal digits, so that they can never form a separator or a hidden name.
  static std::string capencode(std::string_view s);
};

// The local path of the file a cell names: its escapes decoded, its ':' separators made
// '/', its names encoded, joined directly to home_dir. Nothing when a component of the
// cell is "..": no cell may name a file outside the home directory. A cell that a table
// reader escaped as a string body (string_body set) is decoded as a PostScript string,
// where "\(" is a parenthesis; otherwise a backslash is read by the path rules only.
std::optional<std::string> local_eps_path(std::string_view cell, std::string_view home_dir,
                                          bool string_body = false);
