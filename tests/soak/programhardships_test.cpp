// SPDX-License-Identifier: MIT
// The command-line companion where nothing can be written: it says so, exits with code 1, and leaves the old file.
#include "apps/program.h"
#include "capture/scenes.h"
#include "soak/companionfolder.h"
#include "support/hardships.h"
#include "support/strings.h"

namespace sixtrace::test {
namespace {

class CompanionHardships : public CompanionFolder {
protected:
    CompanionHardships() {
        put(u"capture.bin"_s, captureBytes(*captureForm("V11"), *sceneBlocks(u"sine"_s, 1)));
        bring({u"kqx"_s, u"kqx-desktop"_s, u"libttdll.so"_s, u"ttdll.ini"_s, u"English.Lan"_s, u"ChineseS.Lan"_s});
    }
    [[nodiscard]] Ran kqx(const QStringList& arguments, const QString& out = {}, bool asOrdinaryUser = false) const {
        QProcess process;
        if (asOrdinaryUser && ::geteuid() == 0) {
            process.setChildProcessModifier([] {
                constexpr uid_t kNobody = 65534;
                if (::setgid(kNobody) != 0 || ::setuid(kNobody) != 0) {
                    ::_exit(99);
                }
            });
        }
        process.setWorkingDirectory(folder.path());
        if (!out.isEmpty()) {
            process.setStandardOutputFile(out);
        }
        process.start(path(u"kqx"_s), arguments);
        if (!process.waitForFinished(60000)) {
            process.kill();
            process.waitForFinished();
            return {};
        }
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1, process.readAllStandardOutput(),
                process.readAllStandardError()};
    }
    [[nodiscard]] QStringList everything() const { return leftovers(folder.path(), {}); }

    const QList<QStringList> writers{
        {u"table"_s, u"capture.bin"_s, u"t.txt"_s},  {u"table"_s, u"capture.bin"_s, u"t.csv"_s},
        {u"table"_s, u"capture.bin"_s, u"t.xls"_s},  {u"table"_s, u"capture.bin"_s, u"t.xlsx"_s},
        {u"screen"_s, u"capture.bin"_s, u"t.png"_s}, {u"page"_s, u"capture.bin"_s, u"t.pdf"_s}};
};

TEST_F(CompanionHardships, AFullDiskIsToldByEveryWriter) {
    for (const QStringList& command : writers) {
        put(command.last(), "old");
        const QStringList before = everything();
        const Ran ran = [&] {
            const SmallDisk disk(500);
            return kqx(command);
        }();
        EXPECT_EQ(ran.exitCode, 1) << command.last().toStdString();
        EXPECT_TRUE(ran.err.contains("Disk full")) << ran.err.toStdString();
        EXPECT_EQ(contentOf(path(command.last())), "old") << command.last().toStdString();
        EXPECT_EQ(everything(), before);
        EXPECT_EQ(kqx(command).exitCode, 0) << "with room it succeeds: " << command.last().toStdString();
        EXPECT_NE(contentOf(path(command.last())), "old");
    }
}

TEST_F(CompanionHardships, AFolderThatCannotBeWrittenIsToldByEveryWriter) {
    const auto readable =
        QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther | QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"locked"_s));
    for (const QString& each : {path(u"kqx"_s), path(u"locked"_s), folder.path()}) {
        ASSERT_TRUE(QFile::setPermissions(each, readable));
    }
    for (const QStringList& command : writers) {
        const Ran ran = kqx({command.at(0), command.at(1), u"locked/"_s + command.at(2)}, {}, true);
        EXPECT_EQ(ran.exitCode, 1) << command.last().toStdString();
        EXPECT_TRUE(ran.err.contains("Permission denied")) << ran.err.toStdString();
    }
    const Ran fetched = kqx({u"fetch"_s, u"--usb"_s, u"-o"_s, u"locked"_s}, {}, true);
    EXPECT_EQ(fetched.exitCode, 5);
    EXPECT_TRUE(fetched.err.contains("cannot be written")) << fetched.err.toStdString();
    EXPECT_TRUE(QDir(path(u"locked"_s)).isEmpty());
    EXPECT_TRUE(QFile::setPermissions(folder.path(), readable | QFile::WriteOwner));
}

TEST_F(CompanionHardships, AFetchOntoAFullDiskFailsAndTheOldFileStands) {
    serve();
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"got"_s));
    put(u"got/one.bin"_s, "old");
    for (const QStringList& link : {QStringList{u"--serial"_s, path(u"line"_s)}, QStringList{u"--usb"_s}}) {
        const QStringList command =
            QStringList{u"fetch"_s, u"--force"_s, u"-o"_s, u"got/one.bin"_s, u"--timeout"_s, u"2"_s} + link;
        const Ran ran = [&] {
            const SmallDisk disk(500);
            return kqx(command);
        }();
        EXPECT_EQ(ran.exitCode, 1) << link.first().toStdString();
        EXPECT_TRUE(ran.err.contains("Disk full")) << ran.err.toStdString();
        EXPECT_EQ(contentOf(path(u"got/one.bin"_s)), "old");
        EXPECT_TRUE(leftovers(path(u"got"_s), {u"one.bin"_s}).isEmpty());
    }
    for (const QStringList& link : {QStringList{u"--serial"_s, path(u"line"_s)}, QStringList{u"--usb"_s}}) {
        const Ran ran =
            kqx(QStringList{u"fetch"_s, u"--force"_s, u"-o"_s, u"got/one.bin"_s, u"--timeout"_s, u"2"_s} + link);
        EXPECT_EQ(ran.exitCode, 0) << "the next one succeeds: " << ran.err.toStdString();
    }
}

TEST_F(CompanionHardships, WhatCannotBePrintedIsNoSuccess) {
    for (const QStringList& command :
         {QStringList{u"info"_s, u"capture.bin"_s}, QStringList{u"info"_s, u"--json"_s, u"capture.bin"_s},
          QStringList{u"--version"_s}, QStringList{u"help"_s}, QStringList{u"table"_s, u"--help"_s}}) {
        const Ran ran = kqx(command, u"/dev/full"_s);
        EXPECT_EQ(ran.exitCode, 1) << command.first().toStdString();
        EXPECT_TRUE(ran.err.contains("output cannot be written")) << ran.err.toStdString();
        EXPECT_EQ(kqx(command).exitCode, 0);
    }
}

} // namespace
} // namespace sixtrace::test
