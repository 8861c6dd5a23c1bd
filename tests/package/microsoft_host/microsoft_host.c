/* SPDX-License-Identifier: MIT */
/* Runs one session through velquin.lib: connect, goto, wait, end, with the mount at 127.0.0.1.
   Prints the mount's version. Exit code 0 when it arrived, else the number of the step that failed.
   There is no C runtime under it. */
#include <telescope_api.h>
#include <velquin_util.h>

__declspec(dllimport) void Sleep(unsigned long milliseconds);
__declspec(dllimport) void ExitProcess(unsigned int code);
__declspec(dllimport) void* GetStdHandle(unsigned long which);
__declspec(dllimport) int WriteFile(void* file, const void* bytes, unsigned long size,
                                    unsigned long* written, void* overlapped);

int _fltused = 1; /* the compiler asks for it wherever there is a double */

static void Print(const char* text) {
  unsigned long size = 0, written;
  while (text[size] != '\0') ++size;
  WriteFile(GetStdHandle((unsigned long)-11), text, size, &written, 0);
}

static int Near(double a, double b) {
  return a - b < 0.01 && b - a < 0.01;
}

static int Run(void) {
  static const double target[2] = {83.6, 80.0};
  double now[2];
  char version[64];
  if (TelescopeGetSlewSpeedMax(0) != 9 || GetMjd(2400001.5) != 1.0) return 1;
  if (TelescopeCheck(0, "127.0.0.1", 0, version, sizeof version, 0, 0) != 1) return 2;
  if (TelescopeStart(0, "127.0.0.1", 0, 0) != 1) return 3;
  Print(version);
  TelescopeLook(0, target);
  for (int poll = 0; poll < 300; ++poll) {
    Sleep(100);
    if (TelescopeGetPos(0, now) && Near(now[0], target[0]) && Near(now[1], target[1])) {
      return TelescopeEnd(0) == 1 ? 0 : 4;
    }
  }
  TelescopeEnd(0);
  return 5;
}

void mainCRTStartup(void) {
  ExitProcess((unsigned int)Run());
}
