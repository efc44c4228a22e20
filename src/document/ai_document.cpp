#include "document/ai_document.h"

#include <algorithm>

#include "document/layer.h"
#include "support/output.h"
#include "text/point_text_reader.h"

AI_DOCUMENT::AI_DOCUMENT(std::unique_ptr<TEMPLATE> text)
    : tpl(std::move(text)), models(std::max<size_t>(tpl->source().size(), 1), &model_blocks) {}

AI_DOCUMENT::~AI_DOCUMENT() = default;

REPLACEABLES AI_DOCUMENT::analyze_doc(POINT_TEXT_READER& reader) {
  reader.keep_texts_in(&models);
  prolog = std::make_unique<AI_PROLOG>();
  prolog->setup(*tpl);
  script = std::make_unique<AI_SCRIPT>();
  script->setup(*tpl, reader);
  REPLACEABLES objects;
  size_t count = 0;
  for (int i = 0; i < script->layer_count(); ++i) count += script->layer(i).replaceable_count();
  objects.reserve(count);
  for (int i = 0; i < script->layer_count(); ++i) script->layer(i).list(i + 1, objects);
  return objects;
}

void AI_DOCUMENT::print_new(Output& out) const {
  prolog->print_new(*tpl, out);
  script->print_new(*tpl, out);
}
