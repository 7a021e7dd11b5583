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
    // The program reads no command line. The toolkit gets none either, since it would obey some arguments.
    argc = argc > 0 ? 1 : 0;
    argv[argc] = nullptr;
    // The scale of the display is not rounded, since that would blur or shift pictures and text.
    QApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication application(argc, argv);
    // There is no display name, since the desktop would add it to the title of every window.
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
    // The bus is connected after the first window is shown.
    QTimer::singleShot(0, &program.calls(), [&program] { program.calls().answerOn(QDBusConnection::sessionBus()); });
    return QApplication::exec();
}
