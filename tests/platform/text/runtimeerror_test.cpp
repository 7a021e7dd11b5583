// SPDX-License-Identifier: MIT
#include "platform/text/runtimeerror.h"

#include "support/strings.h"

#include <cerrno>
#include <set>
#include <utility>
#include <vector>

namespace sixtrace::test {
namespace {

TEST(RuntimeError, NumbersAndSentencesAreThoseThatMessageBoxesShow) {
    const std::vector<std::pair<int, QString>> known{
        {5, u"Invalid procedure call or argument"_s},
        {6, u"Overflow"_s},
        {9, u"Subscript out of range"_s},
        {11, u"Division by zero"_s},
        {13, u"Type mismatch"_s},
        {52, u"Bad file name or number"_s},
        {53, u"File not found"_s},
        {55, u"File already open"_s},
        {57, u"Device I/O error"_s},
        {58, u"File already exists"_s},
        {61, u"Disk full"_s},
        {68, u"Device unavailable"_s},
        {70, u"Permission denied"_s},
        {71, u"Disk not ready"_s},
        {75, u"Path/File access error"_s},
        {76, u"Path not found"_s},
        {91, u"Object variable or With block variable not set"_s},
        {424, u"Object required"_s},
        {429, u"Component can't create object"_s},
        {482, u"Printer error"_s},
        {8005, u"Port already open"_s},
        {32755, u"Cancel was selected."_s},
    };
    for (const auto& [number, sentence] : known) {
        const RuntimeError error = RuntimeError::of(static_cast<ErrorNumber>(number));
        EXPECT_EQ(error.code(), number);
        EXPECT_EQ(error.description, sentence) << number;
    }
}

TEST(RuntimeError, ANumberWithoutASentenceOfItsOwnHasTheGeneralOne) {
    EXPECT_EQ(RuntimeError::of(static_cast<ErrorNumber>(1000)).description,
              u"Application-defined or object-defined error"_s);
}

TEST(RuntimeError, NoErrorSaysNothing) {
    EXPECT_TRUE(RuntimeError::of(ErrorNumber::None).description.isEmpty());
}

TEST(RuntimeError, FailedSystemCallsMapOntoTheNumbers) {
    const std::vector<std::pair<int, int>> mapped{
        {0, 0},       {ENOENT, 53},  {ENOTDIR, 76},      {EACCES, 70}, {EPERM, 70},  {EISDIR, 75},    {EROFS, 75},
        {EEXIST, 58}, {ENOSPC, 61},  {EFBIG, 61},        {EBUSY, 55},  {EBADF, 52},  {EINVAL, 52},    {EIO, 57},
        {ELOOP, 75},  {ETXTBSY, 70}, {ENAMETOOLONG, 52}, {ENXIO, 68},  {ENODEV, 68}, {ENOMEDIUM, 71},
    };
    for (const auto& [system, number] : mapped) {
        EXPECT_EQ(RuntimeError::ofErrno(system).code(), number) << system;
    }
}

TEST(Result, HoldsAValueOrAnError) {
    const Result<int> good(7);
    ASSERT_TRUE(good);
    EXPECT_EQ(good.value(), 7);
    const Result<int> bad(RuntimeError::of(ErrorNumber::Overflow));
    EXPECT_FALSE(bad.ok());
    EXPECT_EQ(bad.error().code(), 6);
    EXPECT_TRUE(success());
}

} // namespace
} // namespace sixtrace::test
