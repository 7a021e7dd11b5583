// SPDX-License-Identifier: MIT
#include "capture/applylanguage.h"

#include "capture/mdllan.h"
#include "platform/captions.h"

#include <QComboBox>
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

void applyToCombo(QComboBox& combo, const publicM& model, const QString& section) {
    for (int entry = 0; entry < combo.count(); ++entry) {
        combo.setItemText(entry, GetLanString(model, section, QString::number(entry), combo.itemText(entry)));
    }
}

void applyCaption(QObject& control, const publicM& model, const QString& section, const QString& key) {
    const QString present = captionOf(control);
    const QString text = GetLanString(model, section, key, present);
    if (text != present) {
        setCaptionOf(control, text);
    }
}

} // namespace

void ApplyLanguage(QWidget& form, const publicM& model) {
    const QString section = form.objectName();
    form.setWindowTitle(GetLanString(model, section, QStringLiteral("Caption"), form.windowTitle()));
    const auto controls = form.findChildren<QObject*>();
    for (QObject* control : controls) {
        // Parts that a control is made of bear no name, or one of the toolkit's own.
        if (control->objectName().isEmpty() || control->objectName().startsWith(QStringLiteral("qt_"))) {
            continue;
        }
        const ControlName name(control->objectName());
        switch (captionKind(*control)) {
        case CaptionKind::None:
            break;
        case CaptionKind::Control:
            applyCaption(*control, model, section, name.name);
            if (!name.index.isEmpty()) {
                applyCaption(*control, model, section, name.name + name.index);
            }
            break;
        case CaptionKind::Menu:
        case CaptionKind::Frame:
            applyCaption(*control, model, section, name.name);
            break;
        case CaptionKind::ComboBox:
            applyToCombo(*qobject_cast<QComboBox*>(control), model, section + name.name);
            break;
        }
    }
}

} // namespace sixtrace
