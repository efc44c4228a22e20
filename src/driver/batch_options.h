// The options of batches: "-each=N" (one document per block of N rows), "-skip=K" (K header
// rows), "-out=PATTERN" (where documents go) and "-shard=I/M" (this process's share). They
// are matched by prefix like every option; none begins another option's name.
#pragma once

#include <string>

// Whether arg is one of them.
bool is_batch_option(const std::string& arg);
// Sets its setting; a bad value returns false with the reason, a line, added to diagnostics.
bool set_batch_option(const std::string& arg, std::string& diagnostics);
// Whether the run is a batch's: anything but one document from whole tables on standard
// output.
bool batch_requested();
// The combinations that cannot run ("-each" without "-out", "-shard" without "-each"):
// false with the reason added to diagnostics.
bool check_batch_options(std::string& diagnostics);
