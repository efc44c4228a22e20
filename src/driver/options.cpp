#include "driver/options.h"

int option_rx = 0;
int option_rm = 0;
std::string option_fit;
std::string option_refpt;
std::string option_home_dir;
int option_report = 0;
int option_keep = 0;
TABLE_FORM option_table = TABLE_FORM::raw;
std::string option_encoding;

void reset_options() {
  option_rx = 0;
  option_rm = 0;
  option_fit = "min";
  option_refpt.clear();
  option_home_dir = "/home/mesoli/";
  option_report = 0;
  option_keep = 0;
  option_table = TABLE_FORM::raw;
  option_encoding.clear();
}
