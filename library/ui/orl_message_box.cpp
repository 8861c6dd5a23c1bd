// SPDX-License-Identifier: MIT
#include "library/ui/orl_message_box.h"

#include "framework/base/text_language.h"
#include "framework/base/win_app.h"
#include "library/ui/message_text.h"
#include "res/resource_ids.h"

namespace {

constexpr UINT kIconBits = 0xF0;
constexpr UINT kButtonBits = 0x0F;
constexpr UINT kDefaultBits = 0xF00;

constexpr UINT kButtonIds[] = {IDOK, IDCANCEL, IDC_MESSAGE_BUTTON3};

// The button texts of a question, which the template does not contain.
struct ButtonTexts {
  LPCWSTR yes;
  LPCWSTR no;
  LPCWSTR cancel;
};

constexpr ButtonTexts kJapaneseButtons = {L"はい(&Y)", L"いいえ(&N)", L"キャンセル"};
constexpr ButtonTexts kEnglishButtons = {L"&Yes", L"&No", L"Cancel"};

// A system icon and the matching sound. Every kind except questions and information gets the
// exclamation mark.
struct IconAndSound {
  LPCSTR icon;
  UINT sound;
};

IconAndSound OfType(UINT type) {
  switch (type & kIconBits) {
    case MB_ICONQUESTION:
      return {IDI_QUESTION, MB_ICONQUESTION};
    case MB_ICONINFORMATION:
      return {IDI_INFORMATION, MB_ICONINFORMATION};
    default:
      return {IDI_EXCLAMATION, MB_ICONEXCLAMATION};
  }
}

}  // namespace

BEGIN_MESSAGE_MAP(COrlMessageBox, COrlDialog)
ON_BN_CLICKED(IDC_MESSAGE_BUTTON3, OnThirdButton)
ON_MESSAGE(WM_HELP, OnHelp)
ON_WM_SHOWWINDOW()
END_MESSAGE_MAP()

COrlMessageBox::COrlMessageBox(HWND parent, LPCSTR message, UINT style)
    : COrlDialog(AfxTextResource(IDD_MESSAGE_BOX), parent), text(message), type(style) {}

INT_PTR COrlMessageBox::DoModal() {
  if (COrlDialog::DoModal() == -1) return IDCANCEL;
  // A box that closed without an answer (the host quits, or its window is destroyed) agreed to
  // nothing.
  return answered ? result : IDCANCEL;
}

BOOL COrlMessageBox::OnInitDialog() {
  COrlDialog::OnInitDialog();
  for (size_t i = 0; i < buttons.size(); ++i) buttons[i].AttachButton(kButtonIds[i], this);
  ShowIcon();
  if (const CWinApp* app = AfxGetApp(); app != nullptr) SetWindowText(app->AppName());
  LabelButtons();
  CentreButtons();
  if (!text.IsEmpty()) SizeToText();
  if ((type & kDefaultBits) == MB_DEFBUTTON2) {
    ::SetFocus(GetDlgItem(IDCANCEL));
    return FALSE;
  }
  return TRUE;
}

void COrlMessageBox::ShowIcon() const {
  const IconAndSound kind = OfType(type);
  ::MessageBeep(kind.sound);
  ::SendMessageA(GetDlgItem(IDC_MESSAGE_ICON), STM_SETICON,
                 reinterpret_cast<WPARAM>(::LoadIconA(nullptr, kind.icon)), 0);
}

bool COrlMessageBox::IsYesNo() const {
  const UINT kind = type & kButtonBits;
  return kind == MB_YESNO || kind == MB_YESNOCANCEL;
}

