// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/captions.h"

#include <QDialog>

#include <optional>

class QEventLoop;
class QLabel;
class QLineEdit;
class QPushButton;

namespace sixtrace {

/// The base class of the program's dialogs. A dialog has a fixed size and along its lower edge a strip for the buttons,
/// with a line above it. Derived classes make their controls by the functions below, which give them the usual sizes.
/// Where the caption of a label holds a letter in brackets, as in "Parity (P):", Alt and that letter move the focus to
/// the control that the label belongs to. All sizes are pixels.
class DialogSheet : public QDialog {
public:
    static constexpr int kMargin = 16;
    static constexpr int kRowHeight = 26;
    static constexpr int kButtonWidth = 88;
    static constexpr int kButtonHeight = 28;
    static constexpr int kStripHeight = 57;

    DialogSheet(int width, int height);

    /// Shows the dialog over `owner` and waits until it is hidden. Does nothing while the dialog is shown. The dialog
    /// is not a child of its owner: whoever goes through the controls of the owner must not meet those of the dialog.
    void showOver(QWidget* owner);

    /// Gives the dialog the captions of its design again, which every load of a window begins with. The first call
    /// notes the present captions as those of the design, so it has to come before any change of a caption.
    void startFromDesign();

protected:
    [[nodiscard]] QLabel* addLabel(const char* name, const QString& caption, const QRect& place,
                                   Qt::Alignment alignment = Qt::AlignLeft, QWidget* parent = nullptr);
    [[nodiscard]] QLineEdit* addField(const char* name, const QRect& place, Qt::Alignment alignment = Qt::AlignLeft);
    /// A field that only shows a text: the user cannot type into it.
    [[nodiscard]] QLineEdit* addShownField(const char* name, const QRect& place,
                                           Qt::Alignment alignment = Qt::AlignLeft);
    [[nodiscard]] QPushButton* addButton(const char* name, const QString& caption, int left, int top);
    /// A button in the strip along the lower edge.
    [[nodiscard]] QPushButton* addStripButton(const char* name, const QString& caption, int left);

    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void takeLetters();

    QEventLoop* m_untilHidden = nullptr;
    std::optional<NotedCaptions> m_design;
};

} // namespace sixtrace
