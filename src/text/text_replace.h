// The replaceable part of a text object: the parsed model of a point text whose strings
// hold a placeholder. The run's table arguments reach the model through the run's list of
// replaceable objects; it prints the object's lines anew, or ("-keep") patches its bytes.
#pragma once

#include <memory>
#include <memory_resource>
#include <utility>

#include "support/arena.h"
#include "text/kept_point_text.h"
#include "text/point_text.h"

class POINT_TEXT_READER;
class TEMPLATE;

class AI_TEXT_REPLACE {
 public:
  // parsed: the text as read; memory: where the copy of it is kept.
  AI_TEXT_REPLACE(const AI_POINT_TEXT& parsed, std::pmr::memory_resource* memory)
      : model(parsed, memory) {}
  // The text as read, taken over.
  explicit AI_TEXT_REPLACE(AI_POINT_TEXT&& parsed) : model(std::move(parsed)) {}

  // False only when the lines first..last-1 cannot hold a placeholder in their strings, which
  // spares most text objects of a large document the full parse.
  static bool may_hold_placeholder(const TEMPLATE& tpl, int first, int last);
  // Parses the lines first..last-1 (the "TO" line is not read) as the template was read: its
  // words, or for "-keep" its PostScript tokens, remembering where each run's string stands.
  // A point text that holds a placeholder, and so is to be replaced, is kept where the
  // reader keeps texts; any other gives null.
  static IN_RESOURCE<AI_TEXT_REPLACE> read(const TEMPLATE& tpl, int first, int last,
                                           POINT_TEXT_READER& reader);

  AI_POINT_TEXT& point_text() { return model; }
  const AI_POINT_TEXT& point_text() const { return model; }
  // Where "-keep" read the text's tokens; null in the default reading.
  const KEPT_POINT_TEXT* kept() const { return kept_text.get(); }

 private:
  AI_POINT_TEXT model;
  std::unique_ptr<KEPT_POINT_TEXT> kept_text;
};
