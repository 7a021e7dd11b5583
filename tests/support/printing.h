// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <gtest/gtest.h>

#include <ostream>

// Failing expectations print texts as texts. The framework finds these beside the type, in the global namespace.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QByteArray& bytes, std::ostream* out) {
    *out << '"' << bytes.toStdString() << '"';
}
