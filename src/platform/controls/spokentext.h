// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

namespace sixtrace {

class PictureBox;

/// Makes picture boxes show assistive tools their words. Has to be done before a tool first looks at one; a second time
/// changes nothing.
void installSpokenPictures();

/// Gives a picture box words: assistive tools read `text` as its value and description, made anew whenever they ask.
/// The function lives as long as the widget.
void setSpokenText(PictureBox& box, std::function<QString()> text);

/// Tells assistive tools that the words of a picture are now these.
void announceSpokenText(PictureBox& box, const QString& text);

} // namespace sixtrace
