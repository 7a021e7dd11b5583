// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>

namespace sixtrace {

/// A drop-down list of fixed entries. Three ways to choose an entry differ in whether they raise Click: a choice by the
/// user always does; `setListIndex` does when the index changes; `setText` does not.
class ListCombo : public QComboBox {
    Q_OBJECT
public:
    explicit ListCombo(QWidget* parent);

    [[nodiscard]] int ListIndex() const { return currentIndex(); }
    void setListIndex(int index);
    [[nodiscard]] int ListCount() const { return count(); }
    [[nodiscard]] QString List(int index) const { return itemText(index); }
    /// Replaces the text of an entry. The choice stays.
    void setList(int index, const QString& text);
    [[nodiscard]] QString Text() const { return currentText(); }
    /// Selects the first entry with this text. Where there is none the choice stays.
    void setText(const QString& text);

Q_SIGNALS:
    void Click();

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace sixtrace
