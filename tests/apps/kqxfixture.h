// SPDX-License-Identifier: MIT
#pragma once

#include "apps/program.h"
#include "capture/capturewriter.h"
#include "capture/scenes.h"
#include "support/sourcefolder.h"
#include "support/strings.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace sixtrace::test {

/// Two channels with an interval of 2 us: ch1 with a 10:1 probe, 0.02 V a count; A with 1 mV a count.
inline std::vector<CaptureBlock> twoBlocks() {
    return {{.id = '1',
             .screenPoints = 4,
             .sampleCount = 4,
             .timeIndex = 3,
             .voltIndex = 5,
             .probeExp = 1,
             .sampleInterval = 2,
             .frequency = 1000,
             .period = 1000,
             .voltPerCount = 2,
             .samples = {1, 0, -3, 5}},
            {.id = 'A',
             .screenPoints = 4,
             .sampleCount = 4,
             .timeIndex = 3,
             .sampleInterval = 2,
             .voltPerCount = 1,
             .samples = {7, 8, 9, -10}}};
}

/// Runs kqx with paths in a folder of its own.
class Kqx : public ::testing::Test {
protected:
    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }
    QString put(const QByteArray& content) const {
        QFile file(path(u"capture.bin"_s));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
        return file.fileName();
    }
    [[nodiscard]] QString scene(const char* tag, const char* name) const {
        const auto blocks = sceneBlocks(QString::fromLatin1(name), 1);
        EXPECT_TRUE(blocks.has_value());
        return put(captureBytes(*captureForm(tag), *blocks));
    }
    static Ran kqx(const QStringList& arguments) { return run(u"kqx"_s, arguments); }
    [[nodiscard]] Ran screen(const QString& capture, const QStringList& more = {}) const {
        return kqx(QStringList{u"screen"_s, capture, path(u"out.png"_s)} + more);
    }
    [[nodiscard]] QImage picture() const { return QImage(path(u"out.png"_s)).convertToFormat(QImage::Format_RGB32); }
    static QImage golden(const char* name) {
        return QImage(QStringLiteral(SIXTRACE_SOURCE_DIR "/tests/view/golden/") + QString::fromLatin1(name))
            .convertToFormat(QImage::Format_RGB32);
    }

private:
    QTemporaryDir m_folder;
};

/// Runs kqx in a folder of its own, and programs that read what it writes.
class KqxData : public ::testing::Test {
protected:
    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }
    QString put(const QString& name, const QByteArray& content) const {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
        return file.fileName();
    }
    QString capture(const QString& name, const std::vector<CaptureBlock>& blocks = twoBlocks()) const {
        return put(name, captureBytes(*captureForm("V11"), blocks));
    }
    [[nodiscard]] QByteArray content(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }
    /// Runs kqx in the test's folder with `input` on its standard input.
    [[nodiscard]] Ran kqx(const QStringList& arguments, const QByteArray& input = {}) const {
        return other(QStringLiteral(SIXTRACE_BIN "/kqx"), arguments, input);
    }
    [[nodiscard]] Ran other(const QString& program, const QStringList& arguments, const QByteArray& input = {}) const {
        QProcess process;
        process.setWorkingDirectory(path(QString()));
        process.start(program, arguments);
        process.write(input);
        process.closeWriteChannel();
        if (!process.waitForFinished(240000)) {
            process.kill();
            process.waitForFinished();
            return {};
        }
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1, process.readAllStandardOutput(),
                process.readAllStandardError()};
    }
    [[nodiscard]] QByteArray python(const char* program, const QStringList& arguments = {}) const {
        const Ran ran = other(u"/usr/bin/python3"_s, QStringList{u"-c"_s, QString::fromLatin1(program)} + arguments);
        EXPECT_EQ(ran.exitCode, 0) << ran.err.toStdString();
        return ran.out;
    }
    static QJsonObject lineOf(const Ran& ran, int line) {
        return QJsonDocument::fromJson(ran.out.split('\n').value(line)).object();
    }
    [[nodiscard]] QStringList files() const { return QDir(path(QString())).entryList(QDir::Files, QDir::Name); }

private:
    QTemporaryDir m_folder;
};

} // namespace sixtrace::test
