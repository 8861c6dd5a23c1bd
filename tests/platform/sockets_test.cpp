// SPDX-License-Identifier: MIT
#include "platform/sockets.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cstring>
#include <string>

#include "tests/platform/socket_calls.h"

namespace {

using namespace platform;
using testing::ElementsAre;

constexpr WaitTime kAtOnce = {0, 0};
constexpr WaitTime kLong = {10, 0};

double Milliseconds(std::chrono::steady_clock::duration duration) {
  return std::chrono::duration<double, std::milli>(duration).count();
}

class Sockets : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(StartSockets(0x0202, data), 0); }
  ~Sockets() override { StopSockets(); }

  SocketStartupData data = {};
};

// Two sockets on the loopback address; one sends to the other.
class SocketPair : public Sockets {
 protected:
  void SetUp() override {
    Sockets::SetUp();
    ASSERT_NE(sender = OpenDatagramSocket(), kInvalidSocket);
    ASSERT_NE(receiver = OpenDatagramSocket(), kInvalidSocket);
    ASSERT_GE(BindSocket(receiver, MakeAddress(loopback, 0)), 0);
    ASSERT_GE(BindSocket(sender, MakeAddress(loopback, 0)), 0);
    to = MakeAddress(loopback, BoundPort(receiver));
  }
  ~SocketPair() override {
    CloseSocket(sender);
    CloseSocket(receiver);
  }

  int Send(const std::string& bytes) {
    return SendDatagram(sender, bytes.data(), static_cast<int>(bytes.size()), to);
  }
  std::string Receive() {
    if (!WaitReadable(receiver, kLong).marked) return "nothing came";
    char bytes[2000];
    const int count = ReceiveDatagram(receiver, bytes, sizeof bytes, nullptr);
    return count < 0 ? "error" : std::string(bytes, static_cast<size_t>(count));
  }

  const uint32_t loopback = AddressFromText("127.0.0.1");
  SocketHandle sender = kInvalidSocket;
  SocketHandle receiver = kInvalidSocket;
  SocketAddress to;
};

}  // namespace

TEST_F(Sockets, HaveAddressesInNetworkOrder) {
  const uint32_t address = AddressFromText("192.168.1.20");
  unsigned char bytes[4];
  std::memcpy(bytes, &address, sizeof bytes);
  EXPECT_EQ(bytes[0], 192);
  EXPECT_EQ(bytes[1], 168);
  EXPECT_EQ(bytes[2], 1);
  EXPECT_EQ(bytes[3], 20);
}

TEST_F(Sockets, HaveNoAddressForOtherTexts) {
  for (const char* text : {"mount.local", "192.168.1.256", "1.2.3.4.5", "127.0.0.1x"}) {
    EXPECT_EQ(AddressFromText(text), kNoAddress) << text;
  }
  // The price of the all-ones answer.
  EXPECT_EQ(AddressFromText("255.255.255.255"), kNoAddress);
}

TEST_F(Sockets, HaveAddressRecordsAsTheSystemDoes) {
  const SocketAddress address = MakeAddress(AddressFromText("10.20.30.40"), 60023);
  EXPECT_EQ(sizeof address, 16u);
  unsigned char bytes[16];
  std::memcpy(bytes, &address, sizeof bytes);
  EXPECT_EQ(address.family, 2);  // IPv4
  EXPECT_EQ(bytes[2], 60023 >> 8);
  EXPECT_EQ(bytes[3], 60023 & 0xFF);
  EXPECT_EQ(bytes[4], 10);
  EXPECT_EQ(bytes[7], 40);
  for (int i = 8; i < 16; ++i) EXPECT_EQ(bytes[i], 0);
  EXPECT_EQ(PortOf(address), 60023);
}

TEST_F(Sockets, LookUpHostNames) {
  uint32_t address = 0;
  ASSERT_TRUE(LookUpHost("localhost", address));
  EXPECT_EQ(address & AddressFromText("255.0.0.0"), AddressFromText("127.0.0.0"));
  ASSERT_TRUE(LookUpHost("127.3.2.1", address));
  EXPECT_EQ(address, AddressFromText("127.3.2.1"));
}

TEST_F(Sockets, FindNoHostWhereThereIsNone) {
  uint32_t address = 0;
  EXPECT_FALSE(LookUpHost("no such host.invalid", address));
}

