// SPDX-License-Identifier: MIT
// The string table as it stands in the built library.
#include <gmock/gmock.h>
#include <windows.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAre;

constexpr WORD kJapanese = MAKELANGID(LANG_JAPANESE, SUBLANG_DEFAULT);
constexpr WORD kEnglish = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
constexpr WORD kDialog = 5;
constexpr WORD kStringBlock = 6;

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

  std::vector<WORD> Languages(WORD kind, WORD id) {
    const auto append = [](HMODULE, LPCWSTR, LPCWSTR, WORD language, LONG_PTR result) -> BOOL {
      reinterpret_cast<std::vector<WORD>*>(result)->push_back(language);
      return TRUE;
    };
    std::vector<WORD> languages;
    EnumResourceLanguagesW(module, MAKEINTRESOURCEW(kind), MAKEINTRESOURCEW(id), append,
                           reinterpret_cast<LONG_PTR>(&languages));
    return languages;
  }
  // Of the block of 16 strings that a string is in.
  std::vector<WORD> LanguagesOfStrings(WORD id) {
    return Languages(kStringBlock, static_cast<WORD>(id / 16 + 1));
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

TEST_F(Resources, HoldTheEnglishTextsUnderNumbersOfTheirOwn) {
  EXPECT_EQ(Wide(20101), L"Windows Sockets could not be started.");
  EXPECT_EQ(Wide(20102), L"Windows Sockets could not be started.");
  EXPECT_EQ(Wide(30001),
            L"The telescope does not answer.\n"
            L"Check the port settings, the cables and the power.");
  EXPECT_EQ(Wide(30002), L"The object is below the horizon.");
  EXPECT_EQ(Wide(30003),
            L"The command was not accepted.\n"
            L"If a goto is under way, try again when it is done.");
  EXPECT_EQ(Wide(30004), L"The mount will be synchronised on the target.");
}

TEST_F(Resources, AreInCodePage932ForNarrowPrograms) {
  ASSERT_EQ(GetACP(), 932u) << "these tests run in Japanese surroundings";
  EXPECT_EQ(Narrow(10004), "\x93\xaf\x8a\xfa\x82\xb5\x82\xdc\x82\xb7\x81\x42");
}

TEST_F(Resources, AreInJapaneseOnlyUnderTheJapaneseNumbers) {
  EXPECT_THAT(LanguagesOfStrings(101), ElementsAre(kJapanese));
  EXPECT_THAT(LanguagesOfStrings(10001), ElementsAre(kJapanese));
  for (const WORD dialog : {1000, 3002, 8001})
    EXPECT_THAT(Languages(kDialog, dialog), ElementsAre(kJapanese)) << dialog;
}

TEST_F(Resources, AreInEnglishOnlyUnderTheEnglishNumbers) {
  EXPECT_THAT(LanguagesOfStrings(20101), ElementsAre(kEnglish));
  EXPECT_THAT(LanguagesOfStrings(30001), ElementsAre(kEnglish));
  for (const WORD dialog : {21000, 23002, 28001})
    EXPECT_THAT(Languages(kDialog, dialog), ElementsAre(kEnglish)) << dialog;
}

}  // namespace
