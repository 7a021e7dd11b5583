// SPDX-License-Identifier: MIT
#include "acquire/frmusb.h"

#include "acquire/filenames.h"
#include "acquire/transferrows.h"
#include "capture/applylanguage.h"
#include "capture/mdllan.h"
#include "platform/programfolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

namespace sixtrace {

namespace {

constexpr int kHeight = 216;
constexpr int kAmountsRow = 118; ///< top of the amounts under the bar
constexpr int kTimer1Ms = 300;

} // namespace

FrmUSB::FrmUSB(publicM& model, Dialogs& dialogs, TtLink& link)
    : DialogSheet(rows::kWidth, kHeight)
    , m_model(model)
    , m_dialogs(dialogs)
    , m_transfer(link, *this, dialogs, model) {
    setObjectName(QStringLiteral("FrmUSB"));
    setWindowTitle(QStringLiteral("USB Transmission "));
    const auto caption = [this](const char* name, const char16_t* text, int row) {
        static_cast<void>(addLabel(name, QString::fromUtf16(text), rows::caption(row)));
    };
    caption("Label1", u"正在接收文件：", 0);
    m_Text1 = addShownField("Text1", rows::field(0));
    caption("Label2", u"存储为：", 1);
    m_Text2 = addField("Text2", rows::fieldBesideButton(1));
    auto* Command1 = addButton("Command1", QStringLiteral("浏览..."), rows::kButtonColumn, rows::top(1) - 1);
    caption("Label4", u"传输进度：", 2);
    m_ProgressBar1 = addProgressBar(*this, 2);
    m_Text5 = addShownField("Text5", {rows::kFieldLeft, kAmountsRow, rows::kShortField, kRowHeight}, Qt::AlignRight);
    m_Text6 = addShownField("Text6", {226, kAmountsRow, rows::kShortField, kRowHeight}, Qt::AlignRight);
    m_Command4 = addStripButton("Command4", QStringLiteral("开 始"), 280);
    m_Command4->setDefault(true);
    auto* CancelButton = addStripButton("CancelButton", QStringLiteral("Cancel"), rows::kButtonColumn);
    connect(Command1, &QPushButton::clicked, this, &FrmUSB::Command1_Click);
    connect(m_Command4, &QPushButton::clicked, this, &FrmUSB::Command4_Click);
    connect(CancelButton, &QPushButton::clicked, this, &FrmUSB::CancelButton_Click);
}

void FrmUSB::showModally(QWidget* owner) {
    Form_Load();
    showOver(owner);
}

void FrmUSB::Form_Load() {
    const QString name = stampedName(QDateTime::currentDateTime());
    if (m_LastSaveDir.isEmpty()) {
        m_LastSaveDir = m_model.AppDir + QStringLiteral("data");
    }
    m_Text2->setText(m_LastSaveDir + QDir::separator() + name);
    m_Text1->setText(name);
    m_Text5->clear();
    m_Text6->clear();
    setBarRange(*m_ProgressBar1, 0);
    m_Command4->setEnabled(true);
    SetLanFile(m_model, m_model.LanguageId);
    ApplyLanguage(*this, m_model);
    m_model.ReceiveResult = 0;
}

void FrmUSB::Command4_Click() {
    const QString own = m_model.AppDir + QStringLiteral("data");
    if (QFileInfo(m_Text2->text()).path() == own) {
        ensureFolder(own);
    }
    m_transfer.Command4_Click();
}

void FrmUSB::CancelButton_Click() {
    m_transfer.CancelButton_Click();
}

/// The window's close box and the Escape key.
void FrmUSB::reject() {
    CancelButton_Click();
}

void FrmUSB::Command1_Click() {
    const auto choice = m_dialogs.ShowSave({.fileName = m_Text2->text(),
                                            .filter = QStringLiteral("bin (*.bin)|*.bin"),
                                            .filterIndex = 1,
                                            .initialFolder = m_LastSaveDir});
    if (!choice) {
        return;
    }
    m_model.ReceivedFile = choice->fileName;
    const Result<QString> folder = getPath(choice->fileName);
    if (choice->fileName.isEmpty() || !folder) {
        return;
    }
    m_LastSaveDir = folder.value();
    if (QFileInfo::exists(choice->fileName) &&
        m_dialogs.question(QStringLiteral("File Exist!  Do you want to continue ?"), MessageIcon::Exclamation,
                           QStringLiteral("Message")) == Answer::No) {
        return;
    }
    m_Text2->setText(choice->fileName);
    m_Text1->setText(choice->fileName.mid(folder.value().size() + 1));
}

QString FrmUSB::Text1() {
    return m_Text1->text();
}
QString FrmUSB::Text2() {
    return m_Text2->text();
}
void FrmUSB::setText1(const QString& name) {
    m_Text1->setText(name);
}
void FrmUSB::setText2(const QString& path) {
    m_Text2->setText(path);
}
void FrmUSB::setText5(std::int32_t received) {
    m_Text5->setText(QString::number(received));
}
void FrmUSB::setText6(std::int32_t length) {
    m_Text6->setText(QString::number(length));
}
void FrmUSB::setBarMaximum(std::int32_t blocks) {
    setBarRange(*m_ProgressBar1, blocks);
}
void FrmUSB::setBar(std::int32_t block) {
    m_ProgressBar1->setValue(block);
}
void FrmUSB::setCommand4Enabled(bool enabled) {
    m_Command4->setEnabled(enabled);
}
void FrmUSB::yield() {
    QCoreApplication::processEvents();
}

void FrmUSB::waitForTimer1() {
    QEventLoop untilTick;
    QTimer::singleShot(kTimer1Ms, &untilTick, &QEventLoop::quit);
    untilTick.exec();
}

void FrmUSB::unload() {
    hide();
}

} // namespace sixtrace
