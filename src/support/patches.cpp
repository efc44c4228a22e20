#include "support/patches.h"

#include <algorithm>

#include "support/output.h"

void PATCHES::replace(std::string_view range, std::string bytes) {
  patches.push_back({range, std::move(bytes), {}});
}

void PATCHES::replace_by_view(std::string_view range, std::string_view bytes) {
  patches.push_back({range, {}, bytes});
}

// Patches at the same place go out in the order they were made.
void PATCHES::write(std::string_view text, Output& out) {
  std::stable_sort(patches.begin(), patches.end(),
                   [](const PATCH& a, const PATCH& b) { return a.range.data() < b.range.data(); });
  const char* at = text.data();
  for (const PATCH& patch : patches) {
    if (patch.range.data() < at) continue;  // overlaps the one before: not to be written twice
    out.write_kept(std::string_view(at, static_cast<size_t>(patch.range.data() - at)));
    out.write(patch.owned.empty() ? patch.bytes : std::string_view(patch.owned));
    at = patch.range.data() + patch.range.size();
  }
  out.write_kept(std::string_view(at, static_cast<size_t>(text.data() + text.size() - at)));
}
