#include "document/text_encoding.h"

#include <string_view>

#include "document/ai_document.h"

namespace {

constexpr std::string_view kVectorStart = "39/quotesingle 96/grave ";

}  // namespace

const char* template_text_encoding(const AI_DOCUMENT& doc, const char** why) {
  const char* reason = "the template's setup section names no Windows font vector";
  if (why) *why = reason;
  const AI_SETUP& setup = doc.get_script()->setup_section;
  for (int i = setup.first_line; i <= setup.last_line; ++i) {
    std::string_view line = doc.text().line(i);
    if (line.substr(0, kVectorStart.size()) != kVectorStart) continue;
    line.remove_prefix(kVectorStart.size());
    for (std::string_view windows : {"128/Euro", "130/quotesinglbase"}) {
      if (line.substr(0, windows.size()) != windows) continue;
      if (why) *why = "the template's fonts use the Windows font vector";
      return "WINDOWS-1252";
    }
    break;
  }
  return "MACINTOSH";
}
