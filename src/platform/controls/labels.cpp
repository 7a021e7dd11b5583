// SPDX-License-Identifier: MIT
#include "platform/controls/labels.h"

#include "platform/controls/look.h"

#include <QPainter>
#include <QRegularExpression>

namespace sixtrace {

namespace {
constexpr int kSecondWordCentre = 112;
constexpr int kSecondWordWidth = 34;
constexpr int kPathInset = 10;
constexpr int kMarkSize = 13;
constexpr int kMarkGap = 5;

/// Paints a triangle with an exclamation mark.
void paintMark(QPainter& painter, const QRectF& place) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgb(bench::kFault));
    painter.drawPolygon(QPolygonF{place.bottomLeft(), QPointF(place.center().x(), place.top()), place.bottomRight()});
    painter.setBrush(Qt::white);
    painter.drawRect(QRectF(place.center().x() - 0.75, place.top() + 4.5, 1.5, 4));
    painter.drawRect(QRectF(place.center().x() - 0.75, place.top() + 9.5, 1.5, 1.5));
    painter.restore();
}

/// The largest size, at most `full` and at least 9 px, at which a text fits into `width` pixels; 9 px where none does.
int fittingPixels(const QString& text, int width, int full) {
    for (int pixels = full; pixels > kSmallestReadoutPixels; --pixels) {
        if (QFontMetrics(interfaceFont(pixels)).horizontalAdvance(text) <= width) {
            return pixels;
        }
    }
    return kSmallestReadoutPixels;
}
} // namespace

ReadoutLabel::ReadoutLabel(QWidget* parent)
    : QLabel(parent)
    , m_fullPixels(kTextPixels)
    , m_pixels(kTextPixels) {
    setTextFormat(Qt::PlainText);
}

void ReadoutLabel::setCaption(const QString& caption) {
    // Readouts are set at each move of the pointer, mostly to the text that they have already.
    if (caption == text()) {
        return;
    }
    setText(caption);
    fit();
    update();
    Q_EMIT captionChanged();
}

void ReadoutLabel::setFullPixels(int pixels) {
    m_fullPixels = pixels;
    fit();
    update();
}

void ReadoutLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    fit();
}

void ReadoutLabel::showEvent(QShowEvent* event) {
    QLabel::showEvent(event);
    fit();
}

void ReadoutLabel::fit() {
    if (!isVisible()) {
        // Measuring loads the font, which takes time at the start. It waits until the label is shown.
        return;
    }
    m_pixels = fittingPixels(text().trimmed(), width(), m_fullPixels);
    setToolTip(m_pixels < m_fullPixels ? text() : QString());
}

void ReadoutLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setFont(interfaceFont(m_pixels));
    if (palette().color(QPalette::Window).alpha() == 255 && autoFillBackground()) {
        painter.fillRect(rect(), palette().window());
    }
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
    painter.drawText(rect(), static_cast<int>(alignment()) | Qt::TextSingleLine, text().trimmed());
}

TwoWordLabel::TwoWordLabel(QWidget* parent)
    : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

void TwoWordLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setFont(interfaceFont(kSmallTextPixels));
    painter.setPen(palette().color(QPalette::WindowText));
    static const QRegularExpression blanks(QStringLiteral("\\s{2,}"));
    const QStringList words = text().trimmed().split(blanks);
    painter.drawText(QRect(0, 0, kSecondWordCentre - kSecondWordWidth / 2, height()), Qt::AlignLeft | Qt::AlignTop,
                     words.value(0));
    const QString second = words.value(1);
    painter.setFont(interfaceFont(fittingPixels(second, kSecondWordWidth, kSmallTextPixels)));
    painter.drawText(QRect(kSecondWordCentre - kSecondWordWidth / 2 - 3, 0, kSecondWordWidth + 6, height()),
                     Qt::AlignHCenter | Qt::AlignTop, second);
}

PathLabel::PathLabel(QWidget* parent)
    : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

void PathLabel::setCaption(const QString& caption) {
    setText(caption);
    setFault({});
    Q_EMIT captionSet(caption);
}

void PathLabel::setFault(const QString& fault) {
    m_fault = fault;
    setAccessibleDescription(fault);
    showToolTip();
    update();
}

void PathLabel::setNote(const QString& note) {
    m_note = note;
    showToolTip();
}

void PathLabel::showToolTip() {
    QStringList lines{m_fault, text(), m_note};
    lines.removeAll(QString());
    const QString tip = lines.join(u'\n');
    // The name of a file may look like markup, which a tool tip would interpret.
    setToolTip(Qt::mightBeRichText(tip)
                   ? QStringLiteral("<p style='white-space:pre-wrap'>%1</p>").arg(tip.toHtmlEscaped())
                   : tip);
}

void PathLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QFont font = interfaceFont(kSmallTextPixels);
    painter.setFont(font);
    painter.setPen(palette().color(QPalette::WindowText));
    QRect inner = rect().adjusted(kPathInset, 0, -kPathInset, 0);
    if (hasFault()) {
        paintMark(painter, QRectF(inner.left(), (height() - kMarkSize) / 2.0, kMarkSize, kMarkSize));
        inner.setLeft(inner.left() + kMarkSize + kMarkGap);
        painter.setPen(palette().color(QPalette::WindowText));
    }
    painter.drawText(inner, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     QFontMetrics(font).elidedText(text(), Qt::ElideMiddle, inner.width()));
}

StatusBand::StatusBand(QWidget* parent)
    : QWidget(parent) {}

void StatusBand::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgb(bench::kStatusBand));
    painter.fillRect(QRect(0, 0, width(), 1), QColor::fromRgb(bench::kRule));
}

} // namespace sixtrace
