// SPDX-License-Identifier: MIT
#pragma once

#include "support/strings.h"

/// A QString of UTF-8 text.
inline QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}
