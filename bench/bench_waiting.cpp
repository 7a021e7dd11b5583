// SPDX-License-Identifier: MIT
// Processor time of a wait of 10 s, of the shown serial window and of kqx fetch: for an instrument that says nothing,
// and at a line whose far end has gone.
#include "acquire/recfrm.h"
#include "platform/controls/look.h"
#include "platform/desktop/qtdialogs.h"
#include "platform/files/profilefile.h"

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
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

constexpr int kSettleMs = 1500;
constexpr int kWaitMs = 10000;
constexpr double kGoalSeconds = 0.1;

enum class FarEnd { Silent, Gone };

/// A pseudo terminal that says nothing.
class Line {
public:
    Line() {
        termios raw{};
        cfmakeraw(&raw);
        if (openpty(&m_master, &m_slave, nullptr, &raw, nullptr) != 0) {
            std::puts("no silent line to wait at");
            std::exit(EXIT_FAILURE);
        }
        m_name = QString::fromLocal8Bit(ttyname(m_slave));
        close(m_slave);
    }
    ~Line() { pull(); }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    [[nodiscard]] QString name() const { return m_name; }
    void pull() {
        if (m_master >= 0) {
            close(m_master);
        }
        m_master = -1;
    }

private:
    int m_master = -1;
    int m_slave = -1;
    QString m_name;
};

double ownSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// Processor time of another process so far; -1 when it is not there any more.
double secondsOf(qint64 process) {
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly)) {
        return -1;
    }
    const QByteArray line = file.readAll();
    const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
    return (fields.value(11).toDouble() + fields.value(12).toDouble()) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

bool told(const char* what, FarEnd end, double used, bool waited) {
    std::printf("%s, 10 s at a line whose far end %s: %.3f s of processor time, goal at most %.1f s%s\n", what,
                end == FarEnd::Silent ? "is silent" : "has gone", used, kGoalSeconds,
                waited ? "" : " (it had stopped waiting)");
    std::fflush(stdout);
    return waited && used >= 0 && used <= kGoalSeconds;
}

bool measureCompanion(FarEnd end) {
    Line line;
    const QTemporaryDir folder;
    QProcess companion;
    companion.start(QStringLiteral(SIXTRACE_BIN "/kqx"),
                    {QStringLiteral("fetch"), QStringLiteral("--serial"), line.name(), QStringLiteral("--timeout"),
                     QStringLiteral("30"), QStringLiteral("-o"), folder.path()});
    companion.waitForStarted();
    QTest::qWait(kSettleMs);
    if (end == FarEnd::Gone) {
        line.pull();
    }
    const double before = secondsOf(companion.processId());
    QTest::qWait(kWaitMs);
    const bool waited = companion.state() == QProcess::Running;
    const double used = secondsOf(companion.processId()) - before;
    companion.kill();
    companion.waitForFinished();
    return told("kqx fetch", end, used, waited);
}

/// The last measurement: the window still waits afterwards, and the process ends.
[[noreturn]] void measureWindow(FarEnd end, bool goodBefore) {
    Line line;
    const QTemporaryDir folder;
    const auto model = std::make_unique<publicM>();
    model->AppDir = folder.path() + QLatin1Char('/');
    model->IniFile = folder.filePath(QStringLiteral("vkq.ini"));
    static_cast<void>(
        writeProfile(QStringLiteral("Common"), QStringLiteral("ComPort"), QStringLiteral("1"), model->IniFile));
    QtDialogs dialogs;
    TransferGate gate;
    recFrm window(*model, dialogs, [&line](int number) { return number == 1 ? line.name() : QString(); }, gate,
                  {.caption = [](const QString&) {}, .report = [](const TransferReport&) {}});
    window.load();
    window.show();
    double before = 0;
    QTimer::singleShot(0, &window, [&] { window.Command2_Click(); });
    QTimer::singleShot(kSettleMs, &window, [&] {
        if (end == FarEnd::Gone) {
            line.pull();
        }
        before = ownSeconds();
        QTimer::singleShot(kWaitMs, &window, [&] {
            const bool good = told("the window", end, ownSeconds() - before, gate.held());
            std::_Exit(good && goodBefore ? EXIT_SUCCESS : EXIT_FAILURE);
        });
    });
    QApplication::exec();
    std::_Exit(EXIT_FAILURE);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    applyLook(*qApp);
    // The window at a silent line is measured by a second process, as neither window gives its wait up.
    if (argc > 1 && qstrcmp(argv[1], "silent-window") == 0) {
        measureWindow(FarEnd::Silent, true);
    }
    bool good = measureCompanion(FarEnd::Silent);
    good = measureCompanion(FarEnd::Gone) && good;
    good = QProcess::execute(QString::fromLocal8Bit(argv[0]), {QStringLiteral("silent-window")}) == 0 && good;
    measureWindow(FarEnd::Gone, good);
}
