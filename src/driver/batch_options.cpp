#include "driver/batch_options.h"

#include "driver/options.h"

namespace {

constexpr long long kMaxCount = 999999999999999999LL;

bool set_each(const std::string& value) {
  long long each = 0;
  if (!read_decimal(value, kMaxEach, &each) || each < 1) return false;
  option_each = static_cast<int>(each);
  return true;
}

bool set_shard(const std::string& value) {
  const size_t slash = value.find('/');
  if (slash == std::string::npos) return false;
  long long index = 0;
  long long count = 0;
  if (!read_decimal(value.substr(0, slash), kMaxCount, &index) ||
      !read_decimal(value.substr(slash + 1), kMaxCount, &count) || index < 1 || index > count) {
    return false;
  }
  option_shard = index;
  option_shards = count;
  return true;
}

bool refuse(const std::string& arg, const char* why, std::string& diagnostics) {
  diagnostics += arg + ": " + why + "\n";
  return false;
}

}  // namespace

bool is_batch_option(const std::string& arg) {
  return starts_with(arg, "-each=") || starts_with(arg, "-skip=") || starts_with(arg, "-out=") ||
         starts_with(arg, "-shard=");
}

bool set_batch_option(const std::string& arg, std::string& diagnostics) {
  const std::string value = arg.substr(arg.find('=') + 1);
  if (starts_with(arg, "-each=")) {
    if (!set_each(value)) return refuse(arg, "not a number from 1 to 1024", diagnostics);
  } else if (starts_with(arg, "-skip=")) {
    if (!read_decimal(value, kMaxCount, &option_skip)) {
      return refuse(arg, "not a number of rows", diagnostics);
    }
  } else if (starts_with(arg, "-out=")) {
    if (value.empty()) return refuse(arg, "no file name", diagnostics);
    option_out = value;
  } else if (!set_shard(value)) {
    return refuse(arg, "not I/M, two numbers with 1 <= I <= M", diagnostics);
  }
  return true;
}

bool batch_requested() {
  return option_each > 0 || option_skip > 0 || !option_out.empty() || option_shards > 0;
}

bool check_batch_options(std::string& diagnostics) {
  if (option_each > 0 && option_out.empty()) {
    diagnostics += "-each=N needs -out=PATTERN\n";
    return false;
  }
  if (option_shards > 0 && option_each == 0) {
    diagnostics += "-shard=I/M needs -each=N\n";
    return false;
  }
  return true;
}
