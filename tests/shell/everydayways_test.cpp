// SPDX-License-Identifier: MIT
// What a user of today expects of any window: keys, a walk by Tab, names for assistive tools, files dropped onto it.
#include "platform/captions.h"
#include "platform/toolbar.h"
#include "shell/capturewindow.h"
#include "view/cursorkeys.h"
#include "view/cursors.h"

#include <QAccessible>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QTest>
#include <QUrl>

namespace sixtrace {
namespace {

class EverydayWindow : public CaptureWindow {
protected:
    void openFlatActive() {
        openFlat();
        form->activateWindow();
        QApplication::setActiveWindow(form.get());
    }
    [[nodiscard]] CursorHandle& handle(const char* name) const {
        return dynamic_cast<CursorHandle&>(control<QWidget>(name));
    }
    void chooseCursors(CursorType type) { cursorType().setListIndex(static_cast<int>(type)); }
    void key(QWidget& widget, Qt::Key key) {
        widget.setFocus(Qt::TabFocusReason);
        QTest::keyClick(&widget, key);
    }
    QStringList walk(int steps) {
        QStringList walked;
        for (int i = 0; i < steps; ++i) {
            QTest::keyClick(form.get(), Qt::Key_Tab);
            walked.append(form->focusWidget() != nullptr ? form->focusWidget()->objectName() : QString());
        }
        return walked;
    }
};

using Shortcuts = EverydayWindow;

TEST_F(Shortcuts, StandardKeysStandOnTheMenuItems) {
    load();
    const auto keys = [this](const char* name) { return item(name).shortcut().toString(QKeySequence::PortableText); };
    EXPECT_EQ(keys("mnuOpen"), QStringLiteral("Ctrl+O"));
    EXPECT_EQ(keys("mnuPrint"), QStringLiteral("Ctrl+P"));
    EXPECT_EQ(keys("mnuExit"), QStringLiteral("Ctrl+Q"));
    EXPECT_EQ(keys("mnuContent"), QStringLiteral("F1"));
    EXPECT_EQ(keys("mnuAcquire"), QStringLiteral("F5"));
}

TEST_F(Shortcuts, NoTwoItemsShareAKey) {
    load();
    QStringList all;
    for (const QAction* action : form->menuBar()->findChildren<QAction*>()) {
        if (!action->shortcut().isEmpty()) {
            all.append(action->shortcut().toString(QKeySequence::PortableText));
        }
    }
    EXPECT_GE(all.size(), 5);
    EXPECT_EQ(all.removeDuplicates(), 0);
}

TEST_F(Shortcuts, KeysRunTheCommandsOfTheirItems) {
    openFlatActive();
    const auto asked = dialogs.fileRequests.size();
    QTest::keyClick(form.get(), Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(dialogs.fileRequests.size(), asked + 1);
    QTest::keyClick(form.get(), Qt::Key_G, Qt::ControlModifier);
    EXPECT_FALSE(item("mnuGraticule").isChecked());
    QTest::keyClick(form.get(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(ends, 1);
}

TEST_F(Shortcuts, AHiddenItemHasNoneAndStaysOutOfReach) {
    openFlatActive();
    const QImage before = screenImage();
    QTest::keyClick(form.get(), Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(screenImage(), before);
    for (const QAction* action : form->menuBar()->findChildren<QAction*>()) {
        EXPECT_TRUE(action->isVisible() || action->shortcut().isEmpty()) << action->objectName().toStdString();
    }
}

TEST_F(Shortcuts, TimedAcquisitionGreysTheKeyWithItsItem) {
    openFlatActive();
    item("mnuAcquire").setEnabled(false);
    QTest::keyClick(form.get(), Qt::Key_F5);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

using CursorLineKeys = EverydayWindow;

TEST_F(CursorLineKeys, UpAndDownMoveAFocusedVoltageCursorByOneUnitAndItsReadoutFollows) {
    openFlatActive();
    chooseCursors(CursorType::Voltage);
    // 0.5 V are 50 units: 10 mV a unit, 100 units above the zero line at 200.
    ASSERT_EQ(caption("LabY1"), number("1000.00"));
    key(handle("Line1Keys(0)"), Qt::Key_Up);
    EXPECT_EQ(line("Line1(0)").Y1(), 99);
    EXPECT_EQ(line("Line1(0)").Y2(), 99);
    EXPECT_EQ(caption("LabY1"), number("1010.00"));
    EXPECT_EQ(caption("LabDy"), number("2,010.00"));
    key(handle("Line1Keys(0)"), Qt::Key_Down);
    key(handle("Line1Keys(0)"), Qt::Key_Down);
    EXPECT_EQ(line("Line1(0)").Y1(), 101);
    EXPECT_EQ(line("Line1(1)").Y1(), 300);
    EXPECT_EQ(caption("LabY1"), number("990.00"));
}

TEST_F(CursorLineKeys, LeftAndRightMoveAFocusedTimeCursorByOneUnitAndItsReadoutDoesNotLag) {
    openFlatActive();
    chooseCursors(CursorType::Time);
    // 2.5 microseconds a sample and a unit.
    ASSERT_EQ(caption("LabX1"), number("450.00"));
    key(handle("Line2Keys(0)"), Qt::Key_Right);
    EXPECT_EQ(line("Line2(0)").X1(), 181);
    EXPECT_EQ(caption("LabX1"), number("452.50"));
    EXPECT_EQ(caption("LabDx"), number("597.50"));
    key(handle("Line2Keys(1)"), Qt::Key_Left);
    EXPECT_EQ(line("Line2(1)").X1(), 419);
    EXPECT_EQ(caption("LabDx"), number("595.00"));
}

TEST_F(CursorLineKeys, KeysAcrossALineDoNothing) {
    openFlatActive();
    chooseCursors(CursorType::Both);
    key(handle("Line1Keys(0)"), Qt::Key_Left);
    key(handle("Line2Keys(0)"), Qt::Key_Down);
    EXPECT_EQ(line("Line1(0)").Y1(), 100);
    EXPECT_EQ(line("Line2(0)").X1(), 180);
}

TEST_F(CursorLineKeys, TheLineThatTheMouseHoldsFollowsTheKeysAndThenTheMouseAgain) {
    openFlatActive();
    chooseCursors(CursorType::Both);
    press(screen(), 50, 100);
    ASSERT_EQ(form->focusWidget(), &handle("Line1Keys(0)"));
    QTest::keyClick(form->focusWidget(), Qt::Key_Up);
    EXPECT_EQ(line("Line1(0)").Y1(), 99);
    drag(screen(), 50, 120);
    EXPECT_EQ(line("Line1(0)").Y1(), 120);
    release(screen(), 50, 120);
    drag(screen(), 50, 150);
    EXPECT_EQ(line("Line1(0)").Y1(), 120);
}

TEST_F(CursorLineKeys, ALineStaysOnTheScreen) {
    openFlatActive();
    chooseCursors(CursorType::Both);
    dragFromTo(screen(), {50, 100}, {50, 0});
    key(handle("Line1Keys(0)"), Qt::Key_Up);
    EXPECT_EQ(line("Line1(0)").Y1(), 0);
    dragFromTo(screen(), {420, 50}, {599, 50});
    key(handle("Line2Keys(1)"), Qt::Key_Right);
    EXPECT_EQ(line("Line2(1)").X1(), 599);
}

TEST_F(CursorLineKeys, DuringTimedAcquisitionTheyRefuse) {
    openFlatActive();
    chooseCursors(CursorType::Both);
    model->AutoRun = true;
    key(handle("Line1Keys(0)"), Qt::Key_Up);
    EXPECT_EQ(line("Line1(0)").Y1(), 100);
}

TEST_F(CursorLineKeys, OnATraceDragTheyHaveNoEffect) {
    openFlatActive();
    chooseCursors(CursorType::Both);
    press(screen(), 50, 200);
    key(handle("Line1Keys(0)"), Qt::Key_Up);
    EXPECT_EQ(line("Line1(0)").Y1(), 100);
    drag(screen(), 60, 200);
    EXPECT_EQ(model->ChannelXShift[0], 10);
    release(screen(), 60, 200);
}

TEST_F(CursorLineKeys, AHandleIsThereOnlyWhileItsLineIsShownAndTheMouseGoesThroughIt) {
    openFlatActive();
    EXPECT_FALSE(handle("Line1Keys(0)").isVisible());
    chooseCursors(CursorType::Voltage);
    EXPECT_TRUE(handle("Line1Keys(0)").isVisible());
    EXPECT_FALSE(handle("Line2Keys(0)").isVisible());
    const QPoint onLine = screen().mapTo(form.get(), QPoint(50, 100));
    EXPECT_EQ(form->childAt(onLine), &screen());
}

TEST_F(CursorLineKeys, TheFocusShowsBesideTheLineAndLeavesTheLineItself) {
    openFlatActive();
    chooseCursors(CursorType::Voltage);
    const auto at = [this](int y) { return screen().grab().toImage().pixelColor(33, y); };
    const QColor lineColour = at(100);
    handle("Line1Keys(0)").setFocus(Qt::TabFocusReason);
    const QColor accent = QColor::fromRgb(bench::kAccent);
    for (const int y : {98, 99, 101, 102}) {
        EXPECT_EQ(at(y), accent) << y;
    }
    EXPECT_EQ(at(100), lineColour);
    list().setFocus();
    EXPECT_NE(at(99), accent);
}

using ZeroMarkerKeys = EverydayWindow;

TEST_F(ZeroMarkerKeys, UpAndDownMoveAFocusedMarkerByOneScreenUnitWithItsTraceAndBar) {
    openFlatActive();
    chooseCursors(CursorType::Voltage);
    // A screen unit is 6030 / 400 = 15.075 twips of the strip. A stands 50 units below the middle.
    const double top = marker(2).Top();
    key(marker(2), Qt::Key_Up);
    EXPECT_DOUBLE_EQ(marker(2).Top(), top - 15.075);
    EXPECT_EQ(list().ListIndex(), 2);
    EXPECT_NEAR(model->ChannelYPos[2], 249, 0.01);
    EXPECT_EQ(model->PlotY(2, 300), 249);
    EXPECT_FALSE(marker(2).hasBorder());
    // 249 - 100 units of 10 mV.
    EXPECT_EQ(caption("LabY1"), number("1490.00"));
    key(marker(2), Qt::Key_Down);
    EXPECT_DOUBLE_EQ(marker(2).Top(), top);
    EXPECT_EQ(model->PlotY(2, 300), 250);
}

TEST_F(ZeroMarkerKeys, AMarkerIsNotMovedBeyondTheStandByPositions) {
    openFlatActive();
    marker(0).setTop(-70);
    key(marker(0), Qt::Key_Up);
    EXPECT_EQ(marker(0).Top(), -70);
    marker(0).setTop(5860);
    key(marker(0), Qt::Key_Down);
    EXPECT_EQ(marker(0).Top(), 5860);
    EXPECT_TRUE(marker(0).isVisible());
    EXPECT_FALSE(standIn(0).isVisible());
}

TEST_F(ZeroMarkerKeys, OtherKeysPassAndDuringTimedAcquisitionAllAreRefused) {
    openFlatActive();
    const double top = marker(0).Top();
    key(marker(0), Qt::Key_Left);
    EXPECT_EQ(marker(0).Top(), top);
    model->AutoRun = true;
    key(marker(0), Qt::Key_Up);
    EXPECT_EQ(marker(0).Top(), top);
}

TEST_F(ZeroMarkerKeys, TheFocusShowsOnceAKeyBroughtItOrUsedIt) {
    openFlatActive();
    marker(0).setFocus(Qt::MouseFocusReason);
    EXPECT_FALSE(marker(0).hasFocusLine());
    QTest::keyClick(&marker(0), Qt::Key_Up);
    EXPECT_TRUE(marker(0).hasFocusLine());
    list().setFocus();
    EXPECT_FALSE(marker(0).hasFocusLine());
}

using TabOrder = EverydayWindow;

TEST_F(TabOrder, WalksOverCursorLinesBehindTheirTypeAndOverMarkersBehindTheBarAndBeginsOverAgain) {
    openFlatActive();
    chooseCursors(CursorType::Both);
    form->centralWidget()->setFocus();
    EXPECT_EQ(walk(14).join(QLatin1Char(' ')).toStdString(),
              std::string("List1 Combo1 UpDown2 Combo2 UpDown1 Combo3 Line1Keys(0) Line1Keys(1) Line2Keys(0) "
                             "Line2Keys(1) VScroll1 image1(0) image1(2) List1"));
}

TEST_F(TabOrder, EveryControlThatTakesTheFocusIsInTheWalkOnce) {
    openFlatActive();
    chooseCursors(CursorType::Both);
    for (int row = 0; row < kChannels; ++row) {
        list().setSelected(row, true);
    }
    form->centralWidget()->setFocus();
    QStringList expected;
    for (const QWidget* widget : form->centralWidget()->findChildren<QWidget*>()) {
        if (widget->isVisible() && (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->focusProxy() == nullptr) {
            expected.append(widget->objectName());
        }
    }
    QStringList walked = walk(static_cast<int>(expected.size()));
    EXPECT_EQ(walked.size(), 17);
    walked.sort();
    expected.sort();
    EXPECT_EQ(walked, expected);
}

/// What an assistive tool would have heard since the start of the test.
struct Heard {
    static inline QStringList values;
    static void hear(QAccessibleEvent* event) {
        if (event->type() == QAccessible::ValueChanged && event->object()->objectName() == QStringLiteral("Picture2")) {
            values.append(static_cast<QAccessibleValueChangeEvent*>(event)->value().toString());
        }
    }
};

class Accessibility : public EverydayWindow {
protected:
    void SetUp() override {
        EverydayWindow::SetUp();
        QAccessible::setActive(true);
        Heard::values.clear();
        m_before = QAccessible::installUpdateHandler(&Heard::hear);
    }
    void TearDown() override {
        form.reset();
        QAccessible::installUpdateHandler(m_before);
        QAccessible::setActive(false);
    }
    [[nodiscard]] QString spoken(QAccessible::Text kind = QAccessible::Value) const {
        return QAccessible::queryAccessibleInterface(&screen())->text(kind);
    }

private:
    QAccessible::UpdateHandler m_before = nullptr;
};

TEST_F(Accessibility, EveryControlWithoutACaptionHasANameInBothLanguages) {
    installLanguages();
    load();
    form->show();
    for (const char* language : {"mnuEnglish", "mnuChinese"}) {
        item(language).trigger();
        int named = 0;
        for (QWidget* widget : form->centralWidget()->findChildren<QWidget*>()) {
            if (widget->objectName().isEmpty() || widget->objectName().startsWith(QStringLiteral("qt_")) ||
                widget->inherits("QLabel") || captionKind(*widget) == CaptionKind::Frame ||
                widget->objectName().startsWith(QStringLiteral("picHidden")) ||
                widget->objectName() == QStringLiteral("image2")) {
                continue;
            }
            static const QStringList gaps{QStringLiteral("Toolbar1(1)"), QStringLiteral("Toolbar1(5)"),
                                          QStringLiteral("Toolbar1(10)"), QStringLiteral("Toolbar1(15)")};
            const QWidget* list = widget->parentWidget();
            if (gaps.contains(widget->objectName()) || list->inherits("QComboBox") || list->inherits("QAbstractItemView")) {
                continue;
            }
            ++named;
            const QString name = QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
            EXPECT_FALSE(name.isEmpty()) << language << ' ' << widget->objectName().toStdString();
        }
        EXPECT_GE(named, 12 + 26) << language; // tool buttons, and the controls named in two languages
    }
}

TEST_F(Accessibility, NamesFollowTheLanguage) {
    installLanguages();
    load();
    EXPECT_EQ(screen().accessibleName(), QStringLiteral("波形屏幕"));
    item("mnuEnglish").trigger();
    EXPECT_EQ(screen().accessibleName(), QStringLiteral("Screen"));
    EXPECT_EQ(marker(2).accessibleName(), QStringLiteral("Zero line of A"));
    EXPECT_EQ(handle("Line2Keys(1)").accessibleName(), QStringLiteral("Time cursor 2"));
    item("mnuChinese").trigger();
    EXPECT_EQ(marker(2).accessibleName(), QStringLiteral("A 零线"));
}

TEST_F(Accessibility, TheScreenTellsTheSelectedChannelItsRangesAndTheCursorsThatAreShown) {
    installLanguages();
    openFlat();
    item("mnuEnglish").trigger();
    const QString time = control<ListCombo>("Combo1").Text();
    const QString volts = control<ListCombo>("Combo2").Text();
    EXPECT_EQ(spoken(), QStringLiteral("ch1, %1 per division, %2 per division").arg(time, volts));
    EXPECT_EQ(spoken(QAccessible::Description), spoken());
    EXPECT_EQ(spoken(QAccessible::Name), QStringLiteral("Screen"));
    chooseCursors(CursorType::Both);
    EXPECT_EQ(spoken(), QStringLiteral("ch1, %1 per division, %2 per division, y1 1000.00 mV, y2 -1000.00 mV, dy "
                                       "%3, x1 450.00 uS, x2 1050.00 uS, dx 600.00")
                            .arg(time, volts, number("2,000.00")));
    item("mnuChinese").trigger();
    EXPECT_TRUE(spoken().startsWith(QStringLiteral("ch1，每格时间 %1，每格电压 %2，y1 ").arg(time, volts)));
}

TEST_F(Accessibility, AChangeOfTheWordsIsAnnouncedOnceWithTheNewWords) {
    openFlat();
    chooseCursors(CursorType::Both);
    QCoreApplication::processEvents();
    QStringList announced;
    QObject::connect(&screen(), &PictureBox::spokenTextChanged, &screen(),
                     [&announced](const QString& words) { announced.append(words); });
    Heard::values.clear();
    dragFromTo(screen(), {50, 100}, {50, 90});
    QCoreApplication::processEvents();
    ASSERT_EQ(announced.size(), 1);
    EXPECT_EQ(announced.first(), spoken());
    EXPECT_TRUE(spoken().contains(number("1100.00"))) << spoken().toStdString();
    list().setListIndex(2);
    QCoreApplication::processEvents();
    ASSERT_EQ(announced.size(), 2);
    EXPECT_TRUE(announced.last().startsWith(QStringLiteral("A，")));
    control<ListCombo>("Combo2").setListIndex(3);
    QCoreApplication::processEvents();
    EXPECT_EQ(announced.size(), 3);
    hover(screen(), 50, 20);
    QCoreApplication::processEvents();
    EXPECT_EQ(announced.size(), 3);
    // Not every platform carries such events; the offscreen one has none.
    if (QAccessible::isActive()) {
        EXPECT_EQ(Heard::values, announced);
    }
}

class FileDrop : public EverydayWindow {
protected:
    /// True where the window takes it.
    bool drop(const QList<QUrl>& urls) {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter(QPoint(100, 100), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(form.get(), &enter);
        QDropEvent dropped(QPointF(100, 100), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        dropped.ignore();
        QCoreApplication::sendEvent(form.get(), &dropped);
        EXPECT_EQ(enter.isAccepted(), dropped.isAccepted());
        EXPECT_TRUE(!dropped.isAccepted() || dropped.dropAction() == Qt::CopyAction);
        return dropped.isAccepted();
    }
    [[nodiscard]] QUrl url(const char* name) const { return QUrl::fromLocalFile(path(QString::fromLatin1(name))); }
    void writeCapture(const char* name, char id) {
        write(QString::fromLatin1(name), captureBytes(*captureForm("V11"), {flat(id, 0)}));
    }
};

TEST_F(FileDrop, ACaptureOpensAsByTheMenu) {
    load();
    form->show();
    writeCapture("dropped.bin", '2');
    EXPECT_TRUE(drop({url("dropped.bin")}));
    EXPECT_EQ(model->ChannelPresent[1], 1);
    EXPECT_TRUE(list().Selected(1));
    EXPECT_EQ(list().ListIndex(), 1);
    EXPECT_EQ(control<QLabel>("Label4").text(), path(QStringLiteral("dropped.bin")));
    EXPECT_TRUE(dialogs.fileRequests.empty());
    EXPECT_TRUE(dialogs.messages.isEmpty());
}

TEST_F(FileDrop, AFileThatIsNoCaptureLeavesTheScreenAsTheMenuDoes) {
    openFlat();
    const QImage before = screenImage();
    write(QStringLiteral("letter.txt"), "Dear all");
    EXPECT_TRUE(drop({url("letter.txt")}));
    EXPECT_EQ(screenImage(), before);
    EXPECT_EQ(model->ChannelPresent[0], 1);
}

TEST_F(FileDrop, AFolderIsReportedAsNoFile) {
    load();
    EXPECT_TRUE(drop({url("")}));
    ASSERT_EQ(dialogs.messages.size(), 1);
}

TEST_F(FileDrop, SeveralFilesAndAddressesElsewhereAreRefused) {
    load();
    writeCapture("one.bin", '1');
    writeCapture("two.bin", '2');
    EXPECT_FALSE(drop({url("one.bin"), url("two.bin")}));
    EXPECT_FALSE(drop({QUrl(QStringLiteral("https://example.invalid/one.bin"))}));
    EXPECT_FALSE(drop({}));
    EXPECT_EQ(model->ChannelPresent[0], 0);
}

TEST_F(FileDrop, WhileADialogIsOpenNothingIsTaken) {
    load();
    form->show();
    writeCapture("one.bin", '1');
    QWidget dialog;
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.show();
    EXPECT_FALSE(drop({url("one.bin")}));
    EXPECT_EQ(model->ChannelPresent[0], 0);
}

class DisplayScale : public EverydayWindow {
protected:
    static QImage at(QWidget& widget, double ratio) {
        QImage image((QSizeF(widget.size()) * ratio).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::white);
        widget.render(&image, {}, {}, QWidget::DrawWindowBackground | QWidget::DrawChildren);
        return image;
    }
    /// How many of the 2 by 2 blocks of an image hold more than one colour: none after a plain doubling.
    static int unequalBlocks(const QImage& image) {
        int count = 0;
        for (int y = 0; y + 1 < image.height(); y += 2) {
            for (int x = 0; x + 1 < image.width(); x += 2) {
                const QRgb first = image.pixel(x, y);
                count += first != image.pixel(x + 1, y) || first != image.pixel(x, y + 1) ||
                                 first != image.pixel(x + 1, y + 1)
                             ? 1
                             : 0;
            }
        }
        return count;
    }
};

TEST_F(DisplayScale, ToolPicturesAreDrawnAtTheDevicesResolutionNotScaledUp) {
    load();
    for (const int index : {2, 3, 4, 6, 7, 8, 9, 11, 12, 13, 14, 16}) {
        ToolButton& button = control<ToolBar>("Toolbar1").button(index);
        EXPECT_GT(unequalBlocks(at(button, 2)), 3) << index;
    }
}

TEST_F(DisplayScale, AtScale2TheScreenIsItsPictureDoubledWithCursorsTwoPixelsWide) {
    openFlat();
    chooseCursors(CursorType::Both);
    const QImage doubled = at(screen(), 2);
    EXPECT_EQ(unequalBlocks(doubled), 0);
    const QRgb cursor = doubled.pixel(1, 200);
    EXPECT_EQ(doubled.pixel(1, 201), cursor);
    EXPECT_NE(doubled.pixel(1, 199), cursor);
    EXPECT_NE(doubled.pixel(1, 202), cursor);
}

TEST_F(DisplayScale, AtScale1Point5NoCursorIsThinnerThanItsTwin) {
    openFlat();
    chooseCursors(CursorType::Both);
    const QRgb colour = at(screen(), 1).pixel(1, 100);
    dragFromTo(screen(), {50, 100}, {50, 101}); // an odd row and an even one
    const QImage image = at(screen(), 1.5);
    const auto thickness = [&](bool lying, int around) {
        int count = 0;
        for (int i = around - 4; i < around + 4; ++i) {
            count += (lying ? image.pixel(2, i) : image.pixel(i, 2)) == colour ? 1 : 0;
        }
        return count;
    };
    EXPECT_EQ(thickness(true, 152), 2);
    EXPECT_EQ(thickness(true, 450), 2);
    EXPECT_EQ(thickness(false, 270), 2);
    EXPECT_EQ(thickness(false, 630), 2);
}

} // namespace
} // namespace sixtrace
