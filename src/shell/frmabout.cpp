// SPDX-License-Identifier: MIT
#include "shell/frmabout.h"

#include "capture/applylanguage.h"
#include "capture/mdllan.h"
#include "platform/controls/look.h"
#include "platform/desktop/dialogs.h"
#include "platform/desktop/dialogsheet.h"
#include "platform/desktop/systeminformation.h"
#include "shell/programicon.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

namespace sixtrace {

namespace {

constexpr int kWidth = 420;
constexpr int kHeight = 220;
constexpr int kStrip = DialogSheet::kStripHeight;
constexpr int kTextLeft = 104;
constexpr int kNamePixels = 24;

QLabel* label(QWidget& form, const QString& name, const QString& text, const QRect& place, int pixels) {
    auto* made = new QLabel(text, &form);
    made->setObjectName(name);
    made->setGeometry(place);
    made->setTextFormat(Qt::PlainText);
    made->setFont(interfaceFont(pixels));
    return made;
}

} // namespace

frmAbout::frmAbout(publicM& model, Dialogs& dialogs, QWidget* parent)
    : QWidget(parent, Qt::Dialog)
    , m_dialogs(dialogs) {
    setObjectName(QStringLiteral("frmAbout"));
    setAttribute(Qt::WA_DeleteOnClose);
    setFixedSize(kWidth, kHeight);
    const QString title = QStringLiteral("Sixtrace");
    setWindowTitle(QStringLiteral("About ") + title);

    auto* icon = new QLabel(this);
    icon->setObjectName(QStringLiteral("picIcon"));
    icon->setGeometry(20, 20, 64, 64);
    icon->setPixmap(programPicture(64, devicePixelRatioF()));
    label(*this, QStringLiteral("lblTitle"), title, QRect(kTextLeft, 18, 300, 34), kNamePixels);
    setInk(*label(*this, QStringLiteral("lblVersion"), QStringLiteral("Version " SIXTRACE_VERSION),
                  QRect(kTextLeft, 54, 300, 20), kTextPixels),
           bench::kMuted);
    // With a width of 288 pixels the sentence breaks between two words in both languages.
    auto* sentence = label(*this, QStringLiteral("lblDescription"),
                           QStringLiteral("数字存储示波器的桌面伴侣：取回、观察、测量、导出与打印波形。"),
                           QRect(kTextLeft, 84, 288, 54), kTextPixels);
    sentence->setWordWrap(true);
    sentence->setAlignment(Qt::AlignLeft | Qt::AlignTop);

    const int buttonTop = kHeight - kStrip + (kStrip - DialogSheet::kButtonHeight) / 2;
    auto* information = new QPushButton(QStringLiteral("系统信息..."), this);
    information->setObjectName(QStringLiteral("cmdSysInfo"));
    information->setGeometry(DialogSheet::kMargin, buttonTop, 128, DialogSheet::kButtonHeight);
    auto* close = new QPushButton(QStringLiteral("确定"), this);
    close->setObjectName(QStringLiteral("cmdOK"));
    close->setGeometry(kWidth - DialogSheet::kMargin - DialogSheet::kButtonWidth, buttonTop, DialogSheet::kButtonWidth,
                       DialogSheet::kButtonHeight);
    close->setDefault(true);
    close->setFocus();
    connect(information, &QPushButton::clicked, this, &frmAbout::StartSysInfo);
    connect(close, &QPushButton::clicked, this, &QWidget::close);

    SetLanFile(model, model.LanguageId);
    ApplyLanguage(*this, model);
}

void frmAbout::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(QRect(0, kHeight - kStrip, kWidth, 1), QColor::fromRgb(bench::kRule));
}

void frmAbout::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void frmAbout::StartSysInfo() {
    if (!startSystemInformation()) {
        m_dialogs.message(QStringLiteral("System Information Is Unavailable At This Time"), MessageIcon::Plain);
    }
}

} // namespace sixtrace
