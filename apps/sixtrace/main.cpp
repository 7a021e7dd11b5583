// SPDX-License-Identifier: MIT
#include "platform/look.h"
#include "platform/programfolder.h"
#include "platform/qtdialogs.h"
#include "shell/desktopcalls.h"
#include "shell/frmcom.h"
#include "shell/frmsplash.h"
#include "shell/programicon.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDesktopServices>
#include <QLibraryInfo>
#include <QLocale>
#include <QTimer>
#include <QTranslator>
#include <QUrl>

#include <cstdlib>
#include <memory>

int main(int argc, char** argv) {
    // Pictures and text are drawn at whatever scale the display has; rounding it would blur or shift them.
    QApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    std::jthread fontSettings = sixtrace::readFontSettings();
    QApplication application(argc, argv);
    const std::jthread fonts = sixtrace::listFonts(std::move(fontSettings));
    QApplication::setApplicationName(QStringLiteral("sixtrace"));
    // No display name: the desktop would append it to the title of every window.
    QApplication::setApplicationVersion(QStringLiteral(SIXTRACE_VERSION));
    QApplication::setQuitOnLastWindowClosed(false);
    sixtrace::applyLook(application);
    // The desktop's own dialogs speak the desktop's language; where its texts are missing they stay English.
    QTranslator dialogTexts;
    if (dialogTexts.load(QLocale::system(), QStringLiteral("qtbase"), QStringLiteral("_"),
                         QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QApplication::installTranslator(&dialogTexts);
    }
    QApplication::setWindowIcon(sixtrace::programIcon());

    const auto model = std::make_unique<sixtrace::publicM>();
    sixtrace::QtDialogs dialogs;
    std::unique_ptr<sixtrace::FrmCom> frmCom;
    const auto loadMain = [&] {
        if (!frmCom) {
            frmCom = std::make_unique<sixtrace::FrmCom>(
                *model,
                sixtrace::FrmComSurroundings{
                    .dialogs = dialogs,
                    .applicationFolder = &sixtrace::programFolder,
                    .endProcess = [] { std::_Exit(EXIT_SUCCESS); },
                    .openFile = [](const QString& path) { QDesktopServices::openUrl(QUrl::fromLocalFile(path)); }});
        }
    };
    sixtrace::DesktopCalls calls;
    sixtrace::frmSplash splash(loadMain, [&] {
        loadMain();
        frmCom->show();
        calls.reach({.raise =
                         [&frmCom] {
                             frmCom->raise();
                             frmCom->activateWindow();
                         },
                     .open = [&frmCom](const QString& path) { frmCom->openFromDesktop(path); }});
    });
    splash.show();
    // The bus can wait until there is something to see.
    QTimer::singleShot(0, &calls, [&calls] { calls.answerOn(QDBusConnection::sessionBus()); });
    return QApplication::exec();
}
