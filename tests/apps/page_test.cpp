// SPDX-License-Identifier: MIT
// kqx page. Poppler's tools read the documents.
#include "apps/program.h"
#include "capture/capturewriter.h"
#include "capture/scenes.h"
#include "support/strings.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace sixtrace::test {
namespace {

class KqxPage : public ::testing::Test {
protected:
    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }
    [[nodiscard]] QString capture(const char* name = "six") const {
        const auto blocks = sceneBlocks(QString::fromLatin1(name), 1);
        EXPECT_TRUE(blocks.has_value());
        QFile file(path(u"capture.bin"_s));
        const QByteArray bytes = captureBytes(*captureForm("V11"), *blocks);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return file.fileName();
    }
    [[nodiscard]] Ran page(const QStringList& options = {}) const {
        return run(u"kqx"_s, QStringList{u"page"_s, capture(), path(u"out.pdf"_s)} + options);
    }
    [[nodiscard]] QByteArray toolOutput(const QString& tool, const QStringList& arguments) const {
        QProcess process;
        process.start(tool, arguments);
        return process.waitForFinished() && process.exitCode() == 0 ? process.readAllStandardOutput() : QByteArray();
    }
    [[nodiscard]] QByteArray pageSize() const {
        for (const QByteArray& line : toolOutput(u"pdfinfo"_s, {path(u"out.pdf"_s)}).split('\n')) {
            if (line.startsWith("Page size:")) {
                return line.mid(10).simplified();
            }
        }
        return {};
    }

private:
    QTemporaryDir m_folder;
};

TEST_F(KqxPage, WritesOnePageWithLegendAndLabelsAsText) {
    const Ran ran = page();
    EXPECT_EQ(ran.exitCode, 0) << ran.err.toStdString();
    const QByteArray text = toolOutput(u"pdftotext"_s, {u"-layout"_s, path(u"out.pdf"_s), u"-"_s});
    for (const char* label : {"ch1", "ch2", "A", "B", "C", "D"}) {
        EXPECT_GE(text.count(label), 2) << label;
    }
    EXPECT_TRUE(text.contains("500 mV"));
    EXPECT_TRUE(pageSize().contains("(A4)")) << pageSize().toStdString();
    EXPECT_EQ(text.count('\f'), 1) << "one page";
}

TEST_F(KqxPage, PaperAndSideAreChosen) {
    EXPECT_EQ(page({u"--paper"_s, u"letter"_s, u"--landscape"_s}).exitCode, 0);
    EXPECT_TRUE(pageSize().startsWith("792 x 612 pts")) << pageSize().toStdString();
}

TEST_F(KqxPage, MarginsMoveThePage) {
    const auto firstWordLeft = [this] {
        const QByteArray boxes = toolOutput(u"pdftotext"_s, {u"-bbox"_s, path(u"out.pdf"_s), u"-"_s});
        const QByteArray key("<word xMin=\"");
        const qsizetype at = boxes.indexOf(key) + key.size();
        return boxes.mid(at, boxes.indexOf('"', at) - at).toDouble();
    };
    EXPECT_EQ(page().exitCode, 0);
    const double near = firstWordLeft();
    EXPECT_EQ(page({u"--margins"_s, u"1,1,5,1"_s}).exitCode, 0);
    EXPECT_NEAR(firstWordLeft() - near, 4 * 567 / 20.0, 0.5); // four centimetres more, in points
}

TEST_F(KqxPage, WrongPaperAndMarginsAreUsageErrors) {
    EXPECT_EQ(page({u"--paper"_s, u"parchment"_s}).exitCode, 2);
    for (const QString& margins : {u"1,1,1"_s, u"0,1,1,1"_s, u"1,1,1,10.1"_s, u"a,b,c,d"_s}) {
        EXPECT_EQ(page({u"--margins"_s, margins}).exitCode, 2) << margins.toStdString();
    }
    EXPECT_FALSE(QFile::exists(path(u"out.pdf"_s)));
}

TEST_F(KqxPage, ExistingFileSurvivesAFailure) {
    QFile old(path(u"out.pdf"_s));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
    old.close();
    // Margins of 10 cm left and right leave one centimetre of A4, which the labels fill completely.
    const Ran ran = page({u"--margins"_s, u"1,1,10,10"_s});
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_FALSE(ran.err.isEmpty());
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    EXPECT_EQ(old.readAll(), "old");
}

} // namespace
} // namespace sixtrace::test
