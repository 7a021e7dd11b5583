// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <gtest/gtest.h>

#include <ostream>

namespace sixtrace::test {

// Tests write a QString as u"..."_s.
using namespace Qt::StringLiterals;

} // namespace sixtrace::test

// With these, failing expectations print texts readably. They stand in the global namespace, as the types do, because
// the test framework looks for them there.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QByteArray& bytes, std::ostream* out) {
    *out << '"' << bytes.toStdString() << '"';
}
