// SPDX-License-Identifier: MIT
#include "output/realcontent.h"

#include <gtest/gtest.h>

#include <string>

namespace sixtrace::test {
namespace {

std::string piece(const ZipContent& content, std::size_t from, std::size_t count) {
    std::string bytes(count, '?');
    content.make(bytes.data(), from, count);
    return bytes;
}

TEST(RealContent, HoldsTheHeadAndTheValuesLittleEndian) {
    // 1.0 is 3F800000 and -2.5 is C0200000 as 32-bit reals.
    const ZipContent content = realsOf<float>("head!", 2, [](int i) { return i == 0 ? 1.0F : -2.5F; });
    ASSERT_EQ(content.size, 13U);
    EXPECT_EQ(piece(content, 0, 13), std::string("head!\x00\x00\x80\x3F\x00\x00\x20\xC0", 13));
}

TEST(RealContent, APieceMayStartAndEndWithinAValue) {
    const ZipContent content = realsOf<double>("abc", 4, [](int i) { return 1.0 / (i + 3); });
    const std::string whole = piece(content, 0, content.size);
    for (std::size_t from = 0; from < whole.size(); ++from) {
        for (std::size_t count = 1; count <= whole.size() - from; ++count) {
            EXPECT_EQ(piece(content, from, count), whole.substr(from, count)) << from << " " << count;
        }
    }
}

} // namespace
} // namespace sixtrace::test
