// The backslash escapes of PostScript strings.
#pragma once

#include <string>
#include <string_view>

// Raw bytes as the body of a PostScript string: printable ASCII but the backslash stays,
// CR and LF become "\r", a tab "\t", every other byte a backslash and three octal digits.
std::string tx_encode(std::string_view in);

// An escaped path as raw bytes: "\\" gives one backslash, a backslash and three more bytes
// give the byte they spell in octal (modulo 256). An escape cut short by the end of the
// input is copied as it stands.
std::string path_decode(std::string_view in);
