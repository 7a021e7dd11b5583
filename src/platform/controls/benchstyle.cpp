// SPDX-License-Identifier: MIT
#include "platform/controls/look.h"

#include <QPainter>
#include <QPainterPath>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>
#include <QWidget>

namespace sixtrace {

namespace {

constexpr int kMenuBarItemMargin = 12; ///< pixels left and right of a title

/// The background of the menu bar, with the line at its lower edge.
void fillMenuBar(QPainter& painter, const QRect& rect) {
    painter.fillRect(rect, QColor::fromRgb(bench::kWindow));
    painter.fillRect(QRect(rect.left(), kMenuBarHeight - 1, rect.width(), 1), QColor::fromRgb(bench::kMenuLine));
}

void fillRounded(QPainter& painter, const QRectF& rect, QRgb fill, QRgb line, double radius) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(QColor::fromRgb(fill));
    painter.setPen(QPen(QColor::fromRgb(line), 1));
    painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    painter.restore();
}

void drawTick(QPainter& painter, const QRectF& box, QRgb colour) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor::fromRgb(colour), box.width() * 0.14, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    QPainterPath path(QPointF(box.left() + box.width() * 0.25, box.top() + box.height() * 0.52));
    path.lineTo(box.left() + box.width() * 0.43, box.top() + box.height() * 0.70);
    path.lineTo(box.left() + box.width() * 0.76, box.top() + box.height() * 0.32);
    painter.drawPath(path);
    painter.restore();
}

/// Qt's Fusion style with the colours of the program: flat menus, filled default buttons and ticks, a focus line of two
/// pixels inside the control's edge, no animation.
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

BenchStyle::BenchStyle()
    : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void BenchStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
    const bool enabled = option->state.testFlag(State_Enabled);
    if (element == PE_FrameFocusRect) {
        paintFocusLine(*painter, option->rect, 2);
        return;
    }
    if (element == PE_IndicatorCheckBox && option->state.testFlag(State_On)) {
        fillRounded(*painter, option->rect, enabled ? bench::kAccent : bench::kScrollThumbDisabled,
                    enabled ? bench::kAccentDark : bench::kScrollThumbDisabled, 2.5);
        drawTick(*painter, option->rect, bench::kField);
        return;
    }
    if (element == PE_PanelButtonCommand) {
        const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
        if (button != nullptr && button->features.testFlag(QStyleOptionButton::DefaultButton) && enabled) {
            fillRounded(*painter, option->rect,
                        option->state.testFlag(State_Sunken) ? bench::kAccentDark : bench::kAccent, bench::kAccentDark,
                        3);
            return;
        }
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void BenchStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
    if (element == CE_MenuBarEmptyArea) {
        fillMenuBar(*painter, option->rect);
        return;
    }
    if (element == CE_MenuBarItem) {
        const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        if (item != nullptr) {
            fillMenuBar(*painter, option->rect);
            if (option->state.testFlag(State_Selected)) {
                fillRounded(*painter, QRectF(option->rect).adjusted(1, 2, -1, -2), bench::kTicked, bench::kTickedLine,
                            3);
            }
            const int flags = Qt::AlignCenter | Qt::TextShowMnemonic | Qt::TextSingleLine;
            drawItemText(painter, option->rect, flags, item->palette, option->state.testFlag(State_Enabled), item->text,
                         QPalette::WindowText);
            return;
        }
    }
    if (element == CE_MenuItem) {
        // The entry under the pointer is pale with dark text. Fusion would paint it dark with white text.
        const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        if (item != nullptr) {
            QStyleOptionMenuItem pale = *item;
            pale.palette.setColor(QPalette::Highlight, QColor::fromRgb(bench::kTicked));
            pale.palette.setColor(QPalette::HighlightedText, QColor::fromRgb(bench::kInk));
            QProxyStyle::drawControl(element, &pale, painter, widget);
            return;
        }
    }
    if (element == CE_HeaderSection) {
        const QRect& section = option->rect;
        painter->fillRect(section, QColor::fromRgb(bench::kStatusBand));
        painter->fillRect(QRect(section.left(), section.bottom(), section.width(), 1), QColor::fromRgb(bench::kRule));
        painter->fillRect(QRect(section.right(), section.top(), 1, section.height()), QColor::fromRgb(bench::kRule));
        return;
    }
    if (element == CE_PushButtonLabel) {
        const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
        if (button != nullptr && button->features.testFlag(QStyleOptionButton::DefaultButton) &&
            option->state.testFlag(State_Enabled)) {
            QStyleOptionButton filled = *button;
            filled.palette.setColor(QPalette::ButtonText, QColor::fromRgb(bench::kField));
            QProxyStyle::drawControl(element, &filled, painter, widget);
            return;
        }
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

int BenchStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* returnData) const {
    switch (hint) {
    case SH_Widget_Animation_Duration:
        return 0;
    case SH_UnderlineShortcut:
        return 1;
    case SH_Table_GridLineColor:
        return static_cast<int>(bench::kMenuLine);
    default:
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

int BenchStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
    case PM_MenuBarHMargin:
        return 7;
    case PM_MenuBarVMargin:
    case PM_MenuBarItemSpacing:
    case PM_MenuBarPanelWidth:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

QIcon BenchStyle::standardIcon(StandardPixmap which, const QStyleOption* option, const QWidget* widget) const {
    // Every menu bar asks for the arrow that leads to items that do not fit. All of ours fit, and looking the arrow up
    // would slow the start.
    return which == SP_ToolBarHorizontalExtensionButton ? QIcon() : QProxyStyle::standardIcon(which, option, widget);
}

QSize BenchStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                   const QWidget* widget) const {
    if (type == CT_MenuBarItem) {
        return {size.width() + 2 * kMenuBarItemMargin, kMenuBarHeight};
    }
    return QProxyStyle::sizeFromContents(type, option, size, widget);
}

} // namespace

std::unique_ptr<QStyle> benchStyle() {
    return std::make_unique<BenchStyle>();
}

} // namespace sixtrace
