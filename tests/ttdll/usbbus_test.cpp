// SPDX-License-Identifier: MIT
// The transfer library over libusb, from the companion program to an emulated device on an emulated bus.
#include "support/printing.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

struct Ran {
    int exitCode = -1;
    QByteArray err;
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
        QFile file(folder.filePath(QStringLiteral("ttdll.ini")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(lines);
    }

    /// Runs the command of a shell, in the folder, with the device plugged in. Only the companion gets what its own
    /// checks need.
    Ran run(const char* how, const char* command) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral("libumockdev-preload.so.0"));
        // The tools around the companion are not the test's business.
        environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(folder.path());
        process.start(QStringLiteral(SIXTRACE_EMULATED_DEVICE),
                      {QString::fromLatin1(how), QStringLiteral("sh"), QStringLiteral("-c"),
                       QString::fromLatin1(command).replace(
                           QStringLiteral("kqx"), QStringLiteral("env LD_PRELOAD=" SIXTRACE_USB_PRELOAD " ./kqx"))});
        if (!process.waitForFinished(60000)) {
            process.kill();
            process.waitForFinished();
            return {};
        }
        return {process.exitCode(), process.readAllStandardError()};
    }
    [[nodiscard]] QByteArray content(const char* name) const {
        QFile file(folder.filePath(QString::fromLatin1(name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }
    /// A thousand bytes, each seven above the one before, and the zero byte behind them.
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
    EXPECT_TRUE(ran.err.contains("The data received is error.Check the USB cable then restart to receive."));
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

} // namespace
