// SPDX-License-Identifier: MIT
#include "platform/controls/toolbar.h"

#include "platform/controls/look.h"
#include "support/strings.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace sixtrace::test {
namespace {

constexpr QRgb kRed = 0xFFFF0000;

/// A toolbar whose second place has a picture: a red left half of 20 by 20 units.
class ToolPicturesOf : public ::testing::Test {
protected:
    ToolPicturesOf() {
        put("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 20 20\">"
            "<rect x=\"0\" y=\"0\" width=\"10\" height=\"20\" fill=\"#ff0000\"/></svg>");
        m_names[2] = m_folder.filePath(u"half.svg"_s);
    }
    void put(const QByteArray& description) const {
        QFile file(m_folder.filePath(u"half.svg"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(description), description.size());
    }
    [[nodiscard]] ToolPictures pictures() const { return ToolPictures(m_names); }

private:
    QTemporaryDir m_folder;
    ToolPictures::Names m_names;
};

/// Whether the left half has this colour and the right half is transparent.
bool isHalf(const QImage& image, QRgb colour) {
    const int middle = image.width() / 2;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != (x < middle ? colour : 0)) {
                return false;
            }
        }
    }
    return true;
}

TEST_F(ToolPicturesOf, APlaceWithoutANameIsAGap) {
    const ToolPictures tools = pictures();
    EXPECT_TRUE(tools.isGap(1));
    EXPECT_FALSE(tools.isGap(2));
}

TEST_F(ToolPicturesOf, ADisplayGetsItAtItsOwnResolution) {
    for (const double ratio : {1.0, 1.5, 2.0}) {
        ToolPictures tools = pictures();
        const QImage& image = tools.image(2, true, ratio);
        EXPECT_EQ(image.width(), static_cast<int>(20 * ratio));
        EXPECT_EQ(image.height(), static_cast<int>(20 * ratio));
        EXPECT_EQ(image.deviceIndependentSize(), QSizeF(20, 20));
        EXPECT_TRUE(isHalf(image, kRed)) << ratio;
    }
}

TEST_F(ToolPicturesOf, AWindowThatMovesToAFinerDisplayGetsItAnew) {
    ToolPictures tools = pictures();
    EXPECT_EQ(tools.image(2, true, 1).width(), 20);
    EXPECT_EQ(tools.image(2, true, 2).width(), 40);
    EXPECT_TRUE(isHalf(tools.image(2, true, 2), kRed));
    EXPECT_EQ(tools.image(2, true, 1).width(), 20);
}

TEST_F(ToolPicturesOf, ADisabledButtonGetsItInTheOneGrey) {
    ToolPictures tools = pictures();
    EXPECT_TRUE(isHalf(tools.image(2, false, 1), bench::kDisabledIcon));
    EXPECT_TRUE(isHalf(tools.image(2, true, 1), kRed));
}

TEST_F(ToolPicturesOf, ADescriptionThatIsNoneGivesAnEmptyPicture) {
    put("no picture");
    ToolPictures tools = pictures();
    EXPECT_TRUE(isHalf(tools.image(2, true, 1), 0));
    EXPECT_EQ(tools.image(2, true, 1).width(), 20);
}

} // namespace
} // namespace sixtrace::test
