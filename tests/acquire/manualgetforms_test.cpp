// SPDX-License-Identifier: MIT
// The two windows of a fetch by hand: captions, places of the fields, and the choice of a file.
#include "acquire/acquirefixture.h"

#include "support/strings.h"

namespace sixtrace::test {
namespace {

TEST_F(ManualGet, TheWindowsFollowTheLanguageWhenTheyAreLoaded) {
    for (const auto& [language, browse, start] :
         {std::tuple("0", "浏览...", "开始"), std::tuple("1", "Browse...", "Start")}) {
        setIni("Language", language);
        setIni("ComPort", "1");
        load();
        recFrm& window = acquisition().receiver();
        whenShown(window, [&, browseText = browse, startText = start] {
            EXPECT_EQ(control<QPushButton>(window, "Command1").text(), QString::fromUtf8(browseText));
            EXPECT_EQ(control<QPushButton>(window, "Command2").text(), QString::fromUtf8(startText));
            window.close();
        });
        item("mnuAcquire").trigger();
    }
}

TEST_F(ManualGet, TheFieldsOfBothWindowsStandClearOfEachOtherAndInsideTheirWindow) {
    load();
    QWidget& serial = acquisition().receiver();
    QWidget& usb = acquisition().usbWindow();
    for (QWidget* window : {&serial, &usb}) {
        const auto controls = window->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        ASSERT_GT(controls.size(), 8);
        for (int i = 0; i < controls.size(); ++i) {
            EXPECT_TRUE(window->rect().contains(controls[i]->geometry()))
                << window->objectName().toStdString() << ": " << controls[i]->objectName().toStdString();
            for (int k = i + 1; k < controls.size(); ++k) {
                EXPECT_FALSE(controls[i]->geometry().intersects(controls[k]->geometry()))
                    << window->objectName().toStdString() << ": " << controls[i]->objectName().toStdString() << " and "
                    << controls[k]->objectName().toStdString();
            }
        }
        EXPECT_FALSE(control<QProgressBar>(*window, "ProgressBar1").isTextVisible());
    }
}

TEST_F(ManualGet, WithoutLanguageFilesTheWindowsKeepTheCaptionsOfTheirDesign) {
    removeLanguages();
    load();
    const auto captions = [](QWidget& window, const QStringList& names) {
        QStringList found;
        for (const QString& name : names) {
            if (const auto* label = window.findChild<QLabel*>(name)) {
                found << label->text();
            } else {
                found << control<QPushButton>(window, qPrintable(name)).text();
            }
        }
        return found;
    };
    recFrm& serial = acquisition().receiver();
    serial.load();
    EXPECT_EQ(serial.windowTitle(), u"正在接收数据"_s);
    EXPECT_EQ(captions(serial, {u"Label1"_s, u"Label2"_s, u"Command1"_s, u"Label3"_s, u"Label5"_s, u"Label4"_s,
                                u"Command2"_s, u"CancelButton"_s}),
              (QStringList{u"正在接收文件："_s, u"存储为："_s, u"浏览..."_s, u"数据包："_s, u"重试次数"_s,
                           u"传输进度："_s, u"开始"_s, u"Cancel"_s}));
    FrmUSB& usb = acquisition().usbWindow();
    whenShown(usb, [&] {
        EXPECT_EQ(usb.windowTitle(), u"USB Transmission "_s);
        EXPECT_EQ(
            captions(usb, {u"Label1"_s, u"Label2"_s, u"Command1"_s, u"Label4"_s, u"Command4"_s, u"CancelButton"_s}),
            (QStringList{u"正在接收文件："_s, u"存储为："_s, u"浏览..."_s, u"传输进度："_s, u"开 始"_s, u"Cancel"_s}));
        click(usb, "CancelButton");
    });
    item("mnuAcquire").trigger();
}

TEST_F(ManualGet, BrowsingTakesAnExistingFileOnlyWhenTheUserAgrees) {
    load();
    FrmUSB& window = acquisition().usbWindow();
    const QString chosen = path("vkq.ini");
    ASSERT_TRUE(QDir().mkpath(path("mine")));
    whenShown(window, [&] {
        const QString before = control<QLineEdit>(window, "Text2").text();
        dialogs.files = {FileChoice{chosen, 1}, std::nullopt, FileChoice{chosen, 1},
                         FileChoice{path("mine/new.bin"), 1}};
        dialogs.answers = {Answer::No, Answer::Yes};
        click(window, "Command1"); // the file exists, and the answer is No
        EXPECT_EQ(control<QLineEdit>(window, "Text2").text(), before);
        EXPECT_EQ(model->ReceivedFile, chosen);
        EXPECT_EQ(window.LastSaveDir(), QFileInfo(chosen).path()) << "the folder counts whatever the answer";
        EXPECT_EQ(dialogs.messages, QStringList{u"File Exist!  Do you want to continue ?"_s});
        EXPECT_EQ(dialogs.titles, QStringList{u"Message"_s});
        EXPECT_EQ(dialogs.messageIcons.front(), MessageIcon::Exclamation);
        EXPECT_EQ(dialogs.fileRequests.front().fileName, before);
        EXPECT_EQ(dialogs.fileRequests.front().filter, u"bin (*.bin)|*.bin"_s);
        click(window, "Command1"); // cancelled
        EXPECT_EQ(control<QLineEdit>(window, "Text2").text(), before);
        click(window, "Command1"); // answered with Yes
        EXPECT_EQ(control<QLineEdit>(window, "Text2").text(), chosen);
        EXPECT_EQ(control<QLineEdit>(window, "Text1").text(), u"vkq.ini"_s);
        click(window, "Command1"); // nothing to ask
        EXPECT_EQ(control<QLineEdit>(window, "Text2").text(), path("mine/new.bin"));
        EXPECT_EQ(control<QLineEdit>(window, "Text1").text(), u"new.bin"_s);
        EXPECT_EQ(dialogs.messages.size(), 2);
        click(window, "CancelButton");
    });
    item("mnuAcquire").trigger();
    EXPECT_EQ(window.LastSaveDir(), path("mine"));
}

TEST_F(ManualGet, TheUsbDialogStartsInTheFolderChosenLast) {
    load();
    ASSERT_TRUE(QDir().mkpath(path("mine")));
    FrmUSB& window = acquisition().usbWindow();
    whenShown(window, [&] {
        dialogs.files = {FileChoice{path("mine/a.bin"), 1}};
        click(window, "Command1");
        EXPECT_EQ(dialogs.fileRequests.back().initialFolder, path("data"));
        click(window, "CancelButton");
    });
    item("mnuAcquire").trigger();
    whenShown(window, [&] {
        const QString name = control<QLineEdit>(window, "Text1").text();
        EXPECT_EQ(control<QLineEdit>(window, "Text2").text(), path("mine/") + name);
        click(window, "Command1");
        EXPECT_EQ(dialogs.fileRequests.back().initialFolder, path("mine"));
        click(window, "CancelButton");
    });
    item("mnuAcquire").trigger();
}

TEST_F(ManualGet, BrowsingForASerialFileSetsThePathOnlyWithTheUsersConsent) {
    setIni("ComPort", "1");
    load();
    recFrm& window = acquisition().receiver();
    const QString existing = path("vkq.ini");
    whenShown(window, [&] {
        const QLineEdit& field = control<QLineEdit>(window, "Text2");
        const QString before = field.text();
        dialogs.files = {std::nullopt, FileChoice{existing, 1}, FileChoice{existing, 1},
                         FileChoice{path("new.bin"), 1}};
        dialogs.answers = {Answer::No, Answer::Yes};
        click(window, "Command1"); // cancelled
        EXPECT_EQ(field.text(), before);
        EXPECT_EQ(dialogs.fileRequests.front().fileName, before);
        EXPECT_EQ(dialogs.fileRequests.front().filter, u"bin (*.bin)|*.bin"_s);
        click(window, "Command1"); // answered with No
        EXPECT_EQ(field.text(), before);
        EXPECT_EQ(model->ReceivedFile, existing);
        EXPECT_EQ(dialogs.messages, QStringList{u"File Exist!  Do you want to continue ?"_s});
        EXPECT_EQ(dialogs.titles, QStringList{u"Message"_s});
        EXPECT_EQ(dialogs.messageIcons.front(), MessageIcon::Exclamation);
        click(window, "Command1"); // answered with Yes
        EXPECT_EQ(field.text(), existing);
        click(window, "Command1"); // nothing to ask
        EXPECT_EQ(field.text(), path("new.bin"));
        EXPECT_EQ(dialogs.messages.size(), 2);
        click(window, "CancelButton");
    });
    item("mnuAcquire").trigger();
}

TEST_F(ManualGet, TheFoldersExistAsSoonAsADialogNamesThem) {
    load();
    FrmUSB& usb = acquisition().usbWindow();
    whenShown(usb, [&] {
        EXPECT_TRUE(QFileInfo(path("data")).isDir());
        EXPECT_FALSE(QFileInfo::exists(path("dat")));
        click(usb, "CancelButton");
    });
    item("mnuAcquire").trigger();
    setIni("ComPort", "1");
    recFrm& serial = acquisition().receiver();
    whenShown(serial, [&] {
        EXPECT_TRUE(QFileInfo(path("dat")).isDir());
        click(serial, "CancelButton");
    });
    item("mnuAcquire").trigger();
}

TEST_F(ManualGet, AFolderOfTheUsersIsNotMade) {
    load();
    FrmUSB& usb = acquisition().usbWindow();
    whenShown(usb, [&] {
        control<QLineEdit>(usb, "Text2").setText(path("other/got.bin"));
        link.stream = ScriptedLink::transfer(capture("sine"));
        click(usb, "Command4");
    });
    item("mnuAcquire").trigger();
    EXPECT_FALSE(QFileInfo::exists(path("other")));
    EXPECT_EQ(dialogs.messages, QStringList{u"错误代码:76    Path not found"_s});
}

} // namespace
} // namespace sixtrace::test
