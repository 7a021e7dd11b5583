// SPDX-License-Identifier: MIT
#include "view/cursorkeys.h"

#include "platform/controls/look.h"
#include "platform/controls/picturebox.h"

#include <QCursor>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>

namespace sixtrace {

namespace {

constexpr int kReach = 2; ///< pixels of the strip on either side of its line
constexpr std::array<CursorHit, CursorKeys::kLines> kHits{CursorHit::Voltage1, CursorHit::Voltage2, CursorHit::Time1,
                                                          CursorHit::Time2};

int pixelOf(double place) {
    return static_cast<int>(place);
}

} // namespace

CursorHandle::CursorHandle(PictureBox& box, const CursorLine& line, const QString& name)
    : QWidget(&box)
    , m_line(line) {
    setObjectName(name);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::TabFocus);
    lower(); // below the zero line's label
    connect(&line, &CursorLine::changed, this, [this] { follow(); });
    follow();
}

void CursorHandle::follow() {
    constexpr int kThickness = 2 * kReach + 1;
    setGeometry(m_line.isHorizontal() ? QRect(0, pixelOf(m_line.Y1()) - kReach, parentWidget()->width(), kThickness)
                                      : QRect(pixelOf(m_line.X1()) - kReach, 0, kThickness, parentWidget()->height()));
    setVisible(m_line.isVisible());
}

void CursorHandle::setFocusLine(bool shown) {
    m_focusLine = shown;
    update();
}

void CursorHandle::focusInEvent(QFocusEvent* event) {
    setFocusLine(event->reason() != Qt::MouseFocusReason);
}

void CursorHandle::focusOutEvent(QFocusEvent*) {
    setFocusLine(false);
}

void CursorHandle::paintEvent(QPaintEvent*) {
    if (!m_focusLine) {
        return;
    }
    QPainter painter(this);
    const QColor accent = QColor::fromRgb(bench::kAccent);
    const bool lying = m_line.isHorizontal();
    const QRect first = lying ? QRect(0, 0, width(), kReach) : QRect(0, 0, kReach, height());
    painter.fillRect(first, accent);
    painter.fillRect(first.translated(lying ? QPoint(0, kReach + 1) : QPoint(kReach + 1, 0)), accent);
}

CursorKeys::CursorKeys(ScreenMouse& mouse, PictureBox& Picture2, const Lines& lines, std::function<void()> moved,
                       QObject* parent)
    : QObject(parent)
    , m_mouse(mouse)
    , m_Picture2(Picture2)
    , m_lines(lines)
    , m_moved(std::move(moved)) {
    for (std::size_t i = 0; i < kLines; ++i) {
        QString name = lines[i]->objectName();
        m_handles[i] = new CursorHandle(Picture2, *lines[i], name.replace(QLatin1Char('('), QStringLiteral("Keys(")));
        m_handles[i]->installEventFilter(this);
    }
    connect(&Picture2, &PictureBox::mouseDown, this, [this] { focusGrabbed(); });
}

void CursorKeys::focusGrabbed() {
    for (std::size_t i = 0; i < kLines; ++i) {
        if (m_mouse.holds(kHits[i]) && m_lines[i]->isVisible()) {
            m_handles[i]->setFocus(Qt::MouseFocusReason);
        }
    }
}

bool CursorKeys::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        for (std::size_t i = 0; i < kLines; ++i) {
            if (watched == m_handles[i]) {
                return keyPressed(i, static_cast<QKeyEvent*>(event)->key());
            }
        }
    }
    return QObject::eventFilter(watched, event);
}

bool CursorKeys::keyPressed(std::size_t line, int key) {
    const bool lying = m_lines[line]->isHorizontal();
    if (key == (lying ? Qt::Key_Up : Qt::Key_Left)) {
        step(line, -1);
    } else if (key == (lying ? Qt::Key_Down : Qt::Key_Right)) {
        step(line, 1);
    } else {
        return false;
    }
    return true;
}

void CursorKeys::step(std::size_t line, int units) {
    if (!m_mouse.moveCursorBy(kHits[line], units)) {
        return;
    }
    m_handles[line]->setFocusLine(true);
    // The line has moved and the pointer has not: the pointer gets the shape for what is below it now.
    if (!m_mouse.holdsAnything() && m_Picture2.underMouse()) {
        const QPointF at = m_Picture2.mapFromGlobal(QPointF(QCursor::pos()));
        m_mouse.Picture2_MouseMove(ScreenX(at.x()), ScreenY(at.y()));
    }
    m_moved();
}

} // namespace sixtrace
