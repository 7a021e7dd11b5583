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
    None,    ///< lists, text boxes, pictures, toolbars: left alone
    Control, ///< buttons, labels, option buttons, check boxes
    Menu,
    Frame,
    ComboBox, ///< has entries in place of a caption
};

[[nodiscard]] CaptionKind captionKind(const QObject& control);
/// The caption of a control of the kinds Control, Menu and Frame.
[[nodiscard]] QString captionOf(const QObject& control);
void setCaptionOf(QObject& control, const QString& caption);

/// The captions of a window, its controls and the entries of its combo boxes as they stood when they were noted.
class NotedCaptions {
public:
    explicit NotedCaptions(const QWidget& form);

    /// Gives the window's present controls their noted captions. A combo box whose entries are no longer as many keeps
    /// them.
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
