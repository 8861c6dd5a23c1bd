// SPDX-License-Identifier: MIT
#include "framework/base/message_box.h"

#include <gtest/gtest.h>

#include <string>

#include "framework/base/cstring.h"
#include "framework/base/win_app.h"
#include "tests/framework/fake_platform.h"

namespace {

class RecordingApp : public CWinApp {
 public:
  int DoMessageBox(LPCSTR prompt, UINT type, UINT helpId) override {
    text = prompt;
    this->type = type;
    this->helpId = helpId;
    return 6;
  }

  std::string text;
  UINT type = 77;
  UINT helpId = 77;
};

}  // namespace

TEST(MessageBox, GoesThroughTheApplicationObject) {
  RecordingApp app;
  EXPECT_EQ(AfxMessageBox("a text", MB_OKCANCEL, 5), 6);
  EXPECT_EQ(app.text, "a text");
  EXPECT_EQ(app.type, MB_OKCANCEL);
  EXPECT_EQ(app.helpId, 5u);
}

TEST(MessageBox, TakesItsTextFromTheStringTable) {
  RecordingApp app;
  EXPECT_EQ(AfxMessageBox(10002u, MB_OKCANCEL, 5), 6);
  CString expected;
  ASSERT_TRUE(expected.LoadString(10002));
  EXPECT_EQ(app.text, expected.GetString());
  EXPECT_EQ(app.type, MB_OKCANCEL);
  EXPECT_EQ(app.helpId, 5u);
}

TEST(MessageBox, HasOneButtonUnlessMoreAreAskedFor) {
  RecordingApp app;
  AfxMessageBox("a text");
  EXPECT_EQ(app.type, MB_OK);
  EXPECT_EQ(app.helpId, 0u);
  AfxMessageBox(10001u);
  EXPECT_EQ(app.type, MB_OK);
  EXPECT_EQ(app.helpId, 0u);
}

TEST(MessageBox, IsEmptyWhenThereIsNoSuchText) {
  RecordingApp app;
  AfxMessageBox(4711u);
  EXPECT_EQ(app.text, "");
}

TEST(MessageBox, IsTheSystemsWithoutAnApplicationObject) {
  FakePlatform system;
  system.pressedButton = 2;
  EXPECT_EQ(AfxMessageBox("a text", MB_OKCANCEL), 2);
  ASSERT_EQ(system.boxes.size(), 1u);
  EXPECT_EQ(system.boxes[0].text, "a text");
  EXPECT_EQ(system.boxes[0].title, "");
  EXPECT_EQ(system.boxes[0].type, MB_OKCANCEL);
}
