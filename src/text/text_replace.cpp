#include "text/text_replace.h"

// The point-text model is not built yet: no text object creates this part so far.
void AI_TEXT_REPLACE::setup_tabtxt(const char*, const TAB_TEXT&) {}
void AI_TEXT_REPLACE::setup_tabtxt(const TAB_TEXT&) {}
void AI_TEXT_REPLACE::print_new(Output&) const {}
