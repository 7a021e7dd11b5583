// SPDX-License-Identifier: MIT
#pragma once

#include "soak/killing.h"
#include "support/strings.h"

#include <QProcess>
#include <QTemporaryDir>

namespace sixtrace::test {

/// A folder with copies of the programs, as a user may keep them, and a simulated instrument that serves both links
/// there when a test starts it.
class CompanionFolder : public ::testing::Test {
protected:
    ~CompanionFolder() override {
        if (instrument.state() != QProcess::NotRunning) {
            ::kill(static_cast<pid_t>(instrument.processId()), SIGTERM);
            EXPECT_TRUE(instrument.waitForFinished(10000));
        }
    }
    [[nodiscard]] QString path(const QString& name) const { return folder.filePath(name); }
    void put(const QString& name, const QByteArray& content) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }
    void bring(const QStringList& names) const {
        for (const QString& name : names) {
            ASSERT_TRUE(QFile::copy(QStringLiteral(SIXTRACE_BIN "/") + name, path(name))) << name.toStdString();
        }
    }
    void serve() {
        instrument.start(QStringLiteral(SIXTRACE_BIN "/sixtrace-instrument"),
                         {u"--serial"_s, path(u"line"_s), u"--usb"_s, path(u"instrument.socket"_s), u"--rate"_s, u"0"_s,
                          u"--scene"_s, u"noise"_s, u"--idle"_s, u"120"_s});
        ASSERT_TRUE(instrument.waitForStarted());
        QByteArray said;
        while (!said.contains("USB link at") && instrument.waitForReadyRead(10000)) {
            said += instrument.readAllStandardOutput();
        }
        ASSERT_TRUE(said.contains("USB link at")) << instrument.readAllStandardError().toStdString();
    }

    QTemporaryDir folder;
    QProcess instrument;
};

} // namespace sixtrace::test
