// SPDX-License-Identifier: MIT
#pragma once

#include "apps/program.h"

#include "capture/scenes.h"
#include "support/strings.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include <csignal>

namespace sixtrace::test {

inline QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

inline QByteArray capture(const char* scene, std::uint32_t seed) {
    return captureBytes(*captureForm("V11"), *sceneBlocks(QString::fromLatin1(scene), seed));
}

/// A folder with a copy of kqx and of the transfer library, and a simulated instrument that serves both links there.
class Fetch : public ::testing::Test {
protected:
    Fetch() {
        for (const char* name : {"kqx", "kqx-desktop", "libttdll.so", "ttdll.ini"}) {
            const QString file = QString::fromLatin1(name);
            EXPECT_TRUE(QFile::copy(QStringLiteral(SIXTRACE_BIN "/") + file, path(file)));
        }
        QDir(folder.path()).mkdir(u"got"_s);
    }
    ~Fetch() override { stop(); }

    [[nodiscard]] QString path(const QString& name) const { return folder.filePath(name); }
    [[nodiscard]] QStringList got() const {
        return QDir(path(u"got"_s)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    /// Adds lines to the transfer library's settings.
    void addSettings(const QByteArray& lines) const {
        QFile settings(path(u"ttdll.ini"_s));
        ASSERT_TRUE(settings.open(QIODevice::Append));
        settings.write(lines);
    }
    void write(const QString& file, const QByteArray& content) const {
        QFile made(file);
        ASSERT_TRUE(made.open(QIODevice::WriteOnly));
        ASSERT_EQ(made.write(content), content.size());
    }

    void serve(const QStringList& more) {
        instrument.start(QStringLiteral(SIXTRACE_BIN "/sixtrace-instrument"),
                         QStringList{u"--serial"_s, path(u"line"_s), u"--usb"_s, path(u"instrument.socket"_s),
                                     u"--rate"_s, u"0"_s, u"--scene"_s, u"noise"_s, u"--idle"_s, u"120"_s} +
                             more);
        ASSERT_TRUE(instrument.waitForStarted());
        QByteArray said;
        while (!said.contains("USB link at") && instrument.waitForReadyRead(10000)) {
            said += instrument.readAllStandardOutput();
        }
        ASSERT_TRUE(said.contains("USB link at")) << instrument.readAllStandardError().toStdString();
    }
    void serveScript(const QByteArray& script) {
        QFile file(path(u"script"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(script);
        file.close();
        serve({u"--script"_s, file.fileName()});
    }
    void stop() {
        if (instrument.state() != QProcess::NotRunning) {
            ::kill(static_cast<pid_t>(instrument.processId()), SIGTERM);
            EXPECT_TRUE(instrument.waitForFinished(10000));
        }
    }

    Ran fetch(const QStringList& arguments) { return kqx(QStringList{u"fetch"_s} + arguments); }
    Ran kqx(const QStringList& arguments) {
        QProcess process;
        process.start(path(u"kqx"_s), arguments);
        if (!process.waitForFinished(60000)) {
            process.kill();
            process.waitForFinished();
            return {};
        }
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1, process.readAllStandardOutput(),
                process.readAllStandardError()};
    }
    Ran fetchSerial(const QStringList& more = {}) {
        return fetch(QStringList{u"--serial"_s, path(u"line"_s), u"-o"_s, path(u"got"_s)} + more);
    }
    Ran fetchUsb(const QStringList& more = {}) {
        return fetch(QStringList{u"--usb"_s, u"-o"_s, path(u"got"_s)} + more);
    }
    /// A fetch over the serial line that has begun and now waits for an instrument that has gone silent.
    void startSilentFetch(QProcess& process) const {
        process.start(path(u"kqx"_s),
                      {u"fetch"_s, u"--serial"_s, path(u"line"_s), u"-o"_s, path(u"got"_s), u"--timeout"_s, u"1"_s});
        ASSERT_TRUE(process.waitForStarted());
        QElapsedTimer patience;
        patience.start();
        const auto hasBegun = [this] {
            const QStringList names = got();
            return !names.isEmpty() && QDir(path(u"got/"_s) + names.first()).count() > 2;
        };
        while (!hasBegun() && patience.elapsed() < 10000) {
            QThread::msleep(20);
        }
        ASSERT_TRUE(hasBegun());
    }
    /// The content of the file whose name a fetch has printed.
    [[nodiscard]] static QByteArray fetched(const Ran& ran) { return contentOf(QString::fromUtf8(ran.out).trimmed()); }

    QTemporaryDir folder;
    QProcess instrument;
};

} // namespace sixtrace::test
