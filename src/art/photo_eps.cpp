#include "art/photo_eps.h"

#include <zlib.h>

#include <cmath>
#include <cstdio>

#include "support/error.h"

namespace {

constexpr double kDefaultDpi = 72;
constexpr size_t kLineLength = 75;

std::string number(double value) {
  char text[64];
  std::snprintf(text, sizeof text, "%.6f", value);
  std::string written(text);
  written.erase(written.find_last_not_of('0') + 1);
  if (written.back() == '.') written.pop_back();
  return written;
}

const char* colour_space(int components) {
  return components == 1 ? "/DeviceGray" : components == 3 ? "/DeviceRGB" : "/DeviceCMYK";
}

std::string decode_array(const IMAGE_FORM& form) {
  std::string decode;
  for (int i = 0; i < form.components; ++i) decode += form.inverted ? " 1 0" : " 0 1";
  return "[" + decode.substr(1) + "]";
}

}  // namespace

double image_points(int pixels, double dpi) {
  return pixels * 72.0 / (dpi > 0 ? dpi : kDefaultDpi);
}

// The image and the flushing of what its filter left of the data run as one procedure,
// so that nothing after the image operator is read from the data.
std::string image_eps(const IMAGE_FORM& form, std::string_view data) {
  const double width = image_points(form.width, form.dpi_x);
  const double height = image_points(form.height, form.dpi_y);
  const bool flate = std::string_view(form.filter) == "FlateDecode";
  const std::string w = std::to_string(form.width);
  const std::string h = std::to_string(form.height);
  std::string eps = "%!PS-Adobe-3.0 EPSF-3.0\n%%Creator: ormel\n";
  eps += "%%BoundingBox: 0 0 " + number(std::ceil(width)) + ' ' + number(std::ceil(height)) + '\n';
  eps += "%%HiResBoundingBox: 0 0 " + number(width) + ' ' + number(height) + '\n';
  eps += flate ? "%%LanguageLevel: 3\n" : "%%LanguageLevel: 2\n";
  eps += "%%EndComments\ngsave\n" + number(width) + ' ' + number(height) + " scale\n";
  eps += std::string(colour_space(form.components)) + " setcolorspace\n";
  eps += "currentfile /ASCII85Decode filter dup /" + std::string(form.filter) + " filter\n";
  eps += "<< /ImageType 1 /Width " + w + " /Height " + h + " /BitsPerComponent 8 /Decode " +
         decode_array(form) + " /ImageMatrix [" + w + " 0 0 -" + h + " 0 " + h + "] >>\n";
  eps += "dup /DataSource 3 index put\n{ image pop flushfile } exec\n";
  eps += ascii85(data);
  eps += "\ngrestore\n%%EOF\n";
  return eps;
}

std::string ascii85(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size() / 4 * 5 + bytes.size() / 60 + 8);
  size_t column = 0;
  auto put = [&](char c) {
    if (column == kLineLength) {
      out += '\n';
      column = 0;
    }
    // A line that began with "%" would read as a comment to document managers.
    if (column == 0 && c == '%') {
      out += ' ';
      ++column;
    }
    out += c;
    ++column;
  };
  for (size_t i = 0; i < bytes.size(); i += 4) {
    const size_t n = std::min<size_t>(4, bytes.size() - i);
    uint32_t group = 0;
    for (size_t k = 0; k < 4; ++k) {
      group = group << 8 | (k < n ? static_cast<unsigned char>(bytes[i + k]) : 0u);
    }
    if (group == 0 && n == 4) {
      put('z');
      continue;
    }
    char digits[5];
    for (int k = 4; k >= 0; --k) {
      digits[k] = static_cast<char>('!' + group % 85);
      group /= 85;
    }
    for (size_t k = 0; k < n + 1; ++k) put(digits[k]);
  }
  put('~');
  put('>');
  return out;
}

std::string deflate(std::string_view bytes) {
  uLongf size = compressBound(static_cast<uLong>(bytes.size()));
  std::string out(size, '\0');
  if (compress2(reinterpret_cast<Bytef*>(out.data()), &size,
                reinterpret_cast<const Bytef*>(bytes.data()), static_cast<uLong>(bytes.size()),
                Z_DEFAULT_COMPRESSION) != Z_OK) {
    fail("zlib: cannot compress %zu bytes\n", bytes.size());
  }
  out.resize(size);
  return out;
}
