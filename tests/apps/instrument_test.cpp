// SPDX-License-Identifier: MIT
#include "apps/program.h"

#include "apps/fetchfixture.h"
#include "support/strings.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace sixtrace::test {
namespace {

class Instrument : public ::testing::Test {
protected:
    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }
    static Ran instrument(const QStringList& arguments) { return run(u"sixtrace-instrument"_s, arguments); }
    [[nodiscard]] QByteArray written(const QStringList& arguments) const {
        const Ran ran = instrument(QStringList{u"--write"_s, path(u"a.bin"_s)} + arguments);
        EXPECT_EQ(ran.exitCode, 0) << ran.err.toStdString();
        QFile file(path(u"a.bin"_s));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    QTemporaryDir m_folder;
};

TEST_F(Instrument, ListsItsScenes) {
    const Ran ran = instrument({u"--list"_s});
    EXPECT_EQ(ran.exitCode, 0);
    for (const char* name :
         {"sine", "square", "ramp", "six", "full", "scan-a", "scan-b", "scan-c", "scan-d", "lengths", "empty"}) {
        EXPECT_TRUE(ran.out.startsWith(name) || ran.out.contains(QByteArray('\n' + QByteArray(name) + ' '))) << name;
    }
    EXPECT_TRUE(ran.err.isEmpty());
}

TEST_F(Instrument, WritesAllSixForms) {
    for (const char* form : {"bin", "V01", "W01", "V11", "W11", "V10"}) {
        const QByteArray bytes = written({u"--form"_s, QString::fromLatin1(form), u"--scene"_s, u"sine"_s});
        EXPECT_EQ(bytes.left(6), QByteArray(QByteArray("KQX") + form));
        EXPECT_EQ(bytes.size(), 10 + (QByteArray(form) == "bin" ? 47 : 51) + 2 * 1200);
    }
}

TEST_F(Instrument, TheSameSeedGivesTheSameBytes) {
    const QStringList noise{u"--scene"_s, u"noise"_s, u"--seed"_s};
    const QByteArray first = written(noise + QStringList{u"7"_s});
    EXPECT_FALSE(first.isEmpty());
    EXPECT_EQ(written(noise + QStringList{u"7"_s}), first);
    EXPECT_NE(written(noise + QStringList{u"8"_s}), first);
}

TEST_F(Instrument, SaysHelpAndVersion) {
    EXPECT_EQ(instrument({u"--help"_s}).exitCode, 0);
    EXPECT_TRUE(instrument({u"--help"_s}).out.contains("--scene"));
    EXPECT_EQ(instrument({u"--version"_s}).out, "sixtrace-instrument " SIXTRACE_VERSION "\n");
}

TEST_F(Instrument, WrongUseEndsWith2AndASentence) {
    const QString file = path(u"a.bin"_s);
    const std::vector<QStringList> wrong{
        {},
        {u"--no-such-option"_s},
        {u"stray"_s},
        {u"--write"_s},
        {u"--write"_s, file, u"--form"_s, u"V02"_s},
        {u"--write"_s, file, u"--scene"_s, u"no such scene"_s},
        {u"--write"_s, file, u"--seed"_s, u"-1"_s},
        {u"--write"_s, file, u"--seed"_s, u"x"_s},
        {u"--serial"_s, file, u"--form"_s, u"V02"_s},
        {u"--serial"_s, file, u"--scene"_s, u"no such scene"_s},
        {u"--serial"_s, file, u"--seed"_s, u"x"_s},
        {u"--serial"_s, file, u"--rate"_s, u"-1"_s},
        {u"--serial"_s, file, u"--idle"_s, u"-1"_s},
        {u"--usb"_s, file, u"--fault"_s, u"no-such-fault"_s},
    };
    for (const QStringList& arguments : wrong) {
        const Ran ran = instrument(arguments);
        EXPECT_EQ(ran.exitCode, 2) << arguments.join(u' ').toStdString();
        EXPECT_TRUE(ran.err.startsWith("sixtrace-instrument: ")) << ran.err.toStdString();
        EXPECT_TRUE(ran.out.isEmpty());
    }
    EXPECT_FALSE(QFile::exists(file));
}

TEST_F(Instrument, AFileThatCannotBeWrittenEndsWith1) {
    const Ran ran = instrument({u"--write"_s, path(u"none/a.bin"_s)});
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_TRUE(ran.err.contains("Path not found"));
}

TEST_F(Instrument, ASocketThatCannotBeMadeEndsWith1) {
    // The address of a socket has 108 bytes. The name of the folder does not count, the name of the file does.
    for (const QString& name : {QString(u"none/a.socket"_s), QString(QString(120, u'a'))}) {
        const Ran ran = instrument({u"--usb"_s, path(name)});
        EXPECT_EQ(ran.exitCode, 1) << ran.err.toStdString();
        EXPECT_TRUE(ran.err.startsWith("sixtrace-instrument: ")) << ran.err.toStdString();
        EXPECT_TRUE(ran.out.isEmpty());
    }
}

TEST_F(Fetch, TheInstrumentEndsOnASignalAndTakesItsNamesAway) {
    serve({});
    EXPECT_TRUE(QFileInfo::exists(path(u"line"_s)));
    EXPECT_TRUE(QFileInfo::exists(path(u"instrument.socket"_s)));
    stop();
    EXPECT_EQ(instrument.exitCode(), 0);
    EXPECT_FALSE(QFileInfo(path(u"line"_s)).isSymLink());
    EXPECT_FALSE(QFileInfo::exists(path(u"instrument.socket"_s)));
}

TEST_F(Fetch, TheInstrumentEndsByItselfWhenItsClientIsGone) {
    serve({u"--idle"_s, u"1"_s});
    EXPECT_EQ(fetchUsb().exitCode, 0);
    EXPECT_TRUE(instrument.waitForFinished(20000));
    EXPECT_EQ(instrument.exitCode(), 0);
}

TEST_F(Fetch, TheInstrumentReplacesALinkAndASocketButNothingElse) {
    QFile precious(path(u"line"_s));
    ASSERT_TRUE(precious.open(QIODevice::WriteOnly));
    precious.write("mine");
    precious.close();
    const Ran ran = test::run(u"sixtrace-instrument"_s, {u"--serial"_s, precious.fileName()});
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_EQ(contentOf(precious.fileName()), "mine");
}

TEST_F(Fetch, ASecondInstrumentIsRefusedAndTheFirstServesOn) {
    serve({});
    for (const auto& [option, name] : {std::pair("--usb", "instrument.socket"), std::pair("--serial", "line")}) {
        const Ran ran = run(u"sixtrace-instrument"_s, {QString::fromLatin1(option), path(QString::fromLatin1(name))});
        EXPECT_EQ(ran.exitCode, 1);
        EXPECT_TRUE(ran.err.contains("another instrument serves there")) << ran.err.toStdString();
    }
    EXPECT_EQ(fetchUsb().exitCode, 0);
    EXPECT_EQ(fetchSerial().exitCode, 0);
}

TEST_F(Fetch, AnInstrumentTakesOnlyItsOwnSocketAway) {
    serve({});
    const QString socketFile = path(u"instrument.socket"_s);
    ASSERT_TRUE(QFile::remove(socketFile));
    QProcess second;
    second.start(QStringLiteral(SIXTRACE_BIN "/sixtrace-instrument"),
                 {u"--usb"_s, socketFile, u"--scene"_s, u"noise"_s, u"--idle"_s, u"120"_s});
    ASSERT_TRUE(second.waitForReadyRead(60000)) << second.readAllStandardError().toStdString();
    stop();
    EXPECT_EQ(fetchUsb().exitCode, 0) << "the second one's socket is still there";
    ::kill(static_cast<pid_t>(second.processId()), SIGTERM);
    ASSERT_TRUE(second.waitForFinished(60000));
    EXPECT_FALSE(QFileInfo::exists(socketFile));
}

TEST_F(Fetch, WhatAKilledInstrumentHasLeftIsReplaced) {
    serve({});
    instrument.kill();
    ASSERT_TRUE(instrument.waitForFinished(60000));
    EXPECT_TRUE(QFileInfo(path(u"line"_s)).isSymLink());
    serve({});
    EXPECT_EQ(fetchUsb().exitCode, 0);
    EXPECT_EQ(fetchSerial().exitCode, 0);
}

TEST_F(Fetch, AnInstrumentReplacesNoLinkToARealDevice) {
    ASSERT_TRUE(QFile::link(u"/dev/null"_s, path(u"line"_s)));
    const Ran ran = run(u"sixtrace-instrument"_s, {u"--serial"_s, path(u"line"_s)});
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_TRUE(ran.err.contains("leads to /dev/null")) << ran.err.toStdString();
    EXPECT_EQ(QFileInfo(path(u"line"_s)).symLinkTarget(), u"/dev/null"_s);
}

} // namespace
} // namespace sixtrace::test
