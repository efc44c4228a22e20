// Ranges of a text replaced by new bytes while the text is written: how "-keep" rewrites
// only the bytes that a replacement changes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

class Output;

class PATCHES {
 public:
  // range is a part of the text that write() is given; ranges must not overlap.
  void replace(std::string_view range, std::string bytes);
  // The same with bytes that stay valid until write() returns.
  void replace_by_view(std::string_view range, std::string_view bytes);
  bool empty() const { return patches.empty(); }
  // Writes text with every patch applied; text's own bytes go out by reference.
  void write(std::string_view text, Output& out);

 private:
  struct PATCH {
    std::string_view range;
    std::string owned;
    std::string_view bytes;
  };
  std::vector<PATCH> patches;
};
