// SPDX-License-Identifier: MIT
#pragma once

#include "program.h"

#include "capture/scenes.h"

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

/// A folder with a companion of its own beside its transfer library, and an instrument that serves both links there.
class Fetch : public ::testing::Test {
protected:
    Fetch() {
        for (const char* name : {"kqx", "kqx-desktop", "libttdll.so", "ttdll.ini"}) {
            const QString file = QString::fromLatin1(name);
            EXPECT_TRUE(QFile::copy(QStringLiteral(SIXTRACE_BIN "/") + file, path(file)));
        }
        QDir(folder.path()).mkdir(QStringLiteral("got"));
    }
    ~Fetch() override { stop(); }

    [[nodiscard]] QString path(const QString& name) const { return folder.filePath(name); }
    [[nodiscard]] QStringList got() const {
        return QDir(path(QStringLiteral("got"))).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    /// Adds lines to the transfer library's settings.
    void addSettings(const QByteArray& lines) const {
        QFile settings(path(QStringLiteral("ttdll.ini")));
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
                         QStringList{QStringLiteral("--serial"), path(QStringLiteral("line")), QStringLiteral("--usb"),
                                     path(QStringLiteral("instrument.socket")), QStringLiteral("--rate"),
                                     QStringLiteral("0"), QStringLiteral("--scene"), QStringLiteral("noise"),
                                     QStringLiteral("--idle"), QStringLiteral("120")} +
                             more);
        ASSERT_TRUE(instrument.waitForStarted());
        QByteArray said;
        while (!said.contains("USB link at") && instrument.waitForReadyRead(10000)) {
            said += instrument.readAllStandardOutput();
        }
        ASSERT_TRUE(said.contains("USB link at")) << instrument.readAllStandardError().toStdString();
    }
    void serveScript(const QByteArray& script) {
        QFile file(path(QStringLiteral("script")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(script);
        file.close();
        serve({QStringLiteral("--script"), file.fileName()});
    }
    void stop() {
        if (instrument.state() != QProcess::NotRunning) {
            ::kill(static_cast<pid_t>(instrument.processId()), SIGTERM);
            EXPECT_TRUE(instrument.waitForFinished(10000));
        }
    }

    Ran fetch(const QStringList& arguments) { return kqx(QStringList{QStringLiteral("fetch")} + arguments); }
    Ran kqx(const QStringList& arguments) {
        QProcess process;
        process.start(path(QStringLiteral("kqx")), arguments);
        if (!process.waitForFinished(60000)) {
            process.kill();
            process.waitForFinished();
            return {};
        }
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1, process.readAllStandardOutput(),
                process.readAllStandardError()};
    }
    Ran fetchSerial(const QStringList& more = {}) {
        return fetch(QStringList{QStringLiteral("--serial"), path(QStringLiteral("line")), QStringLiteral("-o"),
                                 path(QStringLiteral("got"))} +
                     more);
    }
    Ran fetchUsb(const QStringList& more = {}) {
        return fetch(QStringList{QStringLiteral("--usb"), QStringLiteral("-o"), path(QStringLiteral("got"))} + more);
    }
    /// A fetch over the serial line that has begun its work, and waits long for an instrument that has gone silent.
    void startSilentFetch(QProcess& process) const {
        process.start(path(QStringLiteral("kqx")),
                      {QStringLiteral("fetch"), QStringLiteral("--serial"), path(QStringLiteral("line")),
                       QStringLiteral("-o"), path(QStringLiteral("got")), QStringLiteral("--timeout"),
                       QStringLiteral("1")});
        ASSERT_TRUE(process.waitForStarted());
        QElapsedTimer patience;
        patience.start();
        const auto hasBegun = [this] {
            const QStringList names = got();
            return !names.isEmpty() && QDir(path(QStringLiteral("got/")) + names.first()).count() > 2;
        };
        while (!hasBegun() && patience.elapsed() < 10000) {
            QThread::msleep(20);
        }
        ASSERT_TRUE(hasBegun());
    }
    /// The content of the file that a fetch has named.
    [[nodiscard]] static QByteArray fetched(const Ran& ran) { return contentOf(QString::fromUtf8(ran.out).trimmed()); }

    QTemporaryDir folder;
    QProcess instrument;
};

} // namespace sixtrace::test
