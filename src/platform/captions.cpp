// SPDX-License-Identifier: MIT
#include "platform/captions.h"

#include "platform/framepanel.h"
#include "platform/labels.h"
#include "platform/markerlabel.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

namespace sixtrace {

CaptionKind captionKind(const QObject& control) {
    if (qobject_cast<const QLabel*>(&control) != nullptr || qobject_cast<const QPushButton*>(&control) != nullptr ||
        qobject_cast<const QRadioButton*>(&control) != nullptr || qobject_cast<const QCheckBox*>(&control) != nullptr ||
        qobject_cast<const MarkerLabel*>(&control) != nullptr) {
        return CaptionKind::Control;
    }
    if (const auto* action = qobject_cast<const QAction*>(&control)) {
        return action->isSeparator() ? CaptionKind::None : CaptionKind::Menu;
    }
    if (qobject_cast<const FramePanel*>(&control) != nullptr) {
        return CaptionKind::Frame;
    }
    return qobject_cast<const QComboBox*>(&control) != nullptr ? CaptionKind::ComboBox : CaptionKind::None;
}

QString captionOf(const QObject& control) {
    if (const auto* label = qobject_cast<const QLabel*>(&control)) {
        return label->text();
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) {
        return button->text();
    }
    if (const auto* action = qobject_cast<const QAction*>(&control)) {
        return action->text();
    }
    return control.property("caption").toString();
}

void setCaptionOf(QObject& control, const QString& caption) {
    if (auto* readout = qobject_cast<ReadoutLabel*>(&control)) {
        readout->setCaption(caption);
    } else if (auto* label = qobject_cast<QLabel*>(&control)) {
        label->setText(caption);
    } else if (auto* button = qobject_cast<QAbstractButton*>(&control)) {
        button->setText(caption);
    } else if (auto* action = qobject_cast<QAction*>(&control)) {
        action->setText(caption);
    } else {
        control.setProperty("caption", caption);
    }
}

} // namespace sixtrace
