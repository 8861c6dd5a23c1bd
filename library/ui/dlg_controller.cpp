// SPDX-License-Identifier: MIT
#include "library/ui/dlg_controller.h"

#include "framework/base/message_box.h"
#include "framework/base/text_language.h"
#include "framework/win/data_exchange.h"
#include "library/engine/telescope.h"
#include "library/ui/dlg_detail.h"
#include "res/resource_ids.h"
#include "res/string_ids.h"

namespace {

constexpr UINT_PTR kPollTimer = 1000;
constexpr UINT kDefaultPeriodMs = 100;
constexpr int kDefaultSpeeds = 3;
constexpr UINT kDirectionIds[] = {IDC_NORTH, IDC_SOUTH, IDC_EAST, IDC_WEST};

}  // namespace

BEGIN_MESSAGE_MAP(CDlgController, COrlDialog)
ON_WM_TIMER()
ON_BN_CLICKED(IDC_GOTO, OnGoto)
ON_BN_CLICKED(IDC_SYNC, OnSync)
ON_BN_CLICKED(IDC_STOP, OnStop)
ON_BN_CLICKED(IDC_HOME, OnHome)
END_MESSAGE_MAP()

CDlgController::CDlgController(CTelescope* newEngine, const CString& vendor, const CString& title,
                               HWND parent)
    : COrlDialog(AfxTextResource(IDD_CONTROLLER), parent),
      engine(newEngine),
      vendorText(vendor),
      titleText(title) {}

// Runs while the object is still a CDlgController: a message that arrives while the window is
// destroyed must not reach a half-destroyed object.
CDlgController::~CDlgController() {
  DestroyWindow();
}

void CDlgController::DoDataExchange(CDataExchange* exchange) {
  COrlDialog::DoDataExchange(exchange);
  DDX_Slider(exchange, IDC_SPEED, speedIndex);
}

BOOL CDlgController::OnInitDialog() {
  COrlDialog::OnInitDialog();
  AttachControls();
  if (!titleText.IsEmpty()) SetWindowText(titleText);
  pressed.fill(0);
  previouslyPressed.fill(0);
  CTelescope* const telescope = engine;
  const int speeds = telescope == nullptr ? kDefaultSpeeds : telescope->GetSlewSpeedMax();
  speedSlider.SetTicFreq(1);
  speedSlider.SetRange(0, speeds - 1, FALSE);
  speedIndex = speeds - 1;
  initialised = 1;
  UpdateData(FALSE);
  const UINT periodMs =
      telescope == nullptr ? kDefaultPeriodMs : static_cast<UINT>(telescope->Period());
  ::SetTimer(m_hWnd, kPollTimer, periodMs, nullptr);
  return TRUE;
}

void CDlgController::AttachControls() {
  for (size_t i = 0; i < kDirections; ++i) directionButtons[i].AttachButton(kDirectionIds[i], this);
  speedSlider.AttachSlider(IDC_SPEED, this);
  gotoButton.AttachButton(IDC_GOTO, this);
  syncButton.AttachButton(IDC_SYNC, this);
  stopButton.AttachButton(IDC_STOP, this);
  homeButton.AttachButton(IDC_HOME, this);
  speedSlider.ShowFocusRect(false);
}

void CDlgController::OnTimer(UINT_PTR) {
  if (CTelescope* const telescope = engine; telescope != nullptr) {
    PollDirections(*telescope);
    EnableControls(*telescope);
  }
  Default();
}

void CDlgController::PollDirections(CTelescope& telescope) {
  UpdateData(TRUE);
  for (size_t i = 0; i < kDirections; ++i) {
    pressed[i] = (directionButtons[i].GetState() & BST_PUSHED) != 0 ? 1 : 0;
  }
  for (size_t i = 0; i < kDirections; ++i) {
    if (!pressed[i] && !previouslyPressed[i]) continue;
    telescope.Slew(TELESCOPE_NORTH + static_cast<int32_t>(i), pressed[i], speedIndex);
  }
  previouslyPressed = pressed;
}

void CDlgController::EnableControls(CTelescope& telescope) const {
  const BOOL connected = telescope.GetConnected();
  const BOOL hasTarget = connected && telescope.GetTargetValid();
  syncButton.EnableWindow(hasTarget);
  gotoButton.EnableWindow(hasTarget);
  for (const COrlButton& button : directionButtons) button.EnableWindow(connected);
  stopButton.EnableWindow(connected);
}

void CDlgController::OnGoto() {
  if (CTelescope* const telescope = engine; telescope != nullptr) telescope->Look(nullptr);
}

void CDlgController::OnSync() {
  if (AfxMessageBox(kTextSyncQuestion, MB_OKCANCEL) != IDOK) return;
  // The connection may have ended while the question was open.
  if (CTelescope* const telescope = engine; telescope != nullptr) telescope->Sync(nullptr);
}

void CDlgController::OnStop() {
  // Any answer counts: held now, or pressed since the last call.
  if (::GetAsyncKeyState(VK_CONTROL) != 0) {
    ShowDetail();
  } else if (CTelescope* const telescope = engine; telescope != nullptr) {
    telescope->Stop();
  }
}

void CDlgController::ShowDetail() {
  CDlgDetail detail(m_hWnd);
  detail.SetEngine(engine);
  detail.DoModal();
}

void CDlgController::OnHome() {
  if (CTelescope* const telescope = engine; telescope != nullptr) telescope->Home();
}
