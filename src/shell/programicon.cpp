// SPDX-License-Identifier: MIT
#include "shell/programicon.h"

#include <QIconEngine>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>

static void loadPictures() {
    Q_INIT_RESOURCE(pictures);
}

namespace sixtrace {

namespace {

constexpr int kLargestSmallIcon = 24;

/// Draws the icon when it is asked for, at the size that is asked for.
class ProgramIconEngine final : public QIconEngine {
public:
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
        painter->drawPixmap(rect, programPicture(rect.width(), painter->device()->devicePixelRatio()));
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode, QIcon::State) override {
        return programPicture(std::min(size.width(), size.height()), 1);
    }
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
        QList<QSize> sizes;
        for (const int size : {16, 24, 32, 48, 64, 128}) {
            sizes.append({size, size});
        }
        return sizes;
    }
    [[nodiscard]] QIconEngine* clone() const override { return new ProgramIconEngine; }
};

} // namespace

QPixmap programPicture(int pixels, double ratio) {
    loadPictures();
    const int size = static_cast<int>(std::lround(pixels * ratio));
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QSvgRenderer drawing(size <= kLargestSmallIcon ? QStringLiteral(":/sixtrace/icon-small.svg")
                                                   : QStringLiteral(":/sixtrace/icon.svg"));
    QPainter painter(&pixmap);
    drawing.render(&painter);
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

QIcon programIcon() {
    return QIcon(new ProgramIconEngine);
}

} // namespace sixtrace
