// SPDX-License-Identifier: MIT
// The string table as it stands in the built library.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

namespace {

class Resources : public testing::Test {
 protected:
  ~Resources() override { FreeLibrary(module); }

  std::wstring Wide(UINT id) {
    wchar_t text[256] = L"";
    return {text, static_cast<size_t>(LoadStringW(module, id, text, 256))};
  }
  std::string Narrow(UINT id) {
    char text[256] = "";
    return {text, static_cast<size_t>(LoadStringA(module, id, text, 256))};
  }

  const HMODULE module = LoadLibraryExW(L"velquin.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE);
};

TEST_F(Resources, HoldTheTexts) {
  ASSERT_NE(module, nullptr);
  EXPECT_EQ(Wide(101), L"Windows ソケットの初期化に失敗しました。");
  EXPECT_EQ(Wide(102), L"Windows ソケットの初期化に失敗しました。");
  EXPECT_EQ(Wide(10001),
            L"望遠鏡から応答がありません。\n"
            L"ポートの設定やケーブルの接続、電源の状態を確認してください。");
  EXPECT_EQ(Wide(10002), L"天体が地平線下です。");
  EXPECT_EQ(Wide(10003),
            L"コマンドが受け付けられませんでした。\n"
            L"導入中の場合は、導入完了後に再度コマンドを実行してください。");
  EXPECT_EQ(Wide(10004), L"同期します。");
  EXPECT_EQ(Wide(57344), L"VELQUIN");
}

TEST_F(Resources, AreInCodePage932ForNarrowPrograms) {
  ASSERT_EQ(GetACP(), 932u) << "these tests run in Japanese surroundings";
  EXPECT_EQ(Narrow(10004), "\x93\xaf\x8a\xfa\x82\xb5\x82\xdc\x82\xb7\x81\x42");
}

TEST_F(Resources, AreInJapaneseOnly) {
  const auto count = [](HMODULE, LPCWSTR, LPCWSTR, WORD language, LONG_PTR parameter) -> BOOL {
    if (language == MAKELANGID(LANG_JAPANESE, SUBLANG_DEFAULT))
      ++*reinterpret_cast<int*>(parameter);
    return TRUE;
  };
  int japanese = 0;
  // Block 626 holds the strings 10000 to 10015.
  EnumResourceLanguagesW(module, MAKEINTRESOURCEW(6), MAKEINTRESOURCEW(626), count,
                         reinterpret_cast<LONG_PTR>(&japanese));
  EXPECT_EQ(japanese, 1);
}

}  // namespace
