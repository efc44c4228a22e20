// How a run writes its documents, chosen once from the settings: the default output, the
// document printed anew from its model (default_printer), or the template copied whole with
// only the bytes that the tables change rewritten ("-keep", kept_printer). The choice also
// decides how the template is read: the copy needs every line end as it stands, and the
// objects read where their bytes are. A new output is one class in a file of its own.
#pragma once

#include <memory>

#include "document/replaceables.h"
#include "support/file_io.h"

class AI_DOCUMENT;
class ART_SOURCES;
class Output;
class REPORT;
class TEMPLATE;
struct SETTINGS;

class PRINTER {
 public:
  virtual ~PRINTER() = default;
  // The template's bytes cut into lines as this output reads them.
  virtual std::unique_ptr<TEMPLATE> read(FileBytes bytes) const = 0;
  // Writes the new document, its closing line included. Everything the rewritten objects
  // need is read before the first byte is written, and what is written refers to the
  // template's bytes until out is flushed.
  virtual void print(const AI_DOCUMENT& doc, const REPLACEABLES& objects, ART_SOURCES& art,
                     REPORT& report, Output& out) const = 0;
  // Adds to report the parts of the template that this output does not copy.
  virtual void report_not_copied(const AI_DOCUMENT& doc, REPORT& report) const = 0;
};

std::unique_ptr<PRINTER> make_printer(const SETTINGS& settings);
