// SPDX-License-Identifier: MIT
#include "acquire/transfergate.h"

#include "support/openfiles.h"
#include "support/strings.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace sixtrace::test {
namespace {

TEST(TransferGate, LetsOneTransferInAtATime) {
    TransferGate gate;
    EXPECT_FALSE(gate.held());
    {
        const auto first = gate.enter();
        ASSERT_TRUE(first);
        EXPECT_TRUE(gate.held());
        EXPECT_FALSE(gate.enter());
        EXPECT_FALSE(gate.enterForStart()) << "the user has not given it up";
        EXPECT_FALSE(first->ended());
    }
    EXPECT_FALSE(gate.held());
    EXPECT_TRUE(gate.enterForStart());
}

TEST(TransferGate, ATransferThatIsGivenUpRunsOnForATickAndIsEndedByAStart) {
    TransferGate gate;
    int released = 0;
    auto first = gate.enter();
    first->onEnd([&released] { ++released; });
    gate.giveUp();
    EXPECT_FALSE(gate.enter());
    EXPECT_FALSE(first->ended());
    auto second = gate.enterForStart();
    ASSERT_TRUE(second);
    EXPECT_TRUE(first->ended());
    EXPECT_FALSE(second->ended());
    EXPECT_EQ(released, 1);
    first.reset();
    EXPECT_TRUE(gate.held()) << "the second one runs";
    EXPECT_EQ(released, 1);
    EXPECT_FALSE(gate.enterForStart()) << "the second one was not given up";
    second.reset();
    EXPECT_FALSE(gate.held());
}

TEST(TransferGate, GivingUpWithoutATransferMeansNothingToTheNext) {
    TransferGate gate;
    gate.giveUp();
    const auto first = gate.enter();
    EXPECT_FALSE(gate.enterForStart());
}

TEST(TransferGate, APassTakesItsFileWithIt) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"got.bin"_s);
    TransferGate gate;
    {
        const auto pass = gate.enter();
        ASSERT_TRUE(pass->file().open(path).ok());
        EXPECT_TRUE(isOpenHere(path));
    }
    EXPECT_FALSE(isOpenHere(path));
    auto first = gate.enter();
    ASSERT_TRUE(first->file().open(path).ok());
    gate.giveUp();
    const auto second = gate.enterForStart();
    EXPECT_FALSE(isOpenHere(path)) << "at once, not when the first transfer returns";
    EXPECT_EQ(first->file().write("late").error().number, ErrorNumber::BadFileNumber);
}

TEST(TransferGate, APassMayOutliveItsGate) {
    auto gate = std::make_unique<TransferGate>();
    const auto pass = gate->enter();
    gate.reset();
    EXPECT_FALSE(pass->ended());
}

} // namespace
} // namespace sixtrace::test
