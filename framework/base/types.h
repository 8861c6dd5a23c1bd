// SPDX-License-Identifier: MIT
// The system's basic type names, so that code without windows looks the same in every build. They
// agree with windows.h if both are included.
#pragma once

#include <cstdint>

struct HWND__;

using BOOL = int;
using UINT = unsigned int;
using LPCSTR = const char*;
using LPVOID = void*;
using HWND = HWND__*;
#ifdef _WIN32
using HRESULT = long;
#else
using HRESULT = int32_t;
#endif

#ifndef TRUE
#define TRUE 1
#define FALSE 0
#endif
