// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>
#include <QWidget>

#include <array>
#include <memory>

class QSvgRenderer;

namespace sixtrace {

/// A flat picture button of the toolbar. Its picture is drawn from its description at the display's own resolution;
/// disabled, it is of one grey.
class ToolButton : public QAbstractButton {
public:
    /// `picture` names an SVG description; empty for a gap.
    ToolButton(const QString& picture, QWidget* parent);
    ~ToolButton() override;

    /// The ticked look follows a menu item's tick; a click does not change it.
    void setTicked(bool ticked);
    [[nodiscard]] bool isTicked() const { return m_ticked; }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    std::unique_ptr<QSvgRenderer> m_picture;
    std::unique_ptr<QSvgRenderer> m_greyPicture; ///< made when the button is first shown disabled
    QByteArray m_description;
    bool m_ticked = false;
};

/// The row of sixteen tool buttons, numbered from 1. Buttons 1, 5, 10 and 15 are gaps: they are there and do nothing.
class ToolBar : public QWidget {
    Q_OBJECT
public:
    static constexpr int kButtons = 16;

    /// `pictureOf` gives the SVG description's name for a button, or nothing for a gap.
    using PictureNames = std::array<QString, kButtons + 1>;
    ToolBar(const QString& name, const PictureNames& pictures, QWidget* parent);

    /// Button 1 to 16.
    [[nodiscard]] ToolButton& button(int index) const { return *m_buttons[static_cast<std::size_t>(index)]; }
    /// A picture has no caption: its tool tip is its accessible name too.
    void setToolTipText(int index, const QString& text);

Q_SIGNALS:
    void ButtonClick(int index);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::array<ToolButton*, kButtons + 1> m_buttons{};
};

} // namespace sixtrace
