// SPDX-License-Identifier: MIT
// From the start of a process to its first painted frame, and the memory it holds then: the program's main window (with
// a capture loaded, for the memory) beside a bare QMainWindow on the same platform plugin. The splash's designed time
// is left out. Called without arguments it starts itself in turns as both, at least nine times each.
#include "capture/capturefile.h"
#include "capture/scenes.h"
#include "onefile.h"
#include "platform/controls/look.h"
#include "platform/files/wholefile.h"
#include "shell/frmcom.h"
#include "shell/frmsplash.h"
#include "shell/programicon.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QMainWindow>
#include <QMenuBar>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

using namespace sixtrace;
using bench::OneFile;

/// Resident memory of this process in KiB.
long residentKiB() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) {
        return 0;
    }
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:")) {
            return line.mid(6).trimmed().split(' ').constFirst().toLong();
        }
    }
    return 0;
}

/// Calls back at the window's first paint.
class FirstPaint final : public QObject {
public:
    explicit FirstPaint(std::function<void()> painted)
        : m_painted(std::move(painted)) {}
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && m_painted) {
            QTimer::singleShot(0, this, [this] { std::exchange(m_painted, nullptr)(); });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void()> m_painted;
};

/// Shows a window, tells the parent when it has been painted, does what is left to do, tells the memory and ends.
int show(QWidget& window, const std::function<void()>& afterPaint) {
    FirstPaint filter([&] {
        std::printf("painted\n");
        std::fflush(stdout);
        afterPaint();
        std::printf("%ld\n", residentKiB());
        std::fflush(stdout);
        std::_Exit(0);
    });
    window.installEventFilter(&filter);
    window.show();
    return QApplication::exec();
}

int runBare(int argc, char** argv) {
    const QApplication application(argc, argv);
    QMainWindow window;
    window.resize(800, 579);
    return show(window, [] {});
}

int runProgram(int argc, char** argv, const QString& folder) {
    QApplication application(argc, argv);
    applyLook(application);
    QApplication::setWindowIcon(programIcon());
    const auto model = std::make_unique<publicM>();
    OneFile dialogs(folder + QStringLiteral("/full.bin"));
    FrmCom window(*model, {.dialogs = dialogs, .applicationFolder = [folder] { return folder; }, .endProcess = [] {}});
    return show(window, [&] {
        auto* open = window.menuBar()->findChild<QAction*>(QStringLiteral("mnuOpen"));
        open->trigger();
        window.repaint();
        const long before = residentKiB();
        auto* graticule = window.menuBar()->findChild<QAction*>(QStringLiteral("mnuLine"));
        for (int i = 0; i < 1000; ++i) {
            graticule->trigger(); // a frame each
        }
        std::printf("%ld\n", residentKiB() - before);
    });
}

/// What a user sees first: the splash.
int runSplash(int argc, char** argv) {
    QApplication application(argc, argv);
    applyLook(application);
    QApplication::setWindowIcon(programIcon());
    frmSplash splash([] {}, [] {});
    return show(splash, [] {});
}

struct Run {
    double milliseconds = 0;
    long growth = 0;
    long memory = 0;
};

Run measure(const QString& program, const QStringList& arguments) {
    QElapsedTimer timer;
    QProcess process;
    timer.start();
    process.start(program, arguments);
    process.waitForReadyRead(20000);
    Run run;
    run.milliseconds = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    if (!process.waitForFinished(30000) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        std::fprintf(stderr, "a window was not shown: %s", process.readAllStandardError().constData());
        std::exit(1);
    }
    const QList<QByteArray> lines = process.readAllStandardOutput().trimmed().split('\n');
    run.memory = lines.constLast().toLong();
    run.growth = lines.size() > 2 ? lines.at(1).toLong() : 0;
    return run;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

int compare(const QString& program) {
    const QTemporaryDir folder;
    static_cast<void>(writeWhole(folder.filePath(QStringLiteral("full.bin")),
                                 captureBytes(*captureForm("V11"), *sceneBlocks(QStringLiteral("full"), 1))));
    std::vector<double> bare;
    std::vector<double> splash;
    std::vector<double> own;
    std::vector<double> bareMemory;
    std::vector<double> ownMemory;
    std::vector<double> growth;
    constexpr int kRounds = 15;
    for (int i = 0; i < kRounds; ++i) {
        const Run window = measure(program, {QStringLiteral("--bare")});
        splash.push_back(measure(program, {QStringLiteral("--splash")}).milliseconds);
        const Run whole = measure(program, {QStringLiteral("--program"), folder.path()});
        bare.push_back(window.milliseconds);
        own.push_back(whole.milliseconds);
        bareMemory.push_back(static_cast<double>(window.memory));
        ownMemory.push_back(static_cast<double>(whole.memory));
        growth.push_back(static_cast<double>(whole.growth));
    }
    constexpr double kSplashMs = 2500;
    std::printf("first paint: bare window %.1f ms, splash %.1f ms, ratio %.3f (at most 1.5)\n", median(bare),
                median(splash), median(splash) / median(bare));
    std::printf("main window painted after %.1f ms, %.3f of the time that the splash stands (below 1)\n", median(own),
                median(own) / kSplashMs);
    std::printf("memory: bare window %.1f MiB, program with a full capture %.1f MiB, above it %.1f MiB (at most 16)\n",
                median(bareMemory) / 1024, median(ownMemory) / 1024, (median(ownMemory) - median(bareMemory)) / 1024);
    std::printf("growth over 1000 frames: %.0f KiB\n", median(growth));
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    const QString mode = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString();
    if (mode == u"--bare") {
        return runBare(argc, argv);
    }
    if (mode == u"--splash") {
        return runSplash(argc, argv);
    }
    if (mode == u"--program" && argc > 2) {
        return runProgram(argc, argv, QString::fromLocal8Bit(argv[2]));
    }
    return compare(QString::fromLocal8Bit(argv[0]));
}
