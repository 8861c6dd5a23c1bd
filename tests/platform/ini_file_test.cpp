// SPDX-License-Identifier: MIT
#include "platform/ini_file.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>

#include "tests/support/file_text.h"
#include "tests/support/temp_folder.h"

namespace {

class IniFile : public testing::Test {
 protected:
  void Contains(const std::string& text) { WriteWholeFile(folder / "host.ini", text); }

  // As the driver reads: into 128 bytes, with the fallback "none" here.
  std::string Read(const char* section, const char* key) {
    char buffer[128 + 1];
    std::memset(buffer, '#', sizeof buffer);
    platform::ReadIniText(path.c_str(), section, key, "none", buffer, 128);
    EXPECT_EQ(buffer[128], '#') << "it wrote beyond the buffer";
    return buffer;
  }

  TempFolder folder{u8"-設定"};
  const std::string path = folder.Narrow("host.ini");
};

}  // namespace

TEST_F(IniFile, GivesTheTextOfAKey) {
  Contains("[Mount]\r\nStop=12.5\r\nGoto=-3\r\n");
  EXPECT_EQ(Read("Mount", "Stop"), "12.5");
  EXPECT_EQ(Read("Mount", "Goto"), "-3");
}

TEST_F(IniFile, GivesTheFallbackWithoutFileSectionOrKey) {
  EXPECT_EQ(Read("Mount", "Stop"), "none");
  Contains("[Other]\r\nStop=1\r\n[Mount]\r\nGoto=2\r\n");
  EXPECT_EQ(Read("Mount", "Stop"), "none");
  EXPECT_EQ(Read("Missing", "Stop"), "none");
  EXPECT_EQ(Read("Mount", "Sto"), "none");
  EXPECT_EQ(Read("Mount", "Goto2"), "none");
}

// The system's own calls have room for 260 characters, and do not all look.
TEST_F(IniFile, GivesTheFallbackForANameThatIsNoPath) {
  for (const size_t length : {1, 200, 248, 249, 250, 258, 259, 260, 261, 300, 10000}) {
    for (const std::string& name : {std::string(length, 'x'), "C:\\" + std::string(length, 'x'),
                                    path + std::string(length, 'x')}) {
      char buffer[16];
      platform::ReadIniText(name.c_str(), name.c_str(), name.c_str(), "none", buffer,
                            sizeof buffer);
      EXPECT_STREQ(buffer, "none") << name.size() << " characters";
    }
  }
}

TEST_F(IniFile, MayHaveALongPath) {
  std::filesystem::path deep = folder.Path();
  while (TempFolder::WidePath(deep).size() < 210) deep /= "a-folder-of-33-characters-xxxxxxxx";
  std::filesystem::create_directories(deep);
  WriteWholeFile(deep / "host.ini", "[Mount]\r\nStop=1\r\n");
  char buffer[16];
  platform::ReadIniText(TempFolder::NarrowPath(deep / "host.ini").c_str(), "Mount", "Stop", "none",
                        buffer, sizeof buffer);
  EXPECT_STREQ(buffer, "1");
}

TEST_F(IniFile, LooksForTheKeyInItsSectionOnly) {
  Contains("Stop=0\r\n[One]\r\nStop=1\r\n[Two]\r\nStop=2\r\n[Three]\r\nStop=3\r\n");
  EXPECT_EQ(Read("Two", "Stop"), "2");
  EXPECT_EQ(Read("Three", "Stop"), "3");
}

TEST_F(IniFile, FindsSectionAndKeyWithoutRegardToCase) {
  Contains("[mOUNT]\r\n_oVERRIDE=Yes\r\n");
  EXPECT_EQ(Read("Mount", "_Override"), "Yes");
}

TEST_F(IniFile, CutsALongText) {
  const std::string longText = std::string(100, 'a') + std::string(100, 'b');
  Contains("[Mount]\r\nStop=" + longText + "\r\nGoto=" + longText.substr(0, 127) + "\r\n");
  EXPECT_EQ(Read("Mount", "Stop"), longText.substr(0, 127));
  EXPECT_EQ(Read("Mount", "Goto"), longText.substr(0, 127));
}

TEST_F(IniFile, CutsALongFallback) {
  const std::string fallback(200, 'f');
  char buffer[17];
  std::memset(buffer, '#', sizeof buffer);
  platform::ReadIniText(path.c_str(), "Mount", "Stop", fallback.c_str(), buffer, 16);
  EXPECT_EQ(std::string(buffer), fallback.substr(0, 15));
  EXPECT_EQ(buffer[16], '#');
}

TEST_F(IniFile, TakesQuotesOff) {
  Contains("[Mount]\r\nA=\" 12.5 \"\r\nB='7'\r\nC=\"open\r\nD=in\"side\"\r\n");
  EXPECT_EQ(Read("Mount", "A"), " 12.5 ");
  EXPECT_EQ(Read("Mount", "B"), "7");
  EXPECT_EQ(Read("Mount", "C"), "\"open");
  EXPECT_EQ(Read("Mount", "D"), "in\"side\"");
}

TEST_F(IniFile, KeepsAQuoteThatIsTheWholeText) {
  Contains("[Mount]\r\nA=\"\r\nB='\r\nC=\"\"\r\nD=''\r\n");
  EXPECT_EQ(Read("Mount", "A"), "\"");
  EXPECT_EQ(Read("Mount", "B"), "'");
  EXPECT_EQ(Read("Mount", "C"), "");
  EXPECT_EQ(Read("Mount", "D"), "");
}

TEST_F(IniFile, IgnoresBlanksAroundNamesAndTexts) {
  Contains("  [Mount]  \r\n \t Stop \t = \t 12 5 \t \r\n");
  EXPECT_EQ(Read("Mount", "Stop"), "12 5");
}

TEST_F(IniFile, SkipsCommentsAndLinesWithoutAKey) {
  Contains("; Stop=1\r\n[Mount]\r\n;Stop=2\r\nnonsense\r\n\r\nStop=3\r\n");
  EXPECT_EQ(Read("Mount", "Stop"), "3");
}

TEST_F(IniFile, GivesTheFirstOfTwoKeys) {
  Contains("[Mount]\r\nStop=1\r\nStop=2\r\n");
  EXPECT_EQ(Read("Mount", "Stop"), "1");
}

TEST_F(IniFile, TellsAnEmptyTextFromAMissingKey) {
  Contains("[Mount]\r\nStop=\r\n");
  EXPECT_EQ(Read("Mount", "Stop"), "");
}

TEST_F(IniFile, KeepsEqualsSignsInTheText) {
  Contains("[Mount]\r\nStop=a=b=c\r\n");
  EXPECT_EQ(Read("Mount", "Stop"), "a=b=c");
}

TEST_F(IniFile, MayEndWithoutALineEnd) {
  Contains("[Mount]\nStop=1\nGoto=2");
  EXPECT_EQ(Read("Mount", "Stop"), "1");
  EXPECT_EQ(Read("Mount", "Goto"), "2");
}

TEST_F(IniFile, KeepsJapaneseTexts) {
#ifdef _WIN32
  const std::string name = "\x96\x5D\x89\x93\x8B\xBE";  // in code page 932
#else
  const std::string name = "望遠鏡";
#endif
  Contains("[" + name + "]\r\n" + name + "=" + name + "\r\n");
  EXPECT_EQ(Read(name.c_str(), name.c_str()), name);
}
