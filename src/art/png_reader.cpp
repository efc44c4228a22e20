#include "art/png_reader.h"

#include <png.h>

#include <csetjmp>
#include <cstring>
#include <vector>

#include "support/lazy_library.h"

namespace {

constexpr char kSignature[] = "\x89PNG\r\n\x1a\n";
constexpr size_t kSignatureSize = 8;
constexpr double kMetresPerInch = 0.0254;

// libpng's functions, resolved when the first PNG is read.
struct LIBPNG {
  LAZY_LIBRARY library{ORMEL_PNG_SONAME, ORMEL_PNG_PACKAGE};
  LAZY_FUNCTION(library, png_create_read_struct);
  LAZY_FUNCTION(library, png_create_info_struct);
  LAZY_FUNCTION(library, png_destroy_read_struct);
  LAZY_FUNCTION(library, png_set_longjmp_fn);
  LAZY_FUNCTION(library, png_longjmp);
  LAZY_FUNCTION(library, png_error);
  LAZY_FUNCTION(library, png_get_error_ptr);
  LAZY_FUNCTION(library, png_get_io_ptr);
  LAZY_FUNCTION(library, png_set_read_fn);
  LAZY_FUNCTION(library, png_read_info);
  LAZY_FUNCTION(library, png_set_expand);
  LAZY_FUNCTION(library, png_set_strip_16);
  LAZY_FUNCTION(library, png_set_add_alpha);
  LAZY_FUNCTION(library, png_set_interlace_handling);
  LAZY_FUNCTION(library, png_read_update_info);
  LAZY_FUNCTION(library, png_get_image_width);
  LAZY_FUNCTION(library, png_get_image_height);
  LAZY_FUNCTION(library, png_get_color_type);
  LAZY_FUNCTION(library, png_get_rowbytes);
  LAZY_FUNCTION(library, png_read_image);
  LAZY_FUNCTION(library, png_get_pHYs);
};

const LIBPNG& libpng() {
  static const LIBPNG functions;
  return functions;
}

struct MEMORY {
  std::string_view bytes;
  size_t at = 0;
};

// libpng ends on an error by a jump to the setjmp of read_png, across its own frames only;
// the message is kept for the reason.
void on_error(png_structp png, png_const_charp message) {
  std::string& why = *static_cast<std::string*>(libpng().png_get_error_ptr(png));
  why = std::string("libpng: ") + message;
  libpng().png_longjmp(png, 1);
}

void on_warning(png_structp, png_const_charp) {}

void read_bytes(png_structp png, png_bytep out, size_t size) {
  MEMORY& memory = *static_cast<MEMORY*>(libpng().png_get_io_ptr(png));
  if (size > memory.bytes.size() - memory.at) libpng().png_error(png, "file cut short");
  std::memcpy(out, memory.bytes.data() + memory.at, size);
  memory.at += size;
}

// Samples of eight bits with alpha last, whatever the file holds: palettes and small
// depths expanded, sixteen bits cut to their high byte, an alpha channel added.
void ask_eight_bits_with_alpha(png_structp png, png_infop info) {
  const LIBPNG& lib = libpng();
  lib.png_set_expand(png);
  lib.png_set_strip_16(png);
  lib.png_set_add_alpha(png, 0xFF, PNG_FILLER_AFTER);
  lib.png_set_interlace_handling(png);
  lib.png_read_update_info(png, info);
}

// Each pixel over white: colour times alpha plus white times what alpha leaves.
void flatten_on_white(const std::vector<png_byte>& rgba, int colours, RASTER& raster) {
  raster.samples.resize(rgba.size() / static_cast<size_t>(colours + 1) *
                        static_cast<size_t>(colours));
  char* out = raster.samples.data();
  for (size_t i = 0; i < rgba.size(); i += static_cast<size_t>(colours + 1)) {
    const unsigned alpha = rgba[i + static_cast<size_t>(colours)];
    for (int c = 0; c < colours; ++c) {
      const unsigned value = rgba[i + static_cast<size_t>(c)];
      *out++ = static_cast<char>((value * alpha + 255 * (255 - alpha) + 127) / 255);
    }
  }
}

void read_resolution(png_structp png, png_infop info, RASTER& raster) {
  png_uint_32 x = 0;
  png_uint_32 y = 0;
  int unit = 0;
  if (libpng().png_get_pHYs(png, info, &x, &y, &unit) && unit == PNG_RESOLUTION_METER && x && y) {
    raster.dpi_x = x * kMetresPerInch;
    raster.dpi_y = y * kMetresPerInch;
  }
}

// The decoding, guarded by libpng's jump: no object of this function lives across it.
bool decode(png_structp png, png_infop info, MEMORY& memory, RASTER& raster,
            std::vector<png_byte>& rgba, std::vector<png_bytep>& rows) {
  const LIBPNG& lib = libpng();
  // What png_jmpbuf stands for: the jump buffer, of the size the caller was built with.
  if (setjmp(*lib.png_set_longjmp_fn(png, longjmp, sizeof(jmp_buf)))) return false;
  lib.png_set_read_fn(png, &memory, read_bytes);
  lib.png_read_info(png, info);
  const png_uint_32 width = lib.png_get_image_width(png, info);
  const png_uint_32 height = lib.png_get_image_height(png, info);
  if (static_cast<long long>(width) * height > kMaxPixels) lib.png_error(png, "too many pixels");
  raster.components = lib.png_get_color_type(png, info) & PNG_COLOR_MASK_COLOR ? 3 : 1;
  ask_eight_bits_with_alpha(png, info);
  raster.width = static_cast<int>(width);
  raster.height = static_cast<int>(height);
  const size_t row_bytes = lib.png_get_rowbytes(png, info);
  if (row_bytes != static_cast<size_t>(width) * static_cast<size_t>(raster.components + 1)) {
    lib.png_error(png, "unexpected row size");
  }
  rgba.resize(row_bytes * height);
  rows.resize(height);
  for (png_uint_32 y = 0; y < height; ++y) rows[y] = &rgba[row_bytes * y];
  lib.png_read_image(png, rows.data());
  read_resolution(png, info, raster);
  return true;
}

}  // namespace

bool is_png(std::string_view bytes) {
  return bytes.substr(0, kSignatureSize) == std::string_view(kSignature, kSignatureSize);
}

std::optional<RASTER> read_png(std::string_view bytes, std::string& why) {
  const LIBPNG& lib = libpng();
  png_structp png = lib.png_create_read_struct(PNG_LIBPNG_VER_STRING, &why, on_error, on_warning);
  png_infop info = png ? lib.png_create_info_struct(png) : nullptr;
  if (!info) {
    lib.png_destroy_read_struct(&png, nullptr, nullptr);
    why = "libpng: out of memory";
    return std::nullopt;
  }
  MEMORY memory{bytes};
  RASTER raster;
  std::vector<png_byte> rgba;
  std::vector<png_bytep> rows;
  const bool read = decode(png, info, memory, raster, rgba, rows);
  lib.png_destroy_read_struct(&png, &info, nullptr);
  if (!read) return std::nullopt;
  flatten_on_white(rgba, raster.components, raster);
  return raster;
}
