// SPDX-License-Identifier: MIT
// CWaitCursor: shows the busy pointer until the end of the block. Any thread.
#pragma once

class CWaitCursor {
 public:
  CWaitCursor();
  ~CWaitCursor();
  CWaitCursor(const CWaitCursor&) = delete;
  CWaitCursor& operator=(const CWaitCursor&) = delete;

 private:
  void* m_previous;
};
