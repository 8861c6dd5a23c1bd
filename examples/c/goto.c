/* SPDX-License-Identifier: MIT */
/* Sends the mount to a position and waits until it is there. Loads velquin.dll at run time.
   goto-c ADDRESS RA DEC (degrees): exit code 0 when it arrived, 1 when not, 2 for wrong usage. */
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <telescope_api.h>
#include <windows.h>

typedef struct Driver {
  HMODULE library; /* stays loaded to the end of the program */
  TelescopeCheckFn check;
  TelescopeStartFn start;
  TelescopeLookFn look;
  TelescopeGetPosFn getPos;
  TelescopeStopFn stop;
  TelescopeEndFn end;
} Driver;

/* The header has a function type for each export. void (*)(void) may be cast to any of them. */
#define FIND(name) (name##Fn)(void (*)(void)) GetProcAddress(driver->library, #name)

static int LoadDriver(Driver* driver) {
  driver->library = LoadLibraryA("velquin.dll"); /* looked for beside this program first */
  if (!driver->library) return 0;
  driver->check = FIND(TelescopeCheck);
  driver->start = FIND(TelescopeStart);
  driver->look = FIND(TelescopeLook);
  driver->getPos = FIND(TelescopeGetPos);
  driver->stop = FIND(TelescopeStop);
  driver->end = FIND(TelescopeEnd);
  return driver->check && driver->start && driver->look && driver->getPos && driver->stop &&
         driver->end;
}

static int ReadDegrees(const char* name, const char* text, double low, double high, double* value) {
  char* rest;
  *value = strtod(text, &rest);
  if (rest != text && *rest == '\0' && *value >= low && *value <= high) return 1;
  fprintf(stderr, "goto-c: %s must be degrees from %g to %g, not '%s'\n", name, low, high, text);
  return 0;
}

static double SkyDistance(const double a[2], const double b[2]) {
  const double degree = 3.14159265358979323846 / 180.0;
  const double cosine = sin(a[1] * degree) * sin(b[1] * degree) +
                        cos(a[1] * degree) * cos(b[1] * degree) * cos((a[0] - b[0]) * degree);
  return acos(fmax(-1.0, fmin(1.0, cosine))) / degree;
}

/* The driver tells positions, not arrivals. Ten seconds without a new position are a failure. */
static int WaitUntilThere(const Driver* driver, const double target[2]) {
  double now[2], last[2] = {0.0, 0.0};
  int known = 0;
  for (int quietMs = 0; quietMs < 10000; quietMs += 250) {
    Sleep(250);
    if (!driver->getPos(NULL, now)) continue; /* no answer just now */
    const double left = SkyDistance(now, target);
    if (left < 1.0 / 60.0) return 1;
    if (known && SkyDistance(now, last) < 0.01) continue; /* not moving */
    printf("%.2f degrees left\n", left);
    known = 1;
    quietMs = 0;
    last[0] = now[0];
    last[1] = now[1];
  }
  driver->stop(NULL);
  return 0;
}

int main(int argc, char** argv) {
  Driver driver;
  double target[2];
  char version[64];
  if (argc != 4) {
    fprintf(stderr, "usage: goto-c ADDRESS RA DEC, for example goto-c 127.0.0.1 83.6 80\n");
    return 2;
  }
  if (!ReadDegrees("RA", argv[2], 0.0, 360.0, &target[0])) return 2;
  if (!ReadDegrees("DEC", argv[3], -90.0, 90.0, &target[1])) return 2;
  if (!LoadDriver(&driver)) {
    fprintf(stderr, "goto-c: velquin.dll cannot be loaded\n");
    return 1;
  }
  /* TelescopeStart would tell the user in a message box; TelescopeCheck only answers. */
  if (!driver.check(NULL, argv[1], NULL, version, sizeof version, NULL, 0) ||
      !driver.start(NULL, argv[1], NULL, 0)) {
    fprintf(stderr, "goto-c: no mount answers at %s\n", argv[1]);
    return 1;
  }
  printf("connected, version %s\n", version); /* here: TelescopeBaseSetting, and wait a second */
  driver.look(NULL, target);
  const int there = WaitUntilThere(&driver, target);
  if (there) printf("arrived\n");
  if (!there) fprintf(stderr, "goto-c: the mount does not get there (below the horizon?)\n");
  driver.end(NULL); /* once for the start; waits while the driver shows a message box */
  return there ? 0 : 1;
}
