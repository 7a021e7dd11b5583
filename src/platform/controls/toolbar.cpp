// SPDX-License-Identifier: MIT
#include "platform/controls/toolbar.h"

#include "platform/controls/look.h"

#include <QEvent>
#include <QFile>
#include <QPainter>
#include <QSvgRenderer>
#include <QtMath>

namespace sixtrace {

namespace {

constexpr int kButtonTop = 3;
constexpr int kButtonSize = 28;
constexpr int kPictureSize = 20;
constexpr int kFirstGap = 8;
constexpr int kGap = 11;
constexpr int kGapLine = 18;

/// The same drawing with every colour replaced by the grey of disabled pictures.
QByteArray greyed(QByteArray svg) {
    const QByteArray grey = QColor::fromRgb(bench::kDisabledIcon).name().toLatin1();
    for (qsizetype at = svg.indexOf("\"#"); at >= 0; at = svg.indexOf("\"#", at + 1)) {
        const qsizetype end = svg.indexOf('"', at + 1);
        if (end < 0) {
            break;
        }
        svg.replace(at + 1, end - at - 1, grey);
    }
    return svg;
}

int widthOf(const ToolPictures& pictures, std::size_t place) {
    if (!pictures.isGap(place)) {
        return kButtonSize;
    }
    return place == 1 ? kFirstGap : kGap;
}

QImage draw(const QString& name, bool enabled, double ratio) {
    const int pixels = qCeil(kPictureSize * ratio);
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    image.setDevicePixelRatio(ratio);
    QFile file(name);
    if (file.open(QIODevice::ReadOnly)) {
        const QByteArray svg = file.readAll();
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        QSvgRenderer(enabled ? svg : greyed(svg)).render(&painter, QRectF(0, 0, kPictureSize, kPictureSize));
    }
    return image;
}

} // namespace

const QImage& ToolPictures::image(std::size_t place, bool enabled, double ratio) {
    QImage& image = (enabled ? m_images : m_grey)[place];
    if (image.isNull() || image.devicePixelRatio() != ratio) {
        image = draw(m_names[place], enabled, ratio);
    }
    return image;
}

ToolButton::ToolButton(ToolPictures& pictures, std::size_t place, QWidget* parent)
    : QAbstractButton(parent)
    , m_pictures(pictures)
    , m_place(place) {
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_Hover);
}

void ToolButton::setTicked(bool ticked) {
    m_ticked = ticked;
    update();
}

bool ToolButton::event(QEvent* event) {
    if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverLeave) {
        update();
    }
    return QAbstractButton::event(event);
}

void ToolButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (m_pictures.isGap(m_place)) {
        if (width() == kGap) {
            painter.fillRect(QRect(width() / 2, (height() - kGapLine) / 2, 1, kGapLine),
                             QColor::fromRgb(bench::kToolLine));
        }
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    if (m_ticked || (isDown() && isEnabled())) {
        const bool live = isEnabled();
        painter.setPen(QPen(QColor::fromRgb(live ? bench::kTickedLine : bench::kTickedDisabled), 1));
        painter.setBrush(QColor::fromRgb(live ? bench::kTicked : bench::kTickedDisabled));
        painter.drawRoundedRect(box, 3, 3);
    } else if (isEnabled() && underMouse()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor::fromRgb(bench::kHover));
        painter.drawRoundedRect(box, 3, 3);
    }
    constexpr int kInset = (kButtonSize - kPictureSize) / 2;
    // The ratio of the device that is painted on. It need not be the display: a picture of the window can be finer.
    const double ratio = painter.deviceTransform().m11();
    painter.drawImage(QPoint(kInset, kInset), m_pictures.image(m_place, isEnabled(), ratio));
}

ToolBar::ToolBar(const QString& name, const ToolPictures::Names& pictures, QWidget* parent)
    : QWidget(parent)
    , m_pictures(pictures) {
    setObjectName(name);
    int left = 0;
    for (std::size_t place = 1; place < m_buttons.size(); ++place) {
        const int index = static_cast<int>(place);
        const int width = widthOf(m_pictures, place);
        auto* button = new ToolButton(m_pictures, place, this);
        button->setObjectName(QStringLiteral("%1(%2)").arg(name).arg(index));
        button->setGeometry(left, kButtonTop, width, kButtonSize);
        left += width;
        connect(button, &QAbstractButton::clicked, this, [this, index] { Q_EMIT ButtonClick(index); });
        m_buttons[place] = button;
    }
}

void ToolBar::setToolTipText(int index, const QString& text) {
    button(index).setToolTip(text);
    button(index).setAccessibleName(text);
}

void ToolBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgb(bench::kWindow));
}

} // namespace sixtrace
