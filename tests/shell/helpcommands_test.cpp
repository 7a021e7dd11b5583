// SPDX-License-Identifier: MIT
#include "shell/frmabout.h"
#include "shell/frmcomfixture.h"
#include "shell/frmmessageout.h"
#include "support/strings.h"

#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTest>

namespace sixtrace::test {
namespace {

class HelpCommandsTest : public FrmComTest {
protected:
    FrmCom& loadWithOpener() {
        form = std::make_unique<FrmCom>(*model,
                                        FrmComServices{dialogs, [this] { return path(u"."_s); }, [this] { ++ends; },
                                                       [this](const QString& file) { opened << file; }});
        return *form;
    }
    QStringList opened;
};

TEST_F(HelpCommandsTest, ContentsOpensTheHelpOfTheTickedLanguage) {
    write(u"vrt_c.html"_s, "c");
    write(u"vrt_e.html"_s, "e");
    loadWithOpener();
    item("mnuContent").trigger();
    item("mnuEnglish").trigger();
    item("mnuContent").trigger();
    ASSERT_EQ(opened.size(), 2);
    EXPECT_TRUE(opened.at(0).endsWith(u"/vrt_c.html"_s));
    EXPECT_TRUE(opened.at(1).endsWith(u"/vrt_e.html"_s));
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
    const QPointer<QWidget> about = form->findChild<QWidget*>(u"frmAbout"_s);
    ASSERT_FALSE(about.isNull());
    EXPECT_TRUE(about->isVisible());
    EXPECT_FALSE(about->isModal());
    EXPECT_EQ(about->windowTitle(), u"About Sixtrace"_s);
    EXPECT_EQ(about->findChild<QLabel*>(u"lblTitle"_s)->text(), u"Sixtrace"_s);
    EXPECT_EQ(about->findChild<QLabel*>(u"lblVersion"_s)->text(), QStringLiteral("Version " SIXTRACE_VERSION));
    about->findChild<QPushButton*>(u"cmdOK"_s)->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(about.isNull());
}

TEST_F(HelpCommandsTest, ThereIsOneAboutBoxHoweverOftenItIsAskedFor) {
    load();
    const auto boxes = [this] {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return form->findChildren<QWidget*>(u"frmAbout"_s);
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
    window.Label1().setText(u"kept"_s);
    window.show();
    window.findChild<QPushButton*>(u"Command1"_s)->click();
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(&form->messageOut(), &window);
    EXPECT_EQ(form->messageOut().Label1().text(), u"kept"_s);
}

TEST_F(HelpCommandsTest, WithoutLanguageFilesTheSmallWindowsHaveTheCaptionsOfTheirDesign) {
    load();
    FrmMessageOut& window = form->messageOut();
    EXPECT_EQ(window.windowTitle(), u"信息提示"_s);
    EXPECT_EQ(window.findChild<QPushButton*>(u"Command1"_s)->text(), u"确   定"_s);
    item("mnuAbout").trigger();
    const auto* about = form->findChild<QWidget*>(u"frmAbout"_s);
    ASSERT_NE(about, nullptr);
    EXPECT_EQ(about->windowTitle(), u"About Sixtrace"_s);
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
    write(u"hardinfo"_s, "#!/bin/sh\n: > \"$(/usr/bin/dirname \"$0\")/started\"\n");
    QFile::setPermissions(path(u"hardinfo"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const SearchPath search(path(QString()));
    ask();
    EXPECT_TRUE(QTest::qWaitFor([this] { return QFile::exists(path(u"started"_s)); }, 10000));
    EXPECT_TRUE(dialogs.messages.isEmpty());
}

TEST_F(SystemInformation, WithoutSuchAProgramItSaysThatThereIsNone) {
    const SearchPath search(path(u"nowhere"_s));
    ask();
    EXPECT_EQ(dialogs.messages, QStringList{u"System Information Is Unavailable At This Time"_s});
}

TEST_F(SystemInformation, AProgramThatCannotBeStartedIsNone) {
    write(u"hardinfo"_s, "not a program");
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
    form->messageOut().Label1().setText(u"first"_s);
    form->messageOut().Label1().setText(u"second"_s);
    EXPECT_EQ(form->messageOut().Label1().text(), u"second"_s);
    EXPECT_FALSE(form->messageOut().isVisible()) << "no code shows it";
}

} // namespace
} // namespace sixtrace::test
