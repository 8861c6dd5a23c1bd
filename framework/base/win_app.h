// SPDX-License-Identifier: MIT
// CWinApp: the application object of the library. Differences from the documented class: only
// start, end, name and message boxes; it is not a thread object. One static object per module.
#pragma once

#include "framework/base/critical_section.h"
#include "framework/base/cstring.h"

class CWinApp {
 public:
  /// Registers the object with the module state. @param appName copied; null selects the name from
  /// the string table (57344).
  explicit CWinApp(LPCSTR appName = nullptr);
  virtual ~CWinApp();
  CWinApp(const CWinApp&) = delete;
  CWinApp& operator=(const CWinApp&) = delete;

  /// Work at load. @return FALSE makes loading the library fail.
  virtual BOOL InitInstance();
  /// Work at unload; stops the sockets. @return the exit code, 0.
  virtual int ExitInstance();
  /// Shows every message box of the module. Any thread; blocks it until the answer.
  /// @param type the documented style bits @param helpId unused
  /// @return the number of the pressed button.
  virtual int DoMessageBox(LPCSTR prompt, UINT type, UINT helpId);

  /// Loads the name from the string table if the constructor received none.
  void SetCurrentHandles();
  /// Replaces the name with a copy. Any thread.
  void SetAppName(LPCSTR appName);
  /// @return a copy of the name, empty if there is none. Any thread.
  CString AppName() const;

  /// Title of message boxes; owned, from the C heap. Read it only when no other thread can be in
  /// SetAppName; otherwise use AppName.
  LPCSTR m_pszAppName GUARDED_BY(m_nameLock) = nullptr;

 private:
  friend BOOL AfxSocketInit();
  friend class WinAppProbe;  // the tests' view of the name
  mutable CCriticalSection m_nameLock;
  bool m_socketsStarted = false;
};

/// The application object of the current module state; null if there is none.
CWinApp* AfxGetApp();

/// Starts the system's sockets for the module, until ExitInstance. @return FALSE on failure.
BOOL AfxSocketInit();
