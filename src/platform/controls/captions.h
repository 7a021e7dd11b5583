// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QString>
#include <QStringList>

#include <vector>

class QWidget;

namespace sixtrace {

/// The kinds of controls whose captions a language file may replace.
enum class CaptionKind {
    None,    ///< lists, text boxes, pictures, toolbars: a language file does not change them
    Control, ///< buttons, labels, option buttons, check boxes
    Menu,
    Frame,
    ComboBox, ///< has entries instead of a caption
};

[[nodiscard]] CaptionKind captionKind(const QObject& control);
/// The caption of a control of the kinds Control, Menu and Frame.
[[nodiscard]] QString captionOf(const QObject& control);
void setCaptionOf(QObject& control, const QString& caption);

/// Keeps the captions that a window, its controls and the entries of its combo boxes have when the object is made.
class NotedCaptions {
public:
    explicit NotedCaptions(const QWidget& form);

    /// Gives the window and its controls these captions again. A combo box that now has more or fewer entries is left
    /// as it is.
    void restore(QWidget& form) const;

private:
    struct Noted {
        QPointer<QObject> control;
        QString caption;
        QStringList entries;
    };

    QString m_title;
    std::vector<Noted> m_controls;
};

} // namespace sixtrace
