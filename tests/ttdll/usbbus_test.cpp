// SPDX-License-Identifier: MIT
// The companion program and the transfer library over libusb, with an emulated device on an emulated bus.
#include "support/strings.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <grp.h>
#include <pty.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sixtrace::test {
namespace {

struct Ran {
    int exitCode = -1;
    QByteArray err;
    QByteArray out;
};

class UsbBus : public ::testing::Test {
protected:
    UsbBus() {
        for (const char* name : {"kqx", "kqx-desktop", "libttdll.so"}) {
            const QString file = QString::fromLatin1(name);
            EXPECT_TRUE(QFile::copy(QStringLiteral(SIXTRACE_BIN "/") + file, folder.filePath(file)));
        }
        settings("Link=usb\nReadTimeout=500\n");
    }

    void settings(const char* lines) const {
        QFile file(folder.filePath(u"ttdll.ini"_s));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(lines);
    }

    /// Runs the command of a shell, in the folder, with the device plugged in. Only the companion gets what its own
    /// checks need.
    Ran run(const char* how, const char* command) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"LD_PRELOAD"_s, u"libumockdev-preload.so.0"_s);
        // Leaks of the tools around the companion do not matter.
        environment.insert(u"ASAN_OPTIONS"_s, u"detect_leaks=0"_s);
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(folder.path());
        process.start(QStringLiteral(SIXTRACE_EMULATED_DEVICE),
                      {QString::fromLatin1(how), u"sh"_s, u"-c"_s,
                       QString::fromLatin1(command).replace(
                           u"kqx"_s, QStringLiteral("env LD_PRELOAD=" SIXTRACE_USB_PRELOAD " ./kqx"))});
        if (!process.waitForFinished(60000)) {
            process.kill();
            process.waitForFinished();
            return {};
        }
        return {process.exitCode(), process.readAllStandardError(), process.readAllStandardOutput()};
    }
    [[nodiscard]] QByteArray content(const char* name) const {
        QFile file(folder.filePath(QString::fromLatin1(name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }
    /// A thousand bytes, each seven above the one before, and the zero byte after them.
    [[nodiscard]] static QByteArray expected() {
        QByteArray bytes;
        for (int i = 0; i < 1000; ++i) {
            bytes += static_cast<char>(i * 7);
        }
        return bytes + '\0';
    }

    QTemporaryDir folder;
};

TEST_F(UsbBus, ACaptureComesInBlocksWithAShortOneAtTheEnd) {
    const Ran ran = run("clean", "kqx fetch --usb -o got.bin");
    EXPECT_EQ(ran.exitCode, 0) << ran.err.toStdString() << content("ttdll.log").toStdString();
    EXPECT_EQ(content("got.bin"), expected());
}

TEST_F(UsbBus, ADeviceThatSendsMoreThanIsAskedForLosesNothing) {
    const Ran ran = run("packed", "kqx fetch --usb -o got.bin");
    EXPECT_EQ(ran.exitCode, 0) << ran.err.toStdString() << content("ttdll.log").toStdString();
    EXPECT_EQ(content("got.bin"), expected());
}

TEST_F(UsbBus, ASilentDeviceIsGivenUpAndNamedInTheLogOnly) {
    const Ran ran = run("silent", "kqx fetch --usb -o got.bin");
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_TRUE(ran.err.contains("the instrument did not answer as it should; 0 of 1000 bytes came"))
        << ran.err.toStdString();
    EXPECT_FALSE(ran.err.contains("usb:"));
    EXPECT_TRUE(content("ttdll.log").contains("usb: reading failed after 0 bytes"))
        << content("ttdll.log").toStdString();
    EXPECT_EQ(content("got.bin"), "(no file)");
}

TEST_F(UsbBus, AfterATransferThatWasCutOffTheNextOneIsClean) {
    const Ran ran = run("cut", "kqx fetch --usb -o first.bin; kqx fetch --usb -o second.bin");
    EXPECT_EQ(ran.exitCode, 0) << ran.err.toStdString() << content("ttdll.log").toStdString();
    EXPECT_EQ(content("first.bin"), "(no file)");
    EXPECT_EQ(content("second.bin"), expected());
    EXPECT_TRUE(content("ttdll.log").contains("threw away 192 bytes of a transfer that was cut off"))
        << content("ttdll.log").toStdString();
}

TEST_F(UsbBus, AWrongEndpointIsNamedWithThoseThatThereAre) {
    const Ran ran = run("other-endpoint", "kqx fetch --usb -o got.bin");
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_TRUE(ran.err.contains("The meter open faild"));
    EXPECT_TRUE(content("ttdll.log").contains("usb: endpoint 81 is wrong: interface 0 has 01 82"))
        << content("ttdll.log").toStdString();
}

TEST_F(UsbBus, AnInterfaceThatTheDeviceLacksHasNoEndpoints) {
    settings("Link=usb\nInterface=3\n");
    const Ran ran = run("clean", "kqx fetch --usb -o got.bin");
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_TRUE(content("ttdll.log").contains("usb: endpoint 01 is wrong: interface 3 has none"))
        << content("ttdll.log").toStdString();
}

TEST_F(UsbBus, WithoutTimeToWaitNothingIsReadAndTheLogSaysSo) {
    settings("Link=usb\nReadTimeout=0\n");
    const Ran ran = run("clean", "kqx fetch --usb -o got.bin");
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_TRUE(content("ttdll.log").contains("usb: the instrument is silent after 0 bytes"))
        << content("ttdll.log").toStdString();
    EXPECT_EQ(content("got.bin"), "(no file)");
}

TEST_F(UsbBus, AnAbsentDeviceIsNamedByItsNumbers) {
    const Ran ran = run("other-device", "kqx fetch --usb -o got.bin");
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_TRUE(content("ttdll.log").contains("usb: no device 1209:0001 among 1"))
        << content("ttdll.log").toStdString();
}

TEST_F(UsbBus, BytesBeyondTheAnnouncedLengthMakeTheFileDamaged) {
    const Ran ran = run("surplus", "kqx fetch --usb -o got.bin");
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_TRUE(ran.err.contains("data came twice or beyond its size")) << ran.err.toStdString();
    EXPECT_EQ(content("got.bin"), "(no file)");
}

TEST_F(UsbBus, ADeviceThatTakesNoCommandIsGivenUpEvenWithoutAnyTimeToWait) {
    settings("Link=usb\nWriteTimeout=0\n");
    const Ran ran = run("deaf", "kqx fetch --usb -o got.bin");
    EXPECT_EQ(ran.exitCode, 1) << "the shell has ended by itself";
    EXPECT_TRUE(content("ttdll.log").contains("usb: sending failed: Operation timed out"))
        << content("ttdll.log").toStdString();
}

TEST_F(UsbBus, PortsTellsTheDeviceThatIsWantedAndThatItOpens) {
    const Ran ran = run("clean", "kqx ports --json > ports.json; echo $?; kqx ports");
    EXPECT_TRUE(ran.out.startsWith("0\n")) << ran.out.toStdString() << ran.err.toStdString();
    EXPECT_TRUE(ran.out.contains("usb 1209:0001  /dev/bus/usb/001/002  open\n")) << ran.out.toStdString();
    EXPECT_TRUE(ran.out.contains("wanted 1209:0001, interface 0, end points 01 out and 81 in"))
        << ran.out.toStdString();
    const QByteArray json = content("ports.json");
    EXPECT_TRUE(json.contains("\"matches\": true") && json.contains("\"state\": \"open\"")) << json.toStdString();
    EXPECT_TRUE(json.contains("\"wanted\": \"1209:0001\"")) << json.toStdString();
}

TEST_F(UsbBus, PortsEndsWith1WhereNoWayOpens) {
    const Ran ran = run("other-device", "kqx ports > ports.txt; echo $?");
    EXPECT_EQ(ran.out, "1\n");
    EXPECT_FALSE(content("ports.txt").contains("  open")) << content("ports.txt").toStdString();
}

TEST_F(UsbBus, PortsTellsASerialPortWithoutRightsByItsGroup) {
    int master = -1;
    int slave = -1;
    char name[128] = {};
    ASSERT_EQ(openpty(&master, &slave, name, nullptr, nullptr), 0);
    ASSERT_EQ(fchmod(slave, 0), 0);
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"ports"_s));
    ASSERT_TRUE(QFile::link(QString::fromLatin1(name), folder.filePath(u"ports/com1"_s)));
    ASSERT_TRUE(QFile::setPermissions(folder.path(), QFileDevice::Permissions(0x7777))) << "it is the program folder";
    const Ran ran = run("forbidden", "kqx ports; true");
    struct stat state {};
    ASSERT_EQ(fstat(slave, &state), 0);
    const group* owner = getgrgid(state.st_gid);
    ASSERT_NE(owner, nullptr);
    const QByteArray groupName(owner->gr_name);
    const QByteArray row = "1 com1 (pinned)  " + QByteArray(name) + "  rights (" + groupName + ")\n";
    EXPECT_TRUE(ran.out.contains(row)) << ran.out.toStdString();
    const QByteArray remedy =
        groupName == "root" ? QByteArray("a udev rule has to give ") : "join the group " + groupName + " (sudo usermod";
    EXPECT_TRUE(ran.out.contains(remedy)) << ran.out.toStdString();
    close(slave);
    close(master);
}

