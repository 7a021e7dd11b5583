// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/colour.h"

#include <QColor>
#include <QFont>

#include <memory>

class QApplication;
class QPainter;
class QRect;
class QStyle;
class QWidget;

namespace sixtrace {

/// The colours of the windows. The colours of the oscilloscope screen are settings and do not stand here.
namespace bench {
inline constexpr QRgb kWindow = 0xFFF3F4F6;
inline constexpr QRgb kField = 0xFFFFFFFF;
inline constexpr QRgb kAlternateRow = 0xFFF7F8FA;
inline constexpr QRgb kReadOnlyField = 0xFFECEEF1;
inline constexpr QRgb kInk = 0xFF1F2733;
inline constexpr QRgb kMuted = 0xFF5B6675;
inline constexpr QRgb kFault = 0xFFB3261E;
inline constexpr QRgb kDisabledText = 0xFF9AA3AF;
inline constexpr QRgb kDisabledIcon = 0xFFA9B1BC;
inline constexpr QRgb kFrameLine = 0xFFC5CBD3;
inline constexpr QRgb kFieldLine = 0xFFB3BBC6;
inline constexpr QRgb kRule = 0xFFD3D8DF;
inline constexpr QRgb kMenuLine = 0xFFE0E4E9;
inline constexpr QRgb kAccent = 0xFF2F5FA8;
inline constexpr QRgb kAccentDark = 0xFF274F8D;
inline constexpr QRgb kSelectedRow = 0xFFD6E4F7;
inline constexpr QRgb kTicked = 0xFFDCE8F7;
inline constexpr QRgb kTickedLine = 0xFFA9C3E6;
inline constexpr QRgb kTickedDisabled = 0xFFE4E8ED;
inline constexpr QRgb kHover = 0xFFE8EDF4;
inline constexpr QRgb kToolLine = 0xFFCBD1D9;
inline constexpr QRgb kScrollTrack = 0xFFE3E6EB;
inline constexpr QRgb kScrollThumb = 0xFF8A95A3;
inline constexpr QRgb kScrollThumbDisabled = 0xFFCDD2D9;
inline constexpr QRgb kStatusBand = 0xFFE9ECF0;
inline constexpr QRgb kArrowBox = 0xFFFBFBFC;
} // namespace bench

/// Height of the menu bars, pixels.
inline constexpr int kMenuBarHeight = 26;

/// Sizes of text, pixels.
inline constexpr int kTextPixels = 13;
inline constexpr int kSmallTextPixels = 12;
inline constexpr int kSmallestReadoutPixels = 9;

/// The font of the windows at a pixel size. One font family serves both languages, so that a switch of the language
/// moves nothing.
[[nodiscard]] QFont interfaceFont(int pixels = kTextPixels);
/// The font of the channel list. Digits and blanks have the same width in it, so that its columns are straight.
[[nodiscard]] QFont listFont(int pixels = kSmallTextPixels);

/// Conversion between the 24-bit colours of the settings and Qt's.
[[nodiscard]] QColor toQColor(Colour colour);
[[nodiscard]] Colour toColour(const QColor& colour);
/// Black or white, whichever stands out more against `back`.
[[nodiscard]] QColor contrastingText(const QColor& back);

/// Sets the text colour of a widget for every state but disabled.
void setInk(QWidget& widget, QRgb colour);

/// Paints the line that marks the control with the keyboard focus: 2 px wide, just inside `control`, with rounded
/// corners of `radius` pixels.
void paintFocusLine(QPainter& painter, const QRect& control, double radius);

/// The style of the program's controls (benchstyle.cpp).
[[nodiscard]] std::unique_ptr<QStyle> benchStyle();

/// Sets style, palette and font of the whole program. The look is light whatever the desktop's theme is.
void applyLook(QApplication& application);

} // namespace sixtrace
