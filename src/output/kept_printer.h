// The output of "-keep": the template's bytes from "%!PS-Adobe" through the line of its last
// "%%EOF", copied, except the bytes of the objects that a table argument changed, which are
// rewritten in place. The template's own "%%EOF" line ends the output; nothing is added.
#pragma once

#include "output/printer.h"

class KEPT_PRINTER : public PRINTER {
 public:
  std::unique_ptr<TEMPLATE> read(FileBytes bytes) const override;
  void print(const AI_DOCUMENT& doc, const REPLACEABLES& objects, ART_SOURCES& art, REPORT& report,
             Output& out) const override;
  void report_not_copied(const AI_DOCUMENT& doc, REPORT& report) const override;
};
