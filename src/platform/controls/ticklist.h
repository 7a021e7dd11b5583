// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/colour.h"

#include <QListWidget>

namespace sixtrace {

/// A list whose rows have a tick box and a small coloured field, the chip. Handlers rely on three rules. Setting or
/// clearing a tick by code makes the row current and raises ItemCheck, then Click, even if nothing changes. A click of
/// the user on the tick box does the same. Setting the current row by code raises Click, as the user's choice of a row
/// does.
class TickList : public QListWidget {
    Q_OBJECT
public:
    explicit TickList(QWidget* parent);

    void addRow(const QString& text);
    [[nodiscard]] int ListIndex() const { return currentRow(); }
    void setListIndex(int row);
    [[nodiscard]] QString List(int row) const;
    void setList(int row, const QString& text);
    [[nodiscard]] bool Selected(int row) const;
    void setSelected(int row, bool ticked);

    /// The colour of the line in a row's chip. The background of the chips is the same for all rows.
    void setChipColour(int row, Colour colour);
    void setChipBack(Colour colour);
    /// A muted row has the text colour of a disabled one. It can still be ticked and chosen.
    void setMuted(int row, bool muted);
    [[nodiscard]] bool isMuted(int row) const;
    /// Show a tick, or a current row, without raising an event.
    void showTick(int row, bool ticked);
    void showListIndex(int row);
    [[nodiscard]] Colour chipBack() const { return m_chipBack; }
    [[nodiscard]] Colour chipColour(int row) const;

    /// Where a row's tick box is painted, in pixels of the viewport.
    [[nodiscard]] QRect tickRect(int row) const;

Q_SIGNALS:
    void ItemCheck(int row);
    void Click();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

private:
    [[nodiscard]] bool isRow(int row) const { return row >= 0 && row < count(); }

    Colour m_chipBack = 0;
};

} // namespace sixtrace
