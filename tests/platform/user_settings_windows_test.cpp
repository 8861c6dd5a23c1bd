// SPDX-License-Identifier: MIT
// Settings of the Windows registry: values of every type are read as bytes, and the key stays open.
#include <gtest/gtest.h>
// winternl.h needs windows.h before it.
#include <windows.h>
#include <winternl.h>

#include <string>
#include <vector>

#include "platform/user_settings.h"
#include "tests/platform/own_user_settings.h"

namespace {

const char* const kKey = "SOFTWARE\\Velquin\\Test\\3.0";

class RegistrySettings : public testing::Test {
 protected:
  std::string Read() {
    char buffer[16] = {};
    if (!platform::ReadUserSetting(kKey, "Value", buffer, sizeof buffer)) return "nothing";
    return buffer;
  }

  OwnUserSettings user;
};

struct HandleEntry {
  void* object;
  ULONG_PTR processId;
  ULONG_PTR handle;
  ULONG access;
  USHORT traceIndex;
  USHORT typeIndex;
  ULONG attributes;
  ULONG reserved;
};

struct HandleTable {
  ULONG_PTR count;
  ULONG_PTR reserved;
  HandleEntry entries[1];
};

// GetProcessHandleCount always says 0 under Wine.
int OpenHandles() {
  constexpr auto kExtendedHandles = static_cast<SYSTEM_INFORMATION_CLASS>(64);
  std::vector<char> room(1 << 20);
  ULONG needed = 0;
  while (NtQuerySystemInformation(kExtendedHandles, room.data(), static_cast<ULONG>(room.size()),
                                  &needed) != 0) {
    if (room.size() > (1u << 28)) return -1;
    room.resize(room.size() * 2);
  }
  const auto* table = reinterpret_cast<const HandleTable*>(room.data());
  int own = 0;
  for (ULONG_PTR i = 0; i < table->count; ++i) {
    if (table->entries[i].processId == GetCurrentProcessId()) ++own;
  }
  return own;
}

}  // namespace

TEST_F(RegistrySettings, AreReadWhateverTheirType) {
  user.SetText(kKey, "Value", "text");
  EXPECT_EQ(Read(), "text");
  user.SetBytes(kKey, "Value", REG_EXPAND_SZ, std::string("%PATH%\0", 7));
  EXPECT_EQ(Read(), "%PATH%");
  user.SetBytes(kKey, "Value", REG_BINARY, "bytes");
  EXPECT_EQ(Read(), "bytes");
  user.SetBytes(kKey, "Value", REG_DWORD, std::string("\1\0\0\0", 4));
  EXPECT_EQ(Read(), "\1");
  user.SetBytes(kKey, "Value", REG_DWORD, std::string("1\0\0\0", 4));
  EXPECT_EQ(Read(), "1");
}

TEST_F(RegistrySettings, AreNotThoseOfTheMachine) {
  EXPECT_FALSE(platform::ReadUserSetting("SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion",
                                         "ProgramFilesDir", nullptr, 0));
  EXPECT_EQ(Read(), "nothing");
}

// A host may wait for changes on the key, and closing it would end that.
TEST_F(RegistrySettings, KeepTheirKeyOpen) {
  user.SetText(kKey, "Value", "text");
  Read();
  const int before = OpenHandles();
  ASSERT_GT(before, 0);
  EXPECT_EQ(Read(), "text");
  EXPECT_EQ(OpenHandles(), before + 1);
  char buffer[16];
  EXPECT_FALSE(platform::ReadUserSetting("SOFTWARE\\Velquin\\Missing", "Value", buffer, 16));
  EXPECT_EQ(OpenHandles(), before + 1) << "there is no key to keep open";
}
