// SPDX-License-Identifier: MIT
#include "view/appearance.h"

#include "capture/mdllan.h"
#include "capture/settings.h"
#include "platform/desktop/dialogs.h"
#include "platform/text/numbers.h"

namespace sixtrace {

namespace {

void writeColour(const publicM& model, const Setting& setting, Colour colour) {
    writeIni(setting, Str(colour), model.IniFile);
}

} // namespace

QString Appearance::words(QStringView chinese, QStringView english) const {
    return (languageOf(m_model) == Language::Chinese ? chinese : english).toString();
}

void Appearance::Picture2_DblClick() {
    if (m_model.AutoRun) {
        return;
    }
    const auto colour = m_dialogs.ShowColor(m_screen.screenColor, words(u"背景颜色", u"Background Color"));
    if (!colour) {
        return;
    }
    m_model.BackColor = *colour;
    m_pictures.setScreenColor(*colour);
    m_pictures.PicReDrawT();
    writeColour(m_model, setting::kScreenColor, *colour);
}

void Appearance::Picture3_DblClick() {
    if (m_model.AutoRun) {
        return;
    }
    const auto colour = m_dialogs.ShowColor(m_screen.stripColor, words(u"标记栏颜色", u"Marker Strip Color"));
    if (!colour) {
        return;
    }
    m_screen.stripColor = *colour;
    writeColour(m_model, setting::kStripColor, *colour);
}

void Appearance::image1_DblClick(int Index) {
    if (m_model.AutoRun) {
        return;
    }
    const auto colour = m_dialogs.ShowColor(
        m_model.LineColor[Index], words(u"%1 波形颜色", u"Trace Color of %1").arg(channelLabel(Index).trimmed()));
    if (!colour) {
        return;
    }
    m_model.LineColor[Index] = *colour;
    m_screen.markers[Index].back = *colour;
    m_pictures.PicReDrawT();
    writeColour(m_model, setting::kLineColor[Index], *colour);
}

void Appearance::MnuGridColor_Click() {
    if (m_model.AutoRun) {
        return;
    }
    const auto colour = m_dialogs.ShowColor(m_model.GridColor, words(u"网格颜色", u"Grid Color"));
    if (!colour) {
        return;
    }
    m_model.GridColor = *colour;
    m_pictures.setPenColor(*colour);
    m_pictures.PicReDrawT();
    writeColour(m_model, setting::kGridColor, *colour);
}

void Appearance::mnuGraticule_Click() {
    const bool dotted = m_screen.graticule != Graticule::Dotted;
    m_screen.graticule = dotted ? Graticule::Dotted : Graticule::Cross;
    // Unlike the other choices it redraws during timed acquisition too.
    m_pictures.PicReDrawT();
    writeIni(setting::kGraticule, booleanText(dotted), m_model.IniFile);
}

void Appearance::chooseStyle(TraceStyle style) {
    m_screen.lineTicked = style == TraceStyle::Lines;
    m_screen.pointTicked = !m_screen.lineTicked;
    writeIni(setting::kDrawLine, booleanText(m_screen.lineTicked), m_model.IniFile);
    writeIni(setting::kDrawPoint, booleanText(m_screen.pointTicked), m_model.IniFile);
    if (!m_model.AutoRun) {
        m_pictures.PicReDrawT();
    }
}

} // namespace sixtrace
