// The progress line of a batch on a terminal: documents done of the total, the rate and the
// time left, redrawn in place at most a few times a second and erased at the end. Nothing
// at all is written when standard error is not a terminal, so pipes and logs never see it.
#pragma once

#include <chrono>
#include <string>

class PROGRESS {
 public:
  // shown: whether standard error is a terminal.
  PROGRESS(long long total, bool shown);
  ~PROGRESS() { erase(); }
  PROGRESS(const PROGRESS&) = delete;
  PROGRESS& operator=(const PROGRESS&) = delete;

  // One more document is done; redraws the line when it was last drawn long enough ago.
  void document_done();
  // Takes the line off the terminal, before other text is written to standard error or at
  // the end; the next document_done() draws it again.
  void erase();

  // The line's text after done of total documents in seconds.
  static std::string line(long long done, long long total, double seconds);

 private:
  using CLOCK = std::chrono::steady_clock;
  void draw();

  const long long total;
  const bool shown;
  long long done = 0;
  bool drawn = false;
  CLOCK::time_point start;
  CLOCK::time_point last_drawn;
};
