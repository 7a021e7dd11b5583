// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/colour.h"

#include <QColor>
#include <QFont>

class QApplication;
class QWidget;

namespace sixtrace {

/// The colours of the bench around the screen. The screen's own colours are settings and not listed here.
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

/// Pixel sizes of the type.
inline constexpr int kTextPixels = 13;
inline constexpr int kSmallTextPixels = 12;
inline constexpr int kSmallestReadoutPixels = 9;
/// Height of a menu bar, pixels.
inline constexpr int kMenuBarHeight = 26;

/// The interface's family at a pixel size. One family serves both languages, so that a switch moves nothing.
[[nodiscard]] QFont interfaceFont(int pixels = kTextPixels);
/// The family of the channel list, with digits and blanks of one width.
[[nodiscard]] QFont listFont(int pixels = kSmallTextPixels);

/// The colour that a 24-bit colour of the settings stands for.
[[nodiscard]] QColor toQColor(Colour colour);
[[nodiscard]] Colour toColour(const QColor& colour);
/// Black or white, whichever stands out more against `back`.
[[nodiscard]] QColor contrastingText(const QColor& back);

/// Gives the text of a widget one colour, in every state but disabled.
void setInk(QWidget& widget, QRgb colour);

/// Style, palette and type of the whole program: one light look, whatever the desktop's theme is.
void applyLook(QApplication& application);

} // namespace sixtrace
