#include "document/kept_printer.h"

#include "document/ai_document.h"
#include "support/output.h"

void print_kept(const AI_DOCUMENT& doc, Output& out) {
  doc.print_lines(0, doc.line_count() - 1, out);
}
