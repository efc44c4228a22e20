#include "support/lazy_library.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "support/error.h"

namespace {

std::string failure(LAZY_LIBRARY& library, const char* function) {
  try {
    library.function<void (*)()>(function);
  } catch (const Error& error) {
    return error.what();
  }
  return "(nothing thrown)";
}

}  // namespace

// The functions come from the library named, typed by the caller.
TEST(LazyLibraryTest, ResolvesFunctionsOfTheLibrary) {
  LAZY_LIBRARY libm("libm.so.6", "libc6");
  const auto cosine = libm.function<double (*)(double)>("cos");
  EXPECT_EQ(std::cos(0.5), cosine(0.5));
  EXPECT_EQ(cosine, libm.function<double (*)(double)>("cos"));
  EXPECT_NE(reinterpret_cast<void*>(cosine),
            reinterpret_cast<void*>(libm.function<double (*)(double)>("sin")));
}

// A library that cannot be opened fails only when a function is asked for, and the message
// says what to install; so does a function the library lacks (another version of it). The
// system's reason comes between, in the system's words.
TEST(LazyLibraryTest, FailuresNameTheLibraryTheReasonAndThePackage) {
  struct CASE {
    const char* soname;
    const char* package;
    const char* function;
    const char* start;
    const char* reason;
    const char* end;
  };
  const CASE cases[] = {
      {"libormel-absent.so.9", "libormel-absent9", "f", "cannot load libormel-absent.so.9: ",
       "cannot open shared object file", "; install the Debian package libormel-absent9\n"},
      {"libormel-absent.so.9", "", "f", "cannot load libormel-absent.so.9: ",
       "cannot open shared object file", "No such file or directory\n"},
      {"libm.so.6", "libc6", "ormel_absent", "cannot load ormel_absent of libm.so.6: ",
       "undefined symbol: ormel_absent", "; install the Debian package libc6\n"},
  };
  for (const CASE& c : cases) {
    LAZY_LIBRARY library(c.soname, c.package);
    const std::string message = failure(library, c.function);
    EXPECT_EQ(0u, message.find(c.start)) << message;
    EXPECT_NE(std::string::npos, message.find(c.reason)) << message;
    EXPECT_EQ(message.size() - std::string(c.end).size(), message.rfind(c.end)) << message;
  }
}
