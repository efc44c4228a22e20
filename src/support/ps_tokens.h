// A PostScript tokenizer for rewriting objects in place: it splits text at white space and
// at the delimiters / ( ) [ ] { } < >, so "4 M/_F 48 Tf" gives 4, M, /_F, 48 and Tf, and
// gives each token as a view into the text, so that a token can be replaced byte for byte.
#pragma once

#include <string>
#include <string_view>

enum class PS_KIND {
  number,        // 48, -0.5, 1e3, 16#FF
  executable,    // an executable name: Tf, `
  literal_name,  // /_MyriadPro-Regular
  string,        // (...) with its parentheses
  hex_string,    // <...> with its angle brackets
  delimiter,     // [ ] { } << >>
  comment,       // % to the line's end
};

struct PS_TOKEN {
  PS_KIND kind;
  std::string_view bytes;
};

class PS_TOKENIZER {
 public:
  explicit PS_TOKENIZER(std::string_view text) : rest(text) {}
  // The next token; false at the end of the text. A string or comment that the text ends
  // inside runs to the text's end.
  bool next(PS_TOKEN* token);

 private:
  std::string_view rest;
};

// The body of a string token: what stands between its delimiters.
std::string_view ps_string_body(const PS_TOKEN& token);
// The bytes a string token stands for.
std::string ps_string_value(const PS_TOKEN& token);
// A string token of the same kind as token that stands for bytes, its escapes written as
// token writes its own (see string_style): how a rewritten string keeps the template's way.
std::string ps_string_like(const PS_TOKEN& token, std::string_view bytes);
