#include "art/tiff_reader.h"

#include <tiffio.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>
#include <vector>

#include "support/lazy_library.h"

namespace {

constexpr double kCmPerInch = 2.54;

// libtiff's functions, resolved when the first TIFF is read.
struct LIBTIFF {
  LAZY_LIBRARY library{ORMEL_TIFF_SONAME, ORMEL_TIFF_PACKAGE};
  LAZY_FUNCTION(library, TIFFOpenOptionsAlloc);
  LAZY_FUNCTION(library, TIFFOpenOptionsFree);
  LAZY_FUNCTION(library, TIFFOpenOptionsSetErrorHandlerExtR);
  LAZY_FUNCTION(library, TIFFOpenOptionsSetWarningHandlerExtR);
  LAZY_FUNCTION(library, TIFFOpenOptionsSetMaxSingleMemAlloc);
  LAZY_FUNCTION(library, TIFFClientOpenExt);
  LAZY_FUNCTION(library, TIFFClose);
  LAZY_FUNCTION(library, TIFFGetField);
  LAZY_FUNCTION(library, TIFFGetFieldDefaulted);
  LAZY_FUNCTION(library, TIFFIsTiled);
  LAZY_FUNCTION(library, TIFFScanlineSize);
  LAZY_FUNCTION(library, TIFFReadScanline);
  LAZY_FUNCTION(library, TIFFReadRGBAImageOriented);
};

const LIBTIFF& libtiff() {
  static const LIBTIFF functions;
  return functions;
}

// The file's bytes as libtiff's client reads them.
struct MEMORY_FILE {
  std::string_view bytes;
  toff_t at = 0;
};

tmsize_t read_proc(thandle_t handle, void* buffer, tmsize_t size) {
  MEMORY_FILE& file = *static_cast<MEMORY_FILE*>(handle);
  if (size < 0 || file.at >= file.bytes.size()) return 0;
  const size_t n = std::min(static_cast<size_t>(size), file.bytes.size() - file.at);
  std::memcpy(buffer, file.bytes.data() + file.at, n);
  file.at += n;
  return static_cast<tmsize_t>(n);
}

tmsize_t write_proc(thandle_t, void*, tmsize_t) {
  return 0;
}

toff_t seek_proc(thandle_t handle, toff_t offset, int whence) {
  MEMORY_FILE& file = *static_cast<MEMORY_FILE*>(handle);
  const toff_t base = whence == SEEK_CUR ? file.at : whence == SEEK_END ? file.bytes.size() : 0;
  file.at = base + offset;
  return file.at;
}

int close_proc(thandle_t) {
  return 0;
}
toff_t size_proc(thandle_t handle) {
  return static_cast<MEMORY_FILE*>(handle)->bytes.size();
}
int map_proc(thandle_t, void**, toff_t*) {
  return 0;
}
void unmap_proc(thandle_t, void*, toff_t) {}

// libtiff's messages go to the reason rather than to standard error; the first one is kept.
int keep_error(TIFF*, void* user_data, const char* module, const char* format, va_list args) {
  std::string& why = *static_cast<std::string*>(user_data);
  if (!why.empty()) return 1;
  char text[256];
  std::vsnprintf(text, sizeof text, format, args);
  why = std::string("libtiff: ") + (module ? std::string(module) + ": " : "") + text;
  return 1;
}

int ignore_warning(TIFF*, void*, const char*, const char*, va_list) {
  return 1;
}

struct TIFF_CLOSE {
  void operator()(TIFF* tiff) const { libtiff().TIFFClose(tiff); }
};

void read_resolution(TIFF* tiff, RASTER& raster) {
  const LIBTIFF& lib = libtiff();
  float x = 0;
  float y = 0;
  uint16_t unit = RESUNIT_INCH;
  if (!lib.TIFFGetField(tiff, TIFFTAG_XRESOLUTION, &x) ||
      !lib.TIFFGetField(tiff, TIFFTAG_YRESOLUTION, &y))
    return;
  lib.TIFFGetFieldDefaulted(tiff, TIFFTAG_RESOLUTIONUNIT, &unit);
  if (x <= 0 || y <= 0 || unit == RESUNIT_NONE) return;
  const double per_inch = unit == RESUNIT_CENTIMETER ? kCmPerInch : 1.0;
  raster.dpi_x = x * per_inch;
  raster.dpi_y = y * per_inch;
}

// Eight-bit CMYK in one plane, read by scanlines: RGBA reading would convert it.
bool read_cmyk(TIFF* tiff, RASTER& raster) {
  raster.components = 4;
  const size_t row = static_cast<size_t>(raster.width) * 4;
  raster.samples.resize(row * static_cast<size_t>(raster.height));
  if (static_cast<size_t>(libtiff().TIFFScanlineSize(tiff)) != row) return false;
  for (int y = 0; y < raster.height; ++y) {
    if (libtiff().TIFFReadScanline(tiff, &raster.samples[row * static_cast<size_t>(y)],
                                   static_cast<uint32_t>(y), 0) < 0)
      return false;
  }
  return true;
}

// Everything else through RGBA, its alpha (premultiplied or not) composed on white.
bool read_rgba(TIFF* tiff, RASTER& raster, bool gray) {
  const size_t pixels = static_cast<size_t>(raster.width) * static_cast<size_t>(raster.height);
  std::vector<uint32_t> rgba(pixels);
  if (!libtiff().TIFFReadRGBAImageOriented(tiff, static_cast<uint32_t>(raster.width),
                                           static_cast<uint32_t>(raster.height), rgba.data(),
                                           ORIENTATION_TOPLEFT, 0))
    return false;
  uint16_t extra = 0;
  uint16_t* kinds = nullptr;
  libtiff().TIFFGetFieldDefaulted(tiff, TIFFTAG_EXTRASAMPLES, &extra, &kinds);
  const bool premultiplied = extra > 0 && kinds[0] == EXTRASAMPLE_ASSOCALPHA;
  raster.components = gray ? 1 : 3;
  raster.samples.resize(pixels * static_cast<size_t>(raster.components));
  char* out = raster.samples.data();
  for (uint32_t pixel : rgba) {
    const unsigned alpha = TIFFGetA(pixel);
    const unsigned channels[3] = {TIFFGetR(pixel), TIFFGetG(pixel), TIFFGetB(pixel)};
    for (int c = 0; c < raster.components; ++c) {
      const unsigned over = premultiplied ? channels[c] : channels[c] * alpha / 255;
      *out++ = static_cast<char>(over + (255 - alpha));
    }
  }
  return true;
}

}  // namespace

