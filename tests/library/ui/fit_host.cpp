// SPDX-License-Identifier: MIT
// Opens each of the driver's windows and writes down how much room every text needs and has, in
// pixels, at the screen's resolution. A program of its own, because a program keeps the resolution
// it was started at.
//
// Usage: fit-host FILE
//   FILE  gets the resolution in dots per inch, and then a line for each text, separated by tabs:
//         width and height that it needs, width and height that there are, the text with "|" for
//         line breaks
#include <fstream>

#include "framework/base/message_box.h"
#include "library/ui/dlg_detail.h"
#include "library/ui/frame_sizes.h"
#include "res/string_ids.h"
#include "tests/library/ui/box_run.h"
#include "tests/library/ui/open_controller.h"
#include "tests/support/fault_count.h"

namespace {

using namespace ui_test;

// Longer ones do not come from a controller with a clock and a place on the earth.
const wchar_t* const kLongestClock = L"2026/12/31 23:59:59 -12  ";
const wchar_t* const kLongestSite = L"-139.000000 -89.000000 ";

// A font, selected on a window's device context.
class Measure {
 public:
  Measure(HWND window, HFONT font) : window_(window), dc_(GetDC(window)) {
    before_ = SelectObject(dc_, font);
  }
  explicit Measure(HWND control)
      : Measure(control, reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0))) {}
  ~Measure() {
    SelectObject(dc_, before_);
    ReleaseDC(window_, dc_);
  }
  Measure(const Measure&) = delete;
  Measure& operator=(const Measure&) = delete;

  /// The text as it stands: broken at its line ends and nowhere else.
  SIZE Of(const std::wstring& text, UINT format) const {
    RECT rect = {};
    DrawTextW(dc_, text.c_str(), -1, &rect, format | DT_CALCRECT);
    return {rect.right, rect.bottom};
  }

 private:
  HWND window_;
  HDC dc_;
  HGDIOBJ before_;
};

class Report {
 public:
  explicit Report(const char* file) : out_(file) { out_ << DotsPerInch() << '\n'; }
  void Add(const std::wstring& text, SIZE needs, SIZE has) {
    out_ << needs.cx << '\t' << needs.cy << '\t' << has.cx << '\t' << has.cy << '\t';
    for (const wchar_t c : text) {
      if (c < 0x80) out_ << (c == L'\n' ? '|' : static_cast<char>(c));
    }
    out_ << '\n';
  }

 private:
  std::ofstream out_;
};

SIZE Size(const RECT& rect) {
  return {rect.right - rect.left, rect.bottom - rect.top};
}

// What of a control is seen: not what lies outside of its dialog, nor below the controls that come
// before it. Frames lie around others and cover none.
RECT SeenOf(HWND dialog, HWND control) {
  RECT seen = {};
  const RECT place = PlaceOf(control);
  const RECT inside = ClientOf(dialog);
  IntersectRect(&seen, &place, &inside);
  for (HWND at = GetWindow(dialog, GW_CHILD); at != control; at = GetWindow(at, GW_HWNDNEXT)) {
    const bool isFrame = (GetWindowLongW(at, GWL_STYLE) & SS_TYPEMASK) == SS_BLACKFRAME;
    if (!IsWindowVisible(at) || (TextOf(at).empty() && isFrame)) continue;
    const RECT other = PlaceOf(at);
    SubtractRect(&seen, &seen, &other);
    RECT both = {};
    if (IntersectRect(&both, &seen, &other)) SetRectEmpty(&seen);
  }
  return seen;
}

void AddCaption(Report& report, HWND dialog) {
  NONCLIENTMETRICSW metrics = {};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  HFONT font = CreateFontIndirectW(&metrics.lfCaptionFont);
  const FrameSizes frame;
  // A centred caption keeps clear of the close box on the right, and so of as much on the left.
  const LONG width = Size(FrameOf(dialog)).cx - 2 * (frame.side + frame.caption);
  const std::wstring text = TextOf(dialog);
  report.Add(text, Measure(dialog, font).Of(text, DT_SINGLELINE | DT_NOPREFIX),
             {width, frame.band});
  DeleteObject(font);
}

void AddEdit(Report& report, HWND edit, const wchar_t* text) {
  RECT room = {};
  SendMessageW(edit, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&room));
  report.Add(text, Measure(edit).Of(text, DT_SINGLELINE | DT_NOPREFIX), Size(room));
}

// Caption, buttons and texts; not what fills in later.
void AddWindow(Report& report, HWND dialog) {
  AddCaption(report, dialog);
  for (HWND at = GetWindow(dialog, GW_CHILD); at != nullptr; at = GetWindow(at, GW_HWNDNEXT)) {
    wchar_t kind[16] = L"";
    GetClassNameW(at, kind, 16);
    const std::wstring text = TextOf(at);
    if (!IsWindowVisible(at) || text.empty()) continue;
    SIZE room = Size(SeenOf(dialog, at));
    if (kind == std::wstring(L"Button")) {
      // All buttons have a border of one pixel.
      report.Add(text, Measure(at).Of(text, DT_SINGLELINE), {room.cx - 2, room.cy - 2});
    } else if (kind == std::wstring(L"Static")) {
      report.Add(text, Measure(at).Of(text, DT_NOPREFIX), room);
    }
  }
}

void AddDetail(Report& report) {
  const UiThread host;
  host.Begin([] {
    CDlgDetail detail(nullptr);
    detail.DoModal();
  });
  HWND window = WaitForDialogWith(1002);
  AddWindow(report, window);
  AddEdit(report, GetDlgItem(window, 1003), kLongestClock);
  AddEdit(report, GetDlgItem(window, 1004), kLongestSite);
  PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
  WaitUntilGone(window);
}

void AddBox(Report& report, UINT id, UINT type) {
  CString text;
  text.LoadString(id);
  const BoxRun box(text.GetString(), type);
  AddWindow(report, box.Window());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  EndAtFaults(98);
  Report report(argv[1]);
  {
    const OpenController controller;
    AddWindow(report, controller.window);
  }
  AddDetail(report);
  for (const UINT id :
       {kTextSocketsFailed, kTextNoResponse, kTextBelowHorizon, kTextCommandRefused})
    AddBox(report, id, MB_OK);
  AddBox(report, kTextSyncQuestion, MB_OKCANCEL);
  AddBox(report, kTextSyncQuestion, MB_YESNOCANCEL);
}
