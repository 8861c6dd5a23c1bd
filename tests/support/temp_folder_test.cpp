// SPDX-License-Identifier: MIT
// Folders of a test's own, and whole files in them.
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include "tests/support/file_text.h"

TEST(TempFolder, IsThereWhileTheObjectLivesAndGoneWithItsContentsAfterwards) {
  std::filesystem::path path;
  {
    const TempFolder folder;
    path = folder.Path();
    WriteWholeFile(folder / "a.txt", "a");
    std::filesystem::create_directory(folder / "b");
    WriteWholeFile(folder / "b" / "c.txt", "c");
    EXPECT_TRUE(std::filesystem::exists(path / "b" / "c.txt"));
  }
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(TempFolder, IsAnotherOneForEachObject) {
  const TempFolder one;
  const TempFolder other;
  EXPECT_NE(one.Path(), other.Path());
}

TEST(TempFolder, HasANarrowPathThatOpensTheSameFile) {
  const TempFolder folder(u8"-ログ");
  std::FILE* file = std::fopen(folder.Narrow("n.txt").c_str(), "wb");
  ASSERT_NE(file, nullptr) << folder.Narrow("n.txt");
  std::fputs("narrow", file);
  std::fclose(file);
  EXPECT_EQ(ReadWholeFile(folder / "n.txt"), "narrow");
}

TEST(TempFolder, HasAWidePathOfTheSameFile) {
  const TempFolder folder(u8"-ログ");
  EXPECT_TRUE(folder.Wide().ends_with(L"-ログ"));
  EXPECT_TRUE(folder.Wide("n.txt").ends_with(L"n.txt"));
  EXPECT_TRUE(std::filesystem::exists(folder.Path()));
}

TEST(WholeFile, KeepsEveryByte) {
  const TempFolder folder;
  const std::string bytes("a\r\nb\n\x1a\0\xff", 8);
  WriteWholeFile(folder / "bytes", bytes);
  EXPECT_EQ(ReadWholeFile(folder / "bytes"), bytes);
}

TEST(WholeFile, IsNothingWhenThereIsNoFile) {
  const TempFolder folder;
  EXPECT_FALSE(ReadWholeFile(folder / "missing").has_value());
}
