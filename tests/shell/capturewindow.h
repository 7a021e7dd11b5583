// SPDX-License-Identifier: MIT
#pragma once

#include "capture/capturefile.h"
#include "capture/scenes.h"
#include "platform/controls/labels.h"
#include "platform/controls/listcombo.h"
#include "platform/controls/markerlabel.h"
#include "platform/controls/picturebox.h"
#include "platform/controls/positionbar.h"
#include "platform/controls/ticklist.h"
#include "shell/frmcomfixture.h"
#include "support/flatcapture.h"
#include "support/strings.h"

#include <QMouseEvent>

namespace sixtrace::test {

/// A main window that is shown, captures of which every figure is known, and a mouse.
///
/// Mouse events are sent to the widgets directly, with a place and the buttons that are down. A pointer that the test
/// system moves would need a screen, and could not stand on a third of a pixel.
class CaptureWindow : public FrmComTest, protected FlatCapture {
protected:
    void open(const std::vector<CaptureBlock>& blocks) {
        write(u"capture.bin"_s, captureBytes(*captureForm("V11"), blocks));
        dialogs.files.emplace_back(FileChoice{path(u"capture.bin"_s), 1});
        item("mnuOpen").trigger();
    }
    void openScene(const char* name) { open(*sceneBlocks(QString::fromLatin1(name), 1)); }

    /// ch1 on row 200 and A on row 250, ch1 selected.
    void openFlat() {
        load();
        form->show();
        open(flatBlocks());
        list().setListIndex(0);
    }

    [[nodiscard]] TickList& list() const { return control<TickList>("List1"); }
    [[nodiscard]] ListCombo& cursorType() const { return control<ListCombo>("Combo3"); }
    [[nodiscard]] PictureBox& screen() const { return control<PictureBox>("Picture2"); }
    [[nodiscard]] PictureBox& hidden(int index) const {
        static_cast<void>(form->pictures().background()); // makes the copy, which otherwise waits for a drag
        return control<PictureBox>(qPrintable(elementName(u"picHidden"_s, index)));
    }
    [[nodiscard]] QImage screenImage() const { return screen().picture().view().copy(); }
    [[nodiscard]] MarkerLabel& marker(int channel) const {
        return control<MarkerLabel>(qPrintable(elementName(u"image1"_s, channel)));
    }
    [[nodiscard]] MarkerLabel& standIn(int channel) const {
        return control<MarkerLabel>(qPrintable(elementName(u"ZLabel"_s, channel)));
    }
    [[nodiscard]] CursorLine& line(const char* name) const { return dynamic_cast<CursorLine&>(control<QObject>(name)); }
    [[nodiscard]] QString caption(const char* name) const { return control<ReadoutLabel>(name).caption(); }

    static void send(QWidget& widget, QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons down) {
        QMouseEvent event(type, at, widget.mapToGlobal(at), button, down, Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &event);
    }
    static void press(QWidget& widget, double x, double y, Qt::MouseButton button = Qt::LeftButton) {
        send(widget, QEvent::MouseButtonPress, {x, y}, button, button);
    }
    static void drag(QWidget& widget, double x, double y, Qt::MouseButton button = Qt::LeftButton) {
        send(widget, QEvent::MouseMove, {x, y}, Qt::NoButton, button);
    }
    static void release(QWidget& widget, double x, double y, Qt::MouseButton button = Qt::LeftButton) {
        send(widget, QEvent::MouseButtonRelease, {x, y}, button, Qt::NoButton);
    }
    static void hover(QWidget& widget, double x, double y) {
        send(widget, QEvent::MouseMove, {x, y}, Qt::NoButton, Qt::NoButton);
    }
    static void dragFromTo(QWidget& widget, QPointF from, QPointF to) {
        press(widget, from.x(), from.y());
        drag(widget, to.x(), to.y());
        release(widget, to.x(), to.y());
    }
    /// As a desktop sends it: the second press arrives as the double click.
    static void doubleClick(QWidget& widget, double x, double y) {
        press(widget, x, y);
        release(widget, x, y);
        send(widget, QEvent::MouseButtonDblClick, {x, y}, Qt::LeftButton, Qt::LeftButton);
        release(widget, x, y);
    }
};

/// The same with the flat capture opened: suites about cursors.
class CursorWindow : public CaptureWindow {
protected:
    void SetUp() override {
        CaptureWindow::SetUp();
        openFlat();
    }
    [[nodiscard]] bool shown(std::initializer_list<const char*> labels) const {
        bool all = true;
        bool none = true;
        for (const char* name : labels) {
            const bool hidden = control<QWidget>(name).isHidden();
            all = all && !hidden;
            none = none && hidden;
        }
        EXPECT_TRUE(all || none) << "all of a pair or none";
        return all;
    }
    [[nodiscard]] Qt::CursorShape pointer() const { return screen().cursor().shape(); }
};

} // namespace sixtrace::test
