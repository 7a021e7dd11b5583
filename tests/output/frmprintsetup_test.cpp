// SPDX-License-Identifier: MIT
#include "output/printwindow.h"

#include "support/strings.h"

#include <QLabel>

namespace sixtrace::test {
namespace {

class PageSetup : public PrintWindow {
protected:
    void SetUp() override {
        PrintWindow::SetUp();
        installLanguages();
        open();
    }
    /// Types a margin and clicks OK. True if the window has closed.
    bool accepts(const char* name, const char* typed) {
        frmPrintSetup& setup = openSetup();
        field(setup, name).setText(QString::fromLatin1(typed));
        press(setup, "cmdYes");
        const bool gone = !setup.isVisible();
        setup.close();
        unloadClosed();
        return gone;
    }
};

TEST_F(PageSetup, ShowsTheMarginsOfAStartedProgramModelessly) {
    EXPECT_EQ(printing().settings().PrintMarginTop, 567);
    frmPrintSetup& setup = openSetup();
    EXPECT_TRUE(setup.isVisible());
    EXPECT_FALSE(setup.isModal());
    for (const char* name : {"txtMargin(1)", "txtMargin(2)", "txtMargin(3)", "txtMargin(4)"}) {
        EXPECT_EQ(field(setup, name).text(), u"1.0"_s);
    }
    EXPECT_EQ(field(setup, "txtZoom").text(), u"100"_s);
    EXPECT_TRUE(in<QRadioButton>(setup, "optRePrint(1)").isChecked());
    item("mnuPageSet").trigger();
    EXPECT_EQ(printing().setup(), &setup) << "there is one page setup";
}

TEST_F(PageSetup, HasTheCaptionsOfItsDesignInChinese) {
    frmPrintSetup& setup = openSetup();
    const std::array labels{u"上边界："_s, u"下边界："_s, u"左边界："_s, u"右边界："_s};
    for (int i = 0; i < 4; ++i) {
        auto* const label = setup.findChild<QLabel*>(u"Labela(%1)"_s.arg(i));
        ASSERT_NE(label, nullptr);
        EXPECT_EQ(label->text(), labels[static_cast<std::size_t>(i)]);
    }
    const std::array buttons{std::pair("optRePrint(0)", u"每次改变显示比例时都重新绘图"_s),
                             std::pair("optRePrint(1)", u"不重新绘图，但是重新设定原始图片的比例"_s),
                             std::pair("cmdDefault", u"预设值"_s), std::pair("cmdYes", u"确定"_s),
                             std::pair("cmdNo", u"取消"_s)};
    for (const auto& [name, caption] : buttons) {
        EXPECT_EQ(in<QAbstractButton>(setup, name).text(), caption) << name;
    }
}

TEST_F(PageSetup, UnitsAndTheRuleArePaintedBesideTheFields) {
    frmPrintSetup& setup = openSetup();
    const QImage picture = setup.grab().toImage();
    for (const int x : {16, 220, 423}) {
        EXPECT_EQ(picture.pixel(x, 92), 0xFFD3D8DFU) << x;
    }
    EXPECT_NE(picture.pixel(15, 92), 0xFFD3D8DFU);
    EXPECT_NE(picture.pixel(220, 93), 0xFFD3D8DFU);
    const auto darkest = [&picture](const QWidget& beside) {
        int dark = 255;
        for (int y = beside.y(); y < beside.y() + beside.height(); ++y) {
            for (int x = beside.geometry().right() + 7; x < beside.geometry().right() + 30; ++x) {
                dark = std::min(dark, qBlue(picture.pixel(x, y)));
            }
        }
        return dark;
    };
    for (const char* name : {"txtMargin(1)", "txtMargin(2)", "txtMargin(3)", "txtMargin(4)", "txtZoom"}) {
        const int dark = darkest(field(setup, name));
        EXPECT_LT(dark, 180) << name << " has its unit";
        EXPECT_GE(dark, 0x75) << name << " in the muted colour, not in ink";
    }
    EXPECT_EQ(field(setup, "txtZoom").accessibleName(), u"%"_s);
}

TEST_F(PageSetup, MarginsStandForTopBottomLeftAndRightInThisOrder) {
    frmPrintSetup& setup = openSetup();
    field(setup, "txtMargin(1)").setText(u"1"_s);
    field(setup, "txtMargin(2)").setText(u"2"_s);
    field(setup, "txtMargin(3)").setText(u"3"_s);
    field(setup, "txtMargin(4)").setText(u"4"_s);
    press(setup, "cmdYes");
    EXPECT_EQ(printing().settings().PrintMarginTop, 567);
    EXPECT_EQ(printing().settings().PrintMarginBottom, 1134);
    EXPECT_EQ(printing().settings().PrintMarginLeft, 1701);
    EXPECT_EQ(printing().settings().PrintMarginRight, 2268);
}

TEST_F(PageSetup, MarginOfExactly10IsAccepted) {
    EXPECT_TRUE(accepts("txtMargin(4)", "10"));
    EXPECT_EQ(printing().settings().PrintMarginRight, 5670);
    EXPECT_EQ(printing().settings().PrintMarginLeft, 567);
    EXPECT_TRUE(answering.messages.isEmpty());
}

TEST_F(PageSetup, Margin0IsRefused) {
    EXPECT_FALSE(accepts("txtMargin(1)", "0"));
    EXPECT_EQ(answering.messages, QStringList{u"边界值请输入大于 0 并且不大于 10 的数值。"_s});
    EXPECT_EQ(answering.messageIcons, std::vector{MessageIcon::Exclamation});
    EXPECT_EQ(printing().settings().PrintMarginTop, 567);
}

TEST_F(PageSetup, Margin10Point1IsRefused) {
    EXPECT_FALSE(accepts("txtMargin(2)", "10.1"));
}

TEST_F(PageSetup, Margin1Comma5IsRefused) {
    EXPECT_FALSE(accepts("txtMargin(3)", "1,5"));
}

TEST_F(PageSetup, FirstBadMarginGetsTheFocusWithItsTextSelectedAndNothingIsStored) {
    frmPrintSetup& setup = openSetup();
    field(setup, "txtMargin(1)").setText(u"3"_s);
    field(setup, "txtMargin(3)").setText(u"11"_s);
    field(setup, "txtMargin(4)").setText(u"x"_s);
    press(setup, "cmdYes");
    EXPECT_TRUE(setup.isVisible());
    EXPECT_EQ(setup.focusWidget(), &field(setup, "txtMargin(3)"));
    EXPECT_EQ(field(setup, "txtMargin(3)").selectedText(), u"11"_s);
    EXPECT_EQ(answering.messages.size(), 1);
    EXPECT_EQ(printing().settings().PrintMarginTop, 567);
}

TEST_F(PageSetup, TxtZoom100Point5IsRefusedForItsPoint) {
    EXPECT_FALSE(accepts("txtZoom", "100.5"));
    EXPECT_EQ(answering.messages, QStringList{u"您输入的图片比例有误，请输入一个正整数。"_s});
}

TEST_F(PageSetup, TxtZoomMinus5IsRefusedForItsMinus) {
    frmPrintSetup& setup = openSetup();
    field(setup, "txtZoom").setText(u"-5"_s);
    press(setup, "cmdYes");
    EXPECT_TRUE(setup.isVisible());
    EXPECT_EQ(setup.focusWidget(), &field(setup, "txtZoom"));
    EXPECT_EQ(field(setup, "txtZoom").selectedText(), u"-5"_s);
}

TEST_F(PageSetup, InEnglishTheMessagesComeFromTheLanguageFile) {
    item("mnuEnglish").trigger();
    EXPECT_FALSE(accepts("txtMargin(1)", "0"));
    EXPECT_FALSE(accepts("txtZoom", "0"));
    ASSERT_EQ(answering.messages.size(), 2);
    EXPECT_TRUE(answering.messages[0].startsWith(u"Please enter margins"_s));
    EXPECT_TRUE(answering.messages[1].startsWith(u"The scale of the picture"_s));
}

TEST_F(PageSetup, AcceptingStoresMarginsInTwipsScaleAndRule) {
    frmPrintSetup& setup = openSetup();
    field(setup, "txtMargin(1)").setText(u"1.5"_s);
    field(setup, "txtMargin(2)").setText(u"2"_s);
    in<QRadioButton>(setup, "optRePrint(0)").click();
    field(setup, "txtZoom").setText(u"75"_s);
    press(setup, "cmdYes");
    EXPECT_EQ(printing().settings().PrintMarginTop, 850); // 850.5 is rounded to the even number
    EXPECT_EQ(printing().settings().PrintMarginBottom, 1134);
    EXPECT_EQ(printing().previewScale().BaseZoom, 75);
    EXPECT_TRUE(printing().previewScale().RePrintOnZoom);
    unloadClosed();
    EXPECT_EQ(printing().setup(), nullptr);
    frmPrintSetup& again = openSetup();
    EXPECT_EQ(field(again, "txtMargin(1)").text(), u"1.5"_s);
    EXPECT_TRUE(in<QRadioButton>(again, "optRePrint(0)").isChecked());
    EXPECT_EQ(field(again, "txtZoom").text(), u"75"_s);
}

TEST_F(PageSetup, ChoosingTheFirstRuleBringsTheStoredScaleBack) {
    printing().previewScale().BaseZoom = 60;
    frmPrintSetup& setup = openSetup();
    field(setup, "txtZoom").setText(u"33"_s);
    in<QRadioButton>(setup, "optRePrint(0)").click();
    EXPECT_EQ(field(setup, "txtZoom").text(), u"60"_s);
    field(setup, "txtZoom").setText(u"44"_s);
    in<QRadioButton>(setup, "optRePrint(1)").click();
    EXPECT_EQ(field(setup, "txtZoom").text(), u"44"_s);
}

TEST_F(PageSetup, DefaultFillsTheFieldsAndStoresNothing) {
    printing().settings().PrintMarginTop = 1134;
    printing().previewScale().BaseZoom = 60;
    frmPrintSetup& setup = openSetup();
    press(setup, "cmdDefault");
    EXPECT_EQ(field(setup, "txtMargin(1)").text(), u"1.0"_s);
    EXPECT_EQ(field(setup, "txtZoom").text(), u"100"_s);
    EXPECT_TRUE(in<QRadioButton>(setup, "optRePrint(0)").isChecked());
    press(setup, "cmdNo");
    EXPECT_FALSE(setup.isVisible());
    EXPECT_EQ(printing().settings().PrintMarginTop, 1134);
    EXPECT_EQ(printing().previewScale().BaseZoom, 60);
    EXPECT_FALSE(printing().previewScale().RePrintOnZoom);
}

TEST_F(PageSetup, EnterInAMarginAcceptsAndABadOneIsToldOnce) {
    frmPrintSetup& setup = openSetup();
    field(setup, "txtMargin(2)").setText(u"0"_s);
    QTest::keyClick(&field(setup, "txtMargin(2)"), Qt::Key_Return);
    EXPECT_EQ(answering.messages.size(), 1);
    field(setup, "txtMargin(2)").setText(u"4"_s);
    QTest::keyClick(&field(setup, "txtMargin(2)"), Qt::Key_Return);
    EXPECT_FALSE(setup.isVisible());
    EXPECT_EQ(printing().settings().PrintMarginBottom, 2268);
}

TEST_F(PageSetup, EveryCaptionHasATextOfBothLanguagesThatFits) {
    for (const char* language : {"mnuChinese", "mnuEnglish"}) {
        item(language).trigger();
        frmPrintSetup& setup = openSetup();
        EXPECT_EQ(setup.windowTitle(), model->LanguageId == 0 ? u"页面设置"_s : u"Page Setup"_s);
        for (const QLabel* label : setup.findChildren<QLabel*>()) {
            EXPECT_LE(label->sizeHint().width(), label->width()) << label->text().toStdString();
        }
        for (const QAbstractButton* button : setup.findChildren<QAbstractButton*>()) {
            EXPECT_LE(button->sizeHint().width(), button->width()) << button->text().toStdString();
            EXPECT_EQ(button->text().at(0).unicode() < 0x2000, model->LanguageId == 1) << button->text().toStdString();
        }
        setup.close();
        unloadClosed();
    }
}

} // namespace
} // namespace sixtrace::test
