// SPDX-License-Identifier: MIT
#include "simulator/wire_record.h"

#include <gtest/gtest.h>

#include "simulator/wire_record_file.h"
#include "tests/support/file_text.h"
#include "tests/support/temp_folder.h"

namespace simulator {
namespace {

const std::string kTitle = std::string(kWireRecordTitle) + "\n";

std::string Complaint(const std::string& text) {
  RecordedFaults faults;
  std::string complaint;
  return ReadWireRecord(text, faults, complaint) ? "" : complaint;
}

TEST(WireRecord, IsReadableText) {
  WireDatagram datagram{12.3456,        17,           WireDirection::kIn, "127.0.0.1:4711",
                        {.delayMs = 5}, "$SYVER?\r\n"};
  EXPECT_EQ(WireRecordLine(datagram), R"(12.346 17 in 127.0.0.1:4711 delay=5 "$SYVER?\r\n")");
  datagram.direction = WireDirection::kForeign;
  datagram.fault = Fault();
  datagram.bytes = "a \"b\"\\\x01\xff";
  EXPECT_EQ(WireRecordLine(datagram),
            R"(12.346 17 foreign 127.0.0.1:4711 - "a \x22b\x22\x5c\x01\xff")");
}

// Printable are the characters from the blank to "~"; DEL comes next.
TEST(WireRecord, WritesControlCharactersAndHighBytesAsNumbers) {
  WireDatagram datagram{1.0, 1, WireDirection::kIn, "127.0.0.1:4711", Fault(), ""};
  datagram.bytes = "\x1f ~\x7f\x80";
  EXPECT_EQ(WireRecordLine(datagram), R"(1.000 1 in 127.0.0.1:4711 - "\x1f ~\x7f\x80")");
}

TEST(WireRecord, GivesTheFaultsOfItsExchangesBack) {
  RecordedFaults faults;
  std::string complaint;
  ASSERT_TRUE(ReadWireRecord(kTitle + "1.0 1 in 127.0.0.1:5 lose-reply \"a\"\r\n"
                                      "1.5 1 lost 127.0.0.1:5 lose-reply \"b\"\n"
                                      "\n# by hand from here on\n"
                                      "2 0 in 127.0.0.1:5 - \"no line\"\n"
                                      "2 3 in x delay=7",
                             faults, complaint))
      << complaint;
  const FaultChooser replay = ReplayOf(faults);
  EXPECT_EQ(FaultText(replay(1, "")), "lose-reply");
  EXPECT_EQ(FaultText(replay(2, "")), "-");
  EXPECT_EQ(FaultText(replay(3, "")), "delay=7");
  EXPECT_EQ(FaultText(replay(4, "")), "-");
}

TEST(WireRecord, OfASilenceStaysSilentPastItsEnd) {
  const FaultChooser silent = ReplayOf({{2, Fault{.silence = true}}, {4, Fault{.silence = true}}});
  EXPECT_EQ(FaultText(silent(1, "")), "-");
  EXPECT_EQ(FaultText(silent(3, "")), "-") << "left out on purpose";
  EXPECT_EQ(FaultText(silent(4, "")), "silence");
  EXPECT_EQ(FaultText(silent(5, "")), "silence");
  EXPECT_EQ(FaultText(silent(2000, "")), "silence");
  const FaultChooser over = ReplayOf({{2, Fault{.silence = true}}, {3, Fault{.delayMs = 5}}});
  EXPECT_EQ(FaultText(over(4, "")), "-");
  EXPECT_EQ(FaultText(ReplayOf({})(1, "")), "-");
}

TEST(WireRecord, SaysWhatIsWrongWithIt) {
  EXPECT_EQ(Complaint(""), "no exchange in it");
  EXPECT_EQ(Complaint("1.0 1 in 127.0.0.1:5 - \"a\"\n"), "no record of velquin-sim");
  EXPECT_EQ(Complaint(kTitle), "no exchange in it");
  EXPECT_EQ(Complaint(kTitle + "x 1 in h -\n"), "line 2: no time");
  EXPECT_EQ(Complaint(kTitle + "1 -1 in h -\n"), "line 2: no exchange number");
  EXPECT_EQ(Complaint(kTitle + "\n1 1 on h -\n"), "line 3: no direction (in, out, foreign, lost)");
  EXPECT_EQ(Complaint(kTitle + "1 1 in h lost\n"), "line 2: unknown fault");
  EXPECT_EQ(Complaint(kTitle + "1 1 in h\n"), "line 2: unknown fault");
  EXPECT_EQ(Complaint(kTitle + "1 1 in h -\n1 1 in h -\n"), "line 3: exchange number used twice");
}

TEST(WireRecordFile, HoldsEveryLineAsSoonAsItIsWritten) {
  const TempFolder folder;
  const std::string path = folder.Narrow("record.txt");
  WireRecordFile file;
  EXPECT_FALSE(file.Write({}));
  ASSERT_TRUE(file.Create(path));
  EXPECT_TRUE(file.Write({1.0, 1, WireDirection::kIn, "127.0.0.1:5", {.empties = true}, "a\r\n"}));
  EXPECT_EQ(ReadWholeFile(folder / "record.txt"),
            kTitle + "1.000 1 in 127.0.0.1:5 empty \"a\\r\\n\"\n");
  RecordedFaults faults;
  std::string complaint;
  ASSERT_TRUE(WireRecordFile::Read(path, faults, complaint)) << complaint;
  EXPECT_TRUE(faults.at(1).empties);
}

TEST(WireRecordFile, SaysWhenItCannotBeHad) {
  const TempFolder folder;
  WireRecordFile file;
  EXPECT_FALSE(file.Create(folder.Narrow("missing/record.txt")));
  RecordedFaults faults;
  std::string complaint;
  EXPECT_FALSE(WireRecordFile::Read(folder.Narrow("missing.txt"), faults, complaint));
  EXPECT_EQ(complaint, "cannot be read");
  EXPECT_FALSE(WireRecordFile::Read(folder.Narrow(), faults, complaint));
}

}  // namespace
}  // namespace simulator
