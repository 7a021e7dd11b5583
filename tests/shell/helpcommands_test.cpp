// SPDX-License-Identifier: MIT
#include "shell/frmabout.h"
#include "shell/frmcomfixture.h"
#include "shell/frmmessageout.h"

#include <QLabel>
#include <QPointer>
#include <QPushButton>

namespace sixtrace {
namespace {

class HelpCommandsTest : public FrmComTest {
protected:
    FrmCom& loadWithOpener() {
        form = std::make_unique<FrmCom>(*model, FrmComSurroundings{dialogs, [this] { return path(QStringLiteral(".")); },
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
    EXPECT_EQ(about->findChild<QLabel*>(QStringLiteral("lblVersion"))->text(), QStringLiteral("Version " SIXTRACE_VERSION));
    about->findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(about.isNull());
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

} // namespace
} // namespace sixtrace
