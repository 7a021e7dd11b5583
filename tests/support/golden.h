// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QImage>
#include <QString>

#include <gtest/gtest.h>

namespace sixtrace::test {

/// Compares `actual` to the picture `name`.png in `folder`, to the pixel. On failure the actual picture and one of the
/// differing pixels are written beside it. With SIXTRACE_REGENERATE set in the environment the expected picture is
/// written instead; look at it before it is committed.
inline void expectGolden(const QImage& actual, const QString& folder, const QString& name) {
    const QString base = folder + u'/' + name;
    const QString expectedPath = base + QStringLiteral(".png");
    const QString actualPath = base + QStringLiteral(".actual.png");
    const QString differencePath = base + QStringLiteral(".difference.png");
    if (qEnvironmentVariableIsSet("SIXTRACE_REGENERATE")) {
        ASSERT_TRUE(actual.save(expectedPath)) << expectedPath.toStdString();
        return;
    }
    const QImage mine = actual.convertToFormat(QImage::Format_RGB32);
    const QImage expected = QImage(expectedPath).convertToFormat(QImage::Format_RGB32);
    if (mine == expected) {
        QFile::remove(actualPath);
        QFile::remove(differencePath);
        return;
    }
    EXPECT_TRUE(mine.save(actualPath));
    ASSERT_EQ(mine.size(), expected.size()) << expectedPath.toStdString();
    QImage difference(mine.size(), QImage::Format_RGB32);
    int differing = 0;
    for (int y = 0; y < mine.height(); ++y) {
        for (int x = 0; x < mine.width(); ++x) {
            const bool same = mine.pixel(x, y) == expected.pixel(x, y);
            difference.setPixel(x, y, same ? 0xFFFFFFFFU : 0xFFFF0000U);
            differing += same ? 0 : 1;
        }
    }
    EXPECT_TRUE(difference.save(differencePath));
    ADD_FAILURE() << differing << " pixels differ from " << expectedPath.toStdString();
}

} // namespace sixtrace::test
