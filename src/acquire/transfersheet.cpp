// SPDX-License-Identifier: MIT
#include "acquire/transfersheet.h"

#include "platform/controls/look.h"
#include "platform/desktop/dialogs.h"
#include "platform/files/filenames.h"
#include "platform/files/programfolder.h"

#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>

#include <algorithm>

namespace sixtrace {

namespace {

constexpr int kBarHeight = 16;
constexpr int kAmountsBelow = 25; ///< from the bar's top to the amounts
constexpr int kStrokeWidth = 18;  ///< of the "/" between the amounts
constexpr int kSecondAmount = 226;
constexpr int kStartLeft = 280;

} // namespace

void TransferSheet::addFileRows() {
    static_cast<void>(addLabel("Label1", QStringLiteral("正在接收文件："), rows::caption(0)));
    m_Text1 = addShownField("Text1", rows::field(0));
    static_cast<void>(addLabel("Label2", QStringLiteral("存储为："), rows::caption(1)));
    m_Text2 = addField("Text2", rows::fieldBesideButton(1));
    auto* Command1 = addButton("Command1", QStringLiteral("浏览..."), rows::kButtonColumn, rows::top(1) - 1);
    connect(Command1, &QPushButton::clicked, this, &TransferSheet::Command1_Click);
}

void TransferSheet::addProgressRow(int row) {
    static_cast<void>(addLabel("Label4", QStringLiteral("传输进度："), rows::caption(row)));
    m_ProgressBar1 = new QProgressBar(this);
    m_ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
    m_ProgressBar1->setTextVisible(false);
    m_ProgressBar1->setGeometry(rows::kFieldLeft, rows::top(row) + 5, rows::kFieldRight - rows::kFieldLeft, kBarHeight);
    startBar(0);
    const int amounts = m_ProgressBar1->y() + kAmountsBelow;
    auto* stroke = new QLabel(QStringLiteral("/"), this);
    stroke->setAlignment(Qt::AlignCenter);
    stroke->setGeometry(rows::kFieldLeft + rows::kShortField, amounts, kStrokeWidth, kRowHeight);
    setInk(*stroke, bench::kMuted);
    m_Text5 = addShownField("Text5", {rows::kFieldLeft, amounts, rows::kShortField, kRowHeight}, Qt::AlignRight);
    m_Text6 = addShownField("Text6", {kSecondAmount, amounts, rows::kShortField, kRowHeight}, Qt::AlignRight);
}

QPushButton* TransferSheet::addEndButtons(const char* startName, const QString& startCaption) {
    QPushButton* start = addStripButton(startName, startCaption, kStartLeft);
    start->setDefault(true);
    auto* CancelButton = addStripButton("CancelButton", QStringLiteral("Cancel"), rows::kButtonColumn);
    connect(CancelButton, &QPushButton::clicked, this, &TransferSheet::CancelButton_Click);
    return start;
}

void TransferSheet::startBar(int maximum) {
    m_ProgressBar1->setRange(0, std::max(maximum, 1)); // a bar without a range would show endless work
    m_ProgressBar1->setValue(0);
}

std::optional<QString> TransferSheet::choosePath(Dialogs& dialogs, const QString& initialFolder) const {
    const auto choice = dialogs.ShowSave({.fileName = m_Text2->text(),
                                          .filter = QStringLiteral("bin (*.bin)|*.bin"),
                                          .filterIndex = 1,
                                          .initialFolder = initialFolder});
    return choice ? std::optional(choice->fileName) : std::nullopt;
}

void TransferSheet::makeOwnFolder(const QString& own) const {
    const QString folder = QFileInfo(m_Text2->text()).path();
    if (withSeparator(folder) == withSeparator(own)) {
        ensureFolder(folder);
    }
}

} // namespace sixtrace
