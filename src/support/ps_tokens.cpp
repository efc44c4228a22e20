#include "support/ps_tokens.h"

#include <cctype>
#include <cstring>

#include "support/escapes.h"

namespace {

bool is_white(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\0';
}

bool is_delimiter(char c) {
  return c != '\0' && std::strchr("()<>[]{}/%", c) != nullptr;
}

// Where a literal string that opens at text[0] ends: after its balancing ")", parentheses
// escaped by a backslash not counted.
size_t string_length(std::string_view text) {
  int depth = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\') {
      ++i;
    } else if (text[i] == '(') {
      ++depth;
    } else if (text[i] == ')' && --depth == 0) {
      return i + 1;
    }
  }
  return text.size();
}

size_t regular_length(std::string_view text, size_t from) {
  size_t i = from;
  while (i < text.size() && !is_white(text[i]) && !is_delimiter(text[i])) ++i;
  return i;
}

size_t up_to(std::string_view text, size_t from, std::string_view end) {
  const size_t at = text.find(end, from);
  return at == std::string_view::npos ? text.size() : at + end.size();
}

// An integer, a real or a radix number, as PostScript reads them.
bool is_number(std::string_view word) {
  size_t i = 0;
  auto digits = [&word, &i](bool alnum) {
    const size_t from = i;
    while (i < word.size() && (std::isdigit(static_cast<unsigned char>(word[i])) ||
                               (alnum && std::isalpha(static_cast<unsigned char>(word[i]))))) {
      ++i;
    }
    return i > from;
  };
  if (digits(false) && i < word.size() && word[i] == '#') {
    ++i;
    return digits(true) && i == word.size();
  }
  i = 0;
  if (i < word.size() && (word[i] == '+' || word[i] == '-')) ++i;
  bool any = digits(false);
  if (i < word.size() && word[i] == '.') {
    ++i;
    any = digits(false) || any;
  }
  if (!any) return false;
  if (i < word.size() && (word[i] == 'e' || word[i] == 'E')) {
    ++i;
    if (i < word.size() && (word[i] == '+' || word[i] == '-')) ++i;
    if (!digits(false)) return false;
  }
  return i == word.size();
}

}  // namespace

bool PS_TOKENIZER::next(PS_TOKEN* token) {
  size_t start = 0;
  while (start < rest.size() && is_white(rest[start])) ++start;
  if (start == rest.size()) return false;
  const std::string_view text = rest.substr(start);
  PS_KIND kind = PS_KIND::executable;
  size_t length = 1;
  switch (text[0]) {
    case '(':
      kind = PS_KIND::string;
      length = string_length(text);
      break;
    case '<':
      if (text.size() > 1 && text[1] == '<') {
        kind = PS_KIND::delimiter;
        length = 2;
      } else {
        kind = PS_KIND::hex_string;
        length = up_to(text, 1, ">");
      }
      break;
    case '>':
      kind = PS_KIND::delimiter;
      length = text.size() > 1 && text[1] == '>' ? 2 : 1;
      break;
    case '[':
    case ']':
    case '{':
    case '}':
    case ')':
      kind = PS_KIND::delimiter;
      break;
    case '/':
      kind = PS_KIND::literal_name;
      length = regular_length(text, text.size() > 1 && text[1] == '/' ? 2 : 1);
      break;
    case '%':
      // "%_" starts the lines that only the editor reads ("%_0 50 100 0 Xu"): their words
      // are read like any other.
      if (text.size() > 1 && text[1] == '_') {
        length = regular_length(text, 2);
      } else {
        kind = PS_KIND::comment;
        length = text.find_first_of("\r\n");
        if (length == std::string_view::npos) length = text.size();
      }
      break;
    default:
      length = regular_length(text, 0);
      if (is_number(text.substr(0, length))) kind = PS_KIND::number;
  }
  *token = {kind, text.substr(0, length)};
  rest = text.substr(length);
  return true;
}

std::string_view ps_string_body(const PS_TOKEN& token) {
  std::string_view body = token.bytes.substr(1);
  const char close = token.kind == PS_KIND::string ? ')' : '>';
  if (!body.empty() && body.back() == close) body.remove_suffix(1);
  return body;
}

std::string ps_string_value(const PS_TOKEN& token) {
  const std::string_view body = ps_string_body(token);
  return token.kind == PS_KIND::hex_string ? ps_hex_decode(body) : ps_string_decode(body);
}

std::string ps_string_like(const PS_TOKEN& token, std::string_view bytes) {
  const std::string_view body = ps_string_body(token);
  if (token.kind == PS_KIND::hex_string) {
    const bool lower = body.find_first_of("abcdef") != std::string_view::npos;
    return "<" + ps_hex_encode(bytes, lower) + ">";
  }
  return "(" + ps_string_in_style(bytes, string_style(body)) + ")";
}
