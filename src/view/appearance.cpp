// SPDX-License-Identifier: MIT
#include "view/appearance.h"

#include "capture/settings.h"
#include "platform/dialogs.h"
#include "platform/numbers.h"
#include "platform/picturebox.h"

#include <QAction>
#include <QEvent>

namespace sixtrace {

namespace {
const QString& common() {
    static const QString section = QStringLiteral("Common");
    return section;
}
} // namespace

Appearance::Appearance(publicM& model, const Widgets& widgets, Dialogs& dialogs, AppearanceNeighbours& neighbours,
                       QObject* parent)
    : QObject(parent)
    , m_model(model)
    , m_widgets(widgets)
    , m_dialogs(dialogs)
    , m_neighbours(neighbours) {
    connect(m_widgets.Picture2, &PictureBox::doubleClicked, this, &Appearance::Picture2_DblClick);
    m_widgets.Picture3->installEventFilter(this);
}

bool Appearance::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_widgets.Picture3 && event->type() == QEvent::MouseButtonDblClick) {
        Picture3_DblClick();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void Appearance::writeColour(const QString& section, const QString& key, Colour colour) const {
    writeIni(section, key, Str(colour), m_model.IniFile);
}

void Appearance::Picture2_DblClick() {
    if (m_model.AutoRun) {
        return;
    }
    const auto colour = m_dialogs.ShowColor(m_neighbours.screenColor());
    if (!colour) {
        return;
    }
    m_model.BackColor = *colour;
    m_neighbours.setScreenColor(*colour);
    m_neighbours.PicReDrawT();
    writeColour(QStringLiteral("Pic2Color"), QStringLiteral("BackColor"), *colour);
}

void Appearance::Picture3_DblClick() {
    if (m_model.AutoRun) {
        return;
    }
    const auto colour = m_dialogs.ShowColor(m_neighbours.stripColor());
    if (!colour) {
        return;
    }
    m_neighbours.setStripColor(*colour);
    writeColour(QStringLiteral("Pic3Color"), QStringLiteral("back"), *colour);
}

void Appearance::mnubackgroundcolor_Click() {
    Picture2_DblClick();
}

void Appearance::MnuGridColor_Click() {
    if (m_model.AutoRun) {
        return;
    }
    const auto colour = m_dialogs.ShowColor(m_model.GridColor);
    if (!colour) {
        return;
    }
    m_model.GridColor = *colour;
    m_widgets.Picture2->picture().ForeColor = *colour;
    m_neighbours.PicReDrawT();
    writeColour(QStringLiteral("GridColor"), QStringLiteral("Grid"), *colour);
}

void Appearance::mnuGraticule_Click() {
    setGraticule(!graticule());
    // Unlike the other choices it redraws during timed acquisition too.
    m_neighbours.PicReDrawT();
    writeIni(common(), QStringLiteral("Graticule"), booleanText(graticule()), m_model.IniFile);
}

void Appearance::mnuLine_Click() {
    chooseLines(true);
}
void Appearance::mnuPoint_Click() {
    chooseLines(false);
}

void Appearance::chooseLines(bool line) {
    setLine(line);
    setPoint(!line);
    writeIni(common(), QStringLiteral("DrawLine"), booleanText(line), m_model.IniFile);
    writeIni(common(), QStringLiteral("DrawPoint"), booleanText(!line), m_model.IniFile);
    if (!m_model.AutoRun) {
        m_neighbours.PicReDrawT();
    }
}

bool Appearance::graticule() const {
    return m_widgets.mnuGraticule->isChecked();
}
bool Appearance::line() const {
    return m_widgets.mnuLine->isChecked();
}
void Appearance::setGraticule(bool ticked) {
    m_widgets.mnuGraticule->setChecked(ticked);
}
void Appearance::setLine(bool ticked) {
    m_widgets.mnuLine->setChecked(ticked);
}
void Appearance::setPoint(bool ticked) {
    m_widgets.mnuPoint->setChecked(ticked);
}

} // namespace sixtrace
