// SPDX-License-Identifier: MIT
// velquin.dll as a file: what it needs, what it offers, and that it carries nothing else.
#include <gmock/gmock.h>
#include <windows.h>

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "tests/support/pe_image.h"

namespace {

using testing::AnyOf;
using testing::Contains;
using testing::Each;
using testing::Le;
using testing::UnorderedElementsAreArray;

// All that the library exports: 27 functions, 6 functions, one class under two compilers' names.
const std::vector<std::string> kTelescopeFunctions = {
    "TelescopeAlignReset",
    "TelescopeBaseSetting",
    "TelescopeCheck",
    "TelescopeDialog",
    "TelescopeEnd",
    "TelescopeGetEastWest",
    "TelescopeGetParking",
    "TelescopeGetPos",
    "TelescopeGetSlewSpeedMax",
    "TelescopeGetStatus",
    "TelescopeHome",
    "TelescopeLook",
    "TelescopePark",
    "TelescopeSetEastWest",
    "TelescopeSetGuideSpeed",
    "TelescopeSetIni",
    "TelescopeSetLogPath",
    "TelescopeSetLogPrefix",
    "TelescopeSetName",
    "TelescopeSetPos",
    "TelescopeSetVendor",
    "TelescopeSlew",
    "TelescopeSlewPulseDuration",
    "TelescopeStart",
    "TelescopeStop",
    "TelescopeSync",
    "TelescopeUnPark",
};
const std::vector<std::string> kUtilityFunctions = {
    "CalcJd", "GetMjd", "HourTo60", "JdToDate", "degmal", "degmal2",
};
const std::vector<std::string> kClassOfThisCompiler = {
    "_ZN10CStringSepC1Ev",
    "_ZN10CStringSepC2Ev",
    "_ZN10CStringSepD1Ev",
    "_ZN10CStringSepD2Ev",
    "_ZN10CStringSep3SetE7CStringS0_j",
    "_ZN10CStringSep8GetCountEv",
    "_ZN10CStringSep8GetParamEi",
    "_ZN10CStringSep4SameEi7CString",
    "_ZN10CStringSep4atofEid",
    "_ZN10CStringSep4atoiEii",
    "_ZN10CStringSep4atoxEii",
};
const std::vector<std::string> kClassOfMicrosoftsCompiler = {
    "??0CStringSep@@QEAA@XZ",
    "??1CStringSep@@QEAA@XZ",
    "?Set@CStringSep@@QEAAXV?$CStringT@DV?$StrTraitMFC_DLL@DV?$ChTraitsCRT@D@ATL@@@@@ATL@@0K@Z",
    "?GetCount@CStringSep@@QEAA_JXZ",
    "?GetParam@CStringSep@@QEAA?AV?$CStringT@DV?$StrTraitMFC_DLL@DV?$ChTraitsCRT@D@ATL@@@@@ATL@@H@"
    "Z",
    "?Same@CStringSep@@QEAAHHV?$CStringT@DV?$StrTraitMFC_DLL@DV?$ChTraitsCRT@D@ATL@@@@@ATL@@@Z",
    "?atof@CStringSep@@QEAANHN@Z",
    "?atoi@CStringSep@@QEAAHHH@Z",
    "?atox@CStringSep@@QEAAHHH@Z",
};

std::filesystem::path LibraryPath() {
  wchar_t path[MAX_PATH] = L"";
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return std::filesystem::path(path).parent_path() / "velquin.dll";
}

class Image : public testing::Test {
 protected:
  void SetUp() override {
    const auto read = PeImage::Read(LibraryPath());
    ASSERT_TRUE(read);
    image = *read;
  }

  PeImage image;
};

TEST_F(Image, NeedsNothingButWindows) {
  std::vector<std::string> modules = image.importedModules;
  for (std::string& module : modules) {
    std::transform(module.begin(), module.end(), module.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  }
  EXPECT_THAT(modules, Each(AnyOf("kernel32.dll", "user32.dll", "gdi32.dll", "advapi32.dll",
                                  "shell32.dll", "comctl32.dll", "ws2_32.dll", "msvcrt.dll")));
  EXPECT_THAT(modules, Contains("ws2_32.dll"));
}

TEST_F(Image, ExportsThePlainNamesAndTheFieldSplitterAndNothingElse) {
  std::vector<std::string> expected;
  for (const auto& names :
       {kTelescopeFunctions, kUtilityFunctions, kClassOfThisCompiler, kClassOfMicrosoftsCompiler}) {
    expected.insert(expected.end(), names.begin(), names.end());
  }
  EXPECT_THAT(image.exportedNames, UnorderedElementsAreArray(expected));
}

TEST_F(Image, IsStrippedAndSmall) {
  EXPECT_FALSE(image.HasSymbols());
  EXPECT_FALSE(image.HasDebugSections());
  constexpr uint64_t kLimit = 450'000;
  EXPECT_THAT(image.fileSize, Le(kLimit));
}

TEST_F(Image, IsBuiltTheSameEveryTime) {
  EXPECT_EQ(image.timeStamp, 0u);
}

TEST_F(Image, MayBePlacedAnywhereAndRunsNoData) {
  constexpr uint16_t kProtection = IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE |
                                   IMAGE_DLLCHARACTERISTICS_NX_COMPAT |
                                   IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA;
  EXPECT_EQ(image.dllCharacteristics & kProtection, kProtection);
}

}  // namespace
