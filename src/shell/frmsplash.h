// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>
#include <QWidget>

#include <functional>

namespace sixtrace {

/// The start-up window. Its first tick loads the main window unseen behind it, its second one, or a click on its frame
/// or picture, or any key, unloads it, which shows the main window.
class frmSplash : public QWidget {
public:
    static constexpr int kFirstTickMs = 10;
    static constexpr int kSecondTickMs = 2500;

    /// `loadMain` makes the main window; `showMain` shows it, making it first where that has not happened yet.
    frmSplash(std::function<void()> loadMain, std::function<void()> showMain);

    [[nodiscard]] bool SplashDone() const { return m_SplashDone; }
    /// Hides the window and shows the main one; at most once.
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
