#include "art/photo.h"

#include "art/jpeg_reader.h"
#include "art/photo_eps.h"
#include "art/png_reader.h"
#include "art/tiff_reader.h"

namespace {

PHOTO_ART finish(const IMAGE_FORM& form, std::string_view data) {
  PHOTO_ART art;
  art.eps = image_eps(form, data);
  art.width = image_points(form.width, form.dpi_x);
  art.height = image_points(form.height, form.dpi_y);
  art.pixels_wide = form.width;
  art.pixels_high = form.height;
  return art;
}

std::optional<PHOTO_ART> jpeg_art(std::string_view bytes, std::string& why) {
  const std::optional<JPEG_HEADER> header = read_jpeg_header(bytes, why);
  if (!header) return std::nullopt;
  IMAGE_FORM form{header->width, header->height,   header->components, header->dpi_x,
                  header->dpi_y, header->inverted, "DCTDecode"};
  return finish(form, bytes);
}

std::optional<PHOTO_ART> raster_art(const std::optional<RASTER>& raster) {
  if (!raster) return std::nullopt;
  IMAGE_FORM form{raster->width, raster->height, raster->components, raster->dpi_x,
                  raster->dpi_y, false,          "FlateDecode"};
  return finish(form, deflate(raster->samples));
}

}  // namespace

const char* photo_type(std::string_view head) {
  if (is_jpeg(head)) return "JPEG";
  if (is_png(head)) return "PNG";
  if (is_tiff(head)) return "TIFF";
  return nullptr;
}

std::optional<PHOTO_ART> photo_art(std::string_view bytes, std::string& why) {
  if (is_jpeg(bytes)) return jpeg_art(bytes, why);
  if (is_png(bytes)) return raster_art(read_png(bytes, why));
  if (is_tiff(bytes)) return raster_art(read_tiff(bytes, why));
  why = "not a JPEG, PNG or TIFF file";
  return std::nullopt;
}
