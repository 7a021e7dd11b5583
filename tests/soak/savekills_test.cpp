// SPDX-License-Identifier: MIT
// Every kind of save in a program that is killed during the save.
#include "capture/capturefile.h"
#include "capture/settings.h"
#include "output/printresult.h"
#include "output/tablefixture.h"
#include "platform/files/wholefile.h"
#include "platform/printing/pdfprinter.h"
#include "shell/frmcomfixture.h"
#include "soak/killing.h"

#include "capture/scenes.h"
#include "support/strings.h"

#include <QtEndian>

namespace sixtrace::test {
namespace {

/// A sheet of one channel with `samples` rows.
struct Sheet {
    explicit Sheet(int step) {
        hold(*table.model, 0, 20, ramp(200, step));
        table.fill();
        what.ticked.fill(true);
    }
    Table table;
    TableExport what{table.cells, u"mV"_s};
};

class SaveKills : public ::testing::Test {
protected:
    [[nodiscard]] QString path() const { return folder.filePath(u"kept"_s); }

    /// Kills `save`, which writes one of two contents to path() in turn. Afterwards the file must satisfy `isWhole`,
    /// and the folder must hold nothing unknown.
    template<typename Save, typename IsWhole>
    void killSaving(const char* kind, Save save, IsWhole isWhole) {
        Moments moments(duration([&save] { save(0); }));
        ASSERT_TRUE(isWhole(contentOf(path())));
        int newFiles = 0;
        for (int i = 0; i < kKills; ++i) {
            ASSERT_TRUE(writeWhole(path(), "old"));
            killWhile(save, i, moments.next());
            const QByteArray found = contentOf(path());
            newFiles += found == "old" ? 0 : 1;
            ASSERT_TRUE(found == "old" || isWhole(found)) << kind << ' ' << i << ": " << found.size() << " bytes";
        }
        save(0);
        EXPECT_TRUE(isWhole(contentOf(path()))) << "the next save succeeds";
        const QStringList left = leftovers(folder.path(), known);
        tell(kind, kKills, newFiles, left.size());
        EXPECT_TRUE(leftovers(workshop.path(), {}).isEmpty()) << "the next save clears what a killed one has left";
        EXPECT_LE(left.size(), kKills) << "more than one file a kill";
    }
    /// The same for a save whose two contents never change.
    template<typename Save>
    void killSaving(const char* kind, Save save) {
        save(0);
        const QByteArray even = contentOf(path());
        save(1);
        const QByteArray odd = contentOf(path());
        ASSERT_NE(even, odd);
        killSaving(kind, save, [&](const QByteArray& found) { return found == even || found == odd; });
    }

