#include "placed/placed_art_replace.h"

// The placement model is not built yet: no placed-art block creates this part so far.
void AI_PLACED_ART_REPLACE::setup_tabtxt(const char*, const TAB_TEXT&) {}
