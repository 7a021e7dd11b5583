// SPDX-License-Identifier: MIT
#include "acquire/transferrows.h"

#include "platform/controls/look.h"

#include <QLabel>
#include <QProgressBar>

#include <algorithm>

namespace sixtrace {

namespace {

constexpr int kBarHeight = 16;
constexpr int kAmountsBelow = 25; ///< from the bar's top to the amounts

} // namespace

QProgressBar* addProgressBar(QWidget& window, int row) {
    auto* bar = new QProgressBar(&window);
    bar->setObjectName(QStringLiteral("ProgressBar1"));
    bar->setTextVisible(false);
    bar->setGeometry(rows::kFieldLeft, rows::top(row) + 5, rows::kFieldRight - rows::kFieldLeft, kBarHeight);
    bar->setRange(0, 1);
    bar->setValue(0);
    auto* stroke = new QLabel(QStringLiteral("/"), &window);
    stroke->setAlignment(Qt::AlignCenter);
    stroke->setGeometry(rows::kFieldLeft + rows::kShortField, bar->y() + kAmountsBelow, 18, 26);
    setInk(*stroke, bench::kMuted);
    return bar;
}

void setBarRange(QProgressBar& bar, int maximum) {
    bar.setRange(0, std::max(maximum, 1)); // a bar without a range would show endless work
    bar.setValue(0);
}

} // namespace sixtrace