TEST_F(Sockets, TakeTheFirstAddressOfAHostThatHasSeveral) {
  SocketCalls system;
  system.addressesOfEveryName = {"10.1.1.1", "10.2.2.2", "10.3.3.3"};
  uint32_t address = 0;
  ASSERT_TRUE(LookUpHost("mount", address));
  EXPECT_EQ(address, AddressFromText("10.1.1.1"));
  EXPECT_EQ(system.listsHeld, 0);
}

TEST_F(Sockets, AreShutDownInBothDirectionsBeforeTheyAreClosed) {
  const SocketHandle socket = OpenDatagramSocket();
  ASSERT_NE(socket, kInvalidSocket);
  const SocketCalls system;
  CloseSocket(socket);
  EXPECT_THAT(system.closing, ElementsAre("shutdown both", "close"));
}

TEST_F(Sockets, HavePortZeroWhenTheSystemDoesNotTellTheirs) {
  const SocketHandle socket = OpenDatagramSocket();
  ASSERT_GE(BindSocket(socket, MakeAddress(AddressFromText("127.0.0.1"), 0)), 0);
  {
    SocketCalls system;
    system.boundAddressIsUnknown = true;
    EXPECT_EQ(BoundPort(socket), 0);
  }
  EXPECT_NE(BoundPort(socket), 0);
  CloseSocket(socket);
}

TEST_F(Sockets, AreBoundToAPortOfTheSystemsChoice) {
  const SocketHandle socket = OpenDatagramSocket();
  ASSERT_NE(socket, kInvalidSocket);
  ASSERT_GE(BindSocket(socket, MakeAddress(AddressFromText("127.0.0.1"), 0)), 0);
  EXPECT_NE(BoundPort(socket), 0);
  CloseSocket(socket);
}

TEST_F(Sockets, CannotShareAPort) {
  const SocketHandle first = OpenDatagramSocket();
  const SocketHandle second = OpenDatagramSocket();
  ASSERT_GE(BindSocket(first, MakeAddress(AddressFromText("127.0.0.1"), 0)), 0);
  const uint16_t port = BoundPort(first);
  EXPECT_LT(BindSocket(second, MakeAddress(AddressFromText("127.0.0.1"), port)), 0);
  CloseSocket(first);
  CloseSocket(second);
}

TEST_F(SocketPair, CarryDatagrams) {
  EXPECT_EQ(Send("$SYVER?\r\n"), 9);
  EXPECT_EQ(Receive(), "$SYVER?\r\n");
  EXPECT_EQ(Send(std::string("\0\xFF\r", 3)), 3);
  EXPECT_EQ(Receive(), std::string("\0\xFF\r", 3));
}

TEST_F(SocketPair, KeepDatagramsApartAndInOrder) {
  Send("one");
  Send("two");
  EXPECT_EQ(Receive(), "one");
  EXPECT_EQ(Receive(), "two");
}

TEST_F(SocketPair, TellTheSender) {
  Send("x");
  ASSERT_TRUE(WaitReadable(receiver, kLong).marked);
  char byte = 0;
  SocketAddress from;
  EXPECT_EQ(ReceiveDatagram(receiver, &byte, 1, &from), 1);
  EXPECT_EQ(byte, 'x');
  EXPECT_EQ(from.addressNetworkOrder, loopback);
  EXPECT_EQ(PortOf(from), BoundPort(sender));
}

TEST_F(SocketPair, CarryAnEmptyDatagram) {
  EXPECT_EQ(Send(""), 0);
  const ReadWait wait = WaitReadable(receiver, kLong);
  EXPECT_EQ(wait.result, 1);
  EXPECT_TRUE(wait.marked);
  char bytes[8];
  EXPECT_EQ(ReceiveDatagram(receiver, bytes, sizeof bytes, nullptr), 0);
}

TEST_F(SocketPair, CarryLargeDatagrams) {
  const std::string large(1400, 'x');
  EXPECT_EQ(Send(large), 1400);
  EXPECT_EQ(Receive(), large);
}

// Windows says that it does not fit, other systems cut it; neither writes beyond the buffer.
TEST_F(SocketPair, DoNotOverrunTheBuffer) {
  Send("0123456789");
  ASSERT_TRUE(WaitReadable(receiver, kLong).marked);
  char bytes[8] = "#######";
  const int count = ReceiveDatagram(receiver, bytes, 4, nullptr);
#ifdef _WIN32
  EXPECT_EQ(count, kSocketError);
#else
  EXPECT_EQ(count, 4);
  EXPECT_EQ(std::string(bytes), "0123###");
#endif
  EXPECT_EQ(bytes[4], '#');
}