bool is_tiff(std::string_view bytes) {
  return bytes.substr(0, 4) == std::string_view("II*\0", 4) ||
         bytes.substr(0, 4) == std::string_view("MM\0*", 4);
}

std::optional<RASTER> read_tiff(std::string_view bytes, std::string& why) {
  const LIBTIFF& lib = libtiff();
  MEMORY_FILE file{bytes};
  const std::unique_ptr<TIFFOpenOptions, void (*)(TIFFOpenOptions*)> options(
      lib.TIFFOpenOptionsAlloc(), lib.TIFFOpenOptionsFree);
  lib.TIFFOpenOptionsSetErrorHandlerExtR(options.get(), keep_error, &why);
  lib.TIFFOpenOptionsSetWarningHandlerExtR(options.get(), ignore_warning, nullptr);
  // No single buffer larger than the biggest image's pixels: a short file cannot claim more.
  lib.TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), kMaxPixels * 4);
  const std::unique_ptr<TIFF, TIFF_CLOSE> tiff(
      lib.TIFFClientOpenExt("image", "rm", &file, read_proc, write_proc, seek_proc, close_proc,
                            size_proc, map_proc, unmap_proc, options.get()));
  if (!tiff) {
    if (why.empty()) why = "libtiff: cannot open";
    return std::nullopt;
  }
  uint32_t width = 0;
  uint32_t height = 0;
  uint16_t photometric = 0;
  uint16_t bits = 0;
  uint16_t planar = PLANARCONFIG_CONTIG;
  lib.TIFFGetField(tiff.get(), TIFFTAG_IMAGEWIDTH, &width);
  lib.TIFFGetField(tiff.get(), TIFFTAG_IMAGELENGTH, &height);
  lib.TIFFGetField(tiff.get(), TIFFTAG_PHOTOMETRIC, &photometric);
  lib.TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_BITSPERSAMPLE, &bits);
  lib.TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_PLANARCONFIG, &planar);
  if (width == 0 || height == 0 || static_cast<long long>(width) * height > kMaxPixels) {
    why = width == 0 || height == 0 ? "no pixels" : "too many pixels";
    return std::nullopt;
  }
  RASTER raster;
  raster.width = static_cast<int>(width);
  raster.height = static_cast<int>(height);
  read_resolution(tiff.get(), raster);
  const bool cmyk = photometric == PHOTOMETRIC_SEPARATED && bits == 8 &&
                    planar == PLANARCONFIG_CONTIG && !lib.TIFFIsTiled(tiff.get());
  const bool gray = photometric == PHOTOMETRIC_MINISBLACK || photometric == PHOTOMETRIC_MINISWHITE;
  const bool read = cmyk ? read_cmyk(tiff.get(), raster) : read_rgba(tiff.get(), raster, gray);
  if (!read) {
    if (why.empty()) why = "libtiff: cannot read the image";
    return std::nullopt;
  }
  return raster;
}
