// SPDX-License-Identifier: MIT
#include "acquire/frmcomset.h"

#include "acquire/recfrm.h"
#include "capture/applylanguage.h"
#include "capture/mdllan.h"
#include "capture/settings.h"
#include "platform/controls/framepanel.h"
#include "platform/controls/listcombo.h"
#include "platform/desktop/dialogs.h"
#include "platform/files/profilefile.h"
#include "platform/ports/serialports.h"

#include <QLabel>
#include <QPushButton>

namespace sixtrace {

namespace {

constexpr int kWidth = 360;
constexpr int kHeight = 320;
constexpr int kListsLeft = 144; ///< in the frame
constexpr int kListsWidth = 168;
constexpr int kFirstRow = 28;
constexpr int kRowPitch = 38;

const QString kSection = QStringLiteral("Common");
const QString kSettingsKey = QStringLiteral("MSCommSettings");
const QString kPortKey = QStringLiteral("ComPort");

} // namespace

frmComSet::frmComSet(publicM& model, Dialogs& dialogs, recFrm& receiver)
    : DialogSheet(kWidth, kHeight)
    , m_model(model)
    , m_dialogs(dialogs)
    , m_receiver(receiver) {
    setObjectName(QStringLiteral("frmComSet"));
    setWindowTitle(QStringLiteral("端口设置"));
    static_cast<void>(addLabel("Label1", QStringLiteral("选择通讯口："), {kMargin, kMargin, 140, kRowHeight}));
    m_Combo1 = new ListCombo(this);
    m_Combo1->setObjectName(QStringLiteral("Combo1"));
    m_Combo1->setGeometry(160, kMargin, 184, kRowHeight);
    m_Combo1->addItem(QStringLiteral("USB"));
    m_Combo1->setCurrentIndex(-1);
    m_Frame1 = new FramePanel(QStringLiteral("Settings"), this);
    m_Frame1->setObjectName(QStringLiteral("Frame1"));
    m_Frame1->setGeometry(kMargin, 56, 328, 192);
    int row = 0;
    const auto addList = [this, &row](const char* name, const char* label, const QString& caption,
                                      const QStringList& entries) {
        const int top = kFirstRow + kRowPitch * row++;
        auto* list = new ListCombo(m_Frame1);
        addLabel(label, caption, {kMargin, top, 124, kRowHeight}, Qt::AlignLeft, m_Frame1)->setBuddy(list);
        list->setObjectName(QLatin1String(name));
        list->setGeometry(kListsLeft, top, kListsWidth, kRowHeight);
        list->addItems(entries);
        return list;
    };
    m_Combo2 = addList("Combo2", "Label4", QStringLiteral("每秒位数(B):"),
                       {QStringLiteral("9600"), QStringLiteral("19200"), QStringLiteral("38400"),
                        QStringLiteral("57600"), QStringLiteral("115200")});
    m_Combo3 = addList("Combo3", "Label2", QStringLiteral("数据位(D):"),
                       {QStringLiteral("5"), QStringLiteral("6"), QStringLiteral("7"), QStringLiteral("8")});
    m_Combo4 = addList("Combo4", "Label3", QStringLiteral("奇偶校验(P):"),
                       {QStringLiteral("奇"), QStringLiteral("偶"), QStringLiteral("无")});
    m_Combo5 = addList("Combo5", "Label5", QStringLiteral("停止位(S):"), {QStringLiteral("1"), QStringLiteral("2")});
    auto* Command1 = addStripButton("Command1", QStringLiteral("默认"), kMargin);
    auto* CmdSet = addStripButton("CmdSet", QStringLiteral("确定"), 160);
    CmdSet->setDefault(true);
    auto* CmdCancel = addStripButton("CmdCancel", QStringLiteral("取消"), 256);
    connect(m_Combo1, &ListCombo::Click, this, &frmComSet::Combo1_Click);
    connect(Command1, &QPushButton::clicked, this, &frmComSet::Command1_Click);
    connect(CmdSet, &QPushButton::clicked, this, &frmComSet::CmdSet_Click);
    connect(CmdCancel, &QPushButton::clicked, this, &frmComSet::CmdCancel_Click);
    Form_Load();
}

void frmComSet::Form_Load() {
    SetLanFile(m_model, m_model.LanguageId);
    ApplyLanguage(*this, m_model);
    m_receiver.load();
    m_ports.search([this](int number) { return m_receiver.MSComm1().tryPort(number); });
    for (const std::int16_t number : m_ports.found()) {
        m_Combo1->addItem(QStringLiteral("COM") + QString::number(number));
    }
    m_model.ComSetText = GetIniString(kSection, kSettingsKey, QStringLiteral("115200,N,8,1"), m_model.IniFile);
    m_model.ComPort = iniShortNumber(kSection, kPortKey, 0, m_model.IniFile);
    if (m_model.ComPort > m_ports.count()) {
        m_model.ComPort = 1;
    }
    m_Combo1->setListIndex(m_model.ComPort); // an index that does not exist changes nothing: no entry is chosen then
    showLineDefaults();
    showToolTips();
}

void frmComSet::showToolTips() {
    const bool chinese = m_model.LanguageId == 0;
    const QString more =
        chinese ? QStringLiteral("命令 kqx ports 列出所有端口，并说明某个端口为何不在此列。")
                : QStringLiteral("The command kqx ports lists all ports, and why one does not appear here.");
    int row = 0; // row 0 is USB
    for (const std::int16_t number : m_ports.found()) {
        const QString location = m_receiver.MSComm1().locationOf(number);
        QStringList parts{location, adapterAt(location).text()};
        parts.removeAll(QString());
        m_Combo1->setItemData(++row, parts.join(QStringLiteral(", ")), Qt::ToolTipRole);
    }
    const QString chosen = m_Combo1->currentData(Qt::ToolTipRole).toString();
    m_Combo1->setToolTip(chosen.isEmpty() ? more : QString(chosen + u'\n' + more));
}

void frmComSet::showLineDefaults() {
    m_Combo2->setListIndex(4);
    m_Combo3->setListIndex(3);
    m_Combo4->setListIndex(2);
    m_Combo5->setListIndex(0);
}

void frmComSet::Combo1_Click() {
    m_Frame1->setEnabled(m_Combo1->ListIndex() >= 1);
    showToolTips();
}

void frmComSet::Command1_Click() {
    m_Combo1->setListIndex(0);
    m_Frame1->setEnabled(false);
    showLineDefaults();
}

QString frmComSet::settingsText() const {
    QString parity = QStringLiteral(",N,");
    if (m_Combo4->ListIndex() == 1) {
        parity = QStringLiteral(",O,");
    } else if (m_Combo4->ListIndex() == 2) {
        parity = QStringLiteral(",E,");
    }
    return m_Combo2->Text() + parity + m_Combo3->Text() + u',' + m_Combo5->Text();
}

/// Proves that the chosen port can be opened.
Outcome frmComSet::tryPort() {
    MSComm& port = m_receiver.MSComm1();
    const Result<std::int16_t> number = m_ports.at(m_model.ComPort);
    if (!number) {
        return number.error();
    }
    return port.tryPort(number.value(), m_model.ComSetText);
}

void frmComSet::CmdSet_Click() {
    m_model.ComPort = static_cast<std::int16_t>(m_Combo1->ListIndex());
    m_model.ComSetText = settingsText();
    if (m_model.ComPort > 0) {
        const Outcome opened = tryPort();
        if (!opened) {
            m_dialogs.message(opened.error().description, MessageIcon::Exclamation);
            return;
        }
    }
    writeIni(kSection, kSettingsKey, m_model.ComSetText, m_model.IniFile);
    writeIni(kSection, kPortKey, QString::number(m_model.ComPort), m_model.IniFile);
    hide();
}

void frmComSet::CmdCancel_Click() {
    hide();
}

} // namespace sixtrace
