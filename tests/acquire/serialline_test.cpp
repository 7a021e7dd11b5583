// SPDX-License-Identifier: MIT
// What can happen to the serial line during a transfer: it goes away, another program holds it, its settings change.
#include "acquire/ptypeer.h"
#include "acquire/ttycalls.h"
#include "acquire/ymodemptyfixture.h"
#include "platform/ports/mscomm.h"
#include "support/openfiles.h"
#include "support/strings.h"

#include <QCoreApplication>
#include <QTimer>

#include <thread>

namespace sixtrace::test {
namespace {

TEST_F(YModemOverALine, ASecondOpenOfThePortIsAnsweredWith8005) {
    MSComm second([this](int) { return peer.location(); });
    const Outcome opened = second.setPortOpen(true);
    ASSERT_FALSE(opened.ok());
    EXPECT_EQ(opened.error().number, ErrorNumber::PortAlreadyOpen);
    ASSERT_TRUE(port.setPortOpen(false).ok());
    EXPECT_TRUE(second.setPortOpen(true).ok());
}

TEST_F(YModemOverALine, APulledPlugEndsAWaitWithoutLimit) {
    auto other = std::make_unique<PtyPeer>();
    MSComm line([&other](int) { return other->location(); });
    ASSERT_TRUE(line.setPortOpen(true).ok());
    std::thread pull([&other] {
        PtyPeer::pause(100);
        other.reset();
    });
    EXPECT_EQ(line.waitForBytes(1, 0), Waited::Lost);
    pull.join();
    line.Output("lost");
    EXPECT_EQ(line.waitForBytes(1, 20), Waited::TimedOut);
}

TEST_F(YModemOverALine, ALineThatHasGoneIsLeftAtOnceAndWhatHadComeCanStillBeRead) {
    auto other = std::make_unique<PtyPeer>();
    QString location = other->location();
    MSComm line([&location](int) { return location; });
    ASSERT_TRUE(line.setPortOpen(true).ok());
    other->send("abc");
    ASSERT_EQ(line.waitForBytes(3, 60000), Waited::Enough);
    ASSERT_TRUE(isOpenHere(location));
    other.reset();
    while (!line.lost()) {
        QCoreApplication::processEvents();
    }
    QCoreApplication::processEvents();
    // The descriptor of a line that has gone is always ready, so an open one would keep the event loop busy.
    EXPECT_EQ(deadHandles(u"/dev/pts/"_s), 0);
    EXPECT_TRUE(line.PortOpen()) << "it was not closed";
    EXPECT_EQ(line.InBufferCount(), 3);
    EXPECT_EQ(line.waitForBytes(3, 20), Waited::Enough);
    EXPECT_EQ(line.Input(2), "ab");
    EXPECT_EQ(line.waitForBytes(2, 20), Waited::TimedOut);
    EXPECT_EQ(line.waitForBytes(2, 0), Waited::Lost);
    line.Output("lost");
    line.discard();
    EXPECT_EQ(line.InBufferCount(), 0);
    EXPECT_EQ(line.Input(5), "");
    EXPECT_EQ(line.setCommPort(2).error().number, ErrorNumber::PortAlreadyOpen);
    ASSERT_TRUE(line.setPortOpen(false).ok());
    EXPECT_FALSE(line.PortOpen());
    EXPECT_FALSE(line.lost());
}

TEST_F(YModemOverALine, ALineThatGoesDuringAWaitLetsItsLimitRunOut) {
    auto other = std::make_unique<PtyPeer>();
    MSComm line([&other](int) { return other->location(); });
    ASSERT_TRUE(line.setPortOpen(true).ok());
    const qint64 start = line.clock();
    QTimer::singleShot(20, [&other] { other.reset(); });
    EXPECT_EQ(line.waitForBytes(1, 400), Waited::TimedOut);
    EXPECT_GE(line.clock() - start, 395);
    EXPECT_TRUE(line.lost());
}

TEST_F(YModemOverALine, APortClosedByOthersEndsTheWaitForIt) {
    QTimer::singleShot(20, [this] { static_cast<void>(port.setPortOpen(false)); });
    EXPECT_EQ(port.waitForBytes(1, 600000), Waited::TimedOut);
    QTimer::singleShot(20, [this] { static_cast<void>(port.setPortOpen(false)); });
    ASSERT_TRUE(port.setPortOpen(true).ok());
    EXPECT_EQ(port.waitForBytes(1, 0), Waited::Lost);
}

TEST_F(YModemOverALine, TryingAPortTellsOnesOwnFromAnothersAndLeavesAnOpenOneAlone) {
    PtyPeer other;
    MSComm line([this, &other](int number) {
        return number == 1 ? peer.location() : number == 2 ? other.location() : QString();
    });
    EXPECT_EQ(line.tryPort(1).error().number, ErrorNumber::PortAlreadyOpen) << "the fixture holds it";
    ASSERT_TRUE(port.setPortOpen(false).ok());
    EXPECT_TRUE(line.tryPort(1).ok());
    EXPECT_FALSE(line.PortOpen());
    EXPECT_EQ(line.tryPort(3).error().number, ErrorNumber::DeviceUnavailable);
    EXPECT_EQ(line.tryPort(1, u"nonsense"_s).error().number, ErrorNumber::InvalidCall);
    ASSERT_TRUE(line.setCommPort(1).ok());
    ASSERT_TRUE(line.setPortOpen(true).ok());
    EXPECT_TRUE(line.tryPort(1).ok()) << "its own";
    EXPECT_TRUE(line.tryPort(2).ok());
    EXPECT_EQ(line.tryPort(3).error().number, ErrorNumber::DeviceUnavailable);
    EXPECT_TRUE(line.PortOpen());
    EXPECT_EQ(line.CommPort(), 1);
}

TEST_F(YModemOverALine, WhatWasWrittenHasLeftBeforeTheLineGetsItsOldSettingsBack) {
    ttycalls::begin();
    port.Output("the last acknowledge");
    ASSERT_TRUE(port.setPortOpen(false).ok());
    EXPECT_EQ(ttycalls::end(), (std::vector<std::string>{"drain", "settings"}));
}

TEST_F(YModemOverALine, TheSettingsTextSetsRateParityDataAndStopBits) {
    struct Case {
        const char* settings;
        tcflag_t flags;
        speed_t speed;
    };
    for (const Case& each :
         {Case{"9600,N,8,1", CS8, B9600}, Case{"19200,E,7,2", CS7 | PARENB | CSTOPB, B19200},
          Case{"57600,o,6,1", CS6 | PARENB | PARODD, B57600}, Case{"115200,e,5,1", CS5 | PARENB, B115200}}) {
        ttycalls::begin();
        ASSERT_TRUE(port.setSettings(QString::fromUtf8(each.settings)).ok()) << each.settings;
        static_cast<void>(ttycalls::end());
        const std::vector<termios> asked = ttycalls::settingsAsked();
        // The port makes one setting after the other, and the terminal does not keep them in between.
        for (const tcflag_t part : {tcflag_t{CSIZE}, tcflag_t{PARENB | PARODD}, tcflag_t{CSTOPB}}) {
            EXPECT_TRUE(std::any_of(
                asked.begin(), asked.end(),
                [&each, part](const termios& line) { return (line.c_cflag & part) == (each.flags & part); }))
                << each.settings << ' ' << part;
        }
        ASSERT_FALSE(asked.empty());
        EXPECT_EQ(cfgetospeed(&asked.back()), each.speed) << each.settings;
    }
    for (const char* wrong : {"", "9600,N,8", "0,N,8,1", "x,N,8,1", "9600,X,8,1", "9600,N,4,1", "9600,N,9,1",
                              "9600,N,8,3", "9600,N,8,1,1"}) {
        const Outcome set = port.setSettings(QString::fromUtf8(wrong));
        ASSERT_FALSE(set.ok()) << wrong;
        EXPECT_EQ(set.error().number, ErrorNumber::InvalidCall) << wrong;
    }
}

} // namespace
} // namespace sixtrace::test
