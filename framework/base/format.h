// SPDX-License-Identifier: MIT
// printf-style formatting with numbers that do not depend on the process's locale: the host may
// have set one with a decimal comma, and the controller would misread every number.
#pragma once

#include <cstdarg>

class CString;

/// Appends the formatted text. See CString::Format for the conversions.
void AppendFormatted(CString& target, const char* format, va_list arguments);
