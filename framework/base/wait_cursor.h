// SPDX-License-Identifier: MIT
// CWaitCursor: shows the busy pointer for the length of a block. Any thread.
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
