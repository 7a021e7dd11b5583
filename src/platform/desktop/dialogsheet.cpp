// SPDX-License-Identifier: MIT
#include "platform/desktop/dialogsheet.h"

#include "platform/controls/look.h"

#include <QEventLoop>
#include <QHideEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRegularExpression>
#include <QShortcut>
#include <QShowEvent>
#include <QWindow>

#include <utility>

namespace sixtrace {

DialogSheet::DialogSheet(int width, int height) {
    setFixedSize(width, height);
    setModal(true);
}

void DialogSheet::showOver(QWidget* owner) {
    if (isVisible()) {
        return; // the caller that has shown it still waits
    }
    if (owner != nullptr) {
        winId(); // creates the window of the desktop, which windowHandle() then gives
        windowHandle()->setTransientParent(owner->window()->windowHandle());
        move(owner->window()->frameGeometry().center() - rect().center());
    }
    // After the dialog is hidden it may be shown again before this call has returned: events that run meanwhile can do
    // that. Each call waits for its own end.
    QEventLoop untilHidden;
    QEventLoop* const before = std::exchange(m_untilHidden, &untilHidden);
    show();
    untilHidden.exec();
    m_untilHidden = before;
}

void DialogSheet::startFromDesign() {
    if (m_design) {
        m_design->restore(*this);
    } else {
        m_design.emplace(*this);
    }
}

void DialogSheet::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!event->spontaneous()) {
        takeLetters();
    }
}

void DialogSheet::takeLetters() {
    qDeleteAll(findChildren<QShortcut*>(QString(),
                                        Qt::FindDirectChildrenOnly)); // they belong to the captions of another language
    static const QRegularExpression bracket(QStringLiteral("\\(([A-Z])\\)"));
    const auto labels = findChildren<QLabel*>();
    for (const QLabel* label : labels) {
        QWidget* const control = label->buddy();
        const QRegularExpressionMatch letter = bracket.match(label->text());
        if (control == nullptr || !letter.hasMatch()) {
            continue;
        }
        auto* key = new QShortcut(QKeySequence(QStringLiteral("Alt+") + letter.captured(1)), this);
        connect(key, &QShortcut::activated, control, [control] {
            if (control->isEnabled()) {
                control->setFocus(Qt::ShortcutFocusReason);
            }
        });
    }
}

void DialogSheet::hideEvent(QHideEvent* event) {
    QDialog::hideEvent(event);
    if (m_untilHidden != nullptr && !event->spontaneous()) {
        m_untilHidden->quit();
    }
}

QLabel* DialogSheet::addLabel(const char* name, const QString& caption, const QRect& place, Qt::Alignment alignment,
                              QWidget* parent) {
    auto* label = new QLabel(caption, parent != nullptr ? parent : this);
    label->setObjectName(QLatin1String(name));
    label->setAlignment(alignment | Qt::AlignVCenter);
    label->setGeometry(place);
    return label;
}

QLineEdit* DialogSheet::addField(const char* name, const QRect& place, Qt::Alignment alignment) {
    auto* field = new QLineEdit(this);
    field->setObjectName(QLatin1String(name));
    field->setTextMargins(4, 0, 4, 0);
    field->setAlignment(alignment | Qt::AlignVCenter);
    field->setGeometry(place);
    return field;
}

QLineEdit* DialogSheet::addShownField(const char* name, const QRect& place, Qt::Alignment alignment) {
    QLineEdit* field = addField(name, place, alignment);
    field->setReadOnly(true);
    field->setFocusPolicy(Qt::NoFocus);
    QPalette palette = field->palette();
    palette.setColor(QPalette::Base, QColor::fromRgb(bench::kReadOnlyField));
    field->setPalette(palette);
    return field;
}

QPushButton* DialogSheet::addButton(const char* name, const QString& caption, int left, int top) {
    auto* button = new QPushButton(caption, this);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    button->setGeometry(left, top, kButtonWidth, kButtonHeight);
    return button;
}

QPushButton* DialogSheet::addStripButton(const char* name, const QString& caption, int left) {
    return addButton(name, caption, left, height() - kStripHeight + (kStripHeight - kButtonHeight) / 2);
}

void DialogSheet::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(0, height() - kStripHeight, width(), 1, QColor::fromRgb(bench::kRule));
}

} // namespace sixtrace
