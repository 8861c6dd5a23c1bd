// SPDX-License-Identifier: MIT
// What the windows of the built library say on the system that a test program is for. Each program
// of dll_texts_test.cpp has a file of its own that defines kWindowTexts.
#pragma once

#include <vector>

#include "framework/win/windows_base.h"

namespace ui_test {

struct WindowTexts {
  UINT codePage;                               ///< the program's
  std::vector<const wchar_t*> handController;  ///< its controls with a text, in their order
  const wchar_t* detailCaption;
  const wchar_t* detailClose;
  const wchar_t* syncQuestion;  ///< as the box shows it
  const wchar_t* cancel;
  const wchar_t* noResponse;  ///< as the box shows it
};

inline WindowTexts JapaneseWindowTexts(UINT codePage) {
  return {
      codePage,
      {L"北", L"南", L"東", L"西", L"遅", L"速", L"導入", L"同期", L"停止", L"ホーム"},
      L"詳細",
      L"閉じる(&C)",
      L"同期します。\n",
      L"キャンセル",
      L"望遠鏡から応答がありません。\n"
      L"ポートの設定やケーブルの接続、電源の状態を確認してください。\n",
  };
}

inline WindowTexts EnglishWindowTexts(UINT codePage) {
  return {
      codePage,
      {L"N", L"S", L"E", L"W", L"Slow", L"Fast", L"Goto", L"Sync", L"Stop", L"Home"},
      L"Details",
      L"&Close",
      L"The mount will be synchronised on the target.\n",
      L"Cancel",
      L"The telescope does not answer.\n"
      L"Check the port settings, the cables and the power.\n",
  };
}

extern const WindowTexts kWindowTexts;

}  // namespace ui_test
