// SPDX-License-Identifier: MIT
#include "shell/programicon.h"

#include <QPainter>
#include <QSvgRenderer>

#include <cmath>

static void loadPictures() {
    Q_INIT_RESOURCE(pictures);
}

namespace sixtrace {

namespace {
constexpr int kLargestSmallIcon = 24;
}

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
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128}) {
        icon.addPixmap(programPicture(size, 1));
    }
    return icon;
}

} // namespace sixtrace
