// SPDX-License-Identifier: MIT
#include "acquire/recfrm.h"

#include "acquire/transferrows.h"
#include "capture/applylanguage.h"
#include "capture/mdllan.h"
#include "capture/settings.h"
#include "platform/desktop/dialogs.h"
#include "platform/files/filenames.h"
#include "platform/files/programfolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>

#include <limits>
#include <utility>

namespace sixtrace {

namespace {

constexpr int kHeight = 252;
constexpr std::int16_t kReadTimeoutMs = 10000;
constexpr std::int16_t kCancelledTimeoutMs = 10;
constexpr int kAmountsRow = 154; ///< top of the amounts under the bar

/// A visitor of one function for each kind of step.
template<typename... Functions>
struct Steps : Functions... {
    using Functions::operator()...;
};
template<typename... Functions>
Steps(Functions...) -> Steps<Functions...>;

} // namespace

recFrm::recFrm(publicM& model, Dialogs& dialogs, MSComm::Locator locatePort, TransferGate& gate, Endings endings)
    : DialogSheet(rows::kWidth, kHeight)
    , m_model(model)
    , m_dialogs(dialogs)
    , m_gate(gate)
    , m_endings(std::move(endings))
    , m_MSComm1(std::move(locatePort))
    , m_receive(m_MSComm1) {
    setObjectName(QStringLiteral("recFrm"));
    setWindowTitle(QStringLiteral("正在接收数据"));
    const auto caption = [this](const char* name, const char16_t* text, int row) {
        return addLabel(name, QString::fromUtf16(text), rows::caption(row));
    };
    static_cast<void>(caption("Label1", u"正在接收文件：", 0));
    m_Text1 = addShownField("Text1", rows::field(0));
    static_cast<void>(caption("Label2", u"存储为：", 1));
    m_Text2 = addField("Text2", rows::fieldBesideButton(1));
    auto* Command1 = addButton("Command1", QStringLiteral("浏览..."), rows::kButtonColumn, rows::top(1) - 1);
    static_cast<void>(caption("Label3", u"数据包：", 2));
    m_Text3 = addShownField("Text3", rows::shortField(rows::kFieldLeft, 2), Qt::AlignRight);
    static_cast<void>(
        addLabel("Label5", QStringLiteral("重试次数"), {228, rows::top(2), 140, kRowHeight}, Qt::AlignRight));
    m_Text4 = addShownField("Text4", rows::shortField(rows::kButtonColumn, 2), Qt::AlignRight);
    static_cast<void>(caption("Label4", u"传输进度：", 3));
    m_ProgressBar1 = addProgressBar(*this, 3);
    m_Text5 = addShownField("Text5", {rows::kFieldLeft, kAmountsRow, rows::kShortField, kRowHeight}, Qt::AlignRight);
    m_Text6 = addShownField("Text6", {226, kAmountsRow, rows::kShortField, kRowHeight}, Qt::AlignRight);
    m_Command2 = addStripButton("Command2", QStringLiteral("开始"), 280);
    m_Command2->setDefault(true);
    auto* CancelButton = addStripButton("CancelButton", QStringLiteral("Cancel"), rows::kButtonColumn);
    connect(Command1, &QPushButton::clicked, this, &recFrm::Command1_Click);
    connect(m_Command2, &QPushButton::clicked, this, &recFrm::Command2_Click);
    connect(CancelButton, &QPushButton::clicked, this, &recFrm::CancelButton_Click);
}

void recFrm::load() {
    if (!m_loaded) {
        m_loaded = true;
        Form_Load();
    }
}

void recFrm::Form_Load() {
    for (QLineEdit* field : {m_Text1, m_Text3, m_Text4, m_Text5, m_Text6}) {
        field->clear();
    }
    setBarRange(*m_ProgressBar1, 0);
    m_Command2->setEnabled(true);
    m_Text2->setText(m_model.AppDir + QStringLiteral("dat") + QDir::separator() +
                     dateName(QDateTime::currentDateTime()) + QStringLiteral(".bin"));
    SetLanFile(m_model, m_model.LanguageId);
    ApplyLanguage(*this, m_model);
    m_ports.search([this](int number) { return m_MSComm1.tryPort(number); });
}

/// Unloading closes the port.
void recFrm::unload() {
    static_cast<void>(m_MSComm1.setPortOpen(false)); // closing cannot fail
    m_loaded = false;
    hide();
}

void recFrm::showModally(QWidget* owner) {
    load();
    makeOwnFolder();
    showOver(owner);
}

Outcome recFrm::OpenCom() {
    load();
    Outcome done = m_MSComm1.setSettings(QStringLiteral("115200,N,8,1"));
    if (!done) {
        return done;
    }
    // The default is 0, which is USB, everywhere else. Here a serial port is wanted.
    m_model.ComPort = iniShortNumber(QStringLiteral("Common"), QStringLiteral("ComPort"), 1, m_model.IniFile);
    const Result<std::int16_t> number = m_ports.at(m_model.ComPort);
    if (!number) {
        return number.error();
    }
    if (m_MSComm1.PortOpen()) {
        return m_MSComm1.setPortOpen(false);
    }
    done = m_MSComm1.setCommPort(number.value());
    return done ? m_MSComm1.setPortOpen(true) : done;
}

/// Makes the folder "dat" when the path leads there: both a dialog that starts in it and the file need it.
void recFrm::makeOwnFolder() const {
    const QString folder = QFileInfo(m_Text2->text()).path();
    if (withSeparator(folder) == m_model.AppDir + withSeparator(QStringLiteral("dat"))) {
        ensureFolder(folder);
    }
}

TransferReport recFrm::YModemReceive(const TransferPass& pass) {
    makeOwnFolder();
    pass.onEnd([this] { static_cast<void>(m_MSComm1.setPortOpen(false)); }); // closing cannot fail
    m_model.XferCancel = 0;
    m_model.ReceivedFile = m_Text2->text();
    TransferReport report = m_receive.YModemReceive(pass, {.path = m_model.ReceivedFile,
                                                           .bitmapFolder = {},
                                                           .cancelled = [this] { return m_model.XferCancel == 1; },
                                                           .show = [this](const ReceiveStep& step) { showStep(step); },
                                                           .yield = [] { QCoreApplication::processEvents(); }});
    if (report.end != TransferEnd::Superseded) {
        m_endings.report(report);
    }
    return report;
}

void recFrm::Command2_Click() {
    const auto pass = m_gate.enterForStart();
    if (!pass) {
        return;
    }
    m_receive.ReadTimeoutMs = kReadTimeoutMs;
    if (!m_MSComm1.PortOpen()) {
        const Outcome opened = OpenCom();
        if (!opened) {
            m_dialogs.message(opened.error().description, MessageIcon::Exclamation);
            return;
        }
    }
    m_Command2->setEnabled(false);
    const TransferReport report = YModemReceive(*pass);
    if (report.end == TransferEnd::Superseded) {
        return; // result, form and port belong to the other transfer now
    }
    m_model.ReceiveResult = receiveResult(report);
    if (report.error) {
        m_dialogs.message(report.error->description, MessageIcon::Exclamation);
    }
    if (m_model.ReceiveResult >= 1) {
        m_endings.caption(QStringLiteral("接收成功!"));
    } else {
        m_endings.caption(m_model.XferCancel == 1 ? QStringLiteral("用户中断") : QStringLiteral("接收失败!"));
    }
    m_Command2->setEnabled(true);
    unload();
}

void recFrm::CancelButton_Click() {
    hide();
    m_model.XferCancel = 1;
    m_gate.giveUp();
    if (m_receive.ReadTimeoutMs > kCancelledTimeoutMs) {
        m_receive.ReadTimeoutMs = kCancelledTimeoutMs;
    }
    m_Command2->setEnabled(true);
}

/// The window's close box and the Escape key.
void recFrm::reject() {
    CancelButton_Click();
}

void recFrm::Command1_Click() {
    const auto choice = m_dialogs.ShowSave({.fileName = m_Text2->text(),
                                            .filter = QStringLiteral("bin (*.bin)|*.bin"),
                                            .filterIndex = 1,
                                            .initialFolder = {}});
    if (!choice) {
        return;
    }
    m_model.ReceivedFile = choice->fileName;
    if (mayReplace(m_dialogs, choice->fileName)) {
        m_Text2->setText(choice->fileName);
    }
}

void recFrm::showStep(const ReceiveStep& step) {
    std::visit(Steps{
                   [this](const HeaderRead& header) {
                       m_Text1->setText(header.name);
                       if (header.size < std::numeric_limits<std::int32_t>::max()) {
                           setBarRange(*m_ProgressBar1, header.size + 1);
                       }
                   },
                   [this](const StoresAs& bitmap) {
                       m_Text2->setText(bitmap.path);
                       m_model.ReceivedFile = bitmap.path;
                   },
                   [this](const BytesCame& came) { m_ProgressBar1->setValue(came.total); },
                   [this](const BlockTaken& block) {
                       m_Text3->setText(QString::number(block.next));
                       m_Text4->setText(QStringLiteral("0"));
                       m_Text5->setText(amountText(block.total, block.size));
                       m_Text6->setText(amountText(block.size, block.size));
                   },
                   [this](const Retried& retried) { m_Text4->setText(QString::number(retried.retries)); },
               },
               step);
}

} // namespace sixtrace
