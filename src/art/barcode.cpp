#include "art/barcode.h"

#include <zint.h>

#include <cmath>
#include <cstdio>
#include <memory>

#include "support/escapes.h"
#include "support/lazy_library.h"

namespace {

constexpr double kPointsPerMm = 72.0 / 25.4;
// libzint's vector output measures two units to a module.
constexpr double kUnitsPerModule = 2.0;
// More than any symbology here holds (a QR code: 7,089 digits).
constexpr size_t kMaxData = 8000;

// EAN and UPC at 100 % (0.33 mm) may shrink to 80 %; the others' sizes are those GS1 gives
// for logistics and for two-dimensional symbols read by scanners.
constexpr BARCODE_KIND kKinds[] = {
    {"ean13", BARCODE_EANX, 12, 13, 0.33, 0.264},
    {"ean8", BARCODE_EANX, 7, 8, 0.33, 0.264},
    {"upca", BARCODE_UPCA, 11, 12, 0.33, 0.264},
    {"upce", BARCODE_UPCE, 6, 8, 0.33, 0.264},
    {"code128", BARCODE_CODE128, 0, 0, 0.33, 0.25},
    {"gs1-128", BARCODE_GS1_128, 0, 0, 0.495, 0.495},
    {"itf14", BARCODE_ITF14, 13, 14, 0.635, 0.495},
    {"qr", BARCODE_QRCODE, 0, 0, 0.5, 0.255},
    {"datamatrix", BARCODE_DATAMATRIX, 0, 0, 0.5, 0.255},
};

// libzint's functions, resolved when the first barcode is made.
struct LIBZINT {
  LAZY_LIBRARY library{ORMEL_ZINT_SONAME, ORMEL_ZINT_PACKAGE};
  LAZY_FUNCTION(library, ZBarcode_Create);
  LAZY_FUNCTION(library, ZBarcode_Delete);
  LAZY_FUNCTION(library, ZBarcode_Encode_and_Buffer_Vector);
};

const LIBZINT& libzint() {
  static const LIBZINT functions;
  return functions;
}

struct SYMBOL_DELETE {
  void operator()(zint_symbol* symbol) const { libzint().ZBarcode_Delete(symbol); }
};
using SYMBOL = std::unique_ptr<zint_symbol, SYMBOL_DELETE>;

bool all_digits(std::string_view data) {
  for (char c : data) {
    if (c < '0' || c > '9') return false;
  }
  return !data.empty();
}

// The GS1 check digit of the digits before it: weights 3 and 1 from the right.
char gs1_check_digit(std::string_view digits) {
  int sum = 0;
  int weight = 3;
  for (size_t i = digits.size(); i-- > 0;) {
    sum += (digits[i] - '0') * weight;
    weight = 4 - weight;
  }
  return static_cast<char>('0' + (10 - sum % 10) % 10);
}

// Checks what the library does not: the number of digits (it pads a short number with
// zeros, and reads eight digits as a short EAN-13), and an ITF-14's given check digit (it
// takes thirteen digits only). Sets data to what the library is to encode.
bool check_digits(const BARCODE_KIND& kind, std::string_view& data, std::string& why) {
  if (kind.max_digits == 0 || !all_digits(data)) return true;
  if (data.size() < kind.min_digits || data.size() > kind.max_digits) {
    char text[120];
    std::snprintf(text, sizeof text, "%zu digits; %s takes %zu to %zu", data.size(), kind.name,
                  kind.min_digits, kind.max_digits);
    why = text;
    return false;
  }
  if (kind.symbology == BARCODE_ITF14 && data.size() == kind.max_digits) {
    const char expected = gs1_check_digit(data.substr(0, data.size() - 1));
    if (data.back() != expected) {
      why = std::string("invalid check digit '") + data.back() + "', expecting '" + expected + "'";
      return false;
    }
    data.remove_suffix(1);
  }
  return true;
}

void configure(zint_symbol& symbol, const BARCODE_KIND& kind, std::string_view data) {
  symbol.symbology = kind.symbology;
  // An EAN-8 given with its check digit is checked by the library only in this form.
  if (kind.symbology == BARCODE_EANX && kind.max_digits == 8 && data.size() == 8) {
    symbol.symbology = BARCODE_EANX_CHK;
  }
  if (kind.symbology == BARCODE_GS1_128) symbol.input_mode = GS1_MODE;
  // Quiet zones belong to the art, so that fitting keeps them; heights are the standards'.
  symbol.output_options = BARCODE_QUIET_ZONES | COMPLIANT_HEIGHT;
  // A warning (a GS1 check digit, a height) is data the symbology cannot hold as given.
  symbol.warn_level = WARN_FAIL_ALL;
}

// Fixed-point, without trailing zeros: libzint's coordinates are multiples of a tenth of a
// unit or so, the scale and the box need more.
std::string number(double value, int decimals = 3) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", decimals, value);
  std::string written(text);
  written.erase(written.find_last_not_of('0') + 1);
  if (written.back() == '.') written.pop_back();
  return written == "-0" ? "0" : written;
}

