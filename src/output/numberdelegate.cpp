// SPDX-License-Identifier: MIT
#include "output/numberdelegate.h"

#include <QBrush>
#include <QPainter>
#include <QWidget>

namespace sixtrace {

void NumberDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    constexpr QStyle::State kPlain = QStyle::State_Enabled;
    constexpr QStyle::State kSpecial = QStyle::State_Selected | QStyle::State_HasFocus | QStyle::State_MouseOver;
    if (option.widget == nullptr || (option.state & (kPlain | kSpecial)) != kPlain) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    const QVariant ground = index.data(Qt::BackgroundRole);
    if (ground.isValid()) {
        painter->fillRect(option.rect, ground.value<QBrush>());
    }
    const QString text = index.data(Qt::DisplayRole).toString();
    if (text.isEmpty()) {
        return;
    }
    const QVariant ink = index.data(Qt::ForegroundRole);
    painter->setPen(ink.isValid() ? ink.value<QBrush>().color() : option.palette.color(QPalette::Text));
    painter->setFont(option.font);
    const int margin = option.widget->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, &option, option.widget) + 1;
    const QFontMetrics& metrics = option.fontMetrics;
    // To the fraction of a pixel, as the usual delegate's layout has it.
    const double left = option.rect.right() + 1 - margin - QFontMetricsF(option.font).horizontalAdvance(text);
    const int top = option.rect.top() + (option.rect.height() - metrics.height()) / 2;
    painter->drawText(QPointF(left, top + metrics.ascent()), text);
}

} // namespace sixtrace
