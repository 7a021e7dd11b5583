// SPDX-License-Identifier: MIT
#include "shell/frmmessageout.h"

#include "capture/applylanguage.h"
#include "capture/mdllan.h"
#include "platform/controls/look.h"

#include <QPainter>
#include <QPushButton>

namespace sixtrace {

namespace {
constexpr int kWidth = 320;
constexpr int kHeight = 140;
constexpr int kStrip = 57;
constexpr int kButtonWidth = 88;
} // namespace

FrmMessageOut::FrmMessageOut(publicM& model)
    : m_Label1(new QLabel(this)) {
    setObjectName(QStringLiteral("FrmMessageOut"));
    setWindowTitle(QStringLiteral("信息提示"));
    setFixedSize(kWidth, kHeight);
    m_Label1->setObjectName(QStringLiteral("Label1"));
    m_Label1->setTextFormat(Qt::PlainText);
    m_Label1->setAlignment(Qt::AlignCenter);
    m_Label1->setGeometry(16, 16, kWidth - 32, kHeight - kStrip - 32);
    auto* button = new QPushButton(QStringLiteral("确   定"), this);
    button->setObjectName(QStringLiteral("Command1"));
    button->setDefault(true);
    button->setGeometry((kWidth - kButtonWidth) / 2, kHeight - kStrip + (kStrip - 28) / 2, kButtonWidth, 28);
    connect(button, &QPushButton::clicked, this, &QWidget::hide);
    SetLanFile(model, model.LanguageId);
    ApplyLanguage(*this, model);
}

void FrmMessageOut::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(QRect(0, kHeight - kStrip, kWidth, 1), QColor::fromRgb(bench::kRule));
}

} // namespace sixtrace