// Hides the buttons that the type does not name. A type that the box does not know shows all three
// buttons of the template.
void COrlMessageBox::LabelButtons() {
  switch (type & kButtonBits) {
    case MB_OK:
      buttonCount = 1;
      break;
    case MB_OKCANCEL:
    case MB_YESNO:
      buttonCount = 2;
      break;
    default:
      buttonCount = 3;
      break;
  }
  const bool japanese = AfxTextLanguage() == TextLanguage::kJapanese;
  const ButtonTexts& texts = japanese ? kJapaneseButtons : kEnglishButtons;
  if (IsYesNo()) {
    ::SetWindowTextW(buttons[0].m_hWnd, texts.yes);
    ::SetWindowTextW(buttons[1].m_hWnd, texts.no);
  }
  if ((type & kButtonBits) == MB_YESNOCANCEL) ::SetWindowTextW(buttons[2].m_hWnd, texts.cancel);
  for (int i = buttonCount; i < 3; ++i)
    ::ShowWindow(buttons[static_cast<size_t>(i)].m_hWnd, SW_HIDE);
}

void COrlMessageBox::CentreButtons() const {
  const LONG middle = GetClientRect().Width() / 2;
  CRect first = ControlRect(IDOK);
  CRect second = ControlRect(IDCANCEL);
  if (buttonCount == 1) {
    first.OffsetRect(middle - first.Width() / 2 - first.left, 0);
    buttons[0].MoveWindow(first);
  } else if (buttonCount == 2) {
    const LONG shift = middle - (second.right - first.left) / 2 - first.left;
    first.OffsetRect(shift, 0);
    second.OffsetRect(shift, 0);
    buttons[0].MoveWindow(first);
    buttons[1].MoveWindow(second);
  }
}

void COrlMessageBox::SizeToText() {
  const HWND control = GetDlgItem(IDC_MESSAGE_TEXT);
  const CRect before = ControlRect(IDC_MESSAGE_TEXT);
  CClientDC dc(control);
  const auto font = reinterpret_cast<HFONT>(::SendMessageA(control, WM_GETFONT, 0, 0));
  const CSelectedObject selected(dc, font);
  const auto byteWidth = [&](char byte) { return dc.GetTextExtent(&byte, 1).cx; };
  std::function<LONG(const CString&)> utf8Width;
  if (::GetACP() == CP_UTF8) {
    utf8Width = [&](const CString& part) { return dc.GetTextExtent(part, part.GetLength()).cx; };
  }
  const MessageText layout = LayOutMessage(text, byteWidth, before.Width(), utf8Width);
  const LONG height = layout.lines * dc.GetTextMetrics().tmHeight;
  ::MoveWindow(control, before.left, before.top, layout.width, height, TRUE);
  ::SetWindowTextA(control, layout.text);

  const LONG wider = layout.width - before.Width();
  const LONG taller = height - before.Height();
  CRect box = GetWindowRect();
  box.right += wider;
  box.bottom += taller;
  MoveWindow(box);
  MoveButtons(wider / 2, taller);
}

void COrlMessageBox::MoveButtons(LONG x, LONG y) const {
  for (size_t i = 0; i < buttons.size(); ++i) {
    CRect place = ControlRect(kButtonIds[i]);
    place.OffsetRect(x, y);
    buttons[i].MoveWindow(place);
  }
}

CRect COrlMessageBox::ControlRect(UINT id) const {
  CRect rect;
  ::GetWindowRect(GetDlgItem(id), &rect);
  ScreenToClient(rect);
  return rect;
}

void COrlMessageBox::Answer(int32_t button) {
  result = button;
  answered = true;
  EndDialog(button);
}

void COrlMessageBox::OnOK() {
  Answer(IsYesNo() ? IDYES : IDOK);
}

// Esc gets here too; its answer is no if the question is yes or no.
void COrlMessageBox::OnCancel() {
  Answer(IsYesNo() ? IDNO : IDCANCEL);
}

void COrlMessageBox::OnThirdButton() {
  Answer(IDCANCEL);
}

LRESULT COrlMessageBox::OnHelp(WPARAM, LPARAM) {
  return TRUE;
}

void COrlMessageBox::OnShowWindow(bool, UINT) {
  Default();
}
