// SPDX-License-Identifier: MIT
#include "acquire/recfrm.h"

#include "capture/applylanguage.h"
#include "capture/mdllan.h"
#include "capture/settings.h"
#include "platform/desktop/dialogs.h"
#include "platform/files/filenames.h"

#include <QCoreApplication>
#include <QDir>
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

/// A visitor of one function for each kind of step.
template<typename... Functions>
struct Steps : Functions... {
    using Functions::operator()...;
};
template<typename... Functions>
Steps(Functions...) -> Steps<Functions...>;

} // namespace

recFrm::recFrm(publicM& model, Dialogs& dialogs, MSComm::Locator locatePort, TransferGate& gate, Endings endings)
    : TransferSheet(kHeight)
    , m_model(model)
    , m_dialogs(dialogs)
    , m_gate(gate)
    , m_endings(std::move(endings))
    , m_MSComm1(std::move(locatePort))
    , m_receive(m_MSComm1) {
    setObjectName(QStringLiteral("recFrm"));
    setWindowTitle(QStringLiteral("正在接收数据"));
    addFileRows();
    static_cast<void>(addLabel("Label3", QStringLiteral("数据包："), rows::caption(2)));
    m_Text3 = addShownField("Text3", rows::shortField(rows::kFieldLeft, 2), Qt::AlignRight);
    static_cast<void>(
        addLabel("Label5", QStringLiteral("重试次数"), {228, rows::top(2), 140, kRowHeight}, Qt::AlignRight));
    m_Text4 = addShownField("Text4", rows::shortField(rows::kButtonColumn, 2), Qt::AlignRight);
    addProgressRow(3);
    m_Command2 = addEndButtons("Command2", QStringLiteral("开始"));
    connect(m_Command2, &QPushButton::clicked, this, &recFrm::Command2_Click);
}

QString recFrm::ownFolder() const {
    return m_model.AppDir + QStringLiteral("dat");
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
    startBar(0);
    m_Command2->setEnabled(true);
    m_Text2->setText(ownFolder() + QDir::separator() + dateName(QDateTime::currentDateTime()) + QStringLiteral(".bin"));
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
    makeOwnFolder(ownFolder());
    showOver(owner);
}

Outcome recFrm::OpenCom() {
    load();
    Outcome done = m_MSComm1.setSettings(QStringLiteral("115200,N,8,1"));
    if (!done) {
        return done;
    }
    // The default is 0, which is USB, everywhere else. Here a serial port is wanted.
    m_model.ComPort = iniShortNumber(setting::kComPort, 1, m_model.IniFile);
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

TransferReport recFrm::YModemReceive(const TransferPass& pass) {
    makeOwnFolder(ownFolder());
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

void recFrm::Command1_Click() {
    const std::optional<QString> path = choosePath(m_dialogs, {});
    if (!path) {
        return;
    }
    m_model.ReceivedFile = *path;
    if (mayReplace(m_dialogs, *path)) {
        m_Text2->setText(*path);
    }
}

void recFrm::showStep(const ReceiveStep& step) {
    std::visit(Steps{
                   [this](const HeaderRead& header) {
                       m_Text1->setText(header.name);
                       if (header.size < std::numeric_limits<std::int32_t>::max()) {
                           startBar(header.size + 1);
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
