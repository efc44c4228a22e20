#include "art/jpeg_reader.h"

// libjpeg's header needs the standard types first.
#include <cstddef>
#include <cstdio>
// clang-format off
#include <jpeglib.h>
// clang-format on

#include <csetjmp>
#include <cstdint>

#include "support/lazy_library.h"

namespace {

constexpr int kInchesUnit = 2;  // TIFF's ResolutionUnit: 2 inch, 3 centimetre
constexpr double kCmPerInch = 2.54;

// libjpeg's functions, resolved when the first JPEG is read.
struct LIBJPEG {
  LAZY_LIBRARY library{ORMEL_JPEG_SONAME, ORMEL_JPEG_PACKAGE};
  LAZY_FUNCTION(library, jpeg_std_error);
  LAZY_FUNCTION(library, jpeg_CreateDecompress);
  LAZY_FUNCTION(library, jpeg_destroy_decompress);
  LAZY_FUNCTION(library, jpeg_mem_src);
  LAZY_FUNCTION(library, jpeg_save_markers);
  LAZY_FUNCTION(library, jpeg_read_header);
};

const LIBJPEG& libjpeg() {
  static const LIBJPEG functions;
  return functions;
}

// libjpeg ends on an error by calling error_exit, which must not return: it jumps back to
// read_jpeg_header with the message, across libjpeg's own frames only.
struct ERROR_MANAGER {
  jpeg_error_mgr base;
  std::jmp_buf back;
  char message[JMSG_LENGTH_MAX];
};

void error_exit(j_common_ptr info) {
  ERROR_MANAGER* manager = reinterpret_cast<ERROR_MANAGER*>(info->err);
  (*info->err->format_message)(info, manager->message);
  std::longjmp(manager->back, 1);
}

struct TIFF_BYTES {
  std::string_view bytes;
  bool little;
  bool has(size_t at, size_t size) const { return at <= bytes.size() && size <= bytes.size() - at; }
  uint32_t read(size_t at, size_t size) const {
    uint32_t value = 0;
    for (size_t i = 0; i < size; ++i) {
      const size_t byte = little ? at + size - 1 - i : at + i;
      value = value << 8 | static_cast<unsigned char>(bytes[byte]);
    }
    return value;
  }
  // A RATIONAL entry's value, which stands at the offset the entry holds.
  double rational(size_t entry) const {
    const size_t at = read(entry + 8, 4);
    if (!has(at, 8) || read(at + 4, 4) == 0) return 0;
    return static_cast<double>(read(at, 4)) / read(at + 4, 4);
  }
};

void jfif_resolution(const jpeg_decompress_struct& info, JPEG_HEADER& header) {
  if (!info.saw_JFIF_marker || info.density_unit == 0) return;
  const double per_inch = info.density_unit == 1 ? 1.0 : kCmPerInch;
  header.dpi_x = info.X_density * per_inch;
  header.dpi_y = info.Y_density * per_inch;
}

void read_exif(const jpeg_decompress_struct& info, JPEG_HEADER& header) {
  static constexpr char kExif[] = "Exif\0\0";
  for (jpeg_saved_marker_ptr m = info.marker_list; m; m = m->next) {
    const std::string_view data(reinterpret_cast<const char*>(m->data), m->data_length);
    if (m->marker == JPEG_APP0 + 1 && data.substr(0, 6) == std::string_view(kExif, 6)) {
      exif_resolution(data.substr(6), header.dpi_x, header.dpi_y);
      return;
    }
  }
}

}  // namespace

bool is_jpeg(std::string_view bytes) {
  return bytes.substr(0, 3) == "\xFF\xD8\xFF";
}

bool exif_resolution(std::string_view tiff, double& dpi_x, double& dpi_y) {
  if (tiff.size() < 8 || (tiff.substr(0, 2) != "II" && tiff.substr(0, 2) != "MM")) return false;
  const TIFF_BYTES t{tiff, tiff[0] == 'I'};
  const size_t directory = t.read(4, 4);
  if (!t.has(directory, 2)) return false;
  const size_t count = t.read(directory, 2);
  double x = 0;
  double y = 0;
  uint32_t unit = kInchesUnit;
  for (size_t i = 0; i < count && t.has(directory + 2 + i * 12, 12); ++i) {
    const size_t entry = directory + 2 + i * 12;
    const uint32_t tag = t.read(entry, 2);
    if (tag == 0x011A) x = t.rational(entry);
    if (tag == 0x011B) y = t.rational(entry);
    if (tag == 0x0128) unit = t.read(entry + 8, 2);
  }
  if (x <= 0 || y <= 0 || (unit != kInchesUnit && unit != 3)) return false;
  const double per_inch = unit == kInchesUnit ? 1.0 : kCmPerInch;
  dpi_x = x * per_inch;
  dpi_y = y * per_inch;
  return true;
}

std::optional<JPEG_HEADER> read_jpeg_header(std::string_view bytes, std::string& why) {
  jpeg_decompress_struct info;
  ERROR_MANAGER errors;
  const LIBJPEG& jpeg = libjpeg();
  info.err = jpeg.jpeg_std_error(&errors.base);
  errors.base.error_exit = error_exit;
  // Warnings (data cut short) would go to standard error; the DCT filter meets them later.
  errors.base.output_message = [](j_common_ptr) {};
  // What jpeg_create_decompress stands for: the version and size the caller was built with.
  jpeg.jpeg_CreateDecompress(&info, JPEG_LIB_VERSION, sizeof(jpeg_decompress_struct));
  if (setjmp(errors.back)) {
    why = std::string("libjpeg: ") + errors.message;
    jpeg.jpeg_destroy_decompress(&info);
    return std::nullopt;
  }
  jpeg.jpeg_mem_src(&info, reinterpret_cast<const unsigned char*>(bytes.data()),
                    static_cast<unsigned long>(bytes.size()));
  jpeg.jpeg_save_markers(&info, JPEG_APP0 + 1, 0xFFFF);
  jpeg.jpeg_read_header(&info, TRUE);
  JPEG_HEADER header;
  header.width = static_cast<int>(info.image_width);
  header.height = static_cast<int>(info.image_height);
  header.components = info.num_components;
  header.inverted = info.saw_Adobe_marker && info.num_components == 4;
  const bool eight_bits = info.data_precision == 8;
  jfif_resolution(info, header);
  if (header.dpi_x == 0) read_exif(info, header);
  jpeg.jpeg_destroy_decompress(&info);
  // PostScript's DCT filter reads eight-bit samples only.
  if (!eight_bits) {
    why = "a JPEG of twelve-bit samples";
    return std::nullopt;
  }
  if (header.components != 1 && header.components != 3 && header.components != 4) {
    why = "a JPEG of " + std::to_string(header.components) + " components";
    return std::nullopt;
  }
  return header;
}
