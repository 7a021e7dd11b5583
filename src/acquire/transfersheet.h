// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop/dialogsheet.h"

#include <QRect>
#include <QString>

#include <optional>

class QLineEdit;
class QProgressBar;
class QPushButton;

namespace sixtrace {

class Dialogs;

/// Places in pixels that the two transfer windows share: captions at the left, fields from x = 120 to 464, and rows 36
/// pixels apart.
namespace rows {
inline constexpr int kWidth = 480;
inline constexpr int kFieldLeft = 120;
inline constexpr int kFieldRight = 464;
inline constexpr int kShortField = 88;
inline constexpr int kPitch = 36;
inline constexpr int kButtonColumn = 376;

[[nodiscard]] constexpr int top(int row) {
    return 16 + kPitch * row;
}
[[nodiscard]] constexpr QRect caption(int row) {
    return {16, top(row), 100, 26};
}
[[nodiscard]] constexpr QRect field(int row) {
    return {kFieldLeft, top(row), kFieldRight - kFieldLeft, 26};
}
/// A field with a button to its right.
[[nodiscard]] constexpr QRect fieldBesideButton(int row) {
    return {kFieldLeft, top(row), 248, 26};
}
[[nodiscard]] constexpr QRect shortField(int left, int row) {
    return {left, top(row), kShortField, 26};
}
} // namespace rows

/// What the two transfer windows have in common: the fields of the file, the bar with its amounts, and Cancel, which
/// the close box and the Escape key stand for too.
class TransferSheet : public DialogSheet {
public:
    virtual void Command1_Click() = 0;
    virtual void CancelButton_Click() = 0;

protected:
    explicit TransferSheet(int height)
        : DialogSheet(rows::kWidth, height) {}

    void reject() override { CancelButton_Click(); }

    /// Adds the rows of name and path, with Command1.
    void addFileRows();
    /// Adds the bar and, below it, the two amounts.
    void addProgressRow(int row);
    /// Adds the button that starts and CancelButton; returns the first.
    [[nodiscard]] QPushButton* addEndButtons(const char* startName, const QString& startCaption);

    /// Sets the bar to 0 of `maximum`. A maximum of 0 gives an empty bar.
    void startBar(int maximum);
    /// Lets the user choose the path of the file; nothing when the dialog is cancelled.
    [[nodiscard]] std::optional<QString> choosePath(Dialogs& dialogs, const QString& initialFolder) const;
    /// Makes the program's own folder `own` when the path leads there: both a dialog that starts in it and the file
    /// need it.
    void makeOwnFolder(const QString& own) const;

    QLineEdit* m_Text1 = nullptr;
    QLineEdit* m_Text2 = nullptr;
    QLineEdit* m_Text5 = nullptr;
    QLineEdit* m_Text6 = nullptr;
    QProgressBar* m_ProgressBar1 = nullptr;
};

} // namespace sixtrace
