// SPDX-License-Identifier: MIT
#pragma once

#include "support/printing.h"

#include <QString>

/// A QString of UTF-8 text.
inline QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}
