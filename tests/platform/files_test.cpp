// SPDX-License-Identifier: MIT
#include "platform/files.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "tests/support/file_text.h"
#include "tests/support/temp_folder.h"

namespace {

#ifdef _WIN32
const std::string kLineEnd = "\r\n";
#else
const std::string kLineEnd = "\n";
#endif

class Files : public testing::Test {
 protected:
  std::wstring Wide(const std::filesystem::path& name) { return folder.Wide(name); }
  bool IsFolder(const std::filesystem::path& name) {
    return std::filesystem::is_directory(folder / name);
  }

  TempFolder folder{u8"-記録"};
};

}  // namespace

TEST_F(Files, AreFoundWhateverTheyAre) {
  EXPECT_FALSE(platform::PathExists(Wide("it")));
  WriteWholeFile(folder / "it", "");
  EXPECT_TRUE(platform::PathExists(Wide("it")));
  EXPECT_TRUE(platform::PathExists(folder.Wide()));
  EXPECT_FALSE(platform::PathExists(Wide("it/below a file")));
  EXPECT_FALSE(platform::PathExists(std::wstring()));
}

TEST_F(Files, HaveSeparatorsOfTheSystem) {
  std::wstring path = folder.Wide();
  path += platform::kPathSeparator;
  path += L"it";
  EXPECT_EQ(path, Wide("it"));
}

TEST_F(Files, GetAFolder) {
  EXPECT_TRUE(platform::CreateFolders(Wide("new")));
  EXPECT_TRUE(IsFolder("new"));
}

TEST_F(Files, GetAFolderWithAllItsParents) {
  EXPECT_TRUE(platform::CreateFolders(Wide(u8"一/two/3.0")));
  EXPECT_TRUE(IsFolder(u8"一/two/3.0"));
}

TEST_F(Files, GetAFolderWhoseParentsAreThere) {
  std::filesystem::create_directory(folder / "one");
  EXPECT_TRUE(platform::CreateFolders(Wide("one/two/three")));
  EXPECT_TRUE(IsFolder("one/two/three"));
}

TEST_F(Files, GetNoFolderThatIsThere) {
  std::filesystem::create_directory(folder / "one");
  EXPECT_FALSE(platform::CreateFolders(Wide("one")));
}

TEST_F(Files, GetNoFolderWhereAFileIs) {
  WriteWholeFile(folder / "file", "text");
  EXPECT_FALSE(platform::CreateFolders(Wide("file")));
  EXPECT_FALSE(platform::CreateFolders(Wide("file/below/it")));
  EXPECT_EQ(ReadWholeFile(folder / "file"), "text");
}

TEST_F(Files, GetNoFolderWithoutAName) {
  EXPECT_FALSE(platform::CreateFolders(std::wstring()));
}

TEST_F(Files, AreWrittenAsText) {
  std::FILE* file = platform::OpenSharedTextFile(Wide("file"));
  ASSERT_NE(file, nullptr);
  std::fputs("one\ntwo\n", file);
  std::fclose(file);
  EXPECT_EQ(ReadWholeFile(folder / "file"), "one" + kLineEnd + "two" + kLineEnd);
}

TEST_F(Files, AreEmptiedWhenOpened) {
  WriteWholeFile(folder / "file", "what was there");
  std::FILE* file = platform::OpenSharedTextFile(Wide("file"));
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(ReadWholeFile(folder / "file"), "");
  std::fclose(file);
}

TEST_F(Files, AreNotOpenedWhereThereIsNoFolder) {
  EXPECT_EQ(platform::OpenSharedTextFile(Wide("missing/file")), nullptr);
  EXPECT_EQ(platform::OpenSharedTextFile(std::wstring()), nullptr);
  EXPECT_EQ(platform::OpenSharedTextFile(folder.Wide()), nullptr);
}

TEST_F(Files, MayBeReadAndWrittenByOthersMeanwhile) {
  std::FILE* file = platform::OpenSharedTextFile(Wide("file"));
  ASSERT_NE(file, nullptr);
  std::fputs("first", file);
  std::fflush(file);
  EXPECT_EQ(ReadWholeFile(folder / "file"), "first");
  std::FILE* other = platform::OpenSharedTextFile(Wide("file"));
  ASSERT_NE(other, nullptr);
  std::fputs("other", other);
  std::fclose(other);
  EXPECT_EQ(ReadWholeFile(folder / "file"), "other");
  std::fclose(file);
}

#ifdef _WIN32

#include <windows.h>

TEST_F(Files, MayHaveBothKindsOfSeparators) {
  const std::wstring mixed = folder.Wide() + L"\\one/two/3.0";
  EXPECT_FALSE(platform::PathExists(mixed));
  EXPECT_TRUE(platform::CreateFolders(mixed));
  EXPECT_TRUE(IsFolder("one/two/3.0"));
  EXPECT_TRUE(platform::PathExists(mixed));
}

TEST_F(Files, AreSharedForReadingAndWriting) {
  std::FILE* file = platform::OpenSharedTextFile(Wide("file"));
  ASSERT_NE(file, nullptr);
  const HANDLE other =
      CreateFileW(Wide("file").c_str(), GENERIC_READ | GENERIC_WRITE,
                  FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_NE(other, INVALID_HANDLE_VALUE) << GetLastError();
  CloseHandle(other);
  std::fclose(file);
}

#endif