// libzint measures from the top down; PostScript from the bottom up.
void draw_bars(const zint_vector& vector, std::string& ps) {
  for (const zint_vector_rect* r = vector.rectangles; r; r = r->next) {
    ps += number(r->x) + ' ' + number(vector.height - r->y - r->height) + ' ' + number(r->width) +
          ' ' + number(r->height) + " rectfill\n";
  }
}

// libzint gives the text in UTF-8; the font draws ISO Latin-1, in which a character beyond
// it is a question mark.
std::string latin1(std::string_view utf8) {
  std::string text;
  for (size_t i = 0; i < utf8.size(); ++i) {
    const unsigned char byte = static_cast<unsigned char>(utf8[i]);
    if (byte < 0x80) {
      text += static_cast<char>(byte);
    } else if ((byte & 0xE0) == 0xC0 && i + 1 < utf8.size()) {
      const unsigned code = (byte & 0x1Fu) << 6 | (static_cast<unsigned char>(utf8[++i]) & 0x3Fu);
      text += code < 0x100 ? static_cast<char>(code) : '?';
    } else if ((byte & 0xC0) != 0x80) {
      text += '?';
    }
  }
  return text;
}

bool all_ascii(const zint_vector& vector) {
  for (const zint_vector_string* s = vector.strings; s; s = s->next) {
    for (int i = 0; i < s->length; ++i) {
      if (s->text[i] >= 0x80) return false;
    }
  }
  return true;
}

// Helvetica, one of the fonts every PostScript printer has; re-encoded in ISO Latin-1 only
// when a text needs more than ASCII, whose codes the standard encoding shares.
std::string text_font(const zint_vector& vector) {
  if (all_ascii(vector)) return "/Helvetica findfont";
  return "/Helvetica findfont dup length dict begin { 1 index /FID ne { def } { pop pop } "
         "ifelse } forall /Encoding ISOLatin1Encoding def currentdict end "
         "/Helvetica-ISOLatin1 exch definefont";
}

void draw_text(const zint_vector& vector, std::string& ps) {
  if (!vector.strings) return;
  ps += text_font(vector) + "\n";
  float size = 0;
  for (const zint_vector_string* s = vector.strings; s; s = s->next) {
    if (s->fsize != size) {
      size = s->fsize;
      ps += "dup " + number(size) + " scalefont setfont\n";
    }
    const std::string text = latin1(
        std::string_view(reinterpret_cast<const char*>(s->text), static_cast<size_t>(s->length)));
    ps += number(s->x) + ' ' + number(vector.height - s->y) + " moveto (" +
          ps_string_escape(text, true) + ")";
    if (s->halign == 0) ps += " dup stringwidth pop 2 div neg 0 rmoveto";
    if (s->halign == 2) ps += " dup stringwidth pop neg 0 rmoveto";
    ps += " show\n";
  }
  ps += "pop\n";
}

BARCODE_ART write_eps(const BARCODE_KIND& kind, const zint_vector& vector) {
  const double unit = kind.module_mm * kPointsPerMm / kUnitsPerModule;
  BARCODE_ART art;
  art.width = vector.width * unit;
  art.height = vector.height * unit;
  std::string& ps = art.eps;
  ps = "%!PS-Adobe-3.0 EPSF-3.0\n%%Creator: ormel\n%%Title: " + std::string(kind.name) + "\n";
  ps += "%%BoundingBox: 0 0 " + number(std::ceil(art.width)) + ' ' + number(std::ceil(art.height)) +
        '\n';
  ps += "%%HiResBoundingBox: 0 0 " + number(art.width, 6) + ' ' + number(art.height, 6) + '\n';
  ps += "%%LanguageLevel: 2\n";
  if (vector.strings) ps += "%%DocumentNeededResources: font Helvetica\n";
  ps += "%%EndComments\ngsave\n" + number(unit, 6) + ' ' + number(unit, 6) + " scale\n";
  ps += "0 0 0 1 setcmykcolor\n";
  draw_bars(vector, ps);
  draw_text(vector, ps);
  ps += "grestore\n%%EOF\n";
  return art;
}

}  // namespace

const BARCODE_KIND* barcode_kind(std::string_view name) {
  for (const BARCODE_KIND& kind : kKinds) {
    if (name == kind.name) return &kind;
  }
  return nullptr;
}

std::string barcode_kind_names() {
  std::string names;
  for (const BARCODE_KIND& kind : kKinds) {
    if (!names.empty()) names += ", ";
    names += kind.name;
  }
  return names;
}

std::optional<BARCODE_ART> encode_barcode(const BARCODE_KIND& kind, std::string_view data,
                                          std::string& why) {
  if (data.size() > kMaxData) {
    why = "data too long";
    return std::nullopt;
  }
  if (!check_digits(kind, data, why)) return std::nullopt;
  const SYMBOL symbol(libzint().ZBarcode_Create());
  if (!symbol) {
    why = "out of memory";
    return std::nullopt;
  }
  configure(*symbol, kind, data);
  const int status = libzint().ZBarcode_Encode_and_Buffer_Vector(
      symbol.get(), reinterpret_cast<const unsigned char*>(data.data()),
      static_cast<int>(data.size()), 0);
  if (status != 0 || !symbol->vector) {
    why = symbol->errtxt;
    return std::nullopt;
  }
  return write_eps(kind, *symbol->vector);
}
