#include "driver/options.h"

#include <cstring>

int option_rx = 0;
int option_rm = 0;
std::string option_fit;
std::string option_refpt;
std::string option_home_dir;
int option_report = 0;
int option_keep = 0;
TABLE_FORM option_table = TABLE_FORM::raw;
std::string option_encoding;
int option_each = 0;
long long option_skip = 0;
std::string option_out;
long long option_shard = 0;
long long option_shards = 0;

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
  option_each = 0;
  option_skip = 0;
  option_out.clear();
  option_shard = 0;
  option_shards = 0;
}

bool starts_with(const std::string& arg, const char* prefix) {
  return arg.compare(0, std::strlen(prefix), prefix) == 0;
}

bool read_decimal(const std::string& text, long long max, long long* value) {
  if (text.empty() || text.size() > 18) return false;
  long long read = 0;
  for (char c : text) {
    if (c < '0' || c > '9') return false;
    read = read * 10 + (c - '0');
  }
  if (read > max) return false;
  *value = read;
  return true;
}
