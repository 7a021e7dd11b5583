// SPDX-License-Identifier: MIT
#include "platform/controls/captions.h"

#include "platform/controls/framepanel.h"
#include "platform/controls/labels.h"
#include "platform/controls/markerlabel.h"

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

NotedCaptions::NotedCaptions(const QWidget& form)
    : m_title(form.windowTitle()) {
    const auto controls = form.findChildren<QObject*>();
    for (QObject* control : controls) {
        const CaptionKind kind = captionKind(*control);
        if (kind == CaptionKind::None || control->objectName().isEmpty()) {
            continue;
        }
        Noted noted{control, kind == CaptionKind::ComboBox ? QString() : captionOf(*control), {}};
        if (const auto* combo = qobject_cast<const QComboBox*>(control)) {
            for (int entry = 0; entry < combo->count(); ++entry) {
                noted.entries.append(combo->itemText(entry));
            }
        }
        m_controls.push_back(std::move(noted));
    }
}

void NotedCaptions::restore(QWidget& form) const {
    form.setWindowTitle(m_title);
    for (const Noted& noted : m_controls) {
        if (noted.control.isNull()) {
            continue;
        }
        auto* combo = qobject_cast<QComboBox*>(noted.control.data());
        if (combo == nullptr) {
            setCaptionOf(*noted.control, noted.caption);
        } else if (combo->count() == noted.entries.size()) {
            for (int entry = 0; entry < combo->count(); ++entry) {
                combo->setItemText(entry, noted.entries.at(entry));
            }
        }
    }
}

} // namespace sixtrace
