// SPDX-License-Identifier: MIT
#include "core/log/log_location.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/core/log/local_data.h"
#include "tests/support/file_text.h"

namespace {

using logging::orlin::GetLogFilePath;

class LogLocation : public testing::Test {
 protected:
  std::wstring PathOf(bool create) { return GetLogFilePath(L"Maker/Host/3.0", L"it.log", create); }

  // The folder is joined with the system's separator though it contains slashes.
  std::wstring Expected() {
#ifdef _WIN32
    return local.folder.Wide() + L"\\Maker/Host/3.0\\it.log";
#else
    return local.folder.Wide() + L"/Maker/Host/3.0/it.log";
#endif
  }

  bool IsFolder(const char* name) { return std::filesystem::is_directory(local.folder / name); }

  LocalData local;
};

}  // namespace

TEST_F(LogLocation, IsMadeWithItsParents) {
  EXPECT_EQ(PathOf(true), Expected());
  EXPECT_TRUE(IsFolder("Maker/Host/3.0"));
  EXPECT_FALSE(std::filesystem::exists(local.folder / "Maker/Host/3.0/it.log"));
}

TEST_F(LogLocation, IsNotMadeUnlessAskedFor) {
  EXPECT_EQ(PathOf(false), L"");
  EXPECT_FALSE(IsFolder("Maker"));
}

TEST_F(LogLocation, IsTakenWhenItIsThere) {
  std::filesystem::create_directories(local.folder / "Maker/Host/3.0");
  EXPECT_EQ(PathOf(false), Expected());
  EXPECT_EQ(PathOf(true), Expected());
}

TEST_F(LogLocation, IsMadeBelowParentsThatAreThere) {
  std::filesystem::create_directories(local.folder / "Maker/Other");
  EXPECT_EQ(PathOf(true), Expected());
  EXPECT_TRUE(IsFolder("Maker/Host/3.0"));
  EXPECT_TRUE(IsFolder("Maker/Other"));
}

TEST_F(LogLocation, IsTakenWhateverItIs) {
  std::filesystem::create_directories(local.folder / "Maker/Host");
  WriteWholeFile(local.folder / "Maker/Host/3.0", "a file in the way");
  EXPECT_EQ(PathOf(true), Expected());
  EXPECT_EQ(PathOf(false), Expected());
  EXPECT_EQ(ReadWholeFile(local.folder / "Maker/Host/3.0"), "a file in the way");
}

TEST_F(LogLocation, IsNowhereWithoutABaseFolder) {
  local.known = false;
  EXPECT_EQ(PathOf(true), L"");
}

TEST_F(LogLocation, IsNowhereWhenItCannotBeMade) {
  local.takesFolders = false;
  EXPECT_EQ(PathOf(true), L"");
}

TEST_F(LogLocation, IsNowhereWhenAFileStandsInTheWayOfAParent) {
  WriteWholeFile(local.folder / "Maker", "a file in the way");
  EXPECT_EQ(PathOf(true), L"");
  EXPECT_EQ(PathOf(false), L"");
}
