// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"

#include <QObject>

class QAction;
class QWidget;

namespace sixtrace {

class Dialogs;
class PictureBox;

/// What the appearance asks of the other areas.
class AppearanceNeighbours {
public:
    AppearanceNeighbours() = default;
    AppearanceNeighbours(const AppearanceNeighbours&) = delete;
    AppearanceNeighbours& operator=(const AppearanceNeighbours&) = delete;
    virtual ~AppearanceNeighbours() = default;

    virtual void PicReDrawT() = 0;
    /// Ground of the screen and of everything that shares it.
    virtual void setScreenColor(Colour colour) = 0;
    [[nodiscard]] virtual Colour screenColor() const = 0;
    virtual void setStripColor(Colour colour) = 0;
    [[nodiscard]] virtual Colour stripColor() const = 0;
};

/// The user's choices of how the screen looks: colours, dotted graticule or cross, lines or points. Each takes effect
/// at once and is in the settings file at once. The ticks of the menu are the state; the toolbar shows the same ticks.
/// Owned by the window, as are its widgets.
class Appearance : public QObject {
public:
    struct Widgets {
        PictureBox* Picture2;
        QWidget* Picture3;
        QAction* mnuGraticule;
        QAction* mnuLine;
        QAction* mnuPoint;
    };

    Appearance(publicM& model, const Widgets& widgets, Dialogs& dialogs, AppearanceNeighbours& neighbours,
               QObject* parent);

    void Picture2_DblClick();
    void Picture3_DblClick();
    void mnubackgroundcolor_Click();
    void MnuGridColor_Click();
    void mnuGraticule_Click();
    void mnuLine_Click();
    void mnuPoint_Click();

    [[nodiscard]] bool graticule() const;
    [[nodiscard]] bool line() const;
    void setGraticule(bool ticked);
    void setLine(bool ticked);
    void setPoint(bool ticked);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void writeColour(const QString& section, const QString& key, Colour colour) const;
    void chooseLines(bool line);

    publicM& m_model;
    Widgets m_widgets;
    Dialogs& m_dialogs;
    AppearanceNeighbours& m_neighbours;
};

} // namespace sixtrace
