// SPDX-License-Identifier: MIT
// What else users know from other windows: names for assistive tools, files dropped onto the window, sharp pictures.
#include "platform/controls/captions.h"
#include "platform/controls/toolbar.h"
#include "shell/everydaywindow.h"
#include "support/strings.h"

#include <QAccessible>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

namespace sixtrace::test {
namespace {

/// The texts that an assistive tool has been told since the start of the test.
struct Heard {
    static inline QStringList values;
    static void hear(QAccessibleEvent* event) {
        if (event->type() == QAccessible::ValueChanged && event->object()->objectName() == u"Picture2"_s) {
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
            if (widget->objectName().isEmpty() || widget->objectName().startsWith(u"qt_"_s) ||
                widget->inherits("QLabel") || captionKind(*widget) == CaptionKind::Frame ||
                widget->objectName().startsWith(u"picHidden"_s) || widget->objectName() == u"image2"_s) {
                continue;
            }
            static const QStringList gaps{u"Toolbar1(1)"_s, u"Toolbar1(5)"_s, u"Toolbar1(10)"_s, u"Toolbar1(15)"_s};
            const QWidget* list = widget->parentWidget();
            if (gaps.contains(widget->objectName()) || list->inherits("QComboBox") ||
                list->inherits("QAbstractItemView")) {
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
    EXPECT_EQ(screen().accessibleName(), u"波形屏幕"_s);
    item("mnuEnglish").trigger();
    EXPECT_EQ(screen().accessibleName(), u"Screen"_s);
    EXPECT_EQ(marker(2).accessibleName(), u"Zero line of A"_s);
    EXPECT_EQ(handle("Line2Keys(1)").accessibleName(), u"Time cursor 2"_s);
    item("mnuChinese").trigger();
    EXPECT_EQ(marker(2).accessibleName(), u"A 零线"_s);
}

TEST_F(Accessibility, TheScreenTellsTheSelectedChannelItsRangesAndTheCursorsThatAreShown) {
    installLanguages();
    openFlat();
    item("mnuEnglish").trigger();
    const QString time = control<ListCombo>("Combo1").Text();
    const QString volts = control<ListCombo>("Combo2").Text();
    EXPECT_EQ(spoken(), u"ch1, %1 per division, %2 per division"_s.arg(time, volts));
    EXPECT_EQ(spoken(QAccessible::Description), spoken());
    EXPECT_EQ(spoken(QAccessible::Name), u"Screen"_s);
    chooseCursors(CursorType::Both);
    EXPECT_EQ(spoken(), u"ch1, %1 per division, %2 per division, y1 1000.00 mV, y2 -1000.00 mV, dy "
                        "%3, x1 450.00 uS, x2 1050.00 uS, dx 600.00"_s.arg(time, volts, number("2,000.00")));
    item("mnuChinese").trigger();
    EXPECT_TRUE(spoken().startsWith(u"ch1，每格时间 %1，每格电压 %2，y1 "_s.arg(time, volts)));
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
    EXPECT_TRUE(announced.last().startsWith(u"A，"_s));
    control<ListCombo>("Combo2").setListIndex(3);
    QCoreApplication::processEvents();
    EXPECT_EQ(announced.size(), 3);
    hover(screen(), 50, 20);
    QCoreApplication::processEvents();
    EXPECT_EQ(announced.size(), 3);
    // The offscreen platform passes no such events on.
    if (QAccessible::isActive()) {
        EXPECT_EQ(Heard::values, announced);
    }
}

class FileDrop : public EverydayWindow {
protected:
    /// Whether the window accepts it.
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
    EXPECT_EQ(control<QLabel>("Label4").text(), path(u"dropped.bin"_s));
    EXPECT_TRUE(dialogs.fileRequests.empty());
    EXPECT_TRUE(dialogs.messages.isEmpty());
}

TEST_F(FileDrop, AFileThatIsNoCaptureLeavesTheScreenAsTheMenuDoes) {
    openFlat();
    const QImage before = screenImage();
    write(u"letter.txt"_s, "Dear all");
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
    EXPECT_FALSE(drop({QUrl(u"https://example.invalid/one.bin"_s)}));
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
    /// How many of the 2 by 2 blocks of an image hold more than one colour. A picture that is only doubled has none.
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
} // namespace sixtrace::test
