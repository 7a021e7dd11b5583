// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>
#include <QWidget>

#include <functional>

namespace sixtrace {

/// The start-up window. The first tick of its timer loads the main window without showing it. The second tick, a click
/// or any key unloads the splash, which shows the main window.
class frmSplash : public QWidget {
public:
    static constexpr int kFirstTickMs = 10;
    static constexpr int kSecondTickMs = 2500;

    /// `loadMain` makes the main window. `showMain` shows it, and makes it first if `loadMain` has not been called.
    frmSplash(std::function<void()> loadMain, std::function<void()> showMain);

    [[nodiscard]] bool SplashDone() const { return m_SplashDone; }
    /// Closes the splash and shows the main window. Further calls do nothing.
    void unload();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void Timer1_Timer();

    std::function<void()> m_loadMain;
    std::function<void()> m_showMain;
    QTimer* m_Timer1;
    bool m_SplashDone = false;
    bool m_unloaded = false;
};

} // namespace sixtrace
