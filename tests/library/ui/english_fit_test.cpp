// SPDX-License-Identifier: MIT
// No English text is cut, at the resolutions that Windows offers as 100, 125, 150 and 200 percent.
#include <gmock/gmock.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "tests/library/dll/run_program.h"
#include "tests/support/temp_folder.h"

namespace {

using testing::UnorderedElementsAreArray;

// The screen's resolution for programs that are started as long as this lives.
class ScreenResolution {
 public:
  explicit ScreenResolution(DWORD dotsPerInch) {
    RegSetKeyValueW(HKEY_CURRENT_USER, kKey, kValue, REG_DWORD, &dotsPerInch, sizeof dotsPerInch);
  }
  ~ScreenResolution() { Restore(); }
  ScreenResolution(const ScreenResolution&) = delete;
  ScreenResolution& operator=(const ScreenResolution&) = delete;
  static void Restore() { RegDeleteKeyValueW(HKEY_CURRENT_USER, kKey, kValue); }

 private:
  static constexpr const wchar_t* kKey = L"Control Panel\\Desktop";
  static constexpr const wchar_t* kValue = L"LogPixels";
};

// A run that was ended in the middle leaves its resolution behind. Every run of this program takes
// it back, whichever tests it is to run.
class OrdinaryResolution : public testing::Environment {
  void SetUp() override { ScreenResolution::Restore(); }
};
[[maybe_unused]] const testing::Environment* const ordinaryResolution =
    testing::AddGlobalTestEnvironment(new OrdinaryResolution);

const std::vector<std::string> kTexts = {
    // the hand controller
    "VELQUIN",
    "N",
    "S",
    "E",
    "W",
    "Slow",
    "Fast",
    "Goto",
    "Sync",
    "Stop",
    "Home",
    // the detail window
    "Details",
    "&Close",
    "2026/12/31 23:59:59 -12  ",
    "-139.000000 -89.000000 ",
    // the messages
    "VELQUIN",
    "Windows Sockets could not be started.|",
    "OK",
    "VELQUIN",
    "The telescope does not answer.|Check the port settings, the cables and the power.|",
    "OK",
    "VELQUIN",
    "The object is below the horizon.|",
    "OK",
    "VELQUIN",
    "The command was not accepted.|If a goto is under way, try again when it is done.|",
    "OK",
    "VELQUIN",
    "The mount will be synchronised on the target.|",
    "OK",
    "Cancel",
    "VELQUIN",
    "The mount will be synchronised on the target.|",
    "&Yes",
    "&No",
    "Cancel",
};

class EnglishFit : public testing::TestWithParam<int> {};

TEST_P(EnglishFit, EveryTextHasTheRoomThatItNeeds) {
  const TempFolder folder;
  const std::string file = folder.Narrow() + "\\texts";
  {
    const ScreenResolution resolution(static_cast<DWORD>(GetParam()));
    ASSERT_EQ(RunProgram("fit-host.exe", {file}), 0u);
  }
  std::ifstream report(file);
  int dotsPerInch = 0;
  report >> dotsPerInch;
  ASSERT_EQ(dotsPerInch, GetParam()) << "the program saw another resolution";
  std::vector<std::string> texts;
  int needsWidth = 0;
  int needsHeight = 0;
  int hasWidth = 0;
  int hasHeight = 0;
  while (report >> needsWidth >> needsHeight >> hasWidth >> hasHeight) {
    report.ignore();
    std::getline(report, texts.emplace_back());
    EXPECT_GT(needsWidth, 0) << texts.back();
    EXPECT_LE(needsWidth, hasWidth) << texts.back();
    EXPECT_LE(needsHeight, hasHeight) << texts.back();
  }
  EXPECT_THAT(texts, UnorderedElementsAreArray(kTexts));
}

INSTANTIATE_TEST_SUITE_P(DotsPerInch, EnglishFit, testing::Values(96, 120, 144, 192));

}  // namespace
