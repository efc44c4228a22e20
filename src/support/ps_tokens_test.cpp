#include "support/ps_tokens.h"

#include <gtest/gtest.h>
#include <string>

namespace {

// The tokens joined with " ", each marked with its kind: n number, x executable, l name,
// s string, h hex string, d delimiter, c comment.
std::string dump(std::string_view text) {
  PS_TOKENIZER tokens(text);
  PS_TOKEN token{};
  std::string out;
  while (tokens.next(&token)) {
    static const char kMarks[] = "nxlshdc";
    if (!out.empty()) out += ' ';
    out += kMarks[static_cast<int>(token.kind)];
    out += std::string(token.bytes);
  }
  return out;
}

}  // namespace

TEST(PsTokensTest, SplitsAtWhiteSpaceAndDelimiters) {
  const std::pair<const char*, const char*> cases[] = {
      {"4 M/_MyriadPro-Regular 48 Tf", "n4 xM l/_MyriadPro-Regular n48 xTf"},
      {"(a b)Tx 1 0 Tk\r\nTO", "s(a b) xTx n1 n0 xTk xTO"},
      {"(a(b)\\)c) TX", "s(a(b)\\)c) xTX"},
      {"(Disk:a.eps)`", "s(Disk:a.eps) x`"},
      {"[1 0 0 1 -2.5 .5] 1e3 16#FF 1.2.3 -", "d[ n1 n0 n0 n1 n-2.5 n.5 d] n1e3 n16#FF x1.2.3 x-"},
      {"<4F 4b>Tx<<>>{}", "h<4F 4b> xTx d<< d>> d{ d}"},
      {"%_0 50 100 0 Xu % a comment\n0 Tr", "x%_0 n50 n100 n0 xXu c% a comment n0 xTr"},
      {"//name /a/b (open", "l//name l/a l/b s(open"},
      {"", ""},
  };
  for (const auto& [text, tokens] : cases) EXPECT_EQ(tokens, dump(text)) << text;
}

TEST(PsTokensTest, StringBodies) {
  PS_TOKEN token{};
  for (const auto& [text, body] : {std::pair<const char*, const char*>{"(a\\)b)", "a\\)b"},
                                   {"(open", "open"},
                                   {"<4F4B>", "4F4B"},
                                   {"()", ""}}) {
    PS_TOKENIZER tokens(text);
    ASSERT_TRUE(tokens.next(&token));
    EXPECT_EQ(body, ps_string_body(token)) << text;
  }
}
