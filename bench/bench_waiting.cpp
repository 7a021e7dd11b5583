// SPDX-License-Identifier: MIT
// Processor time of the shown serial window while it waits 10 s for an instrument that says nothing.
#include "acquire/recfrm.h"
#include "platform/look.h"
#include "platform/profilefile.h"
#include "platform/qtdialogs.h"

#include <QApplication>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <pty.h>
#include <sys/resource.h>
#include <termios.h>
#include <unistd.h>

using namespace sixtrace;

namespace {

constexpr int kWaitMs = 10000;
constexpr double kGoalSeconds = 0.1;

double processorSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    applyLook(application);
    termios raw{};
    cfmakeraw(&raw);
    int master = -1;
    int slave = -1;
    const QTemporaryDir folder;
    const auto model = std::make_unique<publicM>();
    model->AppDir = folder.path() + QLatin1Char('/');
    model->IniFile = folder.filePath(QStringLiteral("vkq.ini"));
    if (openpty(&master, &slave, nullptr, &raw, nullptr) != 0 ||
        !writeProfile(QStringLiteral("Common"), QStringLiteral("ComPort"), QStringLiteral("1"), model->IniFile)) {
        std::puts("no silent line to wait at");
        return EXIT_FAILURE;
    }
    const QString line = QString::fromLocal8Bit(ttyname(slave));
    QtDialogs dialogs;
    recFrm window(
        *model, dialogs, [line](int number) { return number == 1 ? line : QString(); }, [](const QString&) {});
    window.load();
    window.show();
    QTimer::singleShot(500, &window, [&] {
        QTimer::singleShot(0, &window, [&] { window.Command2_Click(); });
        const double before = processorSeconds();
        QTimer::singleShot(kWaitMs, &window, [&, before] {
            const double used = processorSeconds() - before;
            const bool waited = window.receiving();
            std::printf("waiting 10 s for a silent instrument: %.3f s of processor time, goal at most %.1f s%s\n", used,
                        kGoalSeconds, waited ? "" : " (the window had stopped waiting)");
            std::fflush(stdout);
            std::_Exit(waited && used <= kGoalSeconds ? EXIT_SUCCESS : EXIT_FAILURE);
        });
    });
    return QApplication::exec();
}
