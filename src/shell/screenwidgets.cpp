// SPDX-License-Identifier: MIT
#include "shell/screenwidgets.h"

#include "capture/channellist.h"
#include "platform/controls/arrowpair.h"
#include "platform/controls/listcombo.h"
#include "platform/controls/markerlabel.h"
#include "platform/controls/picturebox.h"
#include "platform/controls/positionbar.h"
#include "platform/controls/ticklist.h"
#include "view/cursors.h"
#include "view/timevoltcontrols.h"

#include <QEvent>

namespace sixtrace {

namespace {

/// Calls `handle` at every double click on a widget.
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

} // namespace

ScreenWidgets::ScreenWidgets(ScopeScreen& pictures, ScreenMouse& mouse, Appearance& appearance,
                             const FrmComControls& controls, const ScreenDisplay::Ticks& ticks, QObject* parent)
    : QObject(parent)
    , m_scope(pictures.scope())
    , m_screen(m_scope.screen)
    , m_mouse(mouse)
    , m_appearance(appearance)
    , m_controls(controls)
    , m_display(pictures, controls, ticks) {
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
        m_display.show();
    });
    connect(&List1, &TickList::Click, this, [this] {
        List1_Click(m_scope);
        m_display.show();
    });
}

void ScreenWidgets::bindTimeAndVolt() {
    const FrmComControls& c = m_controls;
    const auto bind = [this](auto* control, auto raised, auto handler) {
        connect(control, raised, this, [this, handler] {
            handler();
            m_display.show();
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
    connect(&Picture2, &PictureBox::mouseDown, this, [this](double X, double Y) {
        m_mouse.Picture2_MouseDown(ScreenX(X), ScreenY(Y));
        m_display.showPicture();
    });
    connect(&Picture2, &PictureBox::mouseMove, this, [this](double X, double Y) {
        m_mouse.Picture2_MouseMove(ScreenX(X), ScreenY(Y));
        m_display.showPicture();
        m_display.showCursors();
    });
    connect(&Picture2, &PictureBox::mouseUp, this, [this] {
        m_mouse.Picture2_MouseUp();
        m_display.show();
    });
    connect(&Picture2, &PictureBox::doubleClicked, this, [this] {
        m_appearance.Picture2_DblClick();
        m_display.show();
    });
    new DoubleClicks(*m_controls.Picture3, [this] {
        m_appearance.Picture3_DblClick();
        m_display.show();
    });
}

void ScreenWidgets::bindMarkers() {
    for (int i = 0; i < kChannels; ++i) {
        MarkerLabel* marker = m_controls.image1[i];
        connect(marker, &MarkerLabel::doubleClicked, this, [this, i] {
            m_appearance.image1_DblClick(i);
            m_display.show();
        });
        connect(marker, &MarkerLabel::mouseDown, this, [this, i](Twips Y) {
            m_mouse.image1_MouseDown(i, Y);
            m_display.show();
        });
        connect(marker, &MarkerLabel::mouseMove, this, [this, i](Qt::MouseButtons Button, Twips Y) {
            m_mouse.image1_MouseMove(i, Button, Y);
            m_display.showMarkers();
            m_display.showPicture();
        });
        connect(marker, &MarkerLabel::mouseUp, this, [this, i] {
            m_mouse.image1_MouseUp(i);
            m_display.show();
        });
    }
}

} // namespace sixtrace
