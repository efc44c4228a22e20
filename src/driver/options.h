// The command line's options, read into the run's SETTINGS. Options are matched by prefix in
// a fixed order, the first that matches applies, and an argument that matches none is
// ignored: a new option's name must neither begin with an existing one nor be a prefix of
// one.
#pragma once

#include <string>

#include "support/settings.h"

class Output;

// What reading an option asks of the run.
enum class OPTION_OUTCOME { go_on, done, usage_error };

// Applies one option to settings. A value beyond a setting's capacity, or one that is not
// allowed, is a usage error, its reason (if it has one) added to diagnostics as a line;
// "-v" writes the version to out and is done.
OPTION_OUTCOME apply_option(const std::string& arg, SETTINGS& settings, Output& out,
                            std::string& diagnostics);

// Generated art (a barcode) without "-keep", which alone embeds art: false with the reason
// added to diagnostics.
bool check_art_options(const SETTINGS& settings, std::string& diagnostics);

// The combinations of batch options that cannot run ("-each" without "-out", "-shard"
// without "-each"): false with the reason added to diagnostics.
bool check_batch_options(const SETTINGS& settings, std::string& diagnostics);
