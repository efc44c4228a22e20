#include "placed/eps_path.h"

#include <gtest/gtest.h>
#include <string>

TEST(EpsPathTest, BasenameFollowsTheLastSeparator) {
  EXPECT_EQ("PH-2-3.eps)", basename(std::string("(Disk:Art:PH-2-3.eps)")));
  EXPECT_EQ("c.eps)", basename(std::string("(a\\b:c.eps)")));
  EXPECT_EQ("c)", basename(std::string("(a:b\\c)")));
  EXPECT_EQ("(PH-2-3.eps)", basename(std::string("(PH-2-3.eps)")));
  EXPECT_EQ("", basename(std::string("(a:")));
  EXPECT_EQ("", basename(std::string()));
}

TEST(EpsPathTest, MbCharReplacePassesOverTwoByteCharacters) {
  std::string s = "a:b:c";
  EXPECT_EQ("a\tb\tc", mb_char_replace(':', '\t', s));
  EXPECT_EQ("a\tb\tc", s);
  std::string sjis = "\x83:x:\x83";  // the ':' after 0x83 is the second byte of a character
  EXPECT_EQ("\x83:x\t\x83", mb_char_replace(':', '\t', sjis));
  std::string two_high = "\x81\x81:";  // the second high byte is itself passed over
  EXPECT_EQ("\x81\x81\t", mb_char_replace(':', '\t', two_high));
}

TEST(EpsPathTest, CapencodeHexesHighBytesSlashesAndALeadingDot) {
  EXPECT_EQ("Caf:e9.eps", ENCODE::capencode("\x43\x61\x66\xE9\x2E\x65\x70\x73"));
  EXPECT_EQ(":2ehidden:2fx", ENCODE::capencode(".hidden/x"));
  EXPECT_EQ("a.b:c\t..", ENCODE::capencode("a.b:c\t.."));
  EXPECT_EQ(":ff:80", ENCODE::capencode("\xFF\x80"));
  EXPECT_EQ("", ENCODE::capencode(""));
}

TEST(EpsPathTest, LocalPathJoinsTheHomeDirectoryDirectly) {
  EXPECT_EQ("/home/mesoli/Server/Art/Logo 1.eps",
            local_eps_path("Server:Art:Logo 1.eps", "/home/mesoli/").value_or("none"));
  EXPECT_EQ("/srv/artServer/Art/Logo 1.eps",
            local_eps_path("Server:Art:Logo 1.eps", "/srv/art").value_or("none"));
  EXPECT_EQ("/h/Disk/Caf:e9.eps", local_eps_path("Disk:Caf\\351.eps", "/h/").value_or("none"));
  // Only the cell's very first '.' is encoded.
  EXPECT_EQ("/h/a:2fb/.profile", local_eps_path("a/b:.profile", "/h/").value_or("none"));
  EXPECT_EQ("/h/:2eprofile", local_eps_path(".profile", "/h/").value_or("none"));
  EXPECT_EQ("/h/:2e.a/x", local_eps_path(".\\056a:x", "/h/").value_or("none"));
  EXPECT_EQ("/h/a\\b", local_eps_path("a\\\\b", "/h/").value_or("none"));
  // The ':' after a lead byte belongs to its character and stays in the name.
  EXPECT_EQ("/h/:83:x/y", local_eps_path("\\203:x:y", "/h/").value_or("none"));
  EXPECT_EQ("/h/ab", local_eps_path("ab\\000cd", "/h/").value_or("none"));
}

TEST(EpsPathTest, CellsEscapedAsStringBodiesDecodeAsStrings) {
  EXPECT_EQ("/h/Logos/Logo (new).eps",
            local_eps_path("Logos:Logo \\(new\\).eps", "/h/", true).value_or("none"));
  EXPECT_EQ("/h/Brands/Caf:e9 Java/a\\b",
            local_eps_path("Brands:Caf\xE9 Java:a\\\\b", "/h/", true).value_or("none"));
  EXPECT_FALSE(local_eps_path("a:\\056.:b", "/h/", true));
}

TEST(EpsPathTest, NoPathClimbsOutOfTheHomeDirectory) {
  EXPECT_FALSE(local_eps_path("Disk:..:..:etc:passwd", "/h/"));
  EXPECT_FALSE(local_eps_path("..:x", "/h/"));
  EXPECT_FALSE(local_eps_path(".\\056:x", "/h/"));
  EXPECT_FALSE(local_eps_path("a:\\056\\056:b", "/h/"));
  EXPECT_FALSE(local_eps_path("a\\011..\\011b", "/h/"));  // decoded tabs separate as well
  EXPECT_FALSE(local_eps_path("a:..", "/h/"));
  EXPECT_EQ("/h/a/.../b", local_eps_path("a:...:b", "/h/").value_or("none"));
  EXPECT_EQ("/h/a/..b", local_eps_path("a:..b", "/h/").value_or("none"));
}
