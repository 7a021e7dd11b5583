// SPDX-License-Identifier: MIT
#include "output/bitmapsave.h"

#include "platform/controls/picturebox.h"
#include "platform/desktop/dialogs.h"
#include "platform/files/wholefile.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>

namespace sixtrace {

BitmapSave::BitmapSave(const Widgets& widgets, Dialogs& dialogs, QObject* parent)
    : QObject(parent)
    , m_widgets(widgets)
    , m_dialogs(dialogs) {}

/// Strip and screen side by side as the form shows them, with markers and cursors. They are painted again, since not
/// every display can be read back.
QImage BitmapSave::picture() const {
    const QWidget& strip = *m_widgets.Picture3;
    const QSize size(strip.width() + m_widgets.Picture2->width(), m_widgets.Picture2->height());
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    strip.parentWidget()->render(&painter, {}, QRect(strip.pos(), size));
    return image;
}

void BitmapSave::mnuSaveAs_Click() {
    FileRequest request;
    request.filter = QStringLiteral("BMP (*.bmp)|*.bmp");
    const auto choice = m_dialogs.ShowSave(request);
    // Without a name nothing can be written.
    if (!choice || choice->fileName.isEmpty()) {
        return;
    }
    if (!mayReplace(m_dialogs, choice->fileName)) {
        return;
    }
    QByteArray content;
    QBuffer buffer(&content);
    if (buffer.open(QIODevice::WriteOnly) && picture().save(&buffer, "BMP")) {
        static_cast<void>(writeWhole(choice->fileName, content)); // a failure shows no message
    }
}

} // namespace sixtrace
