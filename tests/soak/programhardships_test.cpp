// SPDX-License-Identifier: MIT
// The command-line companion where nothing can be written: it says so, exits with code 1, and leaves the old file.
#include "apps/program.h"
#include "capture/scenes.h"
#include "soak/companionfolder.h"
#include "support/hardships.h"

namespace sixtrace::test {
namespace {

class CompanionHardships : public CompanionFolder {
protected:
    CompanionHardships() {
        put(text("capture.bin"), captureBytes(*captureForm("V11"), *sceneBlocks(text("sine"), 1)));
        bring({text("kqx"), text("kqx-desktop"), text("libttdll.so"), text("ttdll.ini"), text("English.Lan"),
               text("ChineseS.Lan")});
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
        process.start(path(text("kqx")), arguments);
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
        {text("table"), text("capture.bin"), text("t.txt")},  {text("table"), text("capture.bin"), text("t.csv")},
        {text("table"), text("capture.bin"), text("t.xls")},  {text("table"), text("capture.bin"), text("t.xlsx")},
        {text("screen"), text("capture.bin"), text("t.png")}, {text("page"), text("capture.bin"), text("t.pdf")}};
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
    ASSERT_TRUE(QDir(folder.path()).mkdir(text("locked")));
    for (const QString& each : {path(text("kqx")), path(text("locked")), folder.path()}) {
        ASSERT_TRUE(QFile::setPermissions(each, readable));
    }
    for (const QStringList& command : writers) {
        const Ran ran = kqx({command.at(0), command.at(1), text("locked/") + command.at(2)}, {}, true);
        EXPECT_EQ(ran.exitCode, 1) << command.last().toStdString();
        EXPECT_TRUE(ran.err.contains("Permission denied")) << ran.err.toStdString();
    }
    const Ran fetched = kqx({text("fetch"), text("--usb"), text("-o"), text("locked")}, {}, true);
    EXPECT_EQ(fetched.exitCode, 5);
    EXPECT_TRUE(fetched.err.contains("cannot be written")) << fetched.err.toStdString();
    EXPECT_TRUE(QDir(path(text("locked"))).isEmpty());
    EXPECT_TRUE(QFile::setPermissions(folder.path(), readable | QFile::WriteOwner));
}

TEST_F(CompanionHardships, AFetchOntoAFullDiskFailsAndTheOldFileStands) {
    serve();
    ASSERT_TRUE(QDir(folder.path()).mkdir(text("got")));
    put(text("got/one.bin"), "old");
    for (const QStringList& link : {QStringList{text("--serial"), path(text("line"))}, QStringList{text("--usb")}}) {
        const QStringList command =
            QStringList{text("fetch"), text("--force"), text("-o"), text("got/one.bin"), text("--timeout"), text("2")} +
            link;
        const Ran ran = [&] {
            const SmallDisk disk(500);
            return kqx(command);
        }();
        EXPECT_EQ(ran.exitCode, 1) << link.first().toStdString();
        EXPECT_TRUE(ran.err.contains("Disk full")) << ran.err.toStdString();
        EXPECT_EQ(contentOf(path(text("got/one.bin"))), "old");
        EXPECT_TRUE(leftovers(path(text("got")), {text("one.bin")}).isEmpty());
    }
    for (const QStringList& link : {QStringList{text("--serial"), path(text("line"))}, QStringList{text("--usb")}}) {
        const Ran ran = kqx(
            QStringList{text("fetch"), text("--force"), text("-o"), text("got/one.bin"), text("--timeout"), text("2")} +
            link);
        EXPECT_EQ(ran.exitCode, 0) << "the next one succeeds: " << ran.err.toStdString();
    }
}

TEST_F(CompanionHardships, WhatCannotBePrintedIsNoSuccess) {
    for (const QStringList& command :
         {QStringList{text("info"), text("capture.bin")},
          QStringList{text("info"), text("--json"), text("capture.bin")}, QStringList{text("--version")},
          QStringList{text("help")}, QStringList{text("table"), text("--help")}}) {
        const Ran ran = kqx(command, text("/dev/full"));
        EXPECT_EQ(ran.exitCode, 1) << command.first().toStdString();
        EXPECT_TRUE(ran.err.contains("output cannot be written")) << ran.err.toStdString();
        EXPECT_EQ(kqx(command).exitCode, 0);
    }
}

} // namespace
} // namespace sixtrace::test
