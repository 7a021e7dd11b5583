// SPDX-License-Identifier: MIT
#include "acquire/acquirefixture.h"

#include "platform/controls/captions.h"
#include "platform/controls/listcombo.h"
#include "support/strings.h"

namespace sixtrace::test {
namespace {

class PortSettings : public AcquireTest {
protected:
    /// Opens the settings and works on them.
    void show(const std::function<void(frmComSet&)>& work) {
        QTimer::singleShot(30, form.get(), [work] {
            auto* window = dynamic_cast<frmComSet*>(QApplication::activeModalWidget());
            ASSERT_NE(window, nullptr);
            work(*window);
            window->hide();
        });
        item("mnuComSet").trigger();
    }
    [[nodiscard]] QString stored(const char* key) const {
        return readProfile(u"Common"_s, QString::fromUtf8(key), u"(none)"_s, path("vkq.ini"));
    }
};

TEST_F(PortSettings, ListUsbAndThePortsFoundAndAlwaysOpenOnTheLineDefaults) {
    setIni("MSCommSettings", "9600,O,7,2");
    setIni("ComPort", "1");
    load();
    show([](frmComSet& window) {
        const ListCombo& ports = control<ListCombo>(window, "Combo1");
        EXPECT_EQ(ports.ListCount(), 2);
        EXPECT_EQ(ports.List(0), u"USB"_s);
        EXPECT_EQ(ports.List(1), u"COM3"_s);
        EXPECT_EQ(ports.ListIndex(), 1);
        EXPECT_TRUE(control<QWidget>(window, "Frame1").isEnabled());
        EXPECT_EQ(control<ListCombo>(window, "Combo2").Text(), u"115200"_s);
        EXPECT_EQ(control<ListCombo>(window, "Combo3").Text(), u"8"_s);
        EXPECT_EQ(control<ListCombo>(window, "Combo4").Text(), u"无"_s);
        EXPECT_EQ(control<ListCombo>(window, "Combo5").Text(), u"1"_s);
    });
    EXPECT_EQ(model->ComSetText, u"9600,O,7,2"_s);
}

TEST_F(PortSettings, HasItsListsAndTheCaptionsOfItsDesignWhereNoLanguageFileSaysOtherwise) {
    removeLanguages();
    load();
    show([](frmComSet& window) {
        EXPECT_TRUE(window.isModal());
        EXPECT_EQ(window.windowTitle(), u"端口设置"_s);
        const auto entries = [&window](const char* name) {
            const ListCombo& list = control<ListCombo>(window, name);
            QStringList found;
            for (int i = 0; i < list.ListCount(); ++i) {
                found << list.List(i);
            }
            return found;
        };
        EXPECT_EQ(entries("Combo2"), (QStringList{u"9600"_s, u"19200"_s, u"38400"_s, u"57600"_s, u"115200"_s}));
        EXPECT_EQ(entries("Combo3"), (QStringList{u"5"_s, u"6"_s, u"7"_s, u"8"_s}));
        EXPECT_EQ(entries("Combo4"), (QStringList{u"奇"_s, u"偶"_s, u"无"_s}));
        EXPECT_EQ(entries("Combo5"), (QStringList{u"1"_s, u"2"_s}));
        const std::array<std::pair<const char*, const char*>, 5> labels{{{"Label1", "选择通讯口："},
                                                                         {"Label2", "数据位(D):"},
                                                                         {"Label3", "奇偶校验(P):"},
                                                                         {"Label4", "每秒位数(B):"},
                                                                         {"Label5", "停止位(S):"}}};
        for (const auto& [name, caption] : labels) {
            EXPECT_EQ(control<QLabel>(window, name).text(), QString::fromUtf8(caption)) << name;
        }
        EXPECT_EQ(captionOf(control<QWidget>(window, "Frame1")), u"Settings"_s);
        EXPECT_EQ(control<QPushButton>(window, "CmdSet").text(), u"确定"_s);
        EXPECT_EQ(control<QPushButton>(window, "CmdCancel").text(), u"取消"_s);
        EXPECT_EQ(control<QPushButton>(window, "Command1").text(), u"默认"_s);
    });
}

TEST_F(PortSettings, TheLettersInBracketsLeadToTheirListsInBothLanguages) {
    setIni("ComPort", "1");
    load();
    for (const char* language : {"mnuEnglish", "mnuChinese"}) {
        item(language).trigger();
        show([](frmComSet& window) {
            window.activateWindow();
            ASSERT_TRUE(QTest::qWaitForWindowActive(&window, 60'000));
            for (const auto& [key, name] : {std::pair(Qt::Key_B, "Combo2"),
                                            {Qt::Key_D, "Combo3"},
                                            {Qt::Key_P, "Combo4"},
                                            {Qt::Key_S, "Combo5"}}) {
                auto& list = control<ListCombo>(window, name);
                QTest::keyClick(window.focusWidget(), key, Qt::AltModifier);
                EXPECT_TRUE(list.hasFocus()) << name;
            }
            EXPECT_EQ(control<ListCombo>(window, "Combo5").Text(), u"1"_s) << "and change nothing";
        });
    }
}

TEST_F(PortSettings, TheParityLettersStandOnePlaceOffTheWords) {
    load();
    const std::array<const char*, 3> letters{"115200,N,8,1", "115200,O,8,1", "115200,E,8,1"};
    for (int parity = 0; parity < 3; ++parity) {
        show([parity](frmComSet& window) {
            control<ListCombo>(window, "Combo4").setListIndex(parity);
            click(window, "CmdSet");
        });
        EXPECT_EQ(stored("MSCommSettings"), QString::fromUtf8(letters[static_cast<std::size_t>(parity)]));
    }
}

TEST_F(PortSettings, WithUsbNoPortIsOpenedAndTheTextIsStillBuiltAndStored) {
    load();
    show([](frmComSet& window) {
        EXPECT_FALSE(control<QWidget>(window, "Frame1").isEnabled());
        click(window, "CmdSet");
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(stored("MSCommSettings"), u"115200,E,8,1"_s);
    EXPECT_EQ(stored("ComPort"), u"0"_s);
}

TEST_F(PortSettings, APortThatOpensIsStoredByItsIndex) {
    load();
    show([](frmComSet& window) {
        control<ListCombo>(window, "Combo1").setListIndex(1);
        EXPECT_TRUE(control<QWidget>(window, "Frame1").isEnabled());
        click(window, "CmdSet");
    });
    EXPECT_EQ(stored("ComPort"), u"1"_s);
    EXPECT_TRUE(dialogs.messages.isEmpty());
    EXPECT_FALSE(acquisition().receiver().MSComm1().PortOpen());
}

TEST_F(PortSettings, APortThatDoesNotOpenIsToldTheDialogStaysAndNothingIsWritten) {
    load();
    show([this](frmComSet& window) {
        control<ListCombo>(window, "Combo1").setListIndex(1);
        hasPort = false;
        click(window, "CmdSet");
        EXPECT_TRUE(window.isVisible());
    });
    EXPECT_EQ(dialogs.messages, QStringList{u"Device unavailable"_s});
    EXPECT_EQ(dialogs.messageIcons.front(), MessageIcon::Exclamation);
    EXPECT_EQ(stored("MSCommSettings"), u"(none)"_s);
    EXPECT_EQ(stored("ComPort"), u"(none)"_s);
}

TEST_F(PortSettings, WithoutAnySerialPortTheListHoldsUsbAloneAndAStoredPortFallsToAnIndexThatDoesNotExist) {
    hasPort = false;
    setIni("ComPort", "4");
    load();
    show([this](frmComSet& window) {
        EXPECT_EQ(control<ListCombo>(window, "Combo1").ListCount(), 1);
        EXPECT_EQ(control<ListCombo>(window, "Combo1").ListIndex(), -1);
        EXPECT_EQ(model->ComPort, 1);
    });
    EXPECT_EQ(stored("ComPort"), u"4"_s);
}

TEST_F(PortSettings, AStoredValueAboveTheNumberOfPortsIsReplacedInMemoryAndWrittenOnlyOnConfirming) {
    setIni("ComPort", "9");
    load();
    show([this](frmComSet& window) {
        EXPECT_EQ(model->ComPort, 1);
        click(window, "CmdCancel");
    });
    EXPECT_EQ(stored("ComPort"), u"9"_s);
    show([](frmComSet& window) { click(window, "CmdSet"); });
    EXPECT_EQ(stored("ComPort"), u"1"_s);
}

TEST_F(PortSettings, APortThatDisappearsShiftsTheMeaningOfAStoredIndex) {
    setIni("ComPort", "1");
    hasOther = true;
    load();
    show([](frmComSet& window) {
        EXPECT_EQ(control<ListCombo>(window, "Combo1").ListCount(), 3);
        EXPECT_EQ(control<ListCombo>(window, "Combo1").Text(), u"COM3"_s);
        EXPECT_EQ(control<ListCombo>(window, "Combo1").List(2), u"COM5"_s);
    });
    hasPort = false;
    show([](frmComSet& window) {
        EXPECT_EQ(control<ListCombo>(window, "Combo1").ListCount(), 2);
        EXPECT_EQ(control<ListCombo>(window, "Combo1").Text(), u"COM5"_s);
    });
}

TEST_F(PortSettings, AStoredValueOfTheLastPortFoundStays) {
    setIni("ComPort", "2");
    hasOther = true;
    load();
    show([this](frmComSet& window) {
        EXPECT_EQ(control<ListCombo>(window, "Combo1").Text(), u"COM5"_s);
        EXPECT_EQ(model->ComPort, 2);
    });
}

TEST_F(PortSettings, ThePortIsTriedWithTheLineSettingsOfTheLists) {
    load();
    show([](frmComSet& window) {
        control<ListCombo>(window, "Combo1").setListIndex(1);
        control<ListCombo>(window, "Combo2").setListIndex(3);
        click(window, "CmdSet");
    });
    EXPECT_EQ(stored("MSCommSettings"), u"57600,E,8,1"_s);
    // Closing gave the line its old settings back; the control keeps those of the trial.
    ASSERT_TRUE(acquisition().receiver().MSComm1().setPortOpen(true).ok());
    const termios line = peer.settings();
    EXPECT_EQ(cfgetospeed(&line), static_cast<speed_t>(B57600));
}

TEST_F(PortSettings, DefaultChoosesUsbAndTheLineDefaults) {
    setIni("ComPort", "1");
    load();
    show([](frmComSet& window) {
        control<ListCombo>(window, "Combo2").setListIndex(0);
        click(window, "Command1");
        EXPECT_EQ(control<ListCombo>(window, "Combo1").ListIndex(), 0);
        EXPECT_EQ(control<ListCombo>(window, "Combo2").ListIndex(), 4);
        EXPECT_FALSE(control<QWidget>(window, "Frame1").isEnabled());
    });
}

TEST_F(PortSettings, WithoutAnySerialPortOkStoresUsbWhereItIsChosenAndNothingElseWhereNothingIs) {
    hasPort = false;
    setIni("ComPort", "4");
    load();
    show([](frmComSet& window) {
        EXPECT_EQ(control<ListCombo>(window, "Combo1").ListIndex(), -1);
        click(window, "CmdSet");
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(stored("ComPort"), u"-1"_s);
    EXPECT_EQ(stored("MSCommSettings"), u"115200,E,8,1"_s);
    EXPECT_TRUE(dialogs.messages.isEmpty());
    show([](frmComSet& window) {
        click(window, "Command1");
        click(window, "CmdSet");
    });
    EXPECT_EQ(stored("ComPort"), u"0"_s);
    EXPECT_TRUE(dialogs.messages.isEmpty());
}

TEST_F(PortSettings, WhileAFetchStillWaitsOnlyRealPortsAreListedAndItsOwnOneIsNotTakenForAnothers) {
    setIni("ComPort", "1");
    hasOther = true;
    load();
    QStringList listed;
    peer.play([&](PtyPeer& p) {
        p.take(1);
        PtyPeer::untilItWaits();
        QMetaObject::invokeMethod(
            form.get(),
            [&] {
                item("mnustop").trigger();
                EXPECT_TRUE(acquisition().receiver().MSComm1().PortOpen());
                show([&](frmComSet& window) {
                    const ListCombo& ports = control<ListCombo>(window, "Combo1");
                    for (int i = 0; i < ports.ListCount(); ++i) {
                        listed << ports.List(i);
                    }
                    click(window, "CmdSet"); // its own port
                });
                EXPECT_EQ(stored("ComPort"), u"1"_s);
                show([&](frmComSet& window) { // another one
                    control<ListCombo>(window, "Combo1").setListIndex(2);
                    click(window, "CmdSet");
                });
                EXPECT_EQ(stored("ComPort"), u"2"_s);
                EXPECT_TRUE(acquisition().receiver().MSComm1().PortOpen());
                hasOther = false;
                show([&](frmComSet& window) { // one that has gone
                    EXPECT_EQ(control<ListCombo>(window, "Combo1").ListCount(), 2);
                    window.hide();
                });
                acquisition().receiver().CancelButton_Click();
            },
            Qt::BlockingQueuedConnection);
        p.send("x");
        p.take(11);
    });
    item("mnuautoget").trigger();
    acquisition().Timetime1_Timer();
    peer.finish();
    EXPECT_EQ(listed, (QStringList{u"USB"_s, u"COM3"_s, u"COM5"_s}));
    EXPECT_TRUE(dialogs.messages.isEmpty());
}

TEST_F(PortSettings, APortThatAnotherHoldsIsListedAndToldOnOk) {
    load();
    MSComm holder([this](int) { return peer.location(); });
    ASSERT_TRUE(holder.setPortOpen(true).ok());
    show([](frmComSet& window) {
        const ListCombo& ports = control<ListCombo>(window, "Combo1");
        EXPECT_EQ(ports.List(1), u"COM3"_s);
        control<ListCombo>(window, "Combo1").setListIndex(1);
        click(window, "CmdSet");
        EXPECT_TRUE(window.isVisible());
    });
    EXPECT_EQ(dialogs.messages, QStringList{u"Port already open"_s});
    EXPECT_EQ(stored("ComPort"), u"(none)"_s);
}

TEST_F(PortSettings, ThePortsToolTipNamesItsDeviceAndWhereToReadOn) {
    setIni("Language", "1");
    load();
    show([this](frmComSet& window) {
        auto& ports = control<ListCombo>(window, "Combo1");
        const QString more = u"The command kqx ports lists all ports, and why one does not appear here."_s;
        EXPECT_EQ(ports.toolTip(), more);
        EXPECT_EQ(ports.itemData(1, Qt::ToolTipRole).toString(), peer.location());
        ports.setListIndex(1);
        EXPECT_EQ(ports.toolTip(), peer.location() + u'\n' + more);
    });
    setIni("Language", "0");
    load();
    show([](frmComSet& window) {
        EXPECT_EQ(control<ListCombo>(window, "Combo1").toolTip(),
                  u"命令 kqx ports 列出所有端口，并说明某个端口为何不在此列。"_s);
    });
}

} // namespace
} // namespace sixtrace::test
