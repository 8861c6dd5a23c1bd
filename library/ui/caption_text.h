// SPDX-License-Identifier: MIT
// How a caption that is too long is shortened. The caller measures the text, so that tests of this
// rule need no screen.
#pragma once

#include <functional>

#include "framework/base/cstring.h"
#include "framework/win/windows_base.h"

/// @param limit available pixels @param width returns the width of a text in pixels
/// @return the text if it fits, else its longest beginning that fits followed by "...". The
///         beginning grows character by character; the result is empty if not even one character
///         fits.
CString CutCaption(const CString& text, LONG limit,
                   const std::function<LONG(const CString&)>& width);
