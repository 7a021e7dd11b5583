// SPDX-License-Identifier: MIT
#include "shell/screendisplay.h"

#include "platform/controls/framepanel.h"
#include "platform/controls/labels.h"
#include "platform/controls/listcombo.h"
#include "platform/controls/look.h"
#include "platform/controls/markerlabel.h"
#include "platform/controls/picturebox.h"
#include "platform/controls/positionbar.h"
#include "platform/controls/ticklist.h"

#include <QAction>
#include <QLabel>
#include <QSignalBlocker>

#include <span>

namespace sixtrace {

namespace {

void showBackground(QWidget& widget, Colour colour) {
    QPalette palette = widget.palette();
    if (palette.color(QPalette::Window) != toQColor(colour)) {
        palette.setColor(QPalette::Window, toQColor(colour));
        widget.setPalette(palette);
    }
}

void showEntries(ListCombo& list, std::span<const QString> entries, int chosen) {
    int row = 0;
    for (const QString& entry : entries) {
        if (row >= list.ListCount()) {
            list.addItem(entry);
        } else if (list.List(row) != entry) {
            list.setList(row, entry);
        }
        ++row;
    }
    if (list.ListIndex() != chosen) {
        list.setCurrentIndex(chosen);
    }
}

void showText(ReadoutLabel& label, const QString& text) {
    if (label.caption() != text) {
        label.setCaption(text);
    }
}

void showVisible(const auto& labels, bool visible) {
    for (ReadoutLabel* label : labels) {
        label->setVisible(visible);
    }
}

void showMarker(MarkerLabel& label, Twips top, bool shown, Colour back, bool pressed) {
    if (label.Top() != top) {
        label.setTop(top);
    }
    if (label.backColor() != toQColor(back)) {
        label.setBackColor(toQColor(back));
    }
    if (label.hasBorder() != pressed) {
        label.setBorder(pressed);
    }
    label.setVisible(shown);
}

Qt::CursorShape shapeOf(MousePointer pointer) {
    switch (pointer) {
    case MousePointer::NorthSouth:
        return Qt::SizeVerCursor;
    case MousePointer::EastWest:
        return Qt::SizeHorCursor;
    case MousePointer::Arrow:
        break;
    }
    return Qt::ArrowCursor;
}

} // namespace

ScreenDisplay::ScreenDisplay(ScopeScreen& pictures, const FrmComControls& controls, const Ticks& ticks)
    : m_model(pictures.scope().model)
    , m_screen(pictures.scope().screen)
    , m_pictures(pictures)
    , m_controls(controls)
    , m_ticks(ticks) {}

void ScreenDisplay::show() {
    showList();
    showLists();
    showMarkers();
    showCursors();
    showReadouts();
    showAppearance();
    showPicture();
}

void ScreenDisplay::takeListTexts() {
    const auto take = [](auto& texts, const ListCombo& list) {
        int row = 0;
        for (QString& text : texts) {
            text = list.List(row++);
        }
    };
    take(m_screen.timeList, *m_controls.Combo1);
    take(m_screen.voltList, *m_controls.Combo2);
}

void ScreenDisplay::showList() {
    TickList& List1 = *m_controls.List1;
    for (int row = 0; row < kChannels; ++row) {
        if (row >= List1.count()) {
            List1.addRow(m_screen.rows[row]);
        } else if (List1.List(row) != m_screen.rows[row]) {
            List1.setList(row, m_screen.rows[row]);
        }
        List1.showTick(row, m_screen.ticks[row]);
        List1.setMuted(row, m_model.ChannelPresent[row] == 0);
        if (List1.chipColour(row) != m_model.LineColor[row]) {
            List1.setChipColour(row, m_model.LineColor[row]);
        }
    }
    if (List1.chipBack() != m_screen.screenColor) {
        List1.setChipBack(m_screen.screenColor);
    }
    List1.showListIndex(m_screen.selectedRow);
}

void ScreenDisplay::showLists() {
    showEntries(*m_controls.Combo1, m_screen.timeList, m_screen.timeRow);
    showEntries(*m_controls.Combo2, m_screen.voltList, m_screen.voltRow);
    if (m_controls.Combo3->ListIndex() != static_cast<int>(m_screen.cursorChoice)) {
        m_controls.Combo3->setCurrentIndex(static_cast<int>(m_screen.cursorChoice));
    }
    PositionBar& VScroll1 = *m_controls.VScroll1;
    const QSignalBlocker quiet(VScroll1); // a change of the bar by code must not move a marker
    if (VScroll1.Max() != m_screen.bar.maximum) {
        VScroll1.setRange(0, m_screen.bar.maximum);
        VScroll1.update();
    }
    if (VScroll1.Value() != m_screen.bar.value) {
        VScroll1.setValue(m_screen.bar.value);
        VScroll1.update();
    }
    VScroll1.setEnabled(m_screen.barEnabled);
}

void ScreenDisplay::showMarkers() {
    showBackground(*m_controls.Picture3, m_screen.stripColor);
    for (int channel = 0; channel < kChannels; ++channel) {
        const ZeroMarker& marker = m_screen.markers[channel];
        MarkerLabel& image1 = *m_controls.image1[channel];
        // A marker that leaves the strip gives the keyboard focus to the bar: only the bar can bring it back.
        if (image1.hasFocus() && !marker.shown) {
            m_controls.VScroll1->setFocus();
        }
        showMarker(image1, marker.top, marker.shown, marker.back, marker.pressed);
        MarkerLabel& ZLabel = *m_controls.ZLabel[channel];
        if (marker.standInShown && ZLabel.isHidden()) {
            ZLabel.setCaption(image1.caption());
        }
        showMarker(ZLabel, marker.standInTop, marker.standInShown, marker.standInBack, false);
    }
    // Where markers cover each other, the one of the selected channel is on top.
    if (m_screen.selectedRow != m_frontMarker && m_screen.selectedRow >= 0) {
        m_frontMarker = m_screen.selectedRow;
        m_controls.image1[m_frontMarker]->raise();
    }
}

void ScreenDisplay::showCursors() {
    const FrmComControls& c = m_controls;
    for (std::size_t i = 0; i < c.Line1.size(); ++i) {
        const double y = m_screen.cursors.voltage[i].number();
        if (c.Line1[i]->Y1() != y) {
            c.Line1[i]->setY(y);
        }
        const double x = m_screen.cursors.time[i].number();
        if (c.Line2[i]->X1() != x) {
            c.Line2[i]->setX(x);
        }
    }
    const auto showTexts = [](const CursorTexts& texts, const std::array<ReadoutLabel*, 5>& labels) {
        showText(*labels[0], texts.values[0]);
        showText(*labels[1], texts.units[0]);
        showText(*labels[2], texts.values[1]);
        showText(*labels[3], texts.units[1]);
        showText(*labels[4], texts.difference);
    };
    showTexts(m_screen.voltages, {c.LabY1, c.LabYY11, c.LabY2, c.LabYY22, c.LabDy});
    showTexts(m_screen.times, {c.LabX1, c.LabXX11, c.LabX2, c.LabXX22, c.LabDx});
}

void ScreenDisplay::showReadouts() {
    const FrmComControls& c = m_controls;
    const bool voltages = showsVoltage(m_screen.cursorsShown);
    const bool times = showsTime(m_screen.cursorsShown);
    for (std::size_t i = 0; i < c.Line1.size(); ++i) {
        if (c.Line1[i]->isVisible() != voltages) {
            c.Line1[i]->setVisible(voltages);
        }
        if (c.Line2[i]->isVisible() != times) {
            c.Line2[i]->setVisible(times);
        }
    }
    showVisible(std::array{c.LabY1, c.LabY2, c.LabDy, c.LabYY1, c.LabYY2, c.LabYY11, c.LabYY22, c.LabDDYY, c.Labddy},
                voltages);
    showVisible(std::array{c.LabX1, c.LabX2, c.LabDx, c.LabXX1, c.LabXX2, c.LabXX11, c.LabXX22, c.LabDDXX, c.labDDx},
                times);
    showText(*c.LabPe, m_screen.measurements.period);
    showText(*c.labPPe, m_screen.measurements.frequency);
    showText(*c.LabMaxx, m_screen.measurements.peakToPeak);
    const auto showTitle = [](FramePanel& frame, const QString& title) {
        if (!title.isEmpty() && frame.caption() != title) {
            frame.setCaption(title);
        }
    };
    showTitle(*c.Frame1, m_screen.titles.cursor);
    showTitle(*c.Frame2, m_screen.titles.timeBase);
    showTitle(*c.Frame3, m_screen.titles.voltage);
    showTitle(*c.Frame4, m_screen.titles.channel);
    if (m_shownPaths != m_screen.pathsShown) {
        m_shownPaths = m_screen.pathsShown;
        c.Label4->setCaption(m_screen.loadedPath);
    }
    if (c.Label5->text() != m_screen.modelName) {
        c.Label5->setCaption(m_screen.modelName);
    }
}

void ScreenDisplay::showAppearance() {
    m_ticks.mnuGraticule->setChecked(m_screen.graticule == Graticule::Dotted);
    m_ticks.mnuLine->setChecked(m_screen.lineTicked);
    m_ticks.mnuPoint->setChecked(m_screen.pointTicked);
    showBackground(*m_controls.CenterPoint, m_screen.screenColor);
}

void ScreenDisplay::showPicture() {
    PictureBox& Picture2 = *m_controls.Picture2;
    if (m_shownChanges != m_pictures.changes()) {
        m_shownChanges = m_pictures.changes();
        Picture2.update();
    }
    const Qt::CursorShape shape = shapeOf(m_screen.pointer);
    if (Picture2.cursor().shape() != shape) {
        Picture2.setCursor(shape);
    }
    QLabel& CenterPoint = *m_controls.CenterPoint;
    if (m_screen.CenterPoint && CenterPoint.text() != *m_screen.CenterPoint) {
        CenterPoint.setText(*m_screen.CenterPoint);
    }
    CenterPoint.setVisible(m_screen.CenterPoint.has_value());
}

} // namespace sixtrace
