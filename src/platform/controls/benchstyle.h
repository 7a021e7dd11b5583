// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

namespace sixtrace {

/// Qt's Fusion style with the colours of the program: flat menus, filled default buttons and ticks, a focus line of two
/// pixels inside the control's edge, no animation. Owned by the application.
class BenchStyle : public QProxyStyle {
public:
    BenchStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    QIcon standardIcon(StandardPixmap which, const QStyleOption* option, const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
};

} // namespace sixtrace
