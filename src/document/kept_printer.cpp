#include "document/kept_printer.h"

#include "document/ai_document.h"
#include "document/layer.h"
#include "placed/ai_placed_art.h"
#include "placed/eps_embed.h"
#include "placed/placed_art_replace.h"
#include "support/output.h"
#include "support/patches.h"
#include "support/report.h"
#include "text/ai_text.h"
#include "text/text_replace.h"

void print_kept(const AI_DOCUMENT& doc, Output& out) {
  EMBEDDED_FILES files;
  PATCHES patches;
  const AI_SCRIPT& script = *doc.get_script();
  for (int l = 0; l < script.layer_count(); ++l) {
    run_report().set_layer(l + 1);
    const AI_LAYER& layer = script.layer(l);
    for (int t = 0; t < layer.text_count(); ++t) {
      if (layer.text(t).replace) layer.text(t).replace->patch_kept(patches);
    }
    for (int p = 0; p < layer.placed_art_count(); ++p) {
      layer.placed_art(p).replace->patch_kept(files, patches);
    }
  }
  patches.write(doc.bytes_of_lines(0, doc.line_count() - 1), out);
}
