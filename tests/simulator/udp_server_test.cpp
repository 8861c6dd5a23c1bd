// SPDX-License-Identifier: MIT
#include "simulator/udp_server.h"

#include <gtest/gtest.h>

#include "tests/simulator/loopback_client.h"

namespace simulator {
namespace {

constexpr const char* kAddress = "127.0.0.1";

class UdpServerTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(server.Start(kAddress, 0)); }

  UdpServer server{[](std::string_view line) { return std::string("<").append(line).append(">"); }};
};

TEST_F(UdpServerTest, AnswersALineToItsSender) {
  LoopbackClient first(kAddress, server.Port());
  LoopbackClient second(kAddress, server.Port());
  first.Send("one\r\n");
  second.Send("two\r\n");
  EXPECT_EQ(second.Receive(), "<two>\r\n");
  EXPECT_EQ(first.Receive(), "<one>\r\n");
  EXPECT_TRUE(first.WasAnsweredByItsServer());
}

TEST_F(UdpServerTest, AnswersEachLineOfADatagram) {
  LoopbackClient client(kAddress, server.Port());
  EXPECT_EQ(client.Ask("one\r\ntwo\r\nthree\r\n"), "<one>\r\n");
  EXPECT_EQ(client.Receive(), "<two>\r\n");
  EXPECT_EQ(client.Receive(), "<three>\r\n");
}

TEST_F(UdpServerTest, DoesNotAnswerWhatIsNoLine) {
  LoopbackClient client(kAddress, server.Port());
  client.Send("");
  client.Send("without end");
  client.Send("wrong end\n");
  client.Send("\r\n");
  EXPECT_EQ(client.Ask("line\r\nrest"), "<line>\r\n");
  EXPECT_EQ(client.Ask("next\r\n"), "<next>\r\n");
}

TEST_F(UdpServerTest, TakesALargeDatagram) {
  LoopbackClient client(kAddress, server.Port());
  std::string datagram(30000, 'x');
  datagram.append("\r\n");
  EXPECT_EQ(client.Ask(datagram).size(), 30004u);
}

TEST_F(UdpServerTest, HasItsAddressToItself) {
  UdpServer other([](std::string_view) { return std::string(); });
  EXPECT_FALSE(other.Start(kAddress, server.Port()));
  EXPECT_EQ(other.Port(), 0);
  EXPECT_FALSE(server.Start(kAddress, 0));
}

TEST_F(UdpServerTest, GivesItsAddressBackAndCanBeStartedAgain) {
  const uint16_t port = server.Port();
  server.Stop();
  server.Stop();
  EXPECT_EQ(server.Port(), 0);
  ASSERT_TRUE(server.Start(kAddress, port));
  LoopbackClient client(kAddress, port);
  EXPECT_EQ(client.Ask("again\r\n"), "<again>\r\n");
}

TEST_F(UdpServerTest, ListensOnDottedAddressesOnly) {
  server.Stop();
  for (const char* address : {"localhost", "", "127.0.0.1x", "256.0.0.1"}) {
    EXPECT_FALSE(server.Start(address, 0)) << address;
  }
}

}  // namespace
}  // namespace simulator
