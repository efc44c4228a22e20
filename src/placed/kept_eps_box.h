// How "-keep" finds the box an EPS file is fitted by. Its high-resolution bounding box, as
// the default output reads it, when it has one; else its %%BoundingBox, the only box most
// EPS writers before 2000, barcode tools and dvips give. When neither serves, the reason:
// the file is missing, cannot be read (the system's words), is no EPS file or has no box.
#pragma once

#include <optional>
#include <string>

#include "placed/epsf_info.h"

std::optional<EPS_BBOX> kept_eps_box(const std::string& path, std::string& why);
