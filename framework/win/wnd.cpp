// SPDX-License-Identifier: MIT
#include "framework/win/wnd.h"

#include <utility>
#include <vector>

#include "framework/base/module_state.h"
#include "framework/win/data_exchange.h"
#include "framework/win/dc.h"
#include "framework/win/module_calls.h"

namespace {

// The property that holds the object of a window. The name is unique to the library, so that two
// libraries built on this framework do not take each other's windows for theirs.
const char* PropertyName() {
  return "VelquinWindowObject";
}

}  // namespace

LRESULT CALLBACK AfxWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const CModuleCall call;
  CWnd* object = CWnd::FromHandlePermanent(window);
  if (object == nullptr) return ::DefWindowProcA(window, message, wParam, lParam);
  // The system calls from the host's message loop: resources and the name must be the library's.
  AFX_MANAGE_STATE(AfxGetStaticModuleState());
  CWnd* const keeper = object->m_keeper;
  ++keeper->m_handlers;
  const LRESULT result = object->Handle({message, wParam, lParam});
  if (message == WM_NCDESTROY) object->Detached();
  keeper->HandlerLeft();  // may delete both
  return result;
}

CWnd::~CWnd() {
  if (m_hWnd != nullptr) CWnd::DestroyWindow();
}

CWnd* CWnd::FromHandlePermanent(HWND window) {
  return static_cast<CWnd*>(::GetPropA(window, PropertyName()));
}

BOOL CWnd::SubclassWindow(HWND window) {
  if (window == nullptr) return FALSE;
  Attach(window);
  if (m_holders > 0) {
    ++m_holders;
    m_windowHolds = true;
  }
  m_superProc = reinterpret_cast<WNDPROC>(
      ::SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&AfxWndProc)));
  return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT id, const CWnd* parent) {
  if (!SubclassWindow(parent->GetDlgItem(id))) return FALSE;
  m_keeper = parent->m_keeper;
  return TRUE;
}

BOOL CWnd::DestroyWindow() {
  return m_hWnd == nullptr ? FALSE : ::DestroyWindow(m_hWnd);
}

CString CWnd::GetWindowText() const {
  std::vector<char> text(static_cast<size_t>(::GetWindowTextLengthA(m_hWnd)) + 1);
  const int length = ::GetWindowTextA(m_hWnd, text.data(), static_cast<int>(text.size()));
  return CString(text.data(), length);
}

void CWnd::ModifyStyle(DWORD remove, DWORD add) const {
  ::SetWindowLongA(m_hWnd, GWL_STYLE, static_cast<LONG>((GetStyle() & ~remove) | add));
}

CRect CWnd::GetClientRect() const {
  CRect rect;
  ::GetClientRect(m_hWnd, &rect);
  return rect;
}

CRect CWnd::GetWindowRect() const {
  CRect rect;
  ::GetWindowRect(m_hWnd, &rect);
  return rect;
}

void CWnd::ScreenToClient(RECT& rect) const {
  ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<POINT*>(&rect), 2);
}

void CWnd::MoveWindow(const RECT& rect) const {
  ::MoveWindow(m_hWnd, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, TRUE);
}

void CWnd::UpdateData(BOOL save) {
  CDataExchange exchange(this, save);
  DoDataExchange(&exchange);
}

const AFX_MSGMAP* CWnd::GetThisMessageMap() {
  static const AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, nullptr}};
  static const AFX_MSGMAP map = {nullptr, entries};
  return &map;
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_DRAWITEM) {
    auto* request = reinterpret_cast<DRAWITEMSTRUCT*>(lParam);
    if (CWnd* control = FromHandlePermanent(request->hwndItem); control != nullptr) {
      control->DrawItem(request);
      return TRUE;
    }
  }
  if (const AFX_MSGMAP_ENTRY* entry = FindEntry({message, wParam, lParam}); entry != nullptr) {
    return entry->handler(this, wParam, lParam);
  }
  if (message == WM_COMMAND && OnCommand(wParam, lParam)) return 0;
  return DefWindowProc(message, wParam, lParam);
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
  if (m_superProc == nullptr) return ::DefWindowProcA(m_hWnd, message, wParam, lParam);
  return ::CallWindowProcA(m_superProc, m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::Default() {
  return DefWindowProc(m_current.message, m_current.wParam, m_current.lParam);
}

BOOL CWnd::OnCommand(WPARAM, LPARAM) {
  return FALSE;
}

HBRUSH CWnd::OnCtlColor(CDC&, HWND, UINT) {
  return reinterpret_cast<HBRUSH>(Default());
}

LRESULT CWnd::CtlColor(WPARAM wParam, LPARAM lParam, UINT kind) {
  CDC dc(reinterpret_cast<HDC>(wParam));
  return reinterpret_cast<LRESULT>(OnCtlColor(dc, reinterpret_cast<HWND>(lParam), kind));
}

void CWnd::Attach(HWND window) {
  m_hWnd = window;
  ::SetPropA(window, PropertyName(), this);
}

const AFX_MSGMAP_ENTRY* CWnd::FindEntry(const Message& message) const {
  const bool isCommand = message.message == WM_COMMAND;
  for (const AFX_MSGMAP* map = GetMessageMap(); map != nullptr;
       map = map->base == nullptr ? nullptr : map->base()) {
    for (const AFX_MSGMAP_ENTRY* entry = map->entries; entry->message != 0; ++entry) {
      if (entry->message != message.message) continue;
      if (isCommand &&
          (entry->id != LOWORD(message.wParam) || entry->code != HIWORD(message.wParam))) {
        continue;
      }
      return entry;
    }
  }
  return nullptr;
}

// No exception may reach the system. The only possible one is a lack of memory; the message is then
// not handled.
LRESULT CWnd::Handle(const Message& message) {
  const Message outer = std::exchange(m_current, message);
  LRESULT result = 0;
  try {
    result = WindowProc(message.message, message.wParam, message.lParam);
  } catch (...) {
    result = 0;
  }
  m_current = outer;
  return result;
}

void CWnd::Detached() {
  // This comes first: another thread that no longer finds the window must find its hold released.
  m_windowGone = m_windowHolds.exchange(false);
  GiveBackProcedure();
  PostNcDestroy();
}

// From now on the window uses its previous procedure.
void CWnd::GiveBackProcedure() {
  ::RemovePropA(m_hWnd, PropertyName());
  if (m_superProc != nullptr) {
    ::SetWindowLongPtrA(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_superProc));
  }
  m_superProc = nullptr;
  m_hWnd = nullptr;
  m_keeper = this;
}

void CWnd::HandlerLeft() {
  if (--m_handlers > 0 || !m_windowGone) return;
  m_windowGone = false;
  Release();
}

void CWnd::Release() {
  if (--m_holders == 0) AfxDeleteObject(this);
}

void CWnd::WindowIsLost() {
  if (!m_windowHolds.exchange(false)) return;
  m_hWnd = nullptr;
  Release();
}

bool CWnd::GiveUpWindow() {
  if (!m_windowHolds.exchange(false)) return false;
  const auto giveBack = [](HWND window, LPARAM) -> BOOL {
    if (CWnd* object = FromHandlePermanent(window); object != nullptr) object->GiveBackProcedure();
    return TRUE;
  };
  ::EnumChildWindows(m_hWnd, giveBack, 0);
  GiveBackProcedure();
  Release();
  return true;
}
