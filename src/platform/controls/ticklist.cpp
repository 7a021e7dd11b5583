// SPDX-License-Identifier: MIT
#include "platform/controls/ticklist.h"

#include "platform/controls/look.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyledItemDelegate>

namespace sixtrace {

namespace {

constexpr int kRowHeight = 14;
constexpr int kTickLeft = 4;
constexpr int kTickSize = 11;
constexpr int kChipLeft = 22;
constexpr int kChipWidth = 22;
constexpr int kChipHeight = 10;
constexpr int kTextLeft = 52;
constexpr int kChipRole = Qt::UserRole;
constexpr int kMutedRole = Qt::UserRole + 1;

QRect tickBox(const QRect& row) {
    return {row.left() + kTickLeft, row.top() + (row.height() - kTickSize - 1) / 2, kTickSize, kTickSize};
}

void paintTick(QPainter& painter, const QRect& box, bool ticked) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor::fromRgb(ticked ? bench::kAccentDark : bench::kFieldLine), 1));
    painter.setBrush(QColor::fromRgb(ticked ? bench::kAccent : bench::kField));
    // The line runs around the eleven pixels of the box, half inside and half outside.
    painter.drawRoundedRect(QRectF(box).adjusted(0.5, 0.5, 0.5, 0.5), 2.5, 2.5);
    if (ticked) {
        painter.setPen(QPen(QColor::fromRgb(bench::kField), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        QPainterPath tick(QPointF(box.left() + 3.2, box.top() + 6.2));
        tick.lineTo(box.left() + 5.2, box.top() + 8.2);
        tick.lineTo(box.left() + 9, box.top() + 4);
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(tick);
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
}

class RowDelegate : public QStyledItemDelegate {
public:
    explicit RowDelegate(TickList& list)
        : QStyledItemDelegate(&list)
        , m_list(list) {}

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override { return {100, kRowHeight}; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        painter->save();
        const QRect& row = option.rect;
        if (index.row() == m_list.ListIndex()) {
            painter->fillRect(row, QColor::fromRgb(bench::kSelectedRow));
        }
        paintTick(*painter, tickBox(row), m_list.Selected(index.row()));
        const QRect chip(row.left() + kChipLeft, row.top() + (kRowHeight - kChipHeight) / 2, kChipWidth, kChipHeight);
        painter->fillRect(chip, toQColor(m_list.chipBack()));
        painter->fillRect(chip.adjusted(3, 4, -3, -4), toQColor(m_list.chipColour(index.row())));
        painter->setFont(option.font);
        painter->setPen(
            QColor::fromRgb(m_list.isEnabled() && !m_list.isMuted(index.row()) ? bench::kInk : bench::kDisabledText));
        painter->drawText(row.adjusted(kTextLeft, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                          index.data().toString());
        painter->restore();
    }

private:
    TickList& m_list;
};

} // namespace

TickList::TickList(QWidget* parent)
    : QListWidget(parent) {
    setFont(listFont());
    setFrameShape(QFrame::NoFrame);
    setViewportMargins(1, 2, 1, 2);
    setUniformItemSizes(true);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setItemDelegate(new RowDelegate(*this));
    setEditTriggers(NoEditTriggers);
    setAutoScroll(false);
    viewport()->setAutoFillBackground(true);
}

void TickList::addRow(const QString& text) {
    auto* item = new QListWidgetItem(text, this);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setCheckState(Qt::Unchecked);
}

void TickList::setListIndex(int row) {
    if (row < -1 || row >= count()) {
        return;
    }
    setCurrentRow(row);
    viewport()->update();
    if (row >= 0) {
        Q_EMIT Click();
    }
}

QString TickList::List(int row) const {
    return isRow(row) ? item(row)->text() : QString();
}

void TickList::setList(int row, const QString& text) {
    if (isRow(row)) {
        item(row)->setText(text);
    }
}

bool TickList::Selected(int row) const {
    return isRow(row) && item(row)->checkState() == Qt::Checked;
}

void TickList::setSelected(int row, bool ticked) {
    if (!isRow(row)) {
        return;
    }
    item(row)->setCheckState(ticked ? Qt::Checked : Qt::Unchecked);
    setCurrentRow(row);
    viewport()->update();
    Q_EMIT ItemCheck(row);
    Q_EMIT Click();
}

void TickList::setChipColour(int row, Colour colour) {
    if (isRow(row)) {
        item(row)->setData(kChipRole, colour);
    }
}

Colour TickList::chipColour(int row) const {
    return isRow(row) ? item(row)->data(kChipRole).toInt() : 0;
}

void TickList::setMuted(int row, bool muted) {
    if (isRow(row) && isMuted(row) != muted) {
        item(row)->setData(kMutedRole, muted);
    }
}

bool TickList::isMuted(int row) const {
    return isRow(row) && item(row)->data(kMutedRole).toBool();
}

void TickList::showTick(int row, bool ticked) {
    if (isRow(row) && Selected(row) != ticked) {
        item(row)->setCheckState(ticked ? Qt::Checked : Qt::Unchecked);
    }
}

void TickList::showListIndex(int row) {
    if (row != ListIndex()) {
        setCurrentRow(row);
        viewport()->update();
    }
}

void TickList::setChipBack(Colour colour) {
    m_chipBack = colour;
    viewport()->update();
}

QRect TickList::tickRect(int row) const {
    return isRow(row) ? tickBox(visualItemRect(item(row))) : QRect();
}

void TickList::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    const QPoint point = event->position().toPoint();
    const int row = indexAt(point).row();
    if (!isRow(row)) {
        return;
    }
    // A click up to two pixels beside the box counts too: the box is only eleven pixels wide.
    if (tickRect(row).adjusted(-2, -2, 2, 2).contains(point)) {
        setSelected(row, !Selected(row));
    } else {
        setListIndex(row);
    }
}

// Dragging over the rows selects nothing, and a double click is two clicks.
void TickList::mouseMoveEvent(QMouseEvent*) {}
void TickList::mouseReleaseEvent(QMouseEvent*) {}
void TickList::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}

void TickList::keyPressEvent(QKeyEvent* event) {
    const int row = ListIndex();
    switch (event->key()) {
    case Qt::Key_Space:
        setSelected(row, !Selected(row));
        return;
    case Qt::Key_Up:
        setListIndex(std::max(0, row - 1));
        return;
    case Qt::Key_Down:
        setListIndex(std::min(count() - 1, row + 1));
        return;
    case Qt::Key_Home:
        setListIndex(0);
        return;
    case Qt::Key_End:
        setListIndex(count() - 1);
        return;
    default:
        // Not the view's own keys, which would search for a letter. NOLINTNEXTLINE(bugprone-parent-virtual-call)
        QWidget::keyPressEvent(event);
    }
}

bool TickList::event(QEvent* event) {
    if (event->type() == QEvent::Paint) {
        // The rows do not cover the edge: a line, and inside it one pixel of the background.
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const int line = hasFocus() ? 2 : 1;
        const double half = line / 2.0;
        painter.setPen(QPen(QColor::fromRgb(hasFocus() ? bench::kAccent : bench::kFieldLine), line));
        painter.setBrush(QColor::fromRgb(bench::kField));
        painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half), 3, 3);
        return true;
    }
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        update();
    }
    return QListWidget::event(event);
}

} // namespace sixtrace
