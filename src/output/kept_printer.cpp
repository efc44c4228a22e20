#include "output/kept_printer.h"

#include "document/ai_document.h"
#include "output/not_copied.h"
#include "placed/art_sources.h"
#include "placed/placed_art_replace.h"
#include "support/output.h"
#include "support/patches.h"
#include "support/report.h"
#include "template/template.h"
#include "text/text_replace.h"

std::unique_ptr<TEMPLATE> KEPT_PRINTER::read(FileBytes bytes) const {
  return std::make_unique<TEMPLATE>(std::move(bytes), TEMPLATE::KEEP_BYTES());
}

void KEPT_PRINTER::print(const AI_DOCUMENT& doc, const REPLACEABLES& objects, ART_SOURCES& art,
                         REPORT& report, Output& out) const {
  art.next_document();
  PATCHES patches;
  for (const REPLACEABLE& object : objects) {
    report.set_layer(object.layer);
    if (object.text) {
      object.text->kept()->patch(object.text->point_text(), patches);
    } else {
      object.placed_art->kept()->patch(*object.placed_art, report, patches);
    }
  }
  const TEMPLATE& tpl = doc.text();
  patches.write(tpl.bytes_of_lines(0, tpl.line_count() - 1), out);
}

void KEPT_PRINTER::report_not_copied(const AI_DOCUMENT& doc, REPORT& report) const {
  ::report_not_copied(doc, true, report);
}
