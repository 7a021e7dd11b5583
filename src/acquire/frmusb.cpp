// SPDX-License-Identifier: MIT
#include "acquire/frmusb.h"

#include "capture/applylanguage.h"
#include "capture/mdllan.h"
#include "platform/desktop/dialogs.h"
#include "platform/files/filenames.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

namespace sixtrace {

namespace {

constexpr int kHeight = 216;
constexpr int kTimer1Ms = 300;
constexpr int kSuffix = 3;

} // namespace

FrmUSB::FrmUSB(publicM& model, Dialogs& dialogs, TtLink& link, TransferGate& gate,
               std::function<void(const TransferReport&)> tellEnd)
    : TransferSheet(kHeight)
    , m_model(model)
    , m_dialogs(dialogs)
    , m_link(link)
    , m_gate(gate)
    , m_tellEnd(std::move(tellEnd)) {
    setObjectName(QStringLiteral("FrmUSB"));
    setWindowTitle(QStringLiteral("USB Transmission "));
    addFileRows();
    addProgressRow(2);
    m_Command4 = addEndButtons("Command4", QStringLiteral("开 始"));
    connect(m_Command4, &QPushButton::clicked, this, &FrmUSB::Command4_Click);
}

QString FrmUSB::ownFolder() const {
    return m_model.AppDir + QStringLiteral("data");
}

void FrmUSB::showModally(QWidget* owner) {
    Form_Load();
    makeOwnFolder(ownFolder());
    showOver(owner);
}

void FrmUSB::Form_Load() {
    const QString name = dateName(QDateTime::currentDateTime()) + QStringLiteral(".bin");
    if (m_LastSaveDir.isEmpty()) {
        m_LastSaveDir = ownFolder();
    }
    m_Text2->setText(m_LastSaveDir + QDir::separator() + name);
    m_Text1->setText(name);
    m_Text5->clear();
    m_Text6->clear();
    startBar(0);
    m_Command4->setEnabled(true);
    SetLanFile(m_model, m_model.LanguageId);
    ApplyLanguage(*this, m_model);
    m_model.ReceiveResult = 0;
}

void FrmUSB::Command4_Click() {
    const auto pass = m_gate.enterForStart();
    if (!pass) {
        return;
    }
    if (m_link.InitializeTt(0) == 0) {
        m_dialogs.message(usbOpenFailedText(languageOf(m_model)), MessageIcon::Information);
        return;
    }
    makeOwnFolder(ownFolder());
    m_pass = &*pass;
    m_UsbBusy = true;
    m_Command4->setEnabled(false);
    m_UsbCancel = false;
    const TransferReport report = transfer(*pass);
    m_pass = nullptr;
    m_tellEnd(report);
    switch (report.end) {
    case TransferEnd::Finished:
        pass->file().close();
        m_Command4->setEnabled(true);
        m_link.closeTt(0);
        m_UsbBusy = false;
        m_model.ReceiveResult = 1;
        hide();
        return;
    case TransferEnd::Error:
        m_dialogs.message(usbErrorText(*report.error), MessageIcon::Plain);
        m_link.closeTt(1);
        hide();
        return;
    default:
        break;
    }
    if (m_UsbCancel) {
        m_UsbCancel = false; // Cancel has closed the file and the link
        return;
    }
    m_dialogs.message(usbDataFailedText(languageOf(m_model)), MessageIcon::Information);
    pass->file().close();
    m_link.closeTt(1);
    m_Command4->setEnabled(true);
    m_UsbBusy = false;
}

TransferReport FrmUSB::transfer(const TransferPass& pass) {
    return exchangeUsb(pass, m_link,
                       {.storeAt = [this](const UsbAnnounced& announced) { return storeAt(announced); },
                        .cancelled = [this] { return m_UsbCancel; },
                        .blockCame =
                            [this](std::int32_t block) {
                                m_ProgressBar1->setValue(block);
                                m_Text5->setText(QString::number(m_Text5->text().toInt() + kUsbBlockSize));
                            },
                        .yield = [] { QCoreApplication::processEvents(); }});
}

Result<QString> FrmUSB::storeAt(const UsbAnnounced& announced) {
    m_Text6->setText(QString::number(announced.length));
    if (announced.bitmap) {
        const Outcome named = nameBitmap();
        if (!named) {
            return named.error();
        }
    }
    m_model.ReceivedFile = m_Text2->text();
    startBar(announced.blocks);
    m_Text5->setText(QStringLiteral("0"));
    return m_model.ReceivedFile;
}

/// Replaces the last three characters of name and path by "bmp"; error 5 when one of them is shorter.
Outcome FrmUSB::nameBitmap() {
    for (QLineEdit* field : {m_Text1, m_Text2}) {
        if (field->text().size() < kSuffix) {
            return RuntimeError::of(ErrorNumber::InvalidCall);
        }
        field->setText(field->text().chopped(kSuffix) + QStringLiteral("bmp"));
    }
    return success();
}

void FrmUSB::CancelButton_Click() {
    m_UsbCancel = true;
    if (m_UsbBusy) {
        if (m_pass != nullptr) {
            m_pass->file().close();
        }
        m_link.closeTt(0);
        waitForTimer1();
        // Opening and closing once more recovers the link after a transfer that was cut off.
        m_link.InitializeTt(1);
        m_link.closeTt(1);
        m_UsbBusy = false;
    }
    m_Command4->setEnabled(true);
    m_model.ReceiveResult = 0;
    hide();
}

void FrmUSB::Command1_Click() {
    const std::optional<QString> path = choosePath(m_dialogs, m_LastSaveDir);
    if (!path) {
        return;
    }
    m_model.ReceivedFile = *path;
    const Result<QString> folder = getPath(*path);
    if (path->isEmpty() || !folder) {
        return;
    }
    m_LastSaveDir = folder.value();
    if (mayReplace(m_dialogs, *path)) {
        m_Text2->setText(*path);
        m_Text1->setText(path->mid(folder.value().size() + 1));
    }
}

void FrmUSB::waitForTimer1() {
    QEventLoop untilTick;
    QTimer::singleShot(kTimer1Ms, &untilTick, &QEventLoop::quit);
    untilTick.exec();
}

} // namespace sixtrace
