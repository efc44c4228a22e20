// The print checks of "-report": whether new art, as fitted into its frame, will print as it
// should. A barcode's module must not shrink below its symbology's smallest (EAN and UPC: 80 %
// of their nominal size), and its quiet zones, part of its art, must stay inside the frame;
// a photo must keep 150 pixels an inch on the page.
#pragma once

#include <string>

#include "placed/art_source.h"
#include "placed/op_bquote.h"

// What the checks find of art placed by placement (its matrix and box) where frame stood
// before; empty when it prints well. Each finding begins "; print check: ".
std::string print_checks(const NEW_ART& art, const OP_BQUOTE& frame, const OP_BQUOTE& placement);
