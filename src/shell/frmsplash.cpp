// SPDX-License-Identifier: MIT
#include "shell/frmsplash.h"

#include "capture/channels.h"
#include "platform/controls/look.h"
#include "shell/programicon.h"

#include <QApplication>
#include <QCloseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>

namespace sixtrace {

namespace {

constexpr int kWidth = 480;
constexpr int kHeight = 300;
constexpr int kPictureHeight = 196;
constexpr int kNamePixels = 32;
constexpr int kIconSize = 60;

/// The picture in the upper half: six pulses on a faint grid, one for each trace, each further to the right.
class Logo : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        QLinearGradient background(0, 0, 0, height());
        background.setColorAt(0, QColor(0x4A, 0x0A, 0x4A));
        background.setColorAt(1, QColor(0x2B, 0x00, 0x2B));
        painter.fillRect(rect(), background);
        constexpr int kGrid = 28;
        for (int x = kGrid; x < width(); x += kGrid) {
            painter.fillRect(x, 0, 1, height(), QColor(255, 255, 255, 22));
        }
        for (int y = kGrid; y < height(); y += kGrid) {
            painter.fillRect(0, y, width(), 1, QColor(255, 255, 255, 22));
        }
        painter.setRenderHint(QPainter::Antialiasing);
        constexpr std::array<QRgb, kChannels> kColours{0xFFFF4A4A, 0xFFFFFF00, 0xFFFF00FF,
                                                       0xFF9A5CFF, 0xFF19B56B, 0xFFFF8000};
        double base = 44;
        double left = 40;
        for (const QRgb colour : kColours) {
            QPainterPath pulse(QPointF(0, base));
            pulse.lineTo(left, base);
            pulse.lineTo(left, base - 22);
            pulse.lineTo(left + 56, base - 22);
            pulse.lineTo(left + 56, base);
            pulse.lineTo(width(), base);
            painter.setPen(QPen(QColor::fromRgb(colour), 2, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
            painter.drawPath(pulse);
            base += 27;
            left += 62;
        }
    }
};

/// The frame that fills the window: a thin edge, and below the picture the texts on white.
class Face : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), QColor::fromRgb(bench::kFrameLine));
        painter.fillRect(rect().adjusted(1, 1, -1, -1), QColor::fromRgb(bench::kField));
        painter.setPen(QColor::fromRgb(bench::kInk));
        painter.setFont(interfaceFont(kNamePixels));
        painter.drawText(QRect(24, kPictureHeight + 8, 340, 42), Qt::AlignLeft | Qt::AlignVCenter,
                         QStringLiteral("Sixtrace"));
        painter.setPen(QColor::fromRgb(bench::kMuted));
        painter.setFont(interfaceFont());
        painter.drawText(QRect(25, kPictureHeight + 52, 340, 18), Qt::AlignLeft | Qt::AlignVCenter,
                         QStringLiteral("数字存储示波器的桌面伴侣"));
        painter.drawText(QRect(25, kPictureHeight + 72, 340, 18), Qt::AlignLeft | Qt::AlignVCenter,
                         QStringLiteral("Desktop companion for digital storage oscilloscopes"));
        painter.drawPixmap(QPoint(kWidth - 24 - kIconSize, kPictureHeight + 22),
                           programPicture(kIconSize, devicePixelRatioF()));
    }
};

} // namespace

frmSplash::frmSplash(std::function<void()> loadMain, std::function<void()> showMain)
    : QWidget(nullptr, Qt::FramelessWindowHint | Qt::SplashScreen)
    , m_loadMain(std::move(loadMain))
    , m_showMain(std::move(showMain))
    , m_Timer1(new QTimer(this)) {
    setObjectName(QStringLiteral("frmSplash"));
    setWindowTitle(QStringLiteral("Sixtrace"));
    setWindowIcon(programIcon());
    setFixedSize(kWidth, kHeight);
    setFocusPolicy(Qt::StrongFocus);
    auto* face = new Face(this);
    face->setObjectName(QStringLiteral("Frame1"));
    face->setGeometry(0, 0, kWidth, kHeight);
    face->installEventFilter(this);
    auto* logo = new Logo(face);
    logo->setObjectName(QStringLiteral("imgLogo"));
    logo->setAccessibleName(QStringLiteral("Sixtrace"));
    logo->setGeometry(1, 1, kWidth - 2, kPictureHeight - 1);
    logo->installEventFilter(this);
    const QRect area = screen()->geometry();
    move(area.left() + (area.width() - kWidth) / 2, area.top() + (area.height() - kHeight) / 2);
    m_Timer1->setObjectName(QStringLiteral("Timer1"));
    m_Timer1->setInterval(kFirstTickMs);
    connect(m_Timer1, &QTimer::timeout, this, &frmSplash::Timer1_Timer);
    m_Timer1->start();
}

void frmSplash::Timer1_Timer() {
    if (m_SplashDone) {
        unload();
        return;
    }
    m_Timer1->setInterval(kSecondTickMs);
    m_SplashDone = true;
    m_loadMain();
}

void frmSplash::unload() {
    if (m_unloaded) {
        return;
    }
    m_unloaded = true;
    m_Timer1->stop();
    // The main window is shown before the splash closes: without any window the program would end.
    m_showMain();
    close();
}

void frmSplash::closeEvent(QCloseEvent* event) {
    event->accept();
    unload();
}

void frmSplash::keyPressEvent(QKeyEvent*) {
    unload();
}

bool frmSplash::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease) {
        unload();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace sixtrace
