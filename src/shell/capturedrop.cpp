// SPDX-License-Identifier: MIT
#include "shell/capturedrop.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

namespace sixtrace {

namespace {

/// Path of the one local file that is being dragged, or nothing.
QString pathOf(const QDropEvent& event) {
    const QList<QUrl> urls = event.mimeData()->urls();
    return urls.size() == 1 && urls.first().isLocalFile() ? urls.first().toLocalFile() : QString();
}

} // namespace

CaptureDrop::CaptureDrop(QWidget& form, std::function<void(const QString& path)> open)
    : QObject(&form)
    , m_open(std::move(open)) {
    form.setAcceptDrops(true);
    form.installEventFilter(this);
}

bool CaptureDrop::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::DragEnter && event->type() != QEvent::DragMove && event->type() != QEvent::Drop) {
        return QObject::eventFilter(watched, event);
    }
    auto* drop = static_cast<QDropEvent*>(event);
    const QString path = pathOf(*drop);
    if (path.isEmpty() || QApplication::activeModalWidget() != nullptr) {
        drop->ignore();
        return true;
    }
    // The file stays where it is, whatever the desktop proposes.
    drop->setDropAction(Qt::CopyAction);
    drop->accept();
    if (event->type() == QEvent::Drop) {
        m_open(path);
    }
    return true;
}

} // namespace sixtrace
