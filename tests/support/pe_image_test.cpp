// SPDX-License-Identifier: MIT
// The reader of program files. The Windows build reads itself; both read damaged bytes.
#include "tests/support/pe_image.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/file_text.h"

#ifdef _WIN32
#include <windows.h>
#endif

using testing::Contains;

TEST(PeImage, IsNothingForOtherFiles) {
  EXPECT_FALSE(PeImage::Parse("").has_value());
  EXPECT_FALSE(PeImage::Parse("MZ").has_value());
  EXPECT_FALSE(PeImage::Parse("\x7f"
                              "ELF" +
                              std::string(1000, '\0'))
                   .has_value());
  EXPECT_FALSE(PeImage::Parse("MZ" + std::string(1000, '\0')).has_value());
  EXPECT_FALSE(PeImage::Parse("MZ" + std::string(1000, '\xff')).has_value());
  EXPECT_FALSE(PeImage::Read("no such file").has_value());
}

#ifdef _WIN32
namespace {

std::filesystem::path ThisProgram() {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return path;
}

std::filesystem::path SystemLibrary(const wchar_t* name) {
  wchar_t folder[MAX_PATH];
  GetSystemDirectoryW(folder, MAX_PATH);
  return std::filesystem::path(folder) / name;
}

}  // namespace

TEST(PeImage, TellsWhatThisProgramIs) {
  const auto image = PeImage::Read(ThisProgram());
  ASSERT_TRUE(image.has_value());
  EXPECT_TRUE(image->Imports("kernel32.dll"));
  EXPECT_FALSE(image->Imports("velquin.dll"));
  EXPECT_TRUE(image->HasSymbols()) << "test programs are not stripped";
  EXPECT_THAT(image->sectionNames, Contains(".text"));
  EXPECT_EQ(image->fileSize, std::filesystem::file_size(ThisProgram()));
  EXPECT_EQ(image->timeStamp, 0u);
}

TEST(PeImage, TellsWhatALibraryExports) {
  const auto image = PeImage::Read(SystemLibrary(L"kernel32.dll"));
  ASSERT_TRUE(image.has_value());
  EXPECT_TRUE(image->Exports("GetModuleFileNameW"));
  EXPECT_FALSE(image->Exports("getmodulefilenamew"));
  EXPECT_FALSE(image->Exports("CreateWindowExW"));
}

TEST(PeImage, SurvivesAFileThatIsCutAnywhere) {
  const std::string bytes = ReadWholeFile(ThisProgram()).value();
  for (size_t size = 0; size < 2000; ++size) {
    EXPECT_FALSE(PeImage::Parse(bytes.substr(0, size)).has_value()) << size;
  }
  for (size_t size = 2000; size < bytes.size(); size += bytes.size() / 50) {
    PeImage::Parse(bytes.substr(0, size));
  }
}
#endif
