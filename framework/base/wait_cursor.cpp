// SPDX-License-Identifier: MIT
#include "framework/base/wait_cursor.h"

#include "platform/user_notice.h"

CWaitCursor::CWaitCursor() : m_previous(platform::ShowBusyPointer()) {}

CWaitCursor::~CWaitCursor() {
  platform::RestorePointer(m_previous);
}
