// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <functional>

class QDropEvent;
class QWidget;

namespace sixtrace {

/// Passes the path of a file that is dropped on a window to `open`. Takes a single local file of any kind: `open`
/// checks whether it is a capture. Refuses every drop while a modal dialog is open. Owned by the window.
class CaptureDrop : public QObject {
public:
    CaptureDrop(QWidget& form, std::function<void(const QString& path)> open);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<void(const QString& path)> m_open;
};

} // namespace sixtrace
