// For tests: what an object's print writes, as one string.
#pragma once

#include <string>

#include "support/output.h"

template <class Printable>
std::string printed(const Printable& object) {
  Output out;
  object.print(out);
  return std::string(out.text());
}
