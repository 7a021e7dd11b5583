// SPDX-License-Identifier: MIT
#include "shell/screenwidgets.h"

#include "capture/channellist.h"
#include "platform/controls/arrowpair.h"
#include "platform/controls/framepanel.h"
#include "platform/controls/labels.h"
#include "platform/controls/listcombo.h"
#include "platform/controls/look.h"
#include "platform/controls/markerlabel.h"
#include "platform/controls/picturebox.h"
#include "platform/controls/positionbar.h"
#include "platform/controls/ticklist.h"
#include "view/cursors.h"
#include "view/timevoltcontrols.h"

#include <QAction>
#include <QEvent>
#include <QLabel>
#include <QSignalBlocker>

namespace sixtrace {

namespace {

/// Raises `handle` for every double click on a plain widget.
class DoubleClicks : public QObject {
public:
    DoubleClicks(QWidget& widget, std::function<void()> handle)
        : QObject(&widget)
        , m_handle(std::move(handle)) {
        widget.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonDblClick) {
            m_handle();
            return true;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void()> m_handle;
};

void showBackground(QWidget& widget, Colour colour) {
    QPalette palette = widget.palette();
    if (palette.color(QPalette::Window) != toQColor(colour)) {
        palette.setColor(QPalette::Window, toQColor(colour));
        widget.setPalette(palette);
    }
}

template<std::size_t Rows>
void showEntries(ListCombo& list, const std::array<QString, Rows>& entries, int chosen) {
    for (int row = 0; row < int{Rows}; ++row) {
        const QString& entry = entries[static_cast<std::size_t>(row)];
        if (row >= list.ListCount()) {
            list.addItem(entry);
        } else if (list.List(row) != entry) {
            list.setList(row, entry);
        }
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

void showMarker(MarkerLabel& label, double top, bool shown, Colour back, bool pressed) {
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

ScreenWidgets::ScreenWidgets(ScopeScreen& pictures, ScreenMouse& mouse, Appearance& appearance,
                             const FrmComControls& controls, const Ticks& ticks, QObject* parent)
    : QObject(parent)
    , m_scope(pictures.scope())
    , m_screen(m_scope.screen)
    , m_pictures(pictures)
    , m_mouse(mouse)
    , m_appearance(appearance)
    , m_controls(controls)
    , m_ticks(ticks) {
    bindList();
    bindTimeAndVolt();
    bindScreen();
    bindMarkers();
}

void ScreenWidgets::bindList() {
    TickList& List1 = *m_controls.List1;
    connect(&List1, &TickList::currentRowChanged, this, [this](int row) { m_screen.selectedRow = row; });
    connect(&List1, &TickList::ItemCheck, this, [this](int Item) {
        m_screen.ticks[Item] = m_controls.List1->Selected(Item);
        List1_ItemCheck(m_scope, Item);
        show();
    });
    connect(&List1, &TickList::Click, this, [this] {
        List1_Click(m_scope);
        show();
    });
}

void ScreenWidgets::bindTimeAndVolt() {
    const FrmComControls& c = m_controls;
    const auto bind = [this](auto* control, auto raised, auto handler) {
        connect(control, raised, this, [this, handler] {
            handler();
            show();
        });
    };
    bind(c.Combo1, &ListCombo::Click, [this] { chooseTimeRow(m_scope, m_controls.Combo1->ListIndex()); });
    bind(c.Combo2, &ListCombo::Click, [this] { chooseVoltRow(m_scope, m_controls.Combo2->ListIndex()); });
    bind(c.Combo3, &ListCombo::Click, [this] {
        m_screen.cursorChoice = static_cast<CursorType>(std::max(0, m_controls.Combo3->ListIndex()));
        Combo3_Click(m_scope);
    });
    bind(c.UpDown1, &ArrowPair::UpClick, [this] { stepVoltRow(m_scope, Step::Up); });
    bind(c.UpDown1, &ArrowPair::DownClick, [this] { stepVoltRow(m_scope, Step::Down); });
    bind(c.UpDown2, &ArrowPair::UpClick, [this] { stepTimeRow(m_scope, Step::Up); });
    bind(c.UpDown2, &ArrowPair::DownClick, [this] { stepTimeRow(m_scope, Step::Down); });
    const auto takeBarValue = [this] { m_screen.bar.value = m_controls.VScroll1->Value(); };
    bind(c.VScroll1, &PositionBar::Scroll, [this, takeBarValue] {
        takeBarValue();
        VScroll1_Scroll(m_scope);
    });
    bind(c.VScroll1, &PositionBar::Change, [this, takeBarValue] {
        takeBarValue();
        VScroll1_Change(m_scope);
    });
    bind(c.VScroll1, &PositionBar::ScrollEnd, [this] { endScroll(m_screen); });
}

void ScreenWidgets::bindScreen() {
    PictureBox& Picture2 = *m_controls.Picture2;
    connect(&Picture2, &PictureBox::mouseDown, this, [this](int, double X, double Y) {
        m_mouse.Picture2_MouseDown(X, Y);
        showPicture();
    });
    connect(&Picture2, &PictureBox::mouseMove, this, [this](int, double X, double Y) {
        m_mouse.Picture2_MouseMove(X, Y);
        showPicture();
        showCursors();
    });
    connect(&Picture2, &PictureBox::mouseUp, this, [this] {
        m_mouse.Picture2_MouseUp();
        show();
    });
    connect(&Picture2, &PictureBox::doubleClicked, this, [this] {
        m_appearance.Picture2_DblClick();
        show();
    });
    new DoubleClicks(*m_controls.Picture3, [this] {
        m_appearance.Picture3_DblClick();
        show();
    });
}

void ScreenWidgets::bindMarkers() {
    for (int i = 0; i < kChannels; ++i) {
        MarkerLabel* marker = m_controls.image1[i];
        connect(marker, &MarkerLabel::doubleClicked, this, [this, i] {
            m_appearance.image1_DblClick(i);
            show();
        });
        connect(marker, &MarkerLabel::mouseDown, this, [this, i](int, double Y) {
            m_mouse.image1_MouseDown(i, Y);
            show();
        });
        connect(marker, &MarkerLabel::mouseMove, this, [this, i](int Button, double Y) {
            m_mouse.image1_MouseMove(i, Button, Y);
            showMarkers();
            showPicture();
        });
        connect(marker, &MarkerLabel::mouseUp, this, [this, i] {
            m_mouse.image1_MouseUp(i);
            show();
        });
    }
}

void ScreenWidgets::show() {
    showList();
    showLists();
    showMarkers();
    showCursors();
    showReadouts();
    showAppearance();
    showPicture();
}

void ScreenWidgets::takeListTexts() {
    for (int row = 0; row < kTimeBaseRows; ++row) {
        m_screen.timeList[static_cast<std::size_t>(row)] = m_controls.Combo1->List(row);
    }
    for (int row = 0; row < kVoltRows; ++row) {
        m_screen.voltList[static_cast<std::size_t>(row)] = m_controls.Combo2->List(row);
    }
}

void ScreenWidgets::showList() {
    TickList& List1 = *m_controls.List1;
    for (int row = 0; row < kChannels; ++row) {
        if (row >= List1.count()) {
            List1.addRow(m_screen.rows[row]);
        } else if (List1.List(row) != m_screen.rows[row]) {
            List1.setList(row, m_screen.rows[row]);
        }
        List1.showTick(row, m_screen.ticks[row]);
        List1.setMuted(row, m_scope.model.ChannelPresent[row] == 0);
        if (List1.chipColour(row) != m_scope.model.LineColor[row]) {
            List1.setChipColour(row, m_scope.model.LineColor[row]);
        }
    }
    if (List1.chipBack() != m_screen.screenColor) {
        List1.setChipBack(m_screen.screenColor);
    }
    List1.showListIndex(m_screen.selectedRow);
}

void ScreenWidgets::showLists() {
    showEntries(*m_controls.Combo1, m_screen.timeList, m_screen.timeRow);
    showEntries(*m_controls.Combo2, m_screen.voltList, m_screen.voltRow);
    if (m_controls.Combo3->ListIndex() != static_cast<int>(m_screen.cursorChoice)) {
        m_controls.Combo3->setCurrentIndex(static_cast<int>(m_screen.cursorChoice));
    }
    PositionBar& VScroll1 = *m_controls.VScroll1;
    const QSignalBlocker quiet(VScroll1); // a change of the bar by code moves no marker
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

void ScreenWidgets::showMarkers() {
    showBackground(*m_controls.Picture3, m_screen.stripColor);
    for (int channel = 0; channel < kChannels; ++channel) {
        const ZeroMarker& marker = m_screen.markers[channel];
        MarkerLabel& image1 = *m_controls.image1[channel];
        // A marker that leaves the strip hands the keys on to the bar, which alone can bring it back.
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
    // Of zero lines that coincide one sees the selected channel's.
    if (m_screen.selectedRow != m_frontMarker && m_screen.selectedRow >= 0) {
        m_frontMarker = m_screen.selectedRow;
        m_controls.image1[m_frontMarker]->raise();
    }
}

void ScreenWidgets::showCursors() {
    const FrmComControls& c = m_controls;
    for (std::size_t i = 0; i < c.Line1.size(); ++i) {
        if (c.Line1[i]->Y1() != m_screen.cursors.voltage[i]) {
            c.Line1[i]->setY(m_screen.cursors.voltage[i]);
        }
        if (c.Line2[i]->X1() != m_screen.cursors.time[i]) {
            c.Line2[i]->setX(m_screen.cursors.time[i]);
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

void ScreenWidgets::showReadouts() {
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

void ScreenWidgets::showAppearance() {
    m_ticks.mnuGraticule->setChecked(m_screen.graticule == Graticule::Dotted);
    m_ticks.mnuLine->setChecked(m_screen.lineTicked);
    m_ticks.mnuPoint->setChecked(m_screen.pointTicked);
    showBackground(*m_controls.CenterPoint, m_screen.screenColor);
}

void ScreenWidgets::showPicture() {
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
