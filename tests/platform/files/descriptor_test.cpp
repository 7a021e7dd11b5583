// SPDX-License-Identifier: MIT
#include "platform/files/descriptor.h"

#include <gtest/gtest.h>

namespace sixtrace::test {
namespace {

Descriptor openNull() {
    return Descriptor(::open("/dev/null", O_RDONLY | O_CLOEXEC));
}

bool isOpen(int number) {
    return ::fcntl(number, F_GETFD) != -1;
}

TEST(Descriptors, AreClosedWithTheirObject) {
    int number = 0;
    {
        const Descriptor file = openNull();
        ASSERT_TRUE(file);
        number = file.number();
        EXPECT_TRUE(isOpen(number));
    }
    EXPECT_FALSE(isOpen(number));
}

TEST(Descriptors, AMoveLeavesNone) {
    Descriptor file = openNull();
    const int number = file.number();
    Descriptor other = std::move(file);
    EXPECT_FALSE(file); // NOLINT(bugprone-use-after-move): that is what is tested
    EXPECT_EQ(other.number(), number);
    EXPECT_TRUE(isOpen(number));
}

TEST(Descriptors, AnAssignmentClosesTheOldOne) {
    Descriptor file = openNull();
    const int old = file.number();
    file = openNull();
    EXPECT_NE(file.number(), old);
    EXPECT_FALSE(isOpen(old));
}

TEST(Descriptors, AGivenAwayOneStaysOpen) {
    Descriptor file = openNull();
    const int number = file.release();
    EXPECT_FALSE(file);
    EXPECT_TRUE(isOpen(number));
    ::close(number);
}

TEST(Descriptors, ClosingLeavesErrno) {
    Descriptor file = openNull();
    errno = ENOENT;
    EXPECT_TRUE(file.close());
    EXPECT_EQ(errno, ENOENT);
    EXPECT_TRUE(file.close()) << "there is nothing left to close";
}

TEST(Descriptors, AFailedOpenIsNone) {
    EXPECT_FALSE(Descriptor(::open("/nowhere/at/all", O_RDONLY)));
}

} // namespace
} // namespace sixtrace::test
