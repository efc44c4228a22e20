// TIFF files decoded by libtiff, from memory: eight- and sixteen-bit gray, RGB, CMYK and
// palette images, in strips or tiles, any compression libtiff reads. CMYK stays CMYK; the
// others come through libtiff's RGBA reading, their alpha flattened on white, and gray stays
// gray. The resolution is that of the XResolution, YResolution and ResolutionUnit tags.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "art/raster.h"

bool is_tiff(std::string_view bytes);
// The first image of a TIFF file's bytes; nothing, with the reason in why, when it cannot be
// read.
std::optional<RASTER> read_tiff(std::string_view bytes, std::string& why);
