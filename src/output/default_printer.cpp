#include "output/default_printer.h"

#include "document/ai_document.h"
#include "output/not_copied.h"
#include "support/output.h"
#include "template/template.h"

std::unique_ptr<TEMPLATE> DEFAULT_PRINTER::read(FileBytes bytes) const {
  return std::make_unique<TEMPLATE>(std::move(bytes));
}

// The tree prints itself, each object in place of its lines.
void DEFAULT_PRINTER::print(const AI_DOCUMENT& doc, const REPLACEABLES&, ART_SOURCES&, REPORT&,
                            Output& out) const {
  doc.print_new(out);
  out.printf("%s%s", "%%EOF", "\r");
}

void DEFAULT_PRINTER::report_not_copied(const AI_DOCUMENT& doc, REPORT& report) const {
  ::report_not_copied(doc, false, report);
}
