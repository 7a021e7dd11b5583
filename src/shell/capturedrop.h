// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <functional>

class QDropEvent;
class QWidget;

namespace sixtrace {

/// Takes a single file dropped anywhere on a window and hands its path on; whether it is a capture is the receiver's
/// matter, as it is behind the open dialog. Refuses while a dialog is open, which the drop would go past. Owned by the
/// window.
class CaptureDrop : public QObject {
public:
    CaptureDrop(QWidget& form, std::function<void(const QString& path)> open);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<void(const QString& path)> m_open;
};

} // namespace sixtrace
