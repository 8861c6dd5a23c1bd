// SPDX-License-Identifier: MIT
// CStdioFile: a text file on the C stream library. Differences from the documented class: it only
// creates and writes files, and write errors are not thrown. One thread at a time.
#pragma once

#include <cstdio>

#include "framework/base/types.h"

class CStdioFile {
 public:
  enum OpenFlags : UINT { modeWrite = 0x0001, modeCreate = 0x1000, typeText = 0x4000 };

  CStdioFile() = default;
  ~CStdioFile() { Close(); }
  CStdioFile(const CStdioFile&) = delete;
  CStdioFile& operator=(const CStdioFile&) = delete;

  /// Opens for writing; creates the file or empties an existing one. There are no flags for
  /// sharing. On Windows, other processes cannot open the file meanwhile, and Open fails if any of
  /// them has it open.
  /// @param flags modeCreate | modeWrite, with typeText for the system's line ends
  /// @return FALSE if it cannot be opened.
  BOOL Open(LPCSTR path, UINT flags);
  void WriteString(LPCSTR text);
  void Close();

 private:
  std::FILE* m_stream = nullptr;
};
