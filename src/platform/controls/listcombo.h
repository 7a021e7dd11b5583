// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>

namespace sixtrace {

/// A drop-down list of fixed entries that tells apart who chooses: a choice by the user raises Click; setting the index
/// in code raises it when the index changes; giving it a text in code selects the entry and raises nothing.
class ListCombo : public QComboBox {
    Q_OBJECT
public:
    explicit ListCombo(QWidget* parent);

    [[nodiscard]] int ListIndex() const { return currentIndex(); }
    void setListIndex(int index);
    [[nodiscard]] int ListCount() const { return count(); }
    [[nodiscard]] QString List(int index) const { return itemText(index); }
    /// Rewrites an entry in place; the choice stays.
    void setList(int index, const QString& text);
    [[nodiscard]] QString Text() const { return currentText(); }
    /// Selects the first entry of that text; where there is none the choice stays.
    void setText(const QString& text);

Q_SIGNALS:
    void Click();

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace sixtrace
