// SPDX-License-Identifier: MIT
#include "platform/controls/spokentext.h"

#include "platform/controls/picturebox.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace sixtrace {

namespace {

/// Holds the text of a picture box, as a child of the box.
class SpokenText : public QObject {
public:
    SpokenText(PictureBox& box, std::function<QString()> text)
        : QObject(&box)
        , m_text(std::move(text)) {}

    [[nodiscard]] QString text() const { return m_text(); }

private:
    std::function<QString()> m_text;
};

[[nodiscard]] const SpokenText* spokenTextOf(const QObject& object) {
    for (const QObject* child : object.children()) {
        if (const auto* spoken = dynamic_cast<const SpokenText*>(child)) {
            return spoken;
        }
    }
    return nullptr;
}

/// A picture box as assistive tools see it. Qt's cache of accessible objects owns it.
class SpokenPicture : public QAccessibleWidget {
public:
    explicit SpokenPicture(PictureBox* box)
        : QAccessibleWidget(box, QAccessible::Graphic) {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        // Some tools read the value of a picture, others only its description.
        if (kind == QAccessible::Value || kind == QAccessible::Description) {
            if (const SpokenText* spoken = spokenTextOf(*object())) {
                return spoken->text();
            }
        }
        return QAccessibleWidget::text(kind);
    }
};

QAccessibleInterface* makeSpokenPicture(const QString&, QObject* object) {
    auto* box = qobject_cast<PictureBox*>(object);
    return box != nullptr ? new SpokenPicture(box) : nullptr;
}

} // namespace

void installSpokenPictures() {
    QAccessible::installFactory(&makeSpokenPicture);
}

void setSpokenText(PictureBox& box, std::function<QString()> text) {
    new SpokenText(box, std::move(text));
}

void announceSpokenText(PictureBox& box, const QString& text) {
    QAccessibleValueChangeEvent value(&box, text);
    QAccessible::updateAccessibility(&value);
    QAccessibleEvent description(&box, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&description);
    Q_EMIT box.spokenTextChanged(text);
}

} // namespace sixtrace
