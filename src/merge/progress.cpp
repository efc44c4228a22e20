#include "merge/progress.h"

#include <unistd.h>
#include <cstdio>

namespace {

// Redrawn at most four times a second.
constexpr std::chrono::milliseconds kRedrawEvery(250);

// "42 s", "3:07", "1:02:03".
std::string duration(long long seconds) {
  char text[48];
  if (seconds < 60) {
    std::snprintf(text, sizeof text, "%lld s", seconds);
  } else if (seconds < 3600) {
    std::snprintf(text, sizeof text, "%lld:%02lld", seconds / 60, seconds % 60);
  } else {
    std::snprintf(text, sizeof text, "%lld:%02lld:%02lld", seconds / 3600, seconds / 60 % 60,
                  seconds % 60);
  }
  return text;
}

void write_all(const std::string& text) {
  for (size_t written = 0; written < text.size();) {
    const ssize_t n = ::write(STDERR_FILENO, text.data() + written, text.size() - written);
    if (n <= 0) return;  // a progress line is never worth a failure
    written += static_cast<size_t>(n);
  }
}

}  // namespace

PROGRESS::PROGRESS(long long total_documents, bool terminal)
    : total(total_documents), shown(terminal), start(CLOCK::now()), last_drawn(start) {}

std::string PROGRESS::line(long long done, long long total, double seconds) {
  std::string text = "ormel: " + std::to_string(done) + "/" + std::to_string(total) + " documents";
  if (done == 0 || seconds <= 0) return text;
  const double rate = static_cast<double>(done) / seconds;
  char figures[96];
  std::snprintf(figures, sizeof figures, ", %.0f/s, ", rate);
  const double left = static_cast<double>(total - done) / rate;
  return text + figures + duration(static_cast<long long>(left + 0.5)) + " left";
}

void PROGRESS::document_done() {
  ++done;
  if (!shown) return;
  const CLOCK::time_point now = CLOCK::now();
  if (done > 1 && now - last_drawn < kRedrawEvery) return;
  last_drawn = now;
  draw();
}

void PROGRESS::draw() {
  const double seconds = std::chrono::duration<double>(CLOCK::now() - start).count();
  // Back to the line's start, the text, then the rest of the line cleared.
  write_all("\r" + line(done, total, seconds) + "\033[K");
  drawn = true;
}

void PROGRESS::erase() {
  if (!drawn) return;
  write_all("\r\033[K");
  drawn = false;
}
