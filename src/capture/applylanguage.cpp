// SPDX-License-Identifier: MIT
#include "capture/applylanguage.h"

#include "platform/controls/captions.h"
#include "platform/desktop/dialogsheet.h"
#include "platform/files/profilefile.h"

#include <QComboBox>
#include <QMenu>
#include <QWidget>

namespace sixtrace {

namespace {

/// Object names as the language file knows them.
struct ControlName {
    QString name;
    QString index; ///< empty unless the control belongs to an array

    explicit ControlName(const QString& objectName)
        : name(objectName) {
        const qsizetype bracket = objectName.indexOf(QLatin1Char('('));
        if (bracket > 0 && objectName.endsWith(QLatin1Char(')'))) {
            name = objectName.left(bracket);
            index = objectName.mid(bracket + 1, objectName.size() - bracket - 2);
        }
    }
};

/// Whether a control belongs to another window that `form` owns. An open window keeps its language until it is loaded
/// again. A menu is a window for the toolkit; here it is a control of its form.
bool isOfAnotherWindow(const QObject& control, const QWidget& form) {
    for (const QObject* at = &control; at != nullptr && at != &form; at = at->parent()) {
        const auto* widget = qobject_cast<const QWidget*>(at);
        if (widget != nullptr && widget->isWindow() && qobject_cast<const QMenu*>(widget) == nullptr) {
            return true;
        }
    }
    return false;
}

void applyToCombo(QComboBox& combo, const ProfileText& texts, const QString& section) {
    for (int entry = 0; entry < combo.count(); ++entry) {
        combo.setItemText(entry, texts.value(section, QString::number(entry), combo.itemText(entry)));
    }
}

void applyCaption(QObject& control, const ProfileText& texts, const QString& section, const QString& key) {
    const QString present = captionOf(control);
    const QString text = texts.value(section, key, present);
    if (text != present) {
        setCaptionOf(control, text);
    }
}

} // namespace

void ApplyLanguage(QWidget& form, const publicM& model) {
    // Some dialogs are made once and loaded many times. Each load begins with the captions of the design, not with
    // those of the language before.
    if (auto* dialog = dynamic_cast<DialogSheet*>(&form)) {
        dialog->startFromDesign();
    }
    // The file is read once; each text is the one that GetLanString would give.
    const ProfileText texts = profileTextOf(model.LanFile);
    const QString section = form.objectName();
    form.setWindowTitle(texts.value(section, QStringLiteral("Caption"), form.windowTitle()));
    const auto controls = form.findChildren<QObject*>();
    for (QObject* control : controls) {
        // The parts of a control have no name, or one that the toolkit gave them.
        if (control->objectName().isEmpty() || control->objectName().startsWith(QStringLiteral("qt_"))) {
            continue;
        }
        if (isOfAnotherWindow(*control, form)) {
            continue;
        }
        const ControlName name(control->objectName());
        switch (captionKind(*control)) {
        case CaptionKind::None:
            break;
        case CaptionKind::Control:
            applyCaption(*control, texts, section, name.name);
            if (!name.index.isEmpty()) {
                applyCaption(*control, texts, section, name.name + name.index);
            }
            break;
        case CaptionKind::Menu:
        case CaptionKind::Frame:
            applyCaption(*control, texts, section, name.name);
            break;
        case CaptionKind::ComboBox:
            applyToCombo(*qobject_cast<QComboBox*>(control), texts, section + name.name);
            break;
        }
    }
}

} // namespace sixtrace
