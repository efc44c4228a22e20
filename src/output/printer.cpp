#include "output/printer.h"

#include "output/default_printer.h"
#include "output/kept_printer.h"
#include "support/settings.h"

std::unique_ptr<PRINTER> make_printer(const SETTINGS& settings) {
  if (settings.keep) return std::make_unique<KEPT_PRINTER>();
  return std::make_unique<DEFAULT_PRINTER>();
}
