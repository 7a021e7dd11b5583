// SPDX-License-Identifier: MIT
#include "shell/frmcom.h"

#include "output/bitmapsave.h"
#include "output/datatable.h"
#include "output/printing.h"
#include "platform/listcombo.h"
#include "platform/look.h"
#include "platform/toolbar.h"
#include "shell/everydayways.h"
#include "shell/frmmessageout.h"
#include "shell/helpcommands.h"
#include "shell/languagemenus.h"
#include "shell/mainmenu.h"
#include "shell/programicon.h"
#include "shell/screenfit.h"
#include "shell/startup.h"
#include "view/appearance.h"
#include "view/cursors.h"
#include "view/markerstrip.h"
#include "view/screenarea.h"

#include <QAction>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>

namespace sixtrace {

namespace {

constexpr int kMenuBarHeight = 26;
constexpr int kStopButton = 14;

struct ToolCommand {
    int button;
    const char16_t* item;
};

/// Which menu item a tool button stands for. Buttons 1, 5, 10 and 15 stand for none.
constexpr std::array kToolCommands{
    ToolCommand{2, u"mnuOpen"},     ToolCommand{3, u"mnuPrintView"}, ToolCommand{4, u"mnuPrint"},
    ToolCommand{6, u"mnuTabular"},  ToolCommand{7, u"mnuGraticule"}, ToolCommand{8, u"mnuLine"},
    ToolCommand{9, u"mnuPoint"},    ToolCommand{11, u"mnuComSet"},   ToolCommand{12, u"mnuAcquire"},
    ToolCommand{13, u"mnuautoget"}, ToolCommand{14, u"mnustop"},     ToolCommand{16, u"mnuContent"},
};

} // namespace

FrmCom::FrmCom(publicM& model, FrmComSurroundings surroundings)
    : m_model(model)
    , m_surroundings(std::move(surroundings)) {
    setObjectName(QStringLiteral("FrmCom"));
    setWindowTitle(QStringLiteral("通讯"));
    setWindowIcon(programIcon());
    menuBar()->setNativeMenuBar(false);
    menuBar()->setFixedHeight(kMenuBarHeight);
    fillMainMenu(*menuBar());
    auto* client = new QWidget(this);
    m_controls = makeFrmComControls(*client);
    fitToScreen(*this, *client, {kClientWidth, kClientHeight}, kMenuBarHeight, screen()->availableGeometry());
    // Keys reach no control until the user picks one, or walks to the first with Tab.
    client->setFocus();
    makeAreas();
    connectCommands();
    addEverydayWays(*this,
                    {m_model, m_controls, *m_cursors, *m_markers, *m_loading, action(QStringLiteral("mnuChinese"))});
    Form_Load();
}

FrmCom::~FrmCom() = default;

QAction& FrmCom::action(const QString& name) const {
    return *menuBar()->findChild<QAction*>(name);
}

void FrmCom::makeAreas() {
    const FrmComControls& c = m_controls;
    m_channelList =
        new ChannelList(m_model, m_selection,
                        {c.List1, c.Frame1, c.Frame2, c.Frame3, c.Frame4, c.LabPe, c.labPPe, c.LabMaxx}, m_links, this);
    m_loading = new CaptureLoading(m_model, m_selection, m_surroundings.dialogs, m_links, m_links, *c.Label4,
                                   m_surroundings.applicationFolder, this);
    m_screen = new ScreenArea(
        m_model, {c.Picture2, c.picHidden}, [this] { return m_links.frameInputs(); }, this);
    m_markers = new MarkerStrip(m_model, m_selection, {c.Picture3, c.image1, c.ZLabel, c.image2},
                                m_surroundings.dialogs, m_links, this);
    m_timeVolt = new TimeVoltControls(
        m_model, m_selection, {c.Combo1, c.Combo2, c.UpDown1, c.UpDown2, c.VScroll1, c.CenterPoint}, m_links, this);
    m_cursors = new Cursors(m_model,
                            {.Picture2 = c.Picture2,
                             .Line1 = c.Line1,
                             .Line2 = c.Line2,
                             .Combo3 = c.Combo3,
                             .voltageValues = {c.LabY1, c.LabY2},
                             .voltageUnits = {c.LabYY11, c.LabYY22},
                             .LabDy = c.LabDy,
                             .timeValues = {c.LabX1, c.LabX2},
                             .timeUnits = {c.LabXX11, c.LabXX22},
                             .LabDx = c.LabDx,
                             .otherVoltageLabels = {c.LabYY1, c.LabYY2, c.LabDDYY, c.Labddy},
                             .otherTimeLabels = {c.LabXX1, c.LabXX2, c.LabDDXX, c.labDDx}},
                            m_links, this);
    m_appearance = new Appearance(m_model,
                                  {c.Picture2, c.Picture3, &action(QStringLiteral("mnuGraticule")),
                                   &action(QStringLiteral("mnuLine")), &action(QStringLiteral("mnuPoint"))},
                                  m_surroundings.dialogs, m_links, this);
    m_languages = new LanguageMenus(
        m_model, {this, c.Toolbar1, &action(QStringLiteral("mnuEnglish")), &action(QStringLiteral("mnuChinese"))},
        [this] { m_channelList->List1_Click(); }, this);
    m_table = new DataTable(m_model, m_surroundings.dialogs, this);
    m_help = new HelpCommands(
        m_model, {m_surroundings.dialogs, m_surroundings.applicationFolder, m_surroundings.openFile}, *this);
    m_links.connectAreas({.channelList = m_channelList,
                          .screen = m_screen,
                          .markers = m_markers,
                          .timeVolt = m_timeVolt,
                          .cursors = m_cursors,
                          .appearance = m_appearance,
                          .loading = m_loading,
                          .table = m_table,
                          .Label4 = c.Label4,
                          .Label5 = c.Label5,
                          .CenterPoint = c.CenterPoint,
                          .VScroll1 = c.VScroll1,
                          .Toolbar1 = c.Toolbar1,
                          .messageOut = [this](const QString& text) { messageOut().Label1().setText(text); }});
    m_acquisition =
        new Acquisition(m_model,
                        {.mnuComSet = &action(QStringLiteral("mnuComSet")),
                         .mnuAcquire = &action(QStringLiteral("mnuAcquire")),
                         .mnuautoget = &action(QStringLiteral("mnuautoget")),
                         .mnustop = &action(QStringLiteral("mnustop")),
                         .mnurun = &action(QStringLiteral("mnurun")),
                         .intervals = {&action(QStringLiteral("mnuone")), &action(QStringLiteral("mnutwo")),
                                       &action(QStringLiteral("mnuthree")), &action(QStringLiteral("mnufive"))}},
                        m_surroundings.dialogs, m_links, m_surroundings.acquisition, this);
    m_printing = new Printing(m_model,
                              {m_surroundings.dialogs, m_surroundings.printers, [this] { return m_links.pageInputs(); },
                               [this] { return action(QStringLiteral("mnuPrintSet")).iconText(); }},
                              *this);
    m_bitmapSave = new BitmapSave({c.Picture3, c.Picture2}, m_surroundings.dialogs, this);
}

void FrmCom::connectCommands() {
    const auto connectItem = [this](const QString& name, auto* area, auto handler) {
        connect(&action(name), &QAction::triggered, area, handler);
    };
    connectItem(QStringLiteral("mnuOpen"), m_loading, &CaptureLoading::mnuOpen_Click);
    connectItem(QStringLiteral("mnuNew"), m_loading, &CaptureLoading::mnuNew_Click);
    connectItem(QStringLiteral("mnuTabular"), m_table, &DataTable::mnuTabular_Click);
    connectItem(QStringLiteral("MnuGridColor"), m_appearance, &Appearance::MnuGridColor_Click);
    connectItem(QStringLiteral("mnubackgroundcolor"), m_appearance, &Appearance::mnubackgroundcolor_Click);
    connectItem(QStringLiteral("mnuGraticule"), m_appearance, &Appearance::mnuGraticule_Click);
    connectItem(QStringLiteral("mnuLine"), m_appearance, &Appearance::mnuLine_Click);
    connectItem(QStringLiteral("mnuPoint"), m_appearance, &Appearance::mnuPoint_Click);
    connectItem(QStringLiteral("mnuContent"), m_help, &HelpCommands::mnuContent_Click);
    connectItem(QStringLiteral("mnuAbout"), m_help, &HelpCommands::mnuAbout_Click);
    connectItem(QStringLiteral("mnuPageSet"), m_printing, &Printing::mnuPageSet_Click);
    connectItem(QStringLiteral("mnuPrintView"), m_printing, &Printing::mnuPrintView_Click);
    connectItem(QStringLiteral("mnuPrint"), m_printing, &Printing::mnuPrint_Click);
    connectItem(QStringLiteral("mnuPrintSet"), m_printing, &Printing::mnuPrintSet_Click);
    connectItem(QStringLiteral("mnuSaveAs"), m_bitmapSave, &BitmapSave::mnuSaveAs_Click);
    connectItem(QStringLiteral("mnuExit"), this, &FrmCom::mnuExit_Click);
    connect(m_controls.Toolbar1, &ToolBar::ButtonClick, this, &FrmCom::Toolbar1_ButtonClick);
    showTicksOnToolbar();
}

void FrmCom::showTicksOnToolbar() {
    for (const ToolCommand& command : kToolCommands) {
        if (command.button == kStopButton) {
            continue; // Stop is a push: its menu item's tick is not shown
        }
        ToolButton* button = &m_controls.Toolbar1->button(command.button);
        QAction* item = &action(QString::fromUtf16(command.item));
        button->setTicked(item->isChecked());
        connect(item, &QAction::toggled, button, [button](bool ticked) { button->setTicked(ticked); });
    }
}

void FrmCom::Toolbar1_ButtonClick(int index) {
    for (const ToolCommand& command : kToolCommands) {
        if (command.button == index) {
            action(QString::fromUtf16(command.item)).trigger();
        }
    }
}

void FrmCom::centre() {
    move(centredPlace(size(), screen()->geometry(), screen()->availableGeometry()));
}

void FrmCom::Form_Load() {
    centre();
    setProgramFolder(m_model, m_surroundings.applicationFolder());
    setDefaultMargins(m_printing->settings());
    const StartSettings settings = readStartSettings(m_model.IniFile);
    prepareModel(m_model, settings);
    m_links.setStripColor(settings.stripColor);
    m_links.setScreenColor(settings.screenColor);
    m_appearance->setGraticule(settings.Graticule);
    m_appearance->setLine(settings.DrawLine);
    m_appearance->setPoint(settings.DrawPoint);
    m_languages->tick(m_model.LanguageId);
    m_timeVolt->fillLists();
    for (int row = 0; row < 4; ++row) {
        // The language file gives them their texts.
        m_controls.Combo3->addItem(QStringLiteral(" "));
    }
    m_controls.Combo3->setCurrentIndex(-1);
    m_controls.Combo3->setListIndex(0);
    m_channelList->addRows();
    m_channelList->showTraceColours(settings.screenColor);
    for (int channel = kChannels - 1; channel >= 0; --channel) {
        m_channelList->setTick(channel, false);
        m_markers->showMarker(channel, false);
    }
    if (m_model.LanguageId != 0) {
        m_languages->mnuEnglish_Click();
    } else {
        m_languages->mnuChinese_Click();
    }
    m_screen->PicReDrawT();
    m_channelList->List1_Click();
    m_selection.CurChannel = -1;
    m_selection.ScrollLive = true;
}

void FrmCom::closeEvent(QCloseEvent* event) {
    event->accept();
    Form_Unload();
}

void FrmCom::openFromDesktop(const QString& path) {
    m_loading->openDropped(path);
}

FrmMessageOut& FrmCom::messageOut() {
    if (m_messageOut == nullptr) {
        m_messageOut = std::make_unique<FrmMessageOut>(m_model);
    }
    return *m_messageOut;
}

void FrmCom::Form_Unload() {
    m_messageOut.reset();
    // What is to last is in the settings file already; a running transfer is ended by the end of the process.
    m_surroundings.endProcess();
}

void FrmCom::mnuExit_Click() {
    m_surroundings.endProcess();
}

} // namespace sixtrace