TEST_F(UsbBus, PortsTellsMissingRightsAndWhatIsToBeDone) {
    ASSERT_TRUE(QFile::setPermissions(folder.path(), QFileDevice::Permissions(0x7755)));
    const Ran ran = run("forbidden", "kqx ports; true");
    EXPECT_TRUE(ran.out.contains("usb 1209:0001  /dev/bus/usb/001/002  rights\n"))
        << ran.out.toStdString() << ran.err.toStdString();
    EXPECT_TRUE(ran.out.contains("ATTR{idVendor}==\"1209\", ATTR{idProduct}==\"0001\", TAG+=\"uaccess\"  into "
                                 "/etc/udev/rules.d/70-sixtrace-own.rules"))
        << ran.out.toStdString();
}

TEST_F(UsbBus, PortsTellsDevicesThatAreNotTheWantedOne) {
    const Ran ran = run("other-device", "kqx ports; true");
    EXPECT_TRUE(ran.out.contains("usb 1209:0002  /dev/bus/usb/001/002  not the instrument\n")) << ran.out.toStdString();
    EXPECT_TRUE(ran.out.contains("usb 1209:0001  absent\n")) << ran.out.toStdString();
    EXPECT_TRUE(ran.out.contains("if it has other ids, enter them in ")) << ran.out.toStdString();
}

TEST_F(UsbBus, PortsTellsEndpointsThatTheDeviceLacks) {
    const Ran ran = run("other-endpoint", "kqx ports; true");
    EXPECT_TRUE(ran.out.contains("usb 1209:0001  /dev/bus/usb/001/002  endpoints\n"
                                 "    the device lacks these endpoints; enter its own in "))
        << ran.out.toStdString();
}

} // namespace
} // namespace sixtrace::test
