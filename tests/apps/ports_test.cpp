// SPDX-License-Identifier: MIT
// kqx ports with a terminal that is pinned as com1, and with the simulated instrument. tests/ttdll/usbbus_test.cpp
// tests devices on the USB bus.
#include "apps/fetchfixture.h"

#include "platform/ports/mscomm.h"
#include "support/strings.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <pty.h>
#include <unistd.h>

namespace sixtrace::test {
namespace {

/// A pseudo terminal that this process holds.
class Terminal {
public:
    Terminal() {
        char name[128] = {};
        EXPECT_EQ(openpty(&m_master, &m_slave, name, nullptr, nullptr), 0);
        m_name = QString::fromLatin1(name);
    }
    ~Terminal() { closeBoth(); }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    [[nodiscard]] QString name() const { return m_name; }
    /// Takes the device away.
    void closeBoth() {
        for (int* handle : {&m_master, &m_slave}) {
            if (*handle >= 0) {
                ::close(*handle);
            }
            *handle = -1;
        }
    }

private:
    int m_master = -1;
    int m_slave = -1;
    QString m_name;
};

class Ports : public Fetch {
protected:
    Ports() { QDir(folder.path()).mkdir(u"ports"_s); }
    void pin(const QString& device, const QString& name) const {
        ASSERT_TRUE(QFile::link(device, path(u"ports/"_s + name)));
    }
    /// The output of kqx ports --json. The exit code has to be 0 if one of the ways opens, otherwise 1.
    QJsonObject json() {
        const Ran ran = kqx({u"ports"_s, u"--json"_s});
        EXPECT_EQ(ran.exitCode, ran.out.contains("\"state\": \"open\"") ? 0 : 1) << ran.err.toStdString();
        return QJsonDocument::fromJson(ran.out).object();
    }
    /// The row of that name among the ways.
    static QJsonObject way(const QJsonObject& all, const QString& key, const QJsonValue& value) {
        for (const QJsonValue each : all.value(u"ways"_s).toArray()) {
            if (each.toObject().value(key) == value) {
                return each.toObject();
            }
        }
        return {};
    }
};

TEST_F(Ports, APinnedPortAndTheSimulatedInstrumentAreListedAndOpen) {
    serve({});
    const Terminal terminal;
    pin(terminal.name(), u"com12"_s);
    const QJsonObject all = json();
    const QJsonObject pinned = way(all, u"name"_s, u"com12"_s);
    EXPECT_EQ(pinned.value(u"number"_s).toInt(), 12);
    EXPECT_EQ(pinned.value(u"kind"_s).toString(), u"serial"_s);
    EXPECT_EQ(pinned.value(u"device"_s).toString(), terminal.name());
    EXPECT_TRUE(pinned.value(u"pinned"_s).toBool());
    EXPECT_EQ(pinned.value(u"state"_s).toString(), u"open"_s);
    EXPECT_EQ(pinned.value(u"remedy"_s).toString(), QString());
    const QJsonObject simulated = way(all, u"kind"_s, u"socket"_s);
    EXPECT_EQ(simulated.value(u"state"_s).toString(), u"open"_s);
    EXPECT_EQ(simulated.value(u"device"_s).toString(), path(u"instrument.socket"_s));
    EXPECT_EQ(all.value(u"usb"_s).toObject().value(u"wanted"_s).toString(), u"1209:0001"_s);
    EXPECT_EQ(all.value(u"usb"_s).toObject().value(u"settings"_s).toString(), path(u"ttdll.ini"_s));

    const Ran text = kqx({u"ports"_s});
    EXPECT_EQ(text.exitCode, 0);
    EXPECT_TRUE(text.out.contains(u"12 com12 (pinned)  %1  open\n"_s.arg(terminal.name()).toUtf8()))
        << text.out.toStdString();
    EXPECT_TRUE(text.out.contains("usb (simulated)  "));
    EXPECT_EQ(fetchUsb().exitCode, 0) << "asking has disturbed nobody";
}

TEST_F(Ports, ABusyPortNamesItsHolder) {
    const Terminal terminal;
    MSComm holder([&terminal](int) { return terminal.name(); });
    ASSERT_TRUE(holder.setPortOpen(true).ok());
    pin(terminal.name(), u"com12"_s);
    const Ran ran = kqx({u"ports"_s});
    const QString process = u"(process %1)"_s.arg(QCoreApplication::applicationPid());
    EXPECT_TRUE(ran.out.contains(u"12 com12 (pinned)  %1  busy ("_s.arg(terminal.name()).toUtf8()))
        << ran.out.toStdString();
    EXPECT_TRUE(ran.out.contains("    end ") && ran.out.contains(QByteArray(process.toUtf8() + ", which has it open")))
        << ran.out.toStdString();
    ASSERT_TRUE(holder.setPortOpen(false).ok());
    EXPECT_TRUE(kqx({u"ports"_s}).out.contains(u"12 com12 (pinned)  %1  open\n"_s.arg(terminal.name()).toUtf8()));
}

TEST_F(Ports, APinWhoseDeviceHasGoneIsAbsent) {
    pin(u"/dev/ttyUSB-gone"_s, u"com16"_s);
    pin(u"/dev/ttyUSB-gone"_s, u"com17"_s); // the program has sixteen port numbers
    const QJsonObject all = json();
    const QJsonObject gone = way(all, u"name"_s, u"com16"_s);
    EXPECT_EQ(gone.value(u"state"_s).toString(), u"absent"_s);
    EXPECT_EQ(gone.value(u"device"_s).toString(), u"/dev/ttyUSB-gone"_s);
    EXPECT_EQ(gone.value(u"remedy"_s).toString(), u"plug the adapter in, or change the link ports/com16"_s);
    EXPECT_TRUE(way(all, u"number"_s, 17).isEmpty());
}

TEST_F(Ports, ATransferLibraryThatIsMissingIsNamed) {
    ASSERT_TRUE(QFile::remove(path(u"libttdll.so"_s)));
    const Ran ran = kqx({u"ports"_s});
    EXPECT_TRUE(ran.out.contains("libttdll.so  absent (the transfer library is missing, or lacks a function)"))
        << ran.out.toStdString();
}

TEST_F(Ports, ASocketThatTheSettingsDemandIsAWayEvenWhenNobodyListens) {
    addSettings("Link=socket\n");
    const Ran ran = kqx({u"ports"_s});
    EXPECT_TRUE(ran.out.contains(
        u"usb (simulated)  %1  absent\n    start sixtrace-instrument --usb %1\n"_s.arg(path(u"instrument.socket"_s))
            .toUtf8()))
        << ran.out.toStdString();
    EXPECT_FALSE(ran.out.contains("1209:0001")) << "the bus is not asked";
}

TEST_F(Ports, WrongUseEndsWith2) {
    EXPECT_EQ(kqx({u"ports"_s, u"stray"_s}).exitCode, 2);
    EXPECT_EQ(kqx({u"ports"_s, u"--help"_s}).exitCode, 0);
}

} // namespace
} // namespace sixtrace::test
