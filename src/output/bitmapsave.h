// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QImage;
class QWidget;

namespace sixtrace {

class Dialogs;
class PictureBox;

/// Saves the screen and the marker strip to its left as a bitmap file. The main window owns it and its widgets.
class BitmapSave : public QObject {
public:
    struct Widgets {
        QWidget* Picture3;
        PictureBox* Picture2;
    };

    BitmapSave(const Widgets& widgets, Dialogs& dialogs, QObject* parent);

    /// Asks for a name and writes the file, whole or not at all. A failure shows no message.
    void mnuSaveAs_Click();

private:
    [[nodiscard]] QImage picture() const;

    Widgets m_widgets;
    Dialogs& m_dialogs;
};

} // namespace sixtrace
