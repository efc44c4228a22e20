// The replaceable part of a placed-art block: its placement, parsed from the block's words,
// pointed at the EPS file a table cell names and fitted into the old frame, and written
// back as the block's six lines.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

#include "placed/kept_placed_art.h"
#include "placed/op_bquote.h"
#include "support/analysed_state.h"

class ART_SOURCE;
class Output;
class REPORT;
class STACK;
class TAB_TEXT;
class TEMPLATE;
struct EPS_BBOX;
struct SETTINGS;

// What pointing placed art at new art needs of its run.
struct ART_REPLACING {
  const SETTINGS& settings;
  REPORT& report;
  ART_SOURCE& source;
  const std::string& table;  // the table's file, for messages about its cells
};

class AI_PLACED_ART_REPLACE {
 public:
  static constexpr char kEndOperator[] = "~";

  // Parses lines first up to, not including, last, as the template was read: their words,
  // or for "-keep" their PostScript tokens, remembering where each stands.
  void setup(const TEMPLATE& tpl, int first, int last);
  // The ten number words are read as numbers; file is kept as written.
  void setup_bquote(std::string_view a, std::string_view b, std::string_view c, std::string_view d,
                    std::string_view tx, std::string_view ty, std::string_view llx,
                    std::string_view lly, std::string_view urx, std::string_view ury,
                    std::string_view file);
  // If the file name holds a placeholder for id: takes its cell as the new file, finds that
  // art through the source and fits it into the old frame.
  void setup_tabtxt(const char* id, const TAB_TEXT& table, ART_REPLACING& with);
  // The block's six lines, or nothing when it was removed for want of data ("-rm=y").
  void print(Output& out) const;
  // Reports the placeholder of the file name when no table argument reached it.
  void report_unreplaced(REPORT& report) const;
  // Where "-keep" read the block's tokens; null in the default reading.
  const KEPT_PLACEMENT* kept() const { return kept_placement.get(); }
  // Returns to the placement as analysed, for the next document of a batch ("-each=").
  void restore_analysed();

  static double getMinimum(double v1, double v2, double v3, double v4);
  static double getMaximum(double v1, double v2, double v3, double v4);

  int file_type = 0;
  OP_BQUOTE bquote;
  int no_data = 0;
  // Whether the block goes, having no data under "-rm=y".
  bool removed = false;
  // What the source of the last cell's art knows it by (the local file it names, if it can
  // name one; a barcode's data), and that source.
  std::optional<std::string> new_file;
  ART_SOURCE* new_source = nullptr;
  // Whether that art exists only as "-keep" embeds it (a barcode).
  bool new_art_generated = false;

 private:
  void read_word(const STACK& stack);
  // Fits the new art and says how, for the report.
  std::string fit(const EPS_BBOX& art, const SETTINGS& settings);

  // Whether a table argument's identifier matched the file name.
  bool reached = false;
  std::unique_ptr<KEPT_PLACEMENT> kept_placement;
  // What a cell changes: the placement, no_data, removed, the new art and reached.
  using SUBSTITUTED =
      std::tuple<OP_BQUOTE, int, bool, std::optional<std::string>, ART_SOURCE*, bool, bool>;
  ANALYSED_STATE<SUBSTITUTED> analysed;
};
