#include "text/text_replace.h"

#include <string_view>

#include "support/patterns.h"
#include "template/template.h"
#include "text/point_text_reader.h"

bool AI_TEXT_REPLACE::may_hold_placeholder(const TEMPLATE& tpl, int first, int last) {
  return first < last &&
         may_end_placeholder(tpl.bytes_of_lines(first, last - 1), tpl.keeps_bytes());
}

IN_RESOURCE<AI_TEXT_REPLACE> AI_TEXT_REPLACE::read(const TEMPLATE& tpl, int first, int last,
                                                   POINT_TEXT_READER& reader) {
  AI_POINT_TEXT& parsed = reader.start();
  std::unique_ptr<KEPT_POINT_TEXT> kept;
  if (tpl.keeps_bytes()) {
    kept = std::make_unique<KEPT_POINT_TEXT>();
    kept->setup(tpl.bytes_of_lines(first, last - 1), reader, parsed);
  } else {
    tpl.each_line(first, last - 1, [&](std::string_view line) { reader.read_line(line, parsed); });
  }
  if (!reader.finish(parsed)) return nullptr;
  // A text of many runs is taken over as read: a copy would double the largest models to
  // save slack that matters only in the many small ones.
  constexpr size_t kMostRunsCopied = 256;
  std::pmr::memory_resource* memory = reader.kept_texts_memory();
  auto made = parsed.runs().size() > kMostRunsCopied
                  ? make_in<AI_TEXT_REPLACE>(memory, std::move(parsed))
                  : make_in<AI_TEXT_REPLACE>(memory, parsed, memory);
  made->kept_text = std::move(kept);
  return made;
}
