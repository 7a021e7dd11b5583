// SPDX-License-Identifier: MIT
// kqx info: what a capture holds, and what is wrong with it.
#include "captureinfo.h"
#include "commands.h"

#include "capture/capturefile.h"
#include "capture/plaincaptureview.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QTextStream>

#include <memory>

namespace sixtrace::kqx {

int info(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Tells what a capture file holds, and names its faults."));
    const QCommandLineOption json(QStringLiteral("json"), QStringLiteral("Print JSON instead of text."));
    parser.addOption(json);
    if (const auto code = parse(parser, QStringLiteral("info"), arguments, {QStringLiteral("FILE")})) {
        return *code;
    }
    const QString file = parser.positionalArguments().constFirst();

    const auto model = std::make_unique<publicM>();
    model->fillTables();
    const std::vector<CaptureFault> faults = checkCapture(file);
    if (QFileInfo(file).isFile()) {
        PlainCaptureView view(*model);
        SimpleWav(file, *model, view);
    }
    QTextStream out(stdout);
    if (parser.isSet(json)) {
        out << QJsonDocument(captureJson(*model, faults)).toJson();
    } else if (model->FileKind != 0) {
        out << captureText(*model);
    }
    out.flush();
    nameFaults(file, faults);
    return faults.empty() ? Done : Failed;
}

} // namespace sixtrace::kqx
