// How "-keep" reads and rewrites a point text. It fills the same model as the default
// reading (AI_POINT_TEXT), through a PostScript tokenizer that keeps where each token
// stands and with the run strings decoded; the substitution is the model's own. Afterwards
// only the bytes that the substitution changed are rewritten: the string tokens of runs
// whose text changed and the font-name tokens of runs whose font a placeholder set. Every
// other token (operators the model does not know, short operand forms, numbers as written)
// and every line end stays as it was.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "support/ps_tokens.h"
#include "textattr/text_operator.h"

class AI_POINT_TEXT;
class PATCHES;
class POINT_TEXT_READER;

class KEPT_POINT_TEXT {
 public:
  // Reads the text's bytes (its lines but the "TO" line) into point_text through reader.
  void setup(std::string_view bytes, POINT_TEXT_READER& reader, AI_POINT_TEXT& point_text);
  // The patches that bring the template's bytes to what point_text holds now.
  void patch(const AI_POINT_TEXT& point_text, PATCHES& patches) const;

 private:
  void file(TEXT_OP op, const PS_TOKEN* operand, std::string_view font_name,
            AI_POINT_TEXT& point_text);

  // Where each run's string and font name stand in the template, and its text as read.
  struct RUN {
    PS_TOKEN string{PS_KIND::string, {}};
    std::string text_read;
    std::string_view font_name;
  };
  std::vector<RUN> runs;
};
