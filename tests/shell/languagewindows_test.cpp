// SPDX-License-Identifier: MIT
// The language of windows and dialogs: each chooses its captions when it is loaded.
#include "shell/frmcomfixture.h"

#include "capture/applylanguage.h"
#include "capture/mdllan.h"
#include "output/frmdata.h"
#include "output/frmprintpreview.h"
#include "output/frmprintsetup.h"
#include "output/printing.h"
#include "platform/desktop/dialogsheet.h"
#include "platform/files/profilefile.h"
#include "shell/frmmessageout.h"
#include "support/strings.h"

#include <QComboBox>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

namespace sixtrace::test {
namespace {

TEST_F(Languages, AWindowThatIsOpenKeepsItsCaptionsUntilItIsLoadedAgain) {
    installLanguages();
    QFile english(path(u"English.Lan"_s));
    ASSERT_TRUE(english.open(QIODevice::ReadOnly));
    // A key in the main window's section that names a control of another window changes nothing.
    write(u"English.Lan"_s, english.readAll().replace("[FrmCom]", "[FrmCom]\ncmdOK=main"));
    load();
    item("mnuAbout").trigger();
    const QPointer<QPushButton> button = &control<QPushButton>("cmdOK");
    const QString chinese = button->text();
    const QString title = button->window()->windowTitle();
    item("mnuEnglish").trigger();
    EXPECT_EQ(button->text(), chinese);
    EXPECT_EQ(button->window()->windowTitle(), title);
    button->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_TRUE(button.isNull());
    item("mnuAbout").trigger();
    EXPECT_EQ(control<QPushButton>("cmdOK").text(), u"OK"_s);
}

/// A dialog that is made once and loaded before every use.
class ReusedDialog : public DialogSheet {
public:
    ReusedDialog()
        : DialogSheet(200, 100) {
        setObjectName(u"reused"_s);
        setWindowTitle(u"设计 "_s);
        label = addLabel("Label1", u"标签"_s, QRect(0, 0, 50, 20));
        button = addButton("Command1", u"按钮"_s, 0, 20);
        list = new QComboBox(this);
        list->setObjectName(u"Combo1"_s);
        list->addItems({u"一"_s, u"二"_s});
    }
    QLabel* label;
    QPushButton* button;
    QComboBox* list;
};

TEST_F(Languages, ADialogThatWasUnloadedStartsFromItsDesignAtTheNextLoad) {
    write(u"English.Lan"_s, "[reused]\nCaption=Design\nLabel1=label\nCommand1=button\n[reusedCombo1]\n0=one\n1=two\n");
    model->AppDir = path(QString()) + QLatin1Char('/');
    ReusedDialog dialog;
    SetLanFile(*model, 1);
    ApplyLanguage(dialog, *model);
    EXPECT_EQ(dialog.windowTitle(), u"Design"_s);
    EXPECT_EQ(dialog.label->text(), u"label"_s);
    EXPECT_EQ(dialog.list->itemText(1), u"two"_s);
    SetLanFile(*model, 0); // the Chinese file is missing
    ApplyLanguage(dialog, *model);
    EXPECT_EQ(dialog.windowTitle(), u"设计 "_s);
    EXPECT_EQ(dialog.label->text(), u"标签"_s);
    EXPECT_EQ(dialog.button->text(), u"按钮"_s);
    EXPECT_EQ(dialog.list->itemText(0), u"一"_s);
    EXPECT_EQ(dialog.list->itemText(1), u"二"_s);
    // A list that has other entries by then keeps them, and a control that has been deleted is left out.
    dialog.list->addItem(u"three"_s);
    delete dialog.button;
    ApplyLanguage(dialog, *model);
    EXPECT_EQ(dialog.list->itemText(2), u"three"_s);
}

TEST_F(Languages, WindowsThatAreUnloadedFollowALanguageWhoseFileIsMissing) {
    QFile::copy(QStringLiteral(SIXTRACE_SOURCE_DIR "/lang/English.Lan"), path(u"English.Lan"_s));
    load();
    const auto titleOfTransfer = [this] {
        QString title;
        QString caption;
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
            if (auto* dialog = dynamic_cast<DialogSheet*>(QApplication::activeModalWidget())) {
                title = dialog->windowTitle();
                caption = dialog->findChild<QLabel*>(u"Label2"_s)->text();
                dialog->close();
            }
        });
        watch.start(0);
        item("mnuAcquire").trigger();
        return QString(title + QLatin1Char('/') + caption);
    };
    item("mnuEnglish").trigger();
    EXPECT_EQ(titleOfTransfer(), u"USB Transmission /Save as:"_s);
    item("mnuChinese").trigger();
    EXPECT_EQ(titleOfTransfer(), u"USB Transmission /存储为："_s);
    // Cancel only hides the window of the serial transfer. It stays loaded, and keeps its language.
    ASSERT_TRUE(writeProfile(u"Common"_s, u"ComPort"_s, u"1"_s, iniFile()));
    EXPECT_EQ(titleOfTransfer(), u"正在接收数据/存储为："_s);
    item("mnuEnglish").trigger();
    EXPECT_EQ(titleOfTransfer(), u"正在接收数据/存储为："_s);
}

TEST_F(Languages, WindowsThatAreLoadedKeepTheirLanguageThroughASwitch) {
    installLanguages();
    load();
    item("mnuEnglish").trigger();
    const QWidget& message = form->messageOut();
    item("mnuTabular").trigger();
    item("mnuPageSet").trigger();
    item("mnuPrintView").trigger();
    const QWidget& table = *form->dataTable().window();
    const QWidget& setup = *form->printing().setup();
    const QWidget& preview = *form->printing().preview();
    const auto texts = [&] {
        QStringList found;
        for (const QWidget* window : {&message, &table, &setup, &preview}) {
            found << window->windowTitle();
            for (const char* name : {"Command1", "CmdExit", "cmdNo"}) {
                if (const auto* button = window->findChild<QPushButton*>(QString::fromLatin1(name))) {
                    found << button->text();
                }
            }
        }
        return found;
    };
    const QStringList english = texts();
    ASSERT_EQ(english.size(), 7);
    EXPECT_TRUE(english.contains(u"Data Table"_s));
    item("mnuChinese").trigger();
    EXPECT_EQ(texts(), english);
    item("mnuTabular").trigger(); // shown again, not loaded again
    EXPECT_EQ(texts(), english);
}

TEST_F(Languages, EveryLoadOfAWindowChoosesTheLanguageFileAnew) {
    installLanguages();
    load();
    item("mnuEnglish").trigger();
    const auto loaded = [this](const char* command) {
        model->LanFile = path(u"elsewhere.Lan"_s);
        item(command).trigger();
        return model->LanFile == path(u"English.Lan"_s);
    };
    for (const char* command : {"mnuAbout", "mnuTabular", "mnuPageSet", "mnuPrintView"}) {
        EXPECT_TRUE(loaded(command)) << command;
    }
    model->LanFile = path(u"elsewhere.Lan"_s);
    EXPECT_EQ(form->messageOut().windowTitle(), u"Message"_s);
    EXPECT_EQ(model->LanFile, path(u"English.Lan"_s));
}

} // namespace
} // namespace sixtrace::test
