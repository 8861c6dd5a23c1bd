/* SPDX-License-Identifier: MIT */
/* nosock.dll stands in for the system's socket library, whose name is as long: the loader binds a
 * copy of velquin.dll to it that names it in its import table. Each function is the system's own
 * (nosock.def), only the start can be refused. One thread at a time. */
#include <winsock2.h>

static unsigned refused;
static int asked;

/* Refuses the starts whose bit is set: the next one's is the lowest. Forgets those before. */
void RefuseStarts(unsigned starts) {
  refused = starts;
  asked = 0;
}

/* How many starts have been asked for since. */
int StartsAsked(void) {
  return asked;
}

int StartSockets(WORD version, WSADATA* data) {
  const unsigned bit = asked < 32 ? 1u << asked : 0;
  ++asked;
  return refused & bit ? WSASYSNOTREADY : WSAStartup(version, data);
}
