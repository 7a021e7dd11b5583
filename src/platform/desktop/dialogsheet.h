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

/// The ground of the program's dialogs: a fixed size, a strip of 57 px with the buttons at the foot and a rule above
/// it, fields of 26 px and buttons of 88 by 28. A window makes its controls with these and gives them their names. A
/// letter in brackets in the caption of a label, "Parity (P):", leads with Alt to the control that the label belongs
/// to.
class DialogSheet : public QDialog {
public:
    static constexpr int kMargin = 16;
    static constexpr int kRowHeight = 26;
    static constexpr int kButtonWidth = 88;
    static constexpr int kButtonHeight = 28;
    static constexpr int kStripHeight = 57;

    DialogSheet(int width, int height);

    /// Shows the dialog over its owner and waits until it is hidden. A dialog is no child of its owner, since a walk
    /// over the owner's controls must not meet the dialog's.
    void showOver(QWidget* owner);

    /// Gives the dialog the captions of its design again: what was unloaded starts from its design at the next load.
    /// The first call notes them, so it comes before anything that relabels the dialog.
    void startFromDesign();

protected:
    [[nodiscard]] QLabel* addLabel(const char* name, const QString& caption, const QRect& place,
                                   Qt::Alignment alignment = Qt::AlignLeft, QWidget* parent = nullptr);
    [[nodiscard]] QLineEdit* addField(const char* name, const QRect& place, Qt::Alignment alignment = Qt::AlignLeft);
    /// A field that shows and takes nothing.
    [[nodiscard]] QLineEdit* addShownField(const char* name, const QRect& place,
                                           Qt::Alignment alignment = Qt::AlignLeft);
    [[nodiscard]] QPushButton* addButton(const char* name, const QString& caption, int left, int top);
    /// A button of the strip at the foot.
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
