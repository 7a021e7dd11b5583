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
            ASSERT_TRUE(QFile::copy(text(SIXTRACE_BIN "/") + name, path(name))) << name.toStdString();
        }
    }
    void serve() {
        instrument.start(text(SIXTRACE_BIN "/sixtrace-instrument"),
                         {text("--serial"), path(text("line")), text("--usb"), path(text("instrument.socket")),
                          text("--rate"), text("0"), text("--scene"), text("noise"), text("--idle"), text("120")});
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
