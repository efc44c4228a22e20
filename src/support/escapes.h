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

// How a template's string body writes its bytes, so that a rewritten string looks alike:
// every byte as an octal escape (as newer versions write strings), bytes of 0x80 and above
// as octal escapes, or those bytes as they are.
enum class STRING_STYLE { as_is, octal_high, octal_all };
STRING_STYLE string_style(std::string_view body);
// raw as a string body in that style (see ps_string_escape); in octal_all every byte is an
// octal escape.
std::string ps_string_in_style(std::string_view raw, STRING_STYLE style);

// The bytes of a hex string body (white space and other bytes passed over; an odd last
// digit stands for its high half); and raw bytes as hex digits.
std::string ps_hex_decode(std::string_view body);
std::string ps_hex_encode(std::string_view raw, bool lower_case);

// The text that "-keep" keeps in a run: a string's decoded bytes with the tab (which
// separates runs when their strings are joined), the NUL (which would end the text for the
// matcher) and the backslash written as "\t", "\z" and "\\". No placeholder pattern
// matches across them, and no digit stands for a byte.
std::string run_text(std::string_view raw);
// The bytes a run text stands for.
std::string run_bytes(std::string_view text);
