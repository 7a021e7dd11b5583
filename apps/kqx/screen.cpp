// SPDX-License-Identifier: MIT
// kqx screen: the picture that the program shows after opening a capture with default settings.
#include "commands.h"

#include "capture/plaincaptureview.h"
#include "platform/wholefile.h"
#include "view/frame.h"
#include "view/geometry.h"

#include <QBuffer>

namespace sixtrace::kqx {

namespace {

constexpr int kGreatestScale = 16;

/// A window without a window: its frames go to a picture.
class ScreenView final : public PlainCaptureView {
public:
    ScreenView(publicM& model, bool graticule, bool line)
        : PlainCaptureView(model)
        , m_model(model) {
        m_inputs.graticule = graticule;
        m_inputs.line = line;
        picture2.BackColor = model.BackColor;
        picHidden0.BackColor = model.BackColor;
        picture2.Cls();
    }

    Picture picture2{kSurfaceWidth, kSurfaceHeight};
    Picture picHidden0{kSurfaceWidth, kSurfaceHeight};

    void PicReDrawT() override {
        m_inputs.selected = ticks;
        m_inputs.markerTop = markerTops;
        m_renderer.PicReDrawT(m_model, m_inputs, picture2, picHidden0);
    }

    /// A tick redraws, as it does in the window.
    void setTick(int channel, bool ticked) override {
        PlainCaptureView::setTick(channel, ticked);
        PicReDrawT();
    }

private:
    publicM& m_model;
    FrameInputs m_inputs;
    FrameRenderer m_renderer;
};

} // namespace

int screen(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Writes the screen of a capture, 601 by 401 pixels, as the program draws it after opening the "
                       "file with default settings."));
    const QCommandLineOption points(QStringLiteral("points"), QStringLiteral("Draw points instead of lines."));
    const QCommandLineOption cross(QStringLiteral("cross"), QStringLiteral("Draw the cross instead of the graticule."));
    const QCommandLineOption scale(QStringLiteral("scale"), QStringLiteral("Enlarge each pixel <n> times, 1 to 16."),
                                   QStringLiteral("n"), QStringLiteral("1"));
    parser.addOptions({points, cross, scale});
    if (const auto code =
            parse(parser, QStringLiteral("screen"), arguments, {QStringLiteral("FILE"), QStringLiteral("OUT.png")})) {
        return *code;
    }
    bool isNumber = false;
    const int factor = parser.value(scale).toInt(&isNumber);
    if (!isNumber || factor < 1 || factor > kGreatestScale) {
        return fail(WrongUse, QStringLiteral("--scale takes a whole number from 1 to 16"));
    }
    const QString file = parser.positionalArguments().at(0);
    const QString target = parser.positionalArguments().at(1);

    const auto model = defaultModel();
    ScreenView view(*model, !parser.isSet(cross), !parser.isSet(points));
    const auto code = openCapture(file, *model, view);
    if (!code) {
        return Failed;
    }
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    const QImage image = view.picture2.view();
    if (!image.scaled(image.size() * factor, Qt::IgnoreAspectRatio, Qt::FastTransformation).save(&buffer, "PNG")) {
        return fail(Failed, QStringLiteral("the picture could not be made"));
    }
    const Outcome written = writeWhole(target, png);
    if (!written) {
        return fail(Failed, QStringLiteral("%1: %2").arg(target, written.error().description));
    }
    return *code;
}

} // namespace sixtrace::kqx
