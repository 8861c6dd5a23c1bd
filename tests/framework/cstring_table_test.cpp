// SPDX-License-Identifier: MIT
// The library's texts, as the user will read them.
#include <gtest/gtest.h>

#include <string>

#include "framework/base/cstring.h"
#include "res/string_ids.h"

namespace {

struct TableText {
  unsigned id;
  const char8_t* text;
};

const TableText kTexts[] = {
    {101, u8"Windows ソケットの初期化に失敗しました。"},
    {102, u8"Windows ソケットの初期化に失敗しました。"},
    {10001,
     u8"望遠鏡から応答がありません。\n"
     u8"ポートの設定やケーブルの接続、電源の状態を確認してください。"},
    {10002, u8"天体が地平線下です。"},
    {10003,
     u8"コマンドが受け付けられませんでした。\n"
     u8"導入中の場合は、導入完了後に再度コマンドを実行してください。"},
    {10004, u8"同期します。"},
    {57344, u8"VELQUIN"},
};

std::string Utf8(const char8_t* text) {
  return reinterpret_cast<const char*>(text);
}

std::string Loaded(unsigned id) {
  CString text("before");
  EXPECT_TRUE(text.LoadString(id)) << id;
  return text.GetString();
}

}  // namespace

#ifdef _WIN32

#include <windows.h>
#undef LoadString

namespace {

// Windows gives texts in the system's code page, which is 932 where the driver is used.
std::string InUtf8(const std::string& narrow) {
  wchar_t wide[512];
  const int wideLength = MultiByteToWideChar(932, MB_ERR_INVALID_CHARS, narrow.data(),
                                             static_cast<int>(narrow.size()), wide, 512);
  char text[1024];
  const int length =
      WideCharToMultiByte(CP_UTF8, 0, wide, wideLength, text, sizeof text, nullptr, nullptr);
  return std::string(text, static_cast<size_t>(length));
}

}  // namespace

TEST(StringTable, IsGivenInTheSystemsCodePage) {
  ASSERT_EQ(GetACP(), 932u) << "tests run in a Japanese locale";
  EXPECT_EQ(Loaded(10002),
            "\x93\x56\x91\xCC\x82\xAA\x92\x6E\x95\xBD\x90\xFC\x89\xBA\x82\xC5\x82\xB7\x81\x42");
  EXPECT_EQ(Loaded(101),
            "\x57\x69\x6E\x64\x6F\x77\x73\x20\x83\x5C\x83\x50\x83\x62\x83\x67\x82\xCC\x8F\x89"
            "\x8A\xFA\x89\xBB\x82\xC9\x8E\xB8\x94\x73\x82\xB5\x82\xDC\x82\xB5\x82\xBD\x81\x42");
}

#else

namespace {

std::string InUtf8(const std::string& narrow) {
  return narrow;
}

}  // namespace

#endif

TEST(StringTable, HasTheDriversTexts) {
  for (const TableText& entry : kTexts) EXPECT_EQ(InUtf8(Loaded(entry.id)), Utf8(entry.text));
}

TEST(StringTable, HasThemUnderTheNumbersThatCodeUses) {
  EXPECT_EQ(kTextSocketsFailed, 101u);
  EXPECT_EQ(kTextNoResponse, 10001u);
  EXPECT_EQ(kTextBelowHorizon, 10002u);
  EXPECT_EQ(kTextCommandRefused, 10003u);
  EXPECT_EQ(kTextSyncQuestion, 10004u);
}

TEST(StringTable, LeavesAStringEmptyWhenThereIsNoSuchText) {
  for (const unsigned id : {0u, 100u, 10000u, 10005u, 57345u}) {
    CString text("before");
    EXPECT_FALSE(text.LoadString(id)) << id;
    EXPECT_TRUE(text.IsEmpty()) << id;
  }
}
