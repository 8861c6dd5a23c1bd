// SPDX-License-Identifier: MIT
// velquinctl with wrong words, wrong files and wrong libraries: one clear line, the right exit
// code, and nothing sent.
#include <gmock/gmock.h>

#include "tests/console/mount_fixture.h"
#include "tests/support/file_text.h"
#include "tests/support/temp_folder.h"

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

TEST_F(VelquinctlTest, EveryWrongInputIsOneLineAndExitCode2) {
  const std::string a = Address();
  std::string longWord;  // of two bytes a character
  for (int i = 0; i < 5000; ++i) longWord += "\u00FC";
  const TempFolder folder;
  const std::string longFile = (folder / L"long.txt").string();
  WriteWholeFile(longFile, std::string(2'000'000, '\n'));
  const std::vector<std::vector<std::string>> wrong = {
      {},
      {"got", a},
      {"--foo"},
      {"goto"},
      {"goto", a, "5h"},
      {"goto", a, "25h", "10"},
      {"goto", a, "5h", "-95"},
      {"goto", a, "5h", "north\nsouth"},
      {"goto", a, "5h", "10", "20"},
      {"goto", a, "5h", "10", "--timeout"},
      {"goto", a, "5h", "10", "--timeout", "0"},
      {"goto", "", "5h", "10"},
      {"goto", "5h34m31.9s", "+22d00m52s"},
      {"status", "300.1.2.3"},
      {"status", a + ".1"},
      {"run", ""},
      {"status", a, "--log-prefix", "a/b"},
      {"status", a, "--progress", "loud"},
      {"status", a, "--timeout", ""},
      {"status", a, "--log-prefix", "--json"},
      {"status", a, "--log-path", "C:\\no such folder"},
      {"slew", a, "up"},
      {"slew", a, "north", "--speed", "10"},
      {"pulse", a},
      {"pulse", a, "--north", "1.5"},
      {"guide-speed", a, "fast", "slow"},
      {"site", a, "--latitude", "91", "--longitude", "0"},
      {"site", a, "--latitude", "9", "--longitude", "0", "--time", "2026-02-30T00:00"},
      {"ini", a, "C:\\no such file.ini", "Mount"},
      {"run", "C:\\no such file.txt"},
      {"run", longFile},
      {longWord},
      {"status", longWord + "\n"},
      {"status", a, "--timeout", longWord},
      {"run", longWord},
  };
  for (const auto& words : wrong) {
    const ProgramResult result = RunVelquinctl(words);
    const std::string shown = testing::PrintToString(words).substr(0, 200);
    EXPECT_EQ(result.exitCode, 2) << shown;
    EXPECT_LE(result.error.size(), 820u) << shown;
    EXPECT_EQ(result.out, "") << shown;
    EXPECT_THAT(result.ErrorLines(), SizeIs(1)) << shown << result.error;
    EXPECT_THAT(result.error, StartsWith("velquinctl: ")) << shown;
  }
  EXPECT_THAT(mount.Commands(), IsEmpty());
}

TEST_F(VelquinctlTest, AnInvalidIPv4AddressIsNotSentTo) {
  const ProgramResult result = RunVelquinctl({"check", "300.1.2.3"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(result.error,
            "velquinctl: \"300.1.2.3\" is not a valid IPv4 address (write four numbers from 0 to "
            "255)\n");
}

TEST_F(VelquinctlTest, AHostNameThatCannotBeResolvedIsNamed) {
  for (const char* command : {"check", "status"}) {
    const ProgramResult result = RunVelquinctl({command, "no-such-mount.invalid", "--json"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.error,
              "velquinctl: the host name \"no-such-mount.invalid\" cannot be resolved\n");
    EXPECT_EQ(Json(result)["error"], "the host name \"no-such-mount.invalid\" cannot be resolved");
  }
}

TEST_F(VelquinctlTest, AHostNameLeadsToItsMount) {
  ASSERT_EQ(Address(), "127.0.0.1") << "the name is this machine's";
  const ProgramResult result = RunVelquinctl({"check", "localhost"});
  EXPECT_EQ(result.exitCode, 0) << result.error;
  EXPECT_THAT(result.out, StartsWith("localhost answers: version "));
}

TEST_F(VelquinctlTest, HelpIsACommand) {
  const ProgramResult help = RunVelquinctl({"help", "goto"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_EQ(help.out, RunVelquinctl({"goto", "--help"}).out);
}

TEST_F(VelquinctlTest, HelpAndVersionNeedNoMount) {
  const ProgramResult help = RunVelquinctl({"--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_EQ(help.error, "");
  EXPECT_THAT(help.out, HasSubstr("Exit codes:"));
  const ProgramResult version = RunVelquinctl({"--version"});
  EXPECT_EQ(version.exitCode, 0);
  EXPECT_THAT(version.out, StartsWith("velquinctl "));
}

TEST_F(VelquinctlTest, AMissingLibraryIsExitCode3) {
  const ProgramResult result =
      RunVelquinctl({"status", Address(), "--library", "C:\\nowhere\\velquin.dll"});
  EXPECT_EQ(result.exitCode, 3);
  EXPECT_EQ(result.error, "velquinctl: library not found: C:\\nowhere\\velquin.dll\n");
}

TEST_F(VelquinctlTest, AForeignLibraryIsExitCode3) {
  const ProgramResult result =
      RunVelquinctl({"status", Address(), "--library", "C:\\windows\\system32\\version.dll"});
  EXPECT_EQ(result.exitCode, 3);
  EXPECT_THAT(result.ErrorLines(), SizeIs(1));
  EXPECT_THAT(result.error, HasSubstr("has no export Telescope"));
}

TEST_F(VelquinctlTest, AFileThatIsNoLibraryIsExitCode3) {
  const TempFolder folder;
  WriteWholeFile(folder / L"velquin.dll", "no library at all");
  const ProgramResult result =
      RunVelquinctl({"check", Address(), "--library", (folder / L"velquin.dll").string()});
  EXPECT_EQ(result.exitCode, 3);
  EXPECT_THAT(result.ErrorLines(), SizeIs(1));
  EXPECT_THAT(result.error, StartsWith("velquinctl: cannot load the library "));
}

TEST_F(VelquinctlTest, TheLibraryMayLieElsewhereUnderAnyName) {
  const TempFolder folder(u8" 望遠鏡");
  std::filesystem::copy_file(ProgramFolder() / L"velquin.dll", folder / L"driver.dll");
  const std::u8string path = (folder / L"driver.dll").u8string();
  const ProgramResult result =
      RunVelquinctl({"check", Address(), "--library", std::string(path.begin(), path.end())});
  EXPECT_EQ(result.exitCode, 0) << result.error;
}

}  // namespace
