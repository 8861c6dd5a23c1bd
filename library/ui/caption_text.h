// SPDX-License-Identifier: MIT
// How a caption that is too long is cut. Measuring is left to the caller, so that the rule can be
// tested without a screen.
#pragma once

#include <functional>

#include "framework/base/cstring.h"
#include "framework/win/windows_base.h"

/// @param limit pixels that there are @param width pixels of a text
/// @return the text when it fits, else its longest beginning that fits with "..." behind it, found
///         by growing it character by character; nothing when not even one character does.
CString CutCaption(const CString& text, LONG limit,
                   const std::function<LONG(const CString&)>& width);
