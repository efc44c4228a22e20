// PNG files decoded by libpng: any depth, gray or colour, palette or not; alpha is
// flattened on white, sixteen-bit samples are brought to eight, and the resolution is
// that of the pHYs chunk.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "art/raster.h"

// Whether the bytes begin with PNG's signature.
bool is_png(std::string_view bytes);
// The image of a PNG file's bytes; nothing, with the reason in why, when it cannot be read.
std::optional<RASTER> read_png(std::string_view bytes, std::string& why);
