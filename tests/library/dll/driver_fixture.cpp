// SPDX-License-Identifier: MIT
#include "tests/library/dll/driver_fixture.h"

#include "tests/support/after.h"
#include "tests/support/window_messages.h"

namespace {

constexpr const char* kPoll = "$MTSTA?\r\n";
constexpr const char* kMark = "$MTAGS=9.875000,9.875000";
constexpr const char* kMarkDatagram = "$MTAGS=9.875000,9.875000\r\n";

}  // namespace

DriverTest::DriverTest() {
  controller.LooksLikeAMount();
  driver.SetLogPath(nullptr, (folder.Narrow() + "\\").c_str());
}

DriverTest::~DriverTest() {
  AnswerBoxesDuring([this] { return driver.End(nullptr); });
  // A window that was left to this thread keeps the library, with all that it knows, until it is
  // destroyed; the next test is for a library that was just loaded.
  driver.Unload();
  EXPECT_TRUE(Eventually([] { return HandleMessages(), !DriverLibrary::IsLoaded(); }, kSoon));
}

void DriverTest::StartSession() {
  ASSERT_EQ(Start(), 1);
  double radec[2];
  ASSERT_TRUE(Eventually([&] { return driver.GetPos(nullptr, radec) == 1; }, kSoon));
  controller.Clear();
}

bool DriverTest::PollsAgain() {
  return controller.WaitForCount("$MTSTA?", controller.CountOf("$MTSTA?") + 2, kSoonMs);
}

std::vector<std::string> DriverTest::Requests() {
  std::vector<std::string> requests;
  for (const auto& datagram : controller.Received()) {
    if (datagram.bytes != kPoll) requests.push_back(datagram.bytes);
  }
  return requests;
}

std::vector<std::string> DriverTest::Sent() {
  const int marks = controller.CountOf(kMark);
  driver.SetGuideSpeed(nullptr, 9.875, 9.875);
  EXPECT_TRUE(controller.WaitForCount(kMark, marks + 1, kSoonMs));
  std::vector<std::string> sent = Requests();
  std::erase(sent, kMarkDatagram);
  return sent;
}

std::vector<std::string> DriverTest::SentByANewSession() {
  EXPECT_EQ(Start(), 1);
  return After(Sent(), "$MTCOM=0.000000,3.000000\r\n");
}
