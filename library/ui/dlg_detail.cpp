// SPDX-License-Identifier: MIT
#include "library/ui/dlg_detail.h"

#include "framework/base/text_language.h"
#include "framework/win/data_exchange.h"
#include "library/engine/telescope.h"
#include "res/resource_ids.h"

BEGIN_MESSAGE_MAP(CDlgDetail, COrlDialog)
END_MESSAGE_MAP()

CDlgDetail::CDlgDetail(HWND parent) : COrlDialog(AfxTextResource(IDD_DETAIL), parent) {}

void CDlgDetail::DoDataExchange(CDataExchange* exchange) {
  COrlDialog::DoDataExchange(exchange);
  DDX_Text(exchange, IDC_DETAIL_LINE1, line1);
  DDX_Text(exchange, IDC_DETAIL_LINE2, line2);
  DDX_Text(exchange, IDC_DETAIL_LINE3, line3);
}

BOOL CDlgDetail::OnInitDialog() {
  COrlDialog::OnInitDialog();
  edit1.AttachEdit(IDC_DETAIL_LINE1, this);
  edit2.AttachEdit(IDC_DETAIL_LINE2, this);
  edit3.AttachEdit(IDC_DETAIL_LINE3, this);
  // The template's close button has another number, so it stays a plain one. The caption or Esc
  // closes the window.
  closeButton.AttachButton(IDOK, this);
  BuildLines();
  UpdateData(FALSE);
  return TRUE;
}

void CDlgDetail::BuildLines() {
  if (engine == nullptr) return;
  line1 = engine->GetVersionText() + " " + engine->GetSpareText1() + " " + engine->GetSpareText2() +
          " " + engine->GetSpareText3() + " ";
  line1.Remove('#');
  line2 = engine->GetDateText() + " " + engine->GetTimeText() + " " + engine->GetZoneText() + " " +
          engine->GetBlankText() + " ";
  line3 = engine->GetSiteTextA() + " " + engine->GetSiteTextB() + " ";
}
