// SPDX-License-Identifier: MIT
// Menu paths, captions, keys and messages that the help pages name have to exist in the program.
#include "platform/printing/qtprinters.h"
#include "shell/frmcomfixture.h"
#include "support/strings.h"

#include <QDirIterator>
#include <QMenuBar>
#include <QRegularExpression>
#include <QSet>

namespace sixtrace::test {
namespace {

struct Page {
    int languageId;
    QString file;
    QString language;
    QString separator; ///< of the steps of a menu path
};

void PrintTo(const Page& page, std::ostream* out) {
    *out << page.file.toStdString();
}

QString contentOf(const QString& path) {
    QFile file(QStringLiteral(SIXTRACE_SOURCE_DIR "/") + path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

/// A caption as the help writes it: without the mark of its key, and without dots, colons and blanks at the ends.
QString plain(QString caption) {
    static const QRegularExpression key(u"\\s*\\(&?[A-Z]\\)"_s);
    static const QRegularExpression ends(u"^[\\s\"]+|[\\s\".:：]+$"_s);
    return caption.remove(key).remove(u'&').remove(ends);
}

/// All texts between `begin` and `end`, with entities resolved.
QStringList piecesOf(const QString& page, const QString& begin, const QString& end) {
    QStringList pieces;
    for (qsizetype at = page.indexOf(begin); at >= 0; at = page.indexOf(begin, at)) {
        at += begin.size();
        QString piece = page.mid(at, page.indexOf(end, at) - at);
        pieces << piece.replace(u"&amp;"_s, u"&"_s).replace(u"&lt;"_s, u"<"_s);
    }
    return pieces;
}

class HelpPages : public FrmComTest, public ::testing::WithParamInterface<Page> {
protected:
    void SetUp() override {
        FrmComTest::SetUp();
        installLanguages();
        write(u"vkq.ini"_s, "[Common]\nLanguage=" + QByteArray::number(GetParam().languageId) + "\n");
        load();
        page = contentOf(u"help/"_s + GetParam().file);
    }
    /// Whether these captions, from menu to item, lead to an item that the user can see.
    [[nodiscard]] bool leads(const QStringList& steps) const {
        const QList<QAction*> menus = form->findChild<QMenuBar*>()->actions();
        for (const QAction* menu : menus) {
            if (plain(menu->text()) != steps.first() || menu->menu() == nullptr) {
                continue;
            }
            const QList<QAction*> entries = menu->menu()->actions();
            return steps.size() == 1 || std::any_of(entries.begin(), entries.end(), [&](const QAction* entry) {
                       return entry->isVisible() && plain(entry->text()) == steps.at(1);
                   });
        }
        return false;
    }

    QString page;
};

TEST_P(HelpPages, EveryMenuPathIsInTheProgram) {
    const QStringList paths = piecesOf(page, u"<b class=\"menu\">"_s, u"</b>"_s);
    EXPECT_GE(paths.size(), 12);
    for (const QString& path : paths) {
        EXPECT_TRUE(leads(path.split(GetParam().separator))) << path.toStdString();
    }
}

TEST_P(HelpPages, EveryCaptionIsInTheLanguageFile) {
    QSet<QString> captions{u"USB"_s, u"Yes"_s}; // the first entry of a list, and a button of the desktop's dialogs
    captions << QtPrinters::pdfDevice();
    for (const QString& line : contentOf(u"lang/"_s + GetParam().language).split(u'\n')) {
        captions << plain(line.section(u'=', 1));
    }
    for (const QString& caption : piecesOf(page, u"<b>"_s, u"</b>"_s)) {
        EXPECT_TRUE(captions.contains(plain(caption))) << caption.toStdString();
    }
}

TEST_P(HelpPages, EveryMessageIsInTheProgram) {
    QString said = contentOf(u"lang/"_s + GetParam().language);
    QDirIterator sources(QStringLiteral(SIXTRACE_SOURCE_DIR "/src"), {u"*.cpp"_s, u"*.h"_s}, QDir::Files,
                         QDirIterator::Subdirectories);
    while (sources.hasNext()) {
        said += contentOf(QDir(QStringLiteral(SIXTRACE_SOURCE_DIR)).relativeFilePath(sources.next()));
    }
    const QStringList messages = piecesOf(page.mid(page.indexOf(u"<table id=\"said\">"_s)), u"<th>"_s, u"</th>"_s);
    EXPECT_GE(messages.size(), 15);
    for (const QString& message : messages) {
        EXPECT_TRUE(said.contains(message)) << message.toStdString();
    }
}

TEST_P(HelpPages, NoMessageThatNeverAppearsIsExplained) {
    // No command reaches the older reader, and nothing shows the message window of the serial transfer.
    for (const QString& silent : {u"not KQX bin file"_s, u"接收成功"_s, u"接收失败"_s, u"用户中断"_s}) {
        EXPECT_FALSE(page.contains(silent)) << silent.toStdString();
    }
}

TEST_P(HelpPages, EveryKeyIsThatOfAnItem) {
    QSet<QString> keys{u"Tab"_s, u"Arrow keys"_s, u"方向键"_s};
    for (const QAction* item : form->findChildren<QAction*>()) {
        if (item->isVisible()) {
            keys << item->shortcut().toString(QKeySequence::PortableText);
        }
    }
    const qsizetype start = page.indexOf(u"<h2 id=\"keys\">"_s);
    const QStringList named =
        piecesOf(page.mid(start, page.indexOf(u"<h2 id=\"messages\">"_s) - start), u"<th>"_s, u"</th>"_s);
    EXPECT_EQ(named.size(), 10);
    for (const QString& key : named) {
        EXPECT_TRUE(keys.contains(key)) << key.toStdString();
    }
}

TEST_P(HelpPages, EveryLinkLeadsToAHeading) {
    for (const QString& target : piecesOf(page, u"<a href=\"#"_s, u"\""_s)) {
        EXPECT_TRUE(page.contains(u"<h2 id=\""_s + target + u'"')) << target.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(BothLanguages, HelpPages,
                         ::testing::Values(Page{0, u"vrt_c.html"_s, u"ChineseS.Lan"_s, u"、"_s},
                                           Page{1, u"vrt_e.html"_s, u"English.Lan"_s, u", "_s}));

} // namespace
} // namespace sixtrace::test
