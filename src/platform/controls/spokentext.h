// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

namespace sixtrace {

class PictureBox;

/// Lets assistive tools read the texts of picture boxes. Has to be called before a tool first looks at a box. Further
/// calls change nothing.
void installSpokenPictures();

/// Gives a picture box a text, which assistive tools read as its value and its description. `text` is called whenever a
/// tool asks, as long as the box exists.
void setSpokenText(PictureBox& box, std::function<QString()> text);

/// Tells assistive tools that the text of a picture box has changed to `text`.
void announceSpokenText(PictureBox& box, const QString& text);

} // namespace sixtrace
