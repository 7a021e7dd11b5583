// SPDX-License-Identifier: MIT
#include "platform/controls/look.h"
#include "platform/desktop/qtdialogs.h"
#include "platform/files/descriptor.h"
#include "platform/files/programfolder.h"
#include "shell/program.h"
#include "shell/programicon.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDesktopServices>
#include <QTimer>
#include <QUrl>

#include <cstdlib>

int main(int argc, char** argv) {
    sixtrace::openStandardDescriptors();
    // No command line is read, by the toolkit neither: it would stop at arguments of its own, or obey them.
    argc = argc > 0 ? 1 : 0;
    argv[argc] = nullptr;
    // Pictures and text are drawn at whatever scale the display has; rounding it would blur or shift them.
    QApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication application(argc, argv);
    // It gets no display name: the desktop would append that to the title of every window.
    QApplication::setApplicationName(QStringLiteral("sixtrace"));
    QApplication::setApplicationVersion(QStringLiteral(SIXTRACE_VERSION));
    QApplication::setQuitOnLastWindowClosed(false);
    sixtrace::applyLook(application);
    QApplication::setWindowIcon(sixtrace::programIcon());

    sixtrace::QtDialogs dialogs;
    sixtrace::Program program(
        {.dialogs = dialogs,
         .applicationFolder = &sixtrace::programFolder,
         .endProcess = [] { std::_Exit(EXIT_SUCCESS); },
         .openFile = [](const QString& path) { QDesktopServices::openUrl(QUrl::fromLocalFile(path)); }});
    program.start();
    // The bus can wait until there is something to see.
    QTimer::singleShot(0, &program.calls(), [&program] { program.calls().answerOn(QDBusConnection::sessionBus()); });
    return QApplication::exec();
}
