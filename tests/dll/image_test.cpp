// SPDX-License-Identifier: MIT
// The file velquin.dll itself: what it needs, what it offers, how large it is.
#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>

#include "tests/dll/driver.h"
#include "tests/support/pe_image.h"

using testing::UnorderedElementsAreArray;

namespace {

class Image : public testing::Test {
 protected:
  Image() : image(*PeImage::Read(Driver().Path())) {}
  PeImage image;
};

TEST_F(Image, NeedsOnlyWhatEveryWindowsHas) {
  const std::vector<std::string> system = {"advapi32.dll", "comctl32.dll", "gdi32.dll",
                                           "kernel32.dll", "msvcrt.dll",   "shell32.dll",
                                           "user32.dll",   "ws2_32.dll"};
  for (std::string module : image.importedModules) {
    std::transform(module.begin(), module.end(), module.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    EXPECT_THAT(system, testing::Contains(module));
  }
}

TEST_F(Image, ExportsThePlainNamesAndTheFieldSplitterAndNothingElse) {
  EXPECT_THAT(image.exportedNames, UnorderedElementsAreArray({
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
                                       "CalcJd",
                                       "GetMjd",
                                       "HourTo60",
                                       "JdToDate",
                                       "degmal",
                                       "degmal2",
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
                                   }));
}

TEST_F(Image, IsStrippedAndSmall) {
  EXPECT_FALSE(image.HasSymbols());
  EXPECT_FALSE(image.HasDebugSections());
  EXPECT_LT(image.fileSize, 1024u * 1024u);
}

TEST_F(Image, CarriesNoTimeOfItsMaking) {
  EXPECT_EQ(image.timeStamp, 0u);
}

}  // namespace
