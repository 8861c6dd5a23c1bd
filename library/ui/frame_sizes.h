// SPDX-License-Identifier: MIT
// The widths of the painted frame, in pixels, from the system's metrics.
#pragma once

#include "framework/win/windows_base.h"

struct FrameSizes {
  int side = ::GetSystemMetrics(SM_CXSIZEFRAME) + ::GetSystemMetrics(SM_CXFIXEDFRAME) +
             ::GetSystemMetrics(SM_CXBORDER);
  int bottom = ::GetSystemMetrics(SM_CYSIZEFRAME) + ::GetSystemMetrics(SM_CYFIXEDFRAME) +
               ::GetSystemMetrics(SM_CYBORDER);
  int caption = ::GetSystemMetrics(SM_CYCAPTION);
  int band = bottom + caption;  ///< the caption's band at the top
};
