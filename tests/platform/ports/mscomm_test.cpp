// SPDX-License-Identifier: MIT
#include "platform/ports/mscomm.h"

#include "acquire/ptypeer.h"
#include "platform/ports/serialports.h"
#include "support/strings.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace sixtrace::test {
namespace {

ErrorNumber numberOf(const Outcome& outcome) {
    return outcome.ok() ? ErrorNumber::None : outcome.error().number;
}

/// All port numbers lead to the same device.
MSComm::Locator always(const QString& location) {
    return [location](int) { return location; };
}

TEST(SerialControl, TakesEveryParityEveryCountOfDataBitsAndEveryStop) {
    MSComm port(always(QString()));
    for (const char* settings :
         {"115200,N,8,1", "9600,E,7,2", "300,O,5,1.5", "1200,M,6,1", "2400,S,8,1", "9600,o,8,1"}) {
        EXPECT_TRUE(port.setSettings(QString::fromLatin1(settings)).ok()) << settings;
    }
}

TEST(SerialControl, RefusesATextThatSaysNoSettings) {
    MSComm port(always(QString()));
    for (const char* settings : {"", "9600", "9600,N,8", "9600,N,8,1,1", "0,N,8,1", "-9600,N,8,1", "fast,N,8,1",
                                 "9600,X,8,1", "9600,,8,1", "9600,N,4,1", "9600,N,9,1", "9600,N,8,3", "9600,N,8,"}) {
        EXPECT_EQ(numberOf(port.setSettings(QString::fromLatin1(settings))), ErrorNumber::InvalidCall) << settings;
    }
}

TEST(SerialControl, AnOpenPortKeepsItsNumberAndIsNotOpenedAgain) {
    const PtyPeer peer;
    MSComm port(always(peer.location()));
    ASSERT_TRUE(port.setCommPort(3).ok());
    ASSERT_TRUE(port.setPortOpen(true).ok());
    EXPECT_EQ(numberOf(port.setCommPort(4)), ErrorNumber::PortAlreadyOpen);
    EXPECT_EQ(port.CommPort(), 3);
    EXPECT_EQ(numberOf(port.setPortOpen(true)), ErrorNumber::PortAlreadyOpen);
    EXPECT_TRUE(port.PortOpen());
    ASSERT_TRUE(port.setPortOpen(false).ok());
    EXPECT_TRUE(port.setCommPort(4).ok());
}

TEST(SerialControl, TwoControlsDoNotShareADevice) {
    const PtyPeer peer;
    MSComm first(always(peer.location()));
    MSComm second(always(peer.location()));
    ASSERT_TRUE(first.setPortOpen(true).ok());
    EXPECT_EQ(numberOf(second.setPortOpen(true)), ErrorNumber::PortAlreadyOpen);
    ASSERT_TRUE(first.setPortOpen(false).ok());
    EXPECT_TRUE(second.setPortOpen(true).ok());
}

TEST(SerialControl, ADeviceLockedByAnotherUserOfItIsBusy) {
    const PtyPeer peer;
    QSerialPort other(peer.location());
    ASSERT_TRUE(other.open(QIODevice::ReadWrite));
    MSComm port(always(peer.location()));
    EXPECT_EQ(numberOf(port.setPortOpen(true)), ErrorNumber::PortAlreadyOpen);
    EXPECT_FALSE(port.PortOpen());
}

TEST(SerialControl, WhatIsNoTerminalDoesNotOpen) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"file"_s);
    ASSERT_TRUE(QFile(path).open(QIODevice::WriteOnly));
    MSComm port(always(path));
    EXPECT_EQ(numberOf(port.setPortOpen(true)), ErrorNumber::DeviceIo);
    MSComm nowhere(always(folder.filePath(u"none"_s)));
    EXPECT_EQ(numberOf(nowhere.setPortOpen(true)), ErrorNumber::DeviceUnavailable);
    MSComm unknown(always(QString()));
    EXPECT_EQ(numberOf(unknown.setPortOpen(true)), ErrorNumber::DeviceUnavailable);
}

TEST(SerialControl, AWaitWithoutLimitOnAClosedPortEndsAtOnce) {
    MSComm port(always(QString()));
    EXPECT_EQ(port.waitForBytes(1, 0), Waited::Lost);
    EXPECT_EQ(port.waitForBytes(0, 0), Waited::Enough);
}

TEST(SerialPortLocation, APinnedNameLeadsToTheDeviceItself) {
    const PtyPeer peer;
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"ports"_s));
    ASSERT_TRUE(QFile::link(peer.location(), folder.filePath(u"ports/com7"_s)));
    EXPECT_EQ(serialPortLocation(folder.path() + u'/', 7), peer.location());
    EXPECT_EQ(serialPortLocation(folder.path() + u'/', 0), QString());
}

} // namespace
} // namespace sixtrace::test