    QTemporaryDir folder;
    QTemporaryDir workshop;       ///< for files that a save makes outside its folder
    QStringList known{u"kept"_s}; ///< names that belong into the folder
};

// Checks the other tests: the same kills must catch a writer that empties the old file and writes into it.
TEST_F(SaveKills, CatchACarelessWriter) {
    const auto careless = [this](int pass) {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        for (int i = 0; i < 200; ++i) {
            file.write(QByteArray(1000, static_cast<char>('a' + pass % 2)));
        }
    };
    Moments moments(duration([&careless] { careless(0); }));
    int half = 0;
    for (int i = 0; i < kKills; ++i) {
        killWhile(careless, i, moments.next());
        half += contentOf(path()).size() == 200'000 ? 0 : 1;
    }
    EXPECT_GT(half, 0);
}

TEST_F(SaveKills, LeaveATextTableOldOrNew) {
    const Sheet even(1);
    const Sheet odd(2);
    killSaving("text table",
               [&](int pass) { static_cast<void>(SaveTextTable((pass % 2 == 0 ? even : odd).what, path()).ok()); });
}

TEST_F(SaveKills, LeaveAnXlsWorkbookOldOrNew) {
    const Sheet even(1);
    const Sheet odd(2);
    const QString sheet = path() + u".xls"_s;
    known.append(u"kept.xls"_s);
    ASSERT_TRUE(QFile::link(path(), sheet)); // the name decides the format
    ASSERT_TRUE(writeWhole(path(), "old"));
    killSaving("workbook .xls",
               [&](int pass) { static_cast<void>(SaveExcelTable((pass % 2 == 0 ? even : odd).what, sheet).ok()); });
}

/// Whether the bytes are a zip archive whose directory stands where the end of the archive says. (An archive contains
/// the time, so no two are equal.)
bool isWholeArchive(const QByteArray& file) {
    constexpr qsizetype kEnd = 22;
    if (file.size() < kEnd || !file.startsWith("PK\3\4") || !file.sliced(file.size() - kEnd).startsWith("PK\5\6")) {
        return false;
    }
    const char* end = file.constData() + file.size() - kEnd;
    const auto entries = qFromLittleEndian<quint16>(end + 10);
    const auto size = qFromLittleEndian<quint32>(end + 12);
    const auto offset = qFromLittleEndian<quint32>(end + 16);
    return entries > 0 && qint64{offset} + size == file.size() - kEnd && file.sliced(offset).startsWith("PK\1\2");
}

TEST_F(SaveKills, LeaveAnXlsxWorkbookOldOrNew) {
    const Sheet even(1);
    const Sheet odd(2);
    const QString sheet = path() + u".xlsx"_s;
    known.append(u"kept.xlsx"_s);
    const QByteArray temporary = qgetenv("TMPDIR");
    qputenv("TMPDIR", workshop.path().toLocal8Bit());
    ASSERT_TRUE(QFile::link(path(), sheet));
    ASSERT_TRUE(writeWhole(path(), "old"));
    killSaving(
        "workbook .xlsx",
        [&](int pass) { static_cast<void>(SaveExcelTable((pass % 2 == 0 ? even : odd).what, sheet).ok()); },
        isWholeArchive);
    if (temporary.isNull()) {
        qunsetenv("TMPDIR");
    } else {
        qputenv("TMPDIR", temporary);
    }
}

/// The page of a scene. It shows the time.
QByteArray pageOf(const char* scene, const QString& capture) {
    EXPECT_TRUE(writeWhole(capture, captureBytes(*captureForm("V11"), *sceneBlocks(QString::fromUtf8(scene), 1))));
    const auto model = std::make_unique<publicM>();
    model->fillTables();
    applyDefaultColours(*model);
    UnseenScreen loaded(*model);
    SimpleWav(capture, loaded.scope());
    EXPECT_TRUE(QFile::remove(capture));
    PdfPrinter paper(QPageSize(QPageSize::A4), QPageLayout::Portrait);
    const PageInputs inputs = pageInputs(loaded.state);
    const MdlPrinter settings;
    Printer printer(paper);
    PageComposer composer(*model, settings, printer);
    EXPECT_TRUE(composer.PrintResult(printer, 100, inputs));
    return paper.document();
}

// The page is composed before the kills begin: composing takes a hundred times as long as writing and touches no file.
TEST_F(SaveKills, LeaveAPageOldOrNew) {
    const QByteArray even = pageOf("sine", folder.filePath(u"capture.bin"_s));
    const QByteArray odd = pageOf("six", folder.filePath(u"capture.bin"_s));
    ASSERT_TRUE(even.startsWith("%PDF-") && odd.startsWith("%PDF-"));
    killSaving("page", [&](int pass) { static_cast<void>(writeWhole(path(), pass % 2 == 0 ? even : odd).ok()); });
}

/// The picture that the main window saves.
class BitmapKills : public FrmComTest {};

TEST_F(BitmapKills, LeaveABitmapOldOrNew) {
    load();
    const auto save = [this](int) {
        dialogs.files.emplace_back(FileChoice{path(u"screen.bmp"_s), 1});
        dialogs.answers.push_back(Answer::Yes);
        item("mnuSaveAs").trigger();
    };
    const QStringList known = leftovers(path(u"."_s), {});
    Moments moments(duration([&save] { save(0); }));
    const QByteArray whole = read(u"screen.bmp"_s);
    ASSERT_GT(whole.size(), 625 * 401 * 3);
    int newFiles = 0;
    for (int i = 0; i < kKills; ++i) {
        write(u"screen.bmp"_s, "old");
        killWhile(save, i, moments.next());
        const QByteArray found = read(u"screen.bmp"_s);
        newFiles += found == "old" ? 0 : 1;
        ASSERT_TRUE(found == "old" || found == whole) << i << ": " << found.size() << " bytes";
    }
    const QStringList left = leftovers(path(u"."_s), known + QStringList{u"screen.bmp"_s});
    tell("bitmap", kKills, newFiles, left.size());
    EXPECT_LE(left.size(), kKills) << "more than one file a kill";
}

} // namespace
} // namespace sixtrace::test
