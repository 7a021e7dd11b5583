// SPDX-License-Identifier: MIT
#include "platform/controls/look.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <QStyle>
#include <QToolTip>
#include <QWidget>

#include <cmath>

namespace sixtrace {

QFont interfaceFont(int pixels) {
    QFont font;
    font.setFamilies({QStringLiteral("Noto Sans CJK SC"), QStringLiteral("Source Han Sans SC"),
                      QStringLiteral("Microsoft YaHei UI"), QStringLiteral("PingFang SC"),
                      QStringLiteral("WenQuanYi Micro Hei"), QStringLiteral("DejaVu Sans")});
    font.setPixelSize(pixels);
    font.setWeight(QFont::Normal);
    return font;
}

QFont listFont(int pixels) {
    QFont font;
    font.setFamilies({QStringLiteral("DejaVu Sans Mono"), QStringLiteral("WenQuanYi Micro Hei Mono"),
                      QStringLiteral("Consolas"), QStringLiteral("Menlo")});
    font.setStyleHint(QFont::Monospace);
    font.setPixelSize(pixels);
    font.setWeight(QFont::Normal);
    return font;
}

QColor toQColor(Colour colour) {
    return QColor::fromRgb(pixelOfColour(colour));
}

Colour toColour(const QColor& colour) {
    return rgb(colour.red(), colour.green(), colour.blue());
}

namespace {

double linear(int channel) {
    const double share = channel / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

QPalette benchPalette() {
    using namespace bench;
    QPalette palette(QColor::fromRgb(kWindow), QColor::fromRgb(kWindow));
    const auto set = [&palette](QPalette::ColorRole role, QRgb colour) {
        palette.setColor(role, QColor::fromRgb(colour));
    };
    set(QPalette::Window, kWindow);
    set(QPalette::Base, kField);
    set(QPalette::AlternateBase, kAlternateRow);
    set(QPalette::Button, kArrowBox);
    set(QPalette::WindowText, kInk);
    set(QPalette::Text, kInk);
    set(QPalette::ButtonText, kInk);
    set(QPalette::Highlight, kAccent);
    set(QPalette::HighlightedText, kField);
    set(QPalette::ToolTipBase, kField);
    set(QPalette::ToolTipText, kInk);
    set(QPalette::PlaceholderText, kDisabledText);
    set(QPalette::Link, kAccent);
    set(QPalette::LinkVisited, kAccentDark);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, QColor::fromRgb(kDisabledText));
    }
    palette.setColor(QPalette::Disabled, QPalette::Base, QColor::fromRgb(kReadOnlyField));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor::fromRgb(kScrollThumbDisabled));
    return palette;
}

} // namespace

QColor contrastingText(const QColor& back) {
    const double luminance = 0.2126 * linear(back.red()) + 0.7152 * linear(back.green()) + 0.0722 * linear(back.blue());
    // The contrast of two luminances is (lighter + 0.05) / (darker + 0.05).
    const bool black = (luminance + 0.05) / 0.05 >= 1.05 / (luminance + 0.05);
    return black ? QColor(Qt::black) : QColor(Qt::white);
}

void setInk(QWidget& widget, QRgb colour) {
    QPalette palette = widget.palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        palette.setColor(group, QPalette::WindowText, QColor::fromRgb(colour));
    }
    widget.setPalette(palette);
}

void paintFocusLine(QPainter& painter, const QRect& control, double radius) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor::fromRgb(bench::kAccent), 2));
    painter.drawRoundedRect(QRectF(control).adjusted(1, 1, -1, -1), radius, radius);
    painter.restore();
}

void applyLook(QApplication& application) {
    application.setStyle(benchStyle().release());
    const QPalette palette = benchPalette();
    application.setPalette(palette);
    application.setFont(interfaceFont());
    QToolTip::setFont(interfaceFont(kSmallTextPixels));
    QToolTip::setPalette(palette);
}

} // namespace sixtrace
