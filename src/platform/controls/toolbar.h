// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>
#include <QImage>
#include <QWidget>

#include <array>
#include <utility>

namespace sixtrace {

/// The pictures of a toolbar. Each is drawn from its SVG file when it is first shown, at the resolution of the display.
/// The picture of a disabled button is grey.
class ToolPictures {
public:
    static constexpr std::size_t kPlaces = 17; ///< place 0 stays empty: buttons are counted from 1
    using Names = std::array<QString, kPlaces>;

    /// Names of SVG files, by place. An empty name makes a gap without a picture.
    explicit ToolPictures(Names names)
        : m_names(std::move(names)) {}

    [[nodiscard]] bool isGap(std::size_t place) const { return m_names[place].isEmpty(); }
    /// The picture for a display of `ratio` pixels to the unit. It is drawn when it is first asked for, and drawn again
    /// when the ratio has changed. Empty where the file cannot be read.
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
    /// The button shows the picture at `place` of `pictures`, which has to outlive it.
    ToolButton(ToolPictures& pictures, std::size_t place, QWidget* parent);

    /// Shows or hides the ticked look. A click does not change it.
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

/// A row of sixteen tool buttons, numbered from 1. A button without a picture is a gap: it is there and does nothing.
class ToolBar : public QWidget {
    Q_OBJECT
public:
    static constexpr int kButtons = static_cast<int>(ToolPictures::kPlaces) - 1;

    ToolBar(const QString& name, const ToolPictures::Names& pictures, QWidget* parent);

    /// `index` is 1 to 16.
    [[nodiscard]] ToolButton& button(int index) const { return *m_buttons[static_cast<std::size_t>(index)]; }
    /// Sets the tool tip of a button, and its accessible name: the button has no caption.
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
