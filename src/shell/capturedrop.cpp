// SPDX-License-Identifier: MIT
#include "shell/capturedrop.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

namespace sixtrace {

namespace {

/// The path of the local file that is being dragged. Empty if there are several files, or if it is not local.
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
    // The desktop may propose to move the file. A copy leaves it where it is.
    drop->setDropAction(Qt::CopyAction);
    drop->accept();
    if (event->type() == QEvent::Drop) {
        m_open(path);
    }
    return true;
}

} // namespace sixtrace
