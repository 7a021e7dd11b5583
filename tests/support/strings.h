// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <ostream>

/// Lets a failing check print the text itself. GoogleTest finds it by the name.
inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

/// UTF-8 text.
inline QString text(const char* utf8) { return QString::fromUtf8(utf8); }
