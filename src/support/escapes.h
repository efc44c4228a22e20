// The backslash escapes of PostScript strings.
#pragma once

#include <string>
#include <string_view>

// Raw bytes as the body of a PostScript string: printable ASCII but the backslash stays,
// CR and LF become "\r", a tab "\t", every other byte a backslash and three octal digits.
std::string tx_encode(std::string_view in);

// The bytes a PostScript string body stands for, read as a PostScript interpreter reads
// them: "\n" "\r" "\t" "\b" "\f" "\\" "\(" "\)", one to three octal digits (modulo 256), a
// backslash before a line end continues the string, before any other byte it is dropped.
std::string ps_string_decode(std::string_view body);

// Raw bytes as a PostScript string body that any interpreter reads back as the same bytes:
// backslash and both parentheses escaped, CR LF tab backspace form feed as their letters
// (only CR and LF when octal_controls is set), other control bytes (and bytes of 0x80 and
// above when octal_high is set) as three octal digits; everything else as it stands.
std::string ps_string_escape(std::string_view raw, bool octal_high, bool octal_controls = false);

// An escaped path as raw bytes: "\\" gives one backslash, a backslash and three more bytes
// give the byte they spell in octal (modulo 256). An escape cut short by the end of the
// input is copied as it stands.
std::string path_decode(std::string_view in);
