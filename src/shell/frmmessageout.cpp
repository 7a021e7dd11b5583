// SPDX-License-Identifier: MIT
#include "shell/frmmessageout.h"

#include "capture/applylanguage.h"
#include "capture/mdllan.h"
#include "platform/controls/look.h"
#include "platform/desktop/dialogsheet.h"

#include <QPainter>
#include <QPushButton>

namespace sixtrace {

namespace {
constexpr int kWidth = 320;
constexpr int kHeight = 140;
constexpr int kMargin = DialogSheet::kMargin;
constexpr int kStrip = DialogSheet::kStripHeight;
constexpr int kButtonWidth = DialogSheet::kButtonWidth;
constexpr int kButtonHeight = DialogSheet::kButtonHeight;
} // namespace

FrmMessageOut::FrmMessageOut(publicM& model)
    : m_Label1(new QLabel(this)) {
    setObjectName(QStringLiteral("FrmMessageOut"));
    setWindowTitle(QStringLiteral("信息提示"));
    setFixedSize(kWidth, kHeight);
    m_Label1->setObjectName(QStringLiteral("Label1"));
    m_Label1->setTextFormat(Qt::PlainText);
    m_Label1->setAlignment(Qt::AlignCenter);
    m_Label1->setGeometry(kMargin, kMargin, kWidth - 2 * kMargin, kHeight - kStrip - 2 * kMargin);
    auto* button = new QPushButton(QStringLiteral("确   定"), this);
    button->setObjectName(QStringLiteral("Command1"));
    button->setDefault(true);
    button->setGeometry((kWidth - kButtonWidth) / 2, kHeight - kStrip + (kStrip - kButtonHeight) / 2, kButtonWidth,
                        kButtonHeight);
    connect(button, &QPushButton::clicked, this, &QWidget::hide);
    SetLanFile(model, model.LanguageId);
    ApplyLanguage(*this, model);
}

void FrmMessageOut::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(QRect(0, kHeight - kStrip, kWidth, 1), QColor::fromRgb(bench::kRule));
}

} // namespace sixtrace
