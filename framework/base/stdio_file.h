// SPDX-License-Identifier: MIT
// CStdioFile: a text file on the C stream library. Differs from the documented class: it only
// creates and writes, and write errors are not thrown; one thread at a time.
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

  /// Opens for writing, creating the file or emptying one that is there. There are no flags for
  /// sharing, so on Windows nobody else can open the file meanwhile, and a file that anybody has
  /// open cannot be opened.
  /// @param flags modeCreate | modeWrite, with typeText for the system's line ends
  /// @return FALSE when it cannot be opened.
  BOOL Open(LPCSTR path, UINT flags);
  void WriteString(LPCSTR text);
  void Close();

 private:
  std::FILE* m_stream = nullptr;
};
