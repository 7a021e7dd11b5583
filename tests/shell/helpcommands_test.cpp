// SPDX-License-Identifier: MIT
#include "shell/frmabout.h"
#include "shell/frmcomfixture.h"
#include "shell/frmmessageout.h"

#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTest>

namespace sixtrace::test {
namespace {

class HelpCommandsTest : public FrmComTest {
protected:
    FrmCom& loadWithOpener() {
        form = std::make_unique<FrmCom>(*model, FrmComServices{dialogs, [this] { return path(QStringLiteral(".")); },
                                                               [this] { ++ends; },
                                                               [this](const QString& file) { opened << file; }});
        return *form;
    }
    QStringList opened;
};

TEST_F(HelpCommandsTest, ContentsOpensTheHelpOfTheTickedLanguage) {
    write(QStringLiteral("vrt_c.html"), "c");
    write(QStringLiteral("vrt_e.html"), "e");
    loadWithOpener();
    item("mnuContent").trigger();
    item("mnuEnglish").trigger();
    item("mnuContent").trigger();
    ASSERT_EQ(opened.size(), 2);
    EXPECT_TRUE(opened.at(0).endsWith(QStringLiteral("/vrt_c.html")));
    EXPECT_TRUE(opened.at(1).endsWith(QStringLiteral("/vrt_e.html")));
}

TEST_F(HelpCommandsTest, WithTheHelpFileMissingContentsShowsNothing) {
    loadWithOpener();
    item("mnuContent").trigger();
    EXPECT_TRUE(opened.isEmpty());
    EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(HelpCommandsTest, AboutShowsNameAndVersionModelesslyAndOkUnloadsIt) {
    installLanguages();
    load();
    item("mnuAbout").trigger();
    const QPointer<QWidget> about = form->findChild<QWidget*>(QStringLiteral("frmAbout"));
    ASSERT_FALSE(about.isNull());
    EXPECT_TRUE(about->isVisible());
    EXPECT_FALSE(about->isModal());
    EXPECT_EQ(about->windowTitle(), QStringLiteral("About Sixtrace"));
    EXPECT_EQ(about->findChild<QLabel*>(QStringLiteral("lblTitle"))->text(), QStringLiteral("Sixtrace"));
    EXPECT_EQ(about->findChild<QLabel*>(QStringLiteral("lblVersion"))->text(),
              QStringLiteral("Version " SIXTRACE_VERSION));
    about->findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(about.isNull());
}

TEST_F(HelpCommandsTest, ThereIsOneAboutBoxHoweverOftenItIsAskedFor) {
    load();
    const auto boxes = [this] {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return form->findChildren<QWidget*>(QStringLiteral("frmAbout"));
    };
    item("mnuAbout").trigger();
    const QPointer<QWidget> first = boxes().value(0);
    first->showMinimized();
    item("mnuAbout").trigger();
    ASSERT_EQ(boxes().size(), 1);
    EXPECT_EQ(boxes().front(), first.data());
    EXPECT_FALSE(first->isMinimized()) << "and it comes to the front";
    first->close();
    item("mnuAbout").trigger(); // before the closed window has been deleted
    ASSERT_EQ(boxes().size(), 1);
    EXPECT_TRUE(boxes().front()->isVisible());
    EXPECT_TRUE(first.isNull());
}

TEST_F(HelpCommandsTest, Command1OfTheMessageWindowHidesItAndLeavesItLoaded) {
    load();
    FrmMessageOut& window = form->messageOut();
    window.Label1().setText(QStringLiteral("kept"));
    window.show();
    window.findChild<QPushButton*>(QStringLiteral("Command1"))->click();
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(&form->messageOut(), &window);
    EXPECT_EQ(form->messageOut().Label1().text(), QStringLiteral("kept"));
}

TEST_F(HelpCommandsTest, WithoutLanguageFilesTheSmallWindowsHaveTheCaptionsOfTheirDesign) {
    load();
    FrmMessageOut& window = form->messageOut();
    EXPECT_EQ(window.windowTitle(), QStringLiteral("信息提示"));
    EXPECT_EQ(window.findChild<QPushButton*>(QStringLiteral("Command1"))->text(), QStringLiteral("确   定"));
    item("mnuAbout").trigger();
    const auto* about = form->findChild<QWidget*>(QStringLiteral("frmAbout"));
    ASSERT_NE(about, nullptr);
    EXPECT_EQ(about->windowTitle(), QStringLiteral("About Sixtrace"));
}

/// Sets the search path for programs during a test.
class SearchPath {
public:
    explicit SearchPath(const QString& folder)
        : m_before(qgetenv("PATH")) {
        qputenv("PATH", folder.toLocal8Bit());
    }
    ~SearchPath() { qputenv("PATH", m_before); }
    SearchPath(const SearchPath&) = delete;
    SearchPath& operator=(const SearchPath&) = delete;

private:
    QByteArray m_before;
};

class SystemInformation : public HelpCommandsTest {
protected:
    void ask() {
        load();
        item("mnuAbout").trigger();
        control<QPushButton>("cmdSysInfo").click();
    }
};

#if !defined(Q_OS_WIN)
TEST_F(SystemInformation, TheDesktopsInformationProgramIsStartedWhereThereIsOne) {
    write(QStringLiteral("hardinfo"), "#!/bin/sh\n: > \"$(/usr/bin/dirname \"$0\")/started\"\n");
    QFile::setPermissions(path(QStringLiteral("hardinfo")), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const SearchPath search(path(QString()));
    ask();
    EXPECT_TRUE(QTest::qWaitFor([this] { return QFile::exists(path(QStringLiteral("started"))); }, 10000));
    EXPECT_TRUE(dialogs.messages.isEmpty());
}

TEST_F(SystemInformation, WithoutSuchAProgramItSaysThatThereIsNone) {
    const SearchPath search(path(QStringLiteral("nowhere")));
    ask();
    EXPECT_EQ(dialogs.messages, QStringList{QStringLiteral("System Information Is Unavailable At This Time")});
}

TEST_F(SystemInformation, AProgramThatCannotBeStartedIsNone) {
    write(QStringLiteral("hardinfo"), "not a program");
    const SearchPath search(path(QString()));
    ask();
    EXPECT_EQ(dialogs.messages.size(), 1);
}
#endif

TEST_F(HelpCommandsTest, TheIntervalOfTimedAcquisitionCannotBeChangedFromTheMenu) {
    load();
    EXPECT_FALSE(item("mnutimeselect").isVisible());
    EXPECT_EQ(form->acquisition().AutoGetInterval(), 0) << "so that the design's own interval applies";
}

TEST_F(HelpCommandsTest, MessageWindowKeepsItsTextThroughHiding) {
    load();
    form->messageOut().Label1().setText(QStringLiteral("first"));
    form->messageOut().Label1().setText(QStringLiteral("second"));
    EXPECT_EQ(form->messageOut().Label1().text(), QStringLiteral("second"));
    EXPECT_FALSE(form->messageOut().isVisible()) << "no code shows it";
}

} // namespace
} // namespace sixtrace::test
