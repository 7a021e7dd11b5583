// SPDX-License-Identifier: MIT
#include "platform/files/filenames.h"

#include "support/strings.h"

namespace sixtrace::test {
namespace {

TEST(FileNames, HoldTwoDigitsEachOfYearMonthDayHourAndMinute) {
    EXPECT_EQ(dateName(QDateTime(QDate(2026, 3, 4), QTime(5, 6, 7))), u"D2603040506"_s);
    EXPECT_EQ(dateName(QDateTime(QDate(2009, 12, 31), QTime(23, 59, 59))), u"D0912312359"_s);
}

TEST(FileNames, ThePathEndsBeforeTheLastSeparatorAndAPathWithoutOneIsAnError) {
    EXPECT_EQ(getPath(u"/a/b/c.bin"_s).value(), u"/a/b"_s);
    EXPECT_EQ(getPath(u"/c.bin"_s).value(), QString());
    EXPECT_EQ(getPath(u"c.bin"_s).error().number, ErrorNumber::InvalidCall);
}

TEST(WithSeparator, AddsOneAndNeverTwo) {
    EXPECT_EQ(withSeparator(u"/some/where"_s), u"/some/where/"_s);
    EXPECT_EQ(withSeparator(u"/some/where/"_s), u"/some/where/"_s);
    EXPECT_EQ(withSeparator(u"/"_s), u"/"_s);
}

TEST(FileNames, AnExtensionIsAddedOnlyToANameWithoutOne) {
    EXPECT_EQ(withExtension(u"/a.b/table"_s, u".txt"_s), u"/a.b/table.txt"_s);
    EXPECT_EQ(withExtension(u"/a/table.dat"_s, u".txt"_s), u"/a/table.dat"_s);
    EXPECT_EQ(withExtension(u"/a/"_s, u".txt"_s), u"/a/"_s);
}

TEST(NameFromTheLine, LosesEveryFolderPart) {
    EXPECT_EQ(withoutFolder(u"a/b\\c:d.bmp"_s), u"d.bmp"_s);
    EXPECT_EQ(withoutFolder(u"plain.bmp"_s), u"plain.bmp"_s);
    EXPECT_EQ(withoutFolder(u"folder/"_s), QString());
}

} // namespace
} // namespace sixtrace::test
