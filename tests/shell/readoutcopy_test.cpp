// SPDX-License-Identifier: MIT
#include "shell/frmcomfixture.h"

#include "capture/scenes.h"
#include "platform/controls/framepanel.h"
#include "platform/controls/labels.h"
#include "platform/controls/listcombo.h"
#include "support/strings.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTest>

namespace sixtrace::test {
namespace {

class CopiedReadouts : public FrmComTest {
protected:
    void SetUp() override {
        FrmComTest::SetUp();
        installLanguages();
        load();
        form->show();
        QApplication::clipboard()->setText(u"before"_s);
    }
    void fill(const char* label, const char* text) { control<ReadoutLabel>(label).setCaption(QString::fromUtf8(text)); }
    [[nodiscard]] QString copied() {
        item("mnuCopy").trigger();
        return QApplication::clipboard()->text();
    }
    /// The menu that the right button or the menu key opens over a control.
    [[nodiscard]] QAction* offered(QWidget& over) {
        QContextMenuEvent asked(QContextMenuEvent::Mouse, QPoint(3, 3), over.mapToGlobal(QPoint(3, 3)));
        QCoreApplication::sendEvent(&over, &asked);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        return menu == nullptr ? nullptr : menu->actions().value(0);
    }
};

TEST_F(CopiedReadouts, ReadoutsAndMeasurementsAreLinesOfNameValueAndUnit) {
    control<ListCombo>("Combo3").setListIndex(3);
    fill("LabY1", "25.00");
    fill("LabYY11", " mV");
    fill("LabX1", "1.500");
    fill("LabXX11", "mS");
    for (const char* empty : {"LabY2", "LabDy", "LabX2", "LabDx"}) {
        fill(empty, "");
    }
    fill("LabPe", "1.000 mS");
    fill("LabMaxx", "50.0 mV");
    EXPECT_EQ(copied(), u"y1\t25.00\tmV\nx1\t1.500\tmS\n周期\t1.000 mS\n峰峰值\t50.0 mV"_s);
    item("mnuEnglish").trigger();
    fill("LabPe", "1.000 mS");
    EXPECT_TRUE(copied().contains(u"Period\t1.000 mS"_s));
}

TEST_F(CopiedReadouts, WhereNothingIsMeasuredTheClipboardKeepsWhatItHas) {
    EXPECT_EQ(copied(), u"before"_s);
}

TEST_F(CopiedReadouts, HiddenReadoutsAreNotCopied) {
    control<ListCombo>("Combo3").setListIndex(1);
    fill("LabY1", "1");
    control<ReadoutLabel>("LabY1").hide();
    for (const char* empty : {"LabY2", "LabDy", "LabX1", "LabX2", "LabDx"}) {
        fill(empty, "");
    }
    EXPECT_EQ(copied(), u"before"_s);
}

TEST_F(CopiedReadouts, TheContextMenuOfAFrameCopiesWhatStandsInIt) {
    item("mnuEnglish").trigger();
    control<ListCombo>("Combo3").setListIndex(1);
    fill("LabY1", "25.00");
    fill("LabYY11", "mV");
    fill("labPPe", "1.000 KHz");
    QAction* const readouts = offered(control<ReadoutLabel>("LabY1")); // a label passes the request on to its frame
    ASSERT_NE(readouts, nullptr);
    EXPECT_EQ(readouts->text(), u"Copy"_s);
    readouts->trigger();
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith(u"y1\t25.00\tmV"_s));
    EXPECT_FALSE(QApplication::clipboard()->text().contains(u"KHz"_s));
    QApplication::activePopupWidget()->close();
    QAction* const measured = offered(control<FramePanel>("Frame4"));
    ASSERT_NE(measured, nullptr);
    measured->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), u"Frequency\t1.000 KHz"_s);
    QApplication::activePopupWidget()->close();
}

TEST_F(CopiedReadouts, CtrlCReachesItFromAnyControl) {
    fill("LabPe", "2 S");
    form->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.get(), 60'000));
    for (const char* name : {"List1", "Combo1", "VScroll1"}) {
        QApplication::clipboard()->clear();
        auto& focused = control<QWidget>(name);
        focused.setFocus();
        QTest::keyClick(&focused, Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(QApplication::clipboard()->text(), u"周期\t2 S"_s) << name;
    }
}

} // namespace
} // namespace sixtrace::test
