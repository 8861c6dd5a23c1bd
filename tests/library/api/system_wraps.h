// SPDX-License-Identifier: MIT
// Calls of the module frame that the tests want to see or to fail. The linker sends them here
// (CMakeLists.txt); unless a test says otherwise they go on to the real functions.
#pragma once

#include <functional>
#include <vector>

namespace system_wraps {

/// From now on the sockets cannot be started, until the object goes.
class NoSockets {
 public:
  NoSockets();
  ~NoSockets();
  NoSockets(const NoSockets&) = delete;
  NoSockets& operator=(const NoSockets&) = delete;
};

/// @return how often the sockets have been started so far, and not stopped.
int SocketUsers();

/// @return whether the brushes of the windows were still there when the sockets were last stopped,
/// which is what the framework does as the library exits.
bool HadBrushesAtLastStop();

/// @return whether there was an application object when the sockets were started for the very first
/// time, which the engine does as it is built.
bool HadAppAtFirst();

/// From now on the process ends with the code when the sockets are stopped, which the engine does
/// as it is destroyed.
void EndWhenTheEngineGoes(int code);
/// The same, only when there is an application object still.
void EndWhenAppOutlivesTheEngine(int code);

/// Runs instead of the engine's GetStatus; empty for the engine's own.
void SetGetStatus(std::function<int()> body);

}  // namespace system_wraps
