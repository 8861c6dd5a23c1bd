// SPDX-License-Identifier: MIT
// The library's two static objects, and their work at load and unload.
#pragma once

class CTelescope;

/// The only engine; lives as long as the library is loaded.
CTelescope& TheTelescope();

/// At load, after the static objects were built. @return false makes the load fail.
bool ModuleAttached();

/// At unload, before the static objects are destroyed. @param processEnds the system has already
/// stopped every other thread. If one of them was inside the library, nothing is cleaned up.
void ModuleDetaching(bool processEnds);
