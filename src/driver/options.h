// The command line's options, read into the run's SETTINGS. A single-dash option is matched
// by prefix in a fixed order, the first that matches applies, and an argument that matches
// none is ignored (with -strict it is an error): a new option's name must neither begin
// with an existing one nor be a prefix of one. Every option is also written "--name" or
// "--name=value", matched whole.
#pragma once

#include <string>
#include <vector>

#include "support/settings.h"

class Output;

// What reading the options asks of the run.
enum class OPTION_OUTCOME { go_on, done, usage_error };

class OPTION_READER {
 public:
  explicit OPTION_READER(SETTINGS& read_into) : settings(read_into) {}
  // Applies one option. A value beyond a setting's capacity, one that is not allowed, or an
  // unknown long option is a usage error, its reason (if it has one) added to diagnostics
  // as a line; "-v" and "--version" write the version to out, "--help" the options, and
  // are done.
  OPTION_OUTCOME apply(const std::string& arg, Output& out, std::string& diagnostics);
  // After the last option: what the options say together (-strict refuses the unknown ones
  // it saw; "-each" needs "-out", "-shard" needs "-each").
  OPTION_OUTCOME finish(std::string& diagnostics) const;

 private:
  OPTION_OUTCOME apply_long(const std::string& arg, Output& out, std::string& diagnostics);

  SETTINGS& settings;
  std::vector<std::string> unknown;
};

// The known option names (without dashes) nearest to name, for "did you mean".
std::string nearest_option(const std::string& name);
