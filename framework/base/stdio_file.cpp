// SPDX-License-Identifier: MIT
#include "framework/base/stdio_file.h"

#ifdef _WIN32
#include <share.h>
#endif

BOOL CStdioFile::Open(LPCSTR path, UINT flags) {
  Close();
  // "t" and "b" are spelled out: the host may have changed the runtime's default mode.
#ifdef _WIN32
  m_stream = _fsopen(path, (flags & typeText) != 0 ? "wt" : "wb", _SH_DENYRW);
#else
  (void)flags;
  m_stream = std::fopen(path, "w");
#endif
  return m_stream != nullptr;
}

void CStdioFile::WriteString(LPCSTR text) {
  std::fputs(text, m_stream);
}

void CStdioFile::Close() {
  if (m_stream == nullptr) return;
  std::fclose(m_stream);
  m_stream = nullptr;
}
