// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>
#include <QImage>
#include <QWidget>

#include <array>
#include <future>

namespace sixtrace {

/// The pictures of a toolbar, drawn from their SVG descriptions at the display's own resolution; disabled, they are of
/// one grey. They are begun at once, beside whatever else is done: the start of the program waits for fonts meanwhile.
class ToolPictures {
public:
    static constexpr std::size_t kPlaces = 17; ///< Numbered from 1 on.
    using Names = std::array<QString, kPlaces>;

    /// For a display of `ratio` pixels to a screen unit. An empty name is a gap without a picture.
    ToolPictures(const Names& names, double ratio);

    [[nodiscard]] bool isGap(std::size_t place) const { return m_names[place].isEmpty(); }
    /// The picture as it is to be shown, drawn anew where it is not there for this display yet.
    [[nodiscard]] const QImage& image(std::size_t place, bool enabled, double ratio);

private:
    using Images = std::array<QImage, kPlaces>;

    Names m_names;
    std::future<Images> m_coming;
    Images m_images;
    Images m_grey; ///< each drawn when its button is first shown disabled
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
