// SPDX-License-Identifier: MIT
// What one empty datagram, or one answer that the port is closed, costs: the link is dead, also
// when the controller is back, until the session is begun anew.
#include <windows.h>
#include <winsock2.h>

#include <algorithm>
#include <atomic>

#include "tests/library/dll/driver_fixture.h"
#include "tests/support/file_text.h"
#include "tests/support/replaced_import.h"

namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::IsEmpty;

// Windows reports a closed port as an error of the next receive. Wine does not, so it is reported
// in its place.
std::atomic<bool> portIsClosed = false;

int WSAAPI Receive(SOCKET socket, char* bytes, int size, int flags, sockaddr* from, int* length) {
  if (portIsClosed.exchange(false)) {
    WSASetLastError(WSAECONNRESET);
    return SOCKET_ERROR;
  }
  return recvfrom(socket, bytes, size, flags, from, length);
}

class ClosedLink : public DriverTest {
 protected:
  ClosedLink() { portIsClosed = false; }

  /// The link closes in a running session; the controller is well again right away.
  void StaysDeadUntilANewSession(const std::function<void()>& close) {
    StartSession();
    close();
    double radec[2] = {};
    ASSERT_TRUE(Eventually([&] { return driver.GetPos(nullptr, radec) == 0; }, kSoon));
    EXPECT_EQ(radec[0], 90.0) << "the last position stays";
    controller.Clear();
    const double lost[2] = {150.0, 20.0};
    EXPECT_EQ(driver.Look(nullptr, lost), 1);
    EXPECT_EQ(driver.Check(nullptr, controller.Address().c_str(), nullptr, nullptr, 0, nullptr, 0),
              1)
        << "the session's version answers, not the controller";
    EXPECT_FALSE(controller.WaitFor("$MTSTA?", 500));
    EXPECT_THAT(controller.Commands(), IsEmpty()) << "not even a poll";
    EXPECT_EQ(driver.GetPos(nullptr, radec), 0);

    EXPECT_EQ(driver.End(nullptr), 1);
    EXPECT_EQ(SocketCloseLines(), 1) << "a closed link records no more";
    ASSERT_NO_FATAL_FAILURE(StartSession()) << "a new session helps";
    const double target[2] = {15.0, 30.0};
    EXPECT_EQ(driver.Look(nullptr, target), 1);
    EXPECT_TRUE(controller.WaitFor("$MTTGT=3,1.000000,30.000000,", kSoonMs));
    EXPECT_FALSE(controller.Saw("$MTTGT=3,10.000000,20.000000,")) << "what was lost stays lost";
  }
  int SocketCloseLines() {
    int lines = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
      const std::string text = ReadWholeFile(entry.path()).value_or("");
      for (size_t at = 0; (at = text.find(" : Socket Close\r\n", at)) != std::string::npos; ++at) {
        ++lines;
      }
    }
    return lines;
  }
};

TEST_F(ClosedLink, ByOneEmptyDatagramStaysDeadUntilANewSession) {
  StaysDeadUntilANewSession([&] { controller.AnswersOnce("$MTSTA?", simulator::EmptyDatagram()); });
}

TEST_F(ClosedLink, ByAClosedPortStaysDeadUntilANewSession) {
  const ReplacedImport receive("recvfrom", reinterpret_cast<void*>(&Receive));
  StaysDeadUntilANewSession([] { portIsClosed = true; });
  EXPECT_FALSE(portIsClosed) << "the stand-in was never asked";
}

// The way for a host that wants no message. The session's own version answers a check as long as it
// is not ended, so the end comes first.
TEST_F(ClosedLink, IsLeftByAnEndChecksUntilOneIsAnsweredAndAStart) {
  const auto check = [this] {
    return driver.Check(nullptr, controller.Address().c_str(), nullptr, nullptr, 0, nullptr, 0);
  };
  StartSession();
  controller.AnswersOnce("$MTSTA?", simulator::EmptyDatagram());
  ASSERT_TRUE(controller.WaitFor("$MTSTA?", kSoonMs));
  controller.IsSilentTo("$SYVER?");
  EXPECT_EQ(check(), 1) << "of the session that is dead";
  EXPECT_FALSE(controller.Saw("$SYVER?"));

  EXPECT_EQ(driver.End(nullptr), 1);
  EXPECT_EQ(check(), 0) << "the controller is away";
  EXPECT_TRUE(controller.Saw("$SYVER?"));
  controller.Answers("$SYVER?", "$SYVER=1.00");
  EXPECT_TRUE(Eventually([&] { return check() == 1; }, kSoon));
  EXPECT_FALSE(FindMessageBox());
  ASSERT_NO_FATAL_FAILURE(StartSession());
  EXPECT_TRUE(PollsAgain());
}

}  // namespace
