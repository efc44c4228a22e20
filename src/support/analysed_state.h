// One analysis, many documents: a batch applies every document's tables to the same
// analysed template. An object that a table is about to change keeps a copy of what the
// analysis left (once, the first time), and gets it back before the next document; objects
// that no table touched cost nothing.
#pragma once

#include <memory>

template <typename STATE>
class ANALYSED_STATE {
 public:
  // Called before a change: copy() gives the state now, taken only the first time.
  template <typename COPY>
  void keep(COPY copy) {
    if (!saved) saved = std::make_unique<STATE>(copy());
    changed = true;
  }
  // Whether anything was changed since the last restore; the analysed state then goes to
  // put(), which writes it back.
  template <typename PUT>
  void restore(PUT put) {
    if (!changed) return;
    put(*saved);
    changed = false;
  }
  // The state as the analysis left it, once a change was about to be made; null before.
  const STATE* analysed() const { return saved.get(); }

 private:
  std::unique_ptr<STATE> saved;
  bool changed = false;
};
