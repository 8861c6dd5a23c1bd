// SPDX-License-Identifier: MIT
// Calls of the loaded library that the system refuses while the link itself is well.
#include <windows.h>
#include <winsock2.h>

#include <atomic>

#include "tests/library/dll/driver_fixture.h"
#include "tests/support/file_text.h"
#include "tests/support/replaced_import.h"

namespace {

using testing::MatchesRegex;

std::atomic<int> refusals = 0;
std::atomic<bool> waitIsRefused = false;

int WSAAPI RefuseBoundAddress(SOCKET, sockaddr*, int*) {
  ++refusals;
  WSASetLastError(WSAENOBUFS);
  return SOCKET_ERROR;
}

// As the system does, it leaves the set as it was.
int WSAAPI MayWait(int count, fd_set* read, fd_set* write, fd_set* error, timeval* span) {
  if (waitIsRefused.exchange(false)) {
    ++refusals;
    WSASetLastError(WSAEFAULT);
    return SOCKET_ERROR;
  }
  return select(count, read, write, error, span);
}

class RefusedCalls : public DriverTest {
 protected:
  RefusedCalls() { refusals = 0; }

  /// The lines of the only journal.
  std::string Journal() {
    std::string text;
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
      text += ReadWholeFile(entry.path()).value_or("");
    }
    return text;
  }
};

TEST_F(RefusedCalls, ConnectWithoutKnowingTheOwnPort) {
  const ReplacedImport bound("getsockname", reinterpret_cast<void*>(&RefuseBoundAddress));
  ASSERT_EQ(AnswerBoxesDuring([this] { return Start(); }), 1);
  EXPECT_EQ(refusals, 1);
  EXPECT_TRUE(PollsAgain());
  driver.End(nullptr);
  EXPECT_EQ(Journal(), "");
}

TEST_F(RefusedCalls, RecordAWaitThatIsRefusedAndGoOn) {
  waitIsRefused = false;
  const ReplacedImport wait("select", reinterpret_cast<void*>(&MayWait));
  StartSession();
  waitIsRefused = true;
  ASSERT_TRUE(PollsAgain());
  EXPECT_EQ(refusals, 1);
  EXPECT_TRUE(PollsAgain()) << "the link is still open";
  driver.End(nullptr);
  EXPECT_THAT(Journal(), MatchesRegex("\\d\\d:\\d\\d:\\d\\d .MTSTA\\? : FD_ISSET\r\n"));
}

}  // namespace
