// The default output: the template cut at carriage returns with embedded documents cut out,
// and the document printed anew section by section, each replaced object from its model,
// closed by "%%EOF" and a carriage return.
#pragma once

#include "output/printer.h"

class DEFAULT_PRINTER : public PRINTER {
 public:
  std::unique_ptr<TEMPLATE> read(FileBytes bytes) const override;
  void print(const AI_DOCUMENT& doc, const REPLACEABLES& objects, ART_SOURCES& art, REPORT& report,
             Output& out) const override;
  void report_not_copied(const AI_DOCUMENT& doc, REPORT& report) const override;
};
