// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>
#include <QImage>
#include <QWidget>

#include <array>

namespace sixtrace {

/// The pictures of a toolbar, each drawn from its SVG description at the display's own resolution when it is first
/// shown; disabled, they are of one grey.
class ToolPictures {
public:
    static constexpr std::size_t kPlaces = 17; ///< Numbered from 1 on.
    using Names = std::array<QString, kPlaces>;

    /// An empty name is a gap without a picture.
    explicit ToolPictures(const Names& names)
        : m_names(names) {}

    [[nodiscard]] bool isGap(std::size_t place) const { return m_names[place].isEmpty(); }
    /// The picture as it is to be shown, drawn anew where it is not there for this display yet.
    [[nodiscard]] const QImage& image(std::size_t place, bool enabled, double ratio);

private:
    using Images = std::array<QImage, kPlaces>;

    Names m_names;
    Images m_images;
    Images m_grey;
};

/// A flat picture button of the toolbar.
class ToolButton : public QAbstractButton {
public:
    /// With the picture at a place of `pictures`, which has to outlive the button.
    ToolButton(ToolPictures& pictures, std::size_t place, QWidget* parent);

    /// The ticked look follows a menu item's tick; a click does not change it.
    void setTicked(bool ticked);
    [[nodiscard]] bool isTicked() const { return m_ticked; }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    ToolPictures& m_pictures;
    std::size_t m_place;
    bool m_ticked = false;
};

/// The row of sixteen tool buttons, numbered from 1. Buttons 1, 5, 10 and 15 are gaps: they are there and do nothing.
class ToolBar : public QWidget {
    Q_OBJECT
public:
    static constexpr int kButtons = static_cast<int>(ToolPictures::kPlaces) - 1;

    ToolBar(const QString& name, const ToolPictures::Names& pictures, QWidget* parent);

    /// Button 1 to 16.
    [[nodiscard]] ToolButton& button(int index) const { return *m_buttons[static_cast<std::size_t>(index)]; }
    /// A picture has no caption: its tool tip is its accessible name too.
    void setToolTipText(int index, const QString& text);

Q_SIGNALS:
    void ButtonClick(int index);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ToolPictures m_pictures;
    std::array<ToolButton*, kButtons + 1> m_buttons{};
};

} // namespace sixtrace
