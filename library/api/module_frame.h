// SPDX-License-Identifier: MIT
// The library's two static objects and what happens to them at load and unload.
#pragma once

class CTelescope;

/// The one engine; lives as long as the library is loaded.
CTelescope& TheTelescope();

/// At load, after the static objects were made. @return false makes the load fail.
bool ModuleAttached();

/// At unload, before the static objects are destroyed. @param processEnds every other thread has
/// been stopped already; if one of them was at work here, everything is left to the system.
void ModuleDetaching(bool processEnds);
