#include "placed/eps_path.h"

#include <gtest/gtest.h>
#include <string>

// The golden cases (placed-encode-names, placed-escapes, placed-dotdot, placed-home-no-slash)
// show names encoded, escapes decoded and ".." refused; these are the forms they do not.
TEST(EpsPathTest, LocalPaths) {
  const struct {
    const char* cell;
    bool string_body;
    const char* path;  // "none" when refused
  } cases[] = {
      {"Disk:Caf\\351.eps", false, "/h/Disk/Caf:e9.eps"},
      {"\\377\\200", false, "/h/:ff:80"},
      {"a/b:.profile", false, "/h/a:2fb/.profile"},  // only the cell's very first '.' is encoded
      {".\\056a:x", false, "/h/:2e.a/x"},
      {"a\\\\b", false, "/h/a\\b"},
      {"\\203:x:y", false, "/h/:83:x/y"},  // the ':' after a lead byte belongs to its character
      {"ab\\000cd", false, "/h/ab"},
      {"Logos:Logo \\(new\\).eps", true, "/h/Logos/Logo (new).eps"},
      {"Brands:Caf\xE9 Java:a\\\\b", true, "/h/Brands/Caf:e9 Java/a\\b"},
      {"a:\\056.:b", true, "none"},
      {"Disk:..:..:etc:passwd", false, "none"},
      {".\\056:x", false, "none"},
      {"a\\011..\\011b", false, "none"},  // decoded tabs separate as well
      {"a:..", false, "none"},
      {"a:...:b", false, "/h/a/.../b"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.path, local_eps_path(c.cell, "/h/", c.string_body).value_or("none")) << c.cell;
  }
}
