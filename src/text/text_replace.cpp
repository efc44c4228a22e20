#include "text/text_replace.h"

#include <string_view>

#include "support/patterns.h"
#include "template/template.h"
#include "text/point_text_reader.h"

bool AI_TEXT_REPLACE::may_hold_placeholder(const TEMPLATE& tpl, int first, int last) {
  return first < last &&
         may_end_placeholder(tpl.bytes_of_lines(first, last - 1), tpl.keeps_bytes());
}

bool AI_TEXT_REPLACE::setup(const TEMPLATE& tpl, int first, int last, POINT_TEXT_READER& reader) {
  reader.start();
  if (tpl.keeps_bytes()) {
    kept_text = std::make_unique<KEPT_POINT_TEXT>();
    kept_text->setup(tpl.bytes_of_lines(first, last - 1), reader, model);
    return reader.finish(model);
  }
  tpl.each_line(first, last - 1, [&](std::string_view line) { reader.read_line(line, model); });
  return reader.finish(model);
}