TEST_F(SocketPair, WaitUntilTheTimeIsOver) {
  const auto begin = std::chrono::steady_clock::now();
  const ReadWait wait = WaitReadable(receiver, {0, 60000});
  EXPECT_EQ(wait.result, 0);
  EXPECT_FALSE(wait.marked);
  const double elapsed = Milliseconds(std::chrono::steady_clock::now() - begin);
  EXPECT_GE(elapsed, 55.0);
  EXPECT_LT(elapsed, 5000.0);
}

TEST_F(SocketPair, DoNotWaitWhenSomethingIsThere) {
  EXPECT_FALSE(WaitReadable(receiver, kAtOnce).marked);
  Send("x");
  const auto begin = std::chrono::steady_clock::now();
  const ReadWait wait = WaitReadable(receiver, kLong);
  EXPECT_EQ(wait.result, 1);
  EXPECT_TRUE(wait.marked);
  EXPECT_LT(Milliseconds(std::chrono::steady_clock::now() - begin), 5000.0);
}

TEST_F(SocketPair, FailWhenTheyAreNoSockets) {
  char byte = 0;
  EXPECT_EQ(SendDatagram(kInvalidSocket, "x", 1, to), kSocketError);
  EXPECT_EQ(ReceiveDatagram(kInvalidSocket, &byte, 1, nullptr), kSocketError);
  EXPECT_LT(BindSocket(kInvalidSocket, MakeAddress(loopback, 0)), 0);
  EXPECT_EQ(BoundPort(kInvalidSocket), 0);
  EXPECT_LT(WaitReadable(kInvalidSocket, kAtOnce).result, 0);
}

TEST_F(SocketPair, FailAfterTheyWereClosed) {
  CloseSocket(sender);
  EXPECT_EQ(Send("x"), kSocketError);
  sender = OpenDatagramSocket();
}

// The system leaves the set as it was; who believed it would wait for ever.
TEST_F(SocketPair, AreNotReadableAfterAnError) {
  const SocketHandle closed = OpenDatagramSocket();
  CloseSocket(closed);
  const ReadWait wait = WaitReadable(closed, kAtOnce);
  EXPECT_EQ(wait.result, kSocketError);
  EXPECT_FALSE(wait.marked);
}

#ifdef _WIN32

TEST(SocketStart, FillsInWhatTheSystemHas) {
  SocketStartupData data = {};
  ASSERT_EQ(StartSockets(0x0202, data), 0);
  EXPECT_EQ(data.bytes[0], 2);
  EXPECT_EQ(data.bytes[1], 2);
  StopSockets();
}

TEST(SocketStart, TellsAnUnknownVersion) {
  SocketStartupData data = {};
  EXPECT_EQ(StartSockets(0x0000, data), 10092);  // WSAVERNOTSUPPORTED
}

#else

#include <sys/resource.h>
#include <sys/select.h>
#include <unistd.h>

// Lets this process have as many files open as it may, as long as this lives: many systems allow a
// process no more than FD_SETSIZE of them until it asks.
class MoreDescriptors {
 public:
  MoreDescriptors() {
    getrlimit(RLIMIT_NOFILE, &before);
    rlimit all = before;
    all.rlim_cur = all.rlim_max;
    setrlimit(RLIMIT_NOFILE, &all);
  }
  ~MoreDescriptors() { setrlimit(RLIMIT_NOFILE, &before); }
  MoreDescriptors(const MoreDescriptors&) = delete;
  MoreDescriptors& operator=(const MoreDescriptors&) = delete;

 private:
  rlimit before = {};
};

// The system's descriptor sets have room for a thousand; a host may have more files open.
TEST_F(SocketPair, ReportADescriptorThatDoesNotFitIntoASet) {
  const MoreDescriptors allowed;
  for (const int number : {FD_SETSIZE, FD_SETSIZE + 5}) {
    const int high = dup2(receiver, number);
    ASSERT_EQ(high, number) << "too few descriptors allowed";
    Send("x");
    const ReadWait wait = WaitReadable(high, kAtOnce);
    EXPECT_EQ(wait.result, kSocketError) << number;
    EXPECT_FALSE(wait.marked) << number;
    close(high);
  }
}

TEST_F(SocketPair, WaitForTheLastDescriptorThatFitsIntoASet) {
  const MoreDescriptors allowed;
  const int last = dup2(receiver, FD_SETSIZE - 1);
  ASSERT_EQ(last, FD_SETSIZE - 1) << "too few descriptors allowed";
  Send("x");
  const ReadWait wait = WaitReadable(last, kLong);
  EXPECT_EQ(wait.result, 1);
  EXPECT_TRUE(wait.marked);
  close(last);
}

#endif
