// SPDX-License-Identifier: MIT
#include "platform/runtimeerror.h"

#include "support/strings.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace sixtrace {
namespace {

TEST(RuntimeError, CarriesNumberAndSentence) {
    EXPECT_EQ(RuntimeError::of(ErrorNumber::Overflow).code(), 6);
    EXPECT_EQ(RuntimeError::of(ErrorNumber::Overflow).description, text("Overflow"));
    EXPECT_EQ(RuntimeError::of(ErrorNumber::CancelSelected).code(), 32755);
    EXPECT_EQ(RuntimeError::of(ErrorNumber::CancelSelected).description, text("Cancel was selected."));
    EXPECT_EQ(RuntimeError::of(ErrorNumber::PortAlreadyOpen).code(), 8005);
    EXPECT_EQ(RuntimeError::of(ErrorNumber::Printer).description, text("Printer error"));
}

TEST(RuntimeError, FailingSystemCallsMapOntoNumbers) {
    EXPECT_EQ(RuntimeError::ofErrno(ENOENT).number, ErrorNumber::FileNotFound);
    EXPECT_EQ(RuntimeError::ofErrno(EACCES).number, ErrorNumber::PermissionDenied);
    EXPECT_EQ(RuntimeError::ofErrno(ENOSPC).number, ErrorNumber::DiskFull);
    EXPECT_EQ(RuntimeError::ofErrno(EISDIR).number, ErrorNumber::PathAccess);
    EXPECT_EQ(RuntimeError::ofErrno(ENOTDIR).number, ErrorNumber::PathNotFound);
    EXPECT_EQ(RuntimeError::ofErrno(EIO).number, ErrorNumber::DeviceIo);
}

TEST(Result, HoldsAValueOrAnError) {
    const Result<int> value(7);
    ASSERT_TRUE(value.ok());
    EXPECT_EQ(value.value(), 7);
    const Result<int> error(RuntimeError::of(ErrorNumber::DivisionByZero));
    ASSERT_FALSE(error.ok());
    EXPECT_EQ(error.error().code(), 11);
    EXPECT_TRUE(success().ok());
}

} // namespace
} // namespace sixtrace
