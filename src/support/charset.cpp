#include "support/charset.h"

#include <cerrno>

#include "support/error.h"

namespace {

const iconv_t kNoConversion = reinterpret_cast<iconv_t>(-1);
constexpr size_t kFailed = static_cast<size_t>(-1);

bool is_ascii(std::string_view text) {
  for (char c : text) {
    if (static_cast<unsigned char>(c) >= 0x80) return false;
  }
  return true;
}

// One call of iconv that appends to out, with room for the most that what is left can
// become; 0 when it converted everything, else iconv's errno.
int iconv_append(iconv_t cd, char** in, size_t* in_left, std::string& out) {
  const size_t used = out.size();
  out.resize(used + *in_left * 4 + 16);
  char* out_next = &out[used];
  size_t out_left = out.size() - used;
  const size_t result = iconv(cd, in, in_left, &out_next, &out_left);
  const int error = errno;
  out.resize(out.size() - out_left);
  return result != kFailed ? 0 : error;
}

}  // namespace

CHARSET::CHARSET(std::string name) : encoding(std::move(name)), cd(kNoConversion) {
  // Only the bare name, or the name with the "//" that "iconv --list" prints, is opened.
  const size_t slash = encoding.find('/');
  const bool bare =
      slash == std::string::npos || encoding.compare(slash, std::string::npos, "//") == 0;
  if (!bare && slash > 0 && encoding.compare(slash, 2, "//") == 0) {
    fail("encoding \"%s\" has a suffix; give the name alone\n", encoding.c_str());
  }
  // iconv takes an empty name for the locale's encoding, which a batch run must not depend on.
  if (bare && slash != 0 && !encoding.empty()) cd = iconv_open(encoding.c_str(), "UTF-8");
  if (cd == kNoConversion) fail("unknown encoding \"%s\"\n", encoding.c_str());
  std::string ascii;
  for (int c = 1; c < 0x80; ++c) ascii += static_cast<char>(c);
  std::string converted;
  ascii_as_is = convert(ascii, converted) == std::string_view::npos && converted == ascii;
}

CHARSET::~CHARSET() {
  iconv_close(cd);
}

size_t CHARSET::convert(std::string_view utf8, std::string& out) {
  if (ascii_as_is && is_ascii(utf8)) {
    out += utf8;
    return std::string_view::npos;
  }
  iconv(cd, nullptr, nullptr, nullptr, nullptr);
  size_t converted = 0;
  if (!convert_all(utf8.data(), utf8.size(), &converted, out)) return converted;
  // A stateful encoding returns to its initial state at the end of every text.
  convert_all(nullptr, 0, &converted, out);
  return std::string_view::npos;
}

// Converts in[0, in_size) (or, with in null, writes the return to the initial state),
// growing out as needed. Returns false at a character without a code, with *converted the
// number of input bytes converted before it.
bool CHARSET::convert_all(const char* in, size_t in_size, size_t* converted, std::string& out) {
  char* in_next = const_cast<char*>(in);
  size_t in_left = in_size;
  for (;;) {
    const int error = iconv_append(cd, in ? &in_next : nullptr, &in_left, out);
    if (in) *converted = in_size - in_left;
    if (error == 0) return true;
    if (error != E2BIG) return false;
  }
}

UTF8_FROM::UTF8_FROM(const std::string& name) {
  // The name has passed CHARSET's checks when the tables were read.
  cd = iconv_open("UTF-8", name.c_str());
  if (cd == kNoConversion) fail("unknown encoding \"%s\"\n", name.c_str());
}

UTF8_FROM::~UTF8_FROM() {
  iconv_close(cd);
}

std::string UTF8_FROM::convert(std::string_view text) {
  std::string out;
  iconv(cd, nullptr, nullptr, nullptr, nullptr);
  char* in_next = const_cast<char*>(text.data());
  size_t in_left = text.size();
  while (in_left > 0) {
    const int error = iconv_append(cd, &in_next, &in_left, out);
    if (error == 0 || error == E2BIG) continue;
    out += '_';
    ++in_next;
    --in_left;
  }
  return out;
}
