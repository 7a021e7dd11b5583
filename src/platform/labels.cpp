// SPDX-License-Identifier: MIT
#include "platform/labels.h"

#include "platform/look.h"

#include <QPainter>
#include <QRegularExpression>

namespace sixtrace {

namespace {
constexpr int kSecondWordCentre = 112;
constexpr int kSecondWordWidth = 34;
constexpr int kPathInset = 10;

/// The largest size, from `full` down to 9 px, at which a text is no wider than `width`.
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
    // Readouts are written anew at each move of the pointer, and mostly with the text that they have.
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
        // A font is loaded when there is something to see, not before.
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
    showToolTip();
}

void PathLabel::setNote(const QString& note) {
    m_note = note;
    showToolTip();
}

void PathLabel::showToolTip() {
    QStringList lines{text(), m_note};
    lines.removeAll(QString());
    setToolTip(lines.join(u'\n'));
}

void PathLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QFont font = interfaceFont(kSmallTextPixels);
    painter.setFont(font);
    painter.setPen(palette().color(QPalette::WindowText));
    const QRect inner = rect().adjusted(kPathInset, 0, -kPathInset, 0);
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
