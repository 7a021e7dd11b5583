// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QObject;

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

} // namespace sixtrace
