// SPDX-License-Identifier: MIT
#include "framework/base/stdio_file.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "tests/support/file_text.h"
#include "tests/support/temp_folder.h"

namespace {

constexpr UINT kText = CStdioFile::modeCreate | CStdioFile::modeWrite | CStdioFile::typeText;
constexpr UINT kBinary = CStdioFile::modeCreate | CStdioFile::modeWrite;

#ifdef _WIN32
const std::string kLineEnd = "\r\n";
#else
const std::string kLineEnd = "\n";
#endif

class StdioFile : public testing::Test {
 protected:
  TempFolder folder{u8"-記録"};  // the narrow path must reach a Japanese folder too
  const std::string path = folder.Narrow("file.txt");
  CStdioFile file;

  std::string Bytes() { return ReadWholeFile(folder / "file.txt").value_or("no such file"); }
};

}  // namespace

TEST_F(StdioFile, WritesTheSystemsLineEndsInTextMode) {
  ASSERT_TRUE(file.Open(path.c_str(), kText));
  file.WriteString("first\nsec");
  file.WriteString("ond\n");
  file.Close();
  EXPECT_EQ(Bytes(), "first" + kLineEnd + "second" + kLineEnd);
}

TEST_F(StdioFile, WritesTheBytesAsTheyAreOtherwise) {
  ASSERT_TRUE(file.Open(path.c_str(), kBinary));
  file.WriteString("first\n%d\n");
  file.Close();
  EXPECT_EQ(Bytes(), "first\n%d\n");
}

TEST_F(StdioFile, EmptiesAFileThatIsThere) {
  WriteWholeFile(folder / "file.txt", "what was there before, and more of it");
  ASSERT_TRUE(file.Open(path.c_str(), kText));
  file.WriteString("new");
  file.Close();
  EXPECT_EQ(Bytes(), "new");
}

TEST_F(StdioFile, CannotBeOpenedInAMissingFolder) {
  EXPECT_FALSE(file.Open(folder.Narrow("missing/file.txt").c_str(), kText));
  EXPECT_FALSE(file.Open("", kText));
  file.Close();
}

TEST_F(StdioFile, IsClosedByTheDestructor) {
  {
    CStdioFile other;
    ASSERT_TRUE(other.Open(path.c_str(), kText));
    other.WriteString("all of it");
  }
  EXPECT_EQ(Bytes(), "all of it");
}

TEST_F(StdioFile, ClosesTheFileBeforeAtTheNextOpen) {
  ASSERT_TRUE(file.Open(path.c_str(), kText));
  file.WriteString("first");
  ASSERT_TRUE(file.Open(folder.Narrow("other.txt").c_str(), kText));
  EXPECT_EQ(Bytes(), "first");
  file.WriteString("second");
  file.Close();
  file.Close();
  EXPECT_EQ(ReadWholeFile(folder / "other.txt"), "second");
  EXPECT_EQ(Bytes(), "first");
}

#ifdef _WIN32

TEST_F(StdioFile, IsDeniedToOthersUntilItIsClosed) {
  ASSERT_TRUE(file.Open(path.c_str(), kText));
  EXPECT_FALSE(std::ifstream(folder / "file.txt").is_open());
  EXPECT_FALSE(std::ofstream(folder / "file.txt", std::ios::app).is_open());
  file.WriteString("all of it");
  file.Close();
  EXPECT_EQ(Bytes(), "all of it");
}

TEST_F(StdioFile, CannotBeOpenedWhileAnotherHasIt) {
  WriteWholeFile(folder / "file.txt", "another's");
  std::ifstream another(folder / "file.txt");
  ASSERT_TRUE(another.is_open());
  EXPECT_FALSE(file.Open(path.c_str(), kText));
  EXPECT_EQ(Bytes(), "another's");
  another.close();
  EXPECT_TRUE(file.Open(path.c_str(), kText));
}

#endif
