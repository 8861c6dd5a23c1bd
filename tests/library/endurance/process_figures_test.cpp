// SPDX-License-Identifier: MIT
// The instruments of the long runs see what they are there to see.
#include <windows.h>
#include <winsock2.h>

#include <atomic>
#include <thread>
#include <vector>

#include "tests/library/endurance/library_memory.h"
#include "tests/library/endurance/process_figures.h"
#include "tests/library/endurance/trend.h"
#include "tests/support/driver_library.h"
#include "tests/support/eventually.h"

namespace {

TEST(ProcessFigures, SeeAHandle) {
  ReadProcessFigures();
  const int before = ReadProcessFigures().handles;
  HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  EXPECT_EQ(ReadProcessFigures().handles, before + 1);
  CloseHandle(event);
  EXPECT_EQ(ReadProcessFigures().handles, before);
}

TEST(ProcessFigures, SeeASocket) {
  WSADATA data;
  WSAStartup(0x0202, &data);
  const int before = ReadProcessFigures().sockets;
  const SOCKET opened = socket(AF_INET, SOCK_DGRAM, 0);
  EXPECT_EQ(ReadProcessFigures().sockets, before + 1);
  closesocket(opened);
  EXPECT_EQ(ReadProcessFigures().sockets, before);
  WSACleanup();
}

TEST(ProcessFigures, SeeAThread) {
  const int before = ReadProcessFigures().threads;
  std::atomic<bool> over = false;
  std::thread thread([&] {
    while (!over) Sleep(1);
  });
  EXPECT_EQ(ReadProcessFigures().threads, before + 1);
  over = true;
  thread.join();
  EXPECT_TRUE(
      Eventually([&] { return ReadProcessFigures().threads == before; }, std::chrono::seconds(10)));
}

TEST(ProcessFigures, SeePages) {
  const ProcessFigures before = ReadProcessFigures();
  std::vector<char> pages(16 << 20, 'x');
  const ProcessFigures after = ReadProcessFigures();
  EXPECT_GE(after.workingSetKiB, before.workingSetKiB + 15 * 1024);
  EXPECT_GE(after.pageFileKiB, before.pageFileKiB + 15 * 1024);
}

TEST(LibraryMemory, SeesATextToTheByte) {
  const DriverLibrary driver;
  const LibraryMemory memory;
  driver.SetVendor(nullptr, "ten bytes.");
  EXPECT_EQ(LibraryMemory::Blocks(), 1);
  EXPECT_EQ(LibraryMemory::Bytes(), 24 + 10 + 1);
  driver.SetVendor(nullptr, "");
  EXPECT_EQ(LibraryMemory::Blocks(), 0);
  EXPECT_EQ(LibraryMemory::Bytes(), 0);
}

TEST(Trend, TellsALeakFromNoise) {
  Trend leak;
  Trend noise;
  for (int i = 0; i <= 100; ++i) {
    leak.Add(i, 50.0 + (i + i % 3) / 10.0);
    noise.Add(i, 50.0 + i % 3);
  }
  EXPECT_NEAR(leak.Slope(), 0.1, 0.001);
  EXPECT_NEAR(leak.Growth(), 10.0, 0.1);
  EXPECT_LT(noise.Growth(), 0.5);
  EXPECT_EQ(noise.Smallest(), 50.0);
  EXPECT_EQ(noise.Largest(), 52.0);
  EXPECT_EQ(leak.First(), 50.0);
  EXPECT_NEAR(leak.Last(), 60.1, 1e-9);
}

}  // namespace
