#include "document/kept_printer.h"

#include "document/ai_document.h"
#include "document/layer.h"
#include "support/output.h"
#include "support/patches.h"
#include "text/ai_text.h"
#include "text/text_replace.h"

void print_kept(const AI_DOCUMENT& doc, Output& out) {
  PATCHES patches;
  const AI_SCRIPT& script = *doc.get_script();
  for (int l = 0; l < script.layer_count(); ++l) {
    const AI_LAYER& layer = script.layer(l);
    for (int t = 0; t < layer.text_count(); ++t) {
      if (layer.text(t).replace) layer.text(t).replace->patch_kept(patches);
    }
  }
  patches.write(doc.bytes_of_lines(0, doc.line_count() - 1), out);
}
