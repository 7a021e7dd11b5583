// SPDX-License-Identifier: MIT
#include "platform/controls/framepanel.h"

#include "platform/controls/look.h"

#include <QPainter>

namespace sixtrace {

namespace {
constexpr int kLineTop = 8;
constexpr int kTitleLeft = 8;
constexpr int kTitleHeight = 17;
constexpr int kGapMargin = 4; ///< pixels left and right of the title
constexpr double kRadius = 4;
} // namespace

FramePanel::FramePanel(const QString& caption, QWidget* parent)
    : QWidget(parent)
    , m_caption(caption) {
    setAccessibleName(caption);
}

void FramePanel::setCaption(const QString& caption) {
    m_caption = caption;
    setAccessibleName(caption);
    update();
}

void FramePanel::addRule(const QRect& rule) {
    m_rules.push_back(rule);
    update();
}

void FramePanel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor::fromRgb(isEnabled() ? bench::kFrameLine : bench::kRule), 1));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, kLineTop + 0.5, -0.5, -0.5), kRadius, kRadius);
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (const QRect& rule : m_rules) {
        painter.fillRect(rule, QColor::fromRgb(bench::kRule));
    }
    // Titles that hold the label of a channel end in blanks. The gap is as wide as the text without them.
    QString shown = m_caption;
    while (shown.endsWith(QLatin1Char(' '))) {
        shown.chop(1);
    }
    if (shown.isEmpty()) {
        return;
    }
    const int textWidth = fontMetrics().horizontalAdvance(shown);
    painter.fillRect(QRect(kTitleLeft - kGapMargin, 0, textWidth + 2 * kGapMargin, kTitleHeight), palette().window());
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
    painter.drawText(QRect(kTitleLeft, 0, width() - kTitleLeft, kTitleHeight), Qt::AlignLeft | Qt::AlignVCenter, shown);
}

} // namespace sixtrace
