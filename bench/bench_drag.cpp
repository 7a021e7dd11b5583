// SPDX-License-Identifier: MIT
// A step of both drags of a full record against two plain copies of the picture, and a move of the mouse over six
// traces through the main window's own handler, with the repaints that it asks for.
#include "capture/capturefile.h"
#include "capture/capturewriter.h"
#include "noise.h"
#include "onefile.h"
#include "platform/controls/listcombo.h"
#include "platform/controls/look.h"
#include "platform/controls/picturebox.h"
#include "ratios.h"
#include "shell/frmcom.h"
#include "view/drags.h"
#include "view/frame.h"
#include "view/geometry.h"

#include <QAction>
#include <QApplication>
#include <QMenuBar>
#include <QTemporaryDir>

#include <cmath>
#include <fstream>

namespace {

using namespace sixtrace;
using bench::nextRandom;
using bench::OneFile;

enum class Content { Sine, Noise };

/// One full record with the frame that stands at the press.
struct Scene {
    publicM model;
    FrameInputs inputs;
    FrameRenderer renderer;
    Picture picture2{kSurfaceWidth, kSurfaceHeight};
    Picture picHidden0{kSurfaceWidth, kSurfaceHeight};
    Picture picHidden1{kSurfaceWidth, kSurfaceHeight};

    explicit Scene(Content content) {
        model.fillTables();
        model.FileKind = 4;
        model.ChannelPresent[0] = 1;
        model.ScreenPoints[0] = kSampleRows;
        model.SampleCount[0] = kSampleRows;
        model.TimeIndex[0] = model.TimeIndexFile[0] = model.TimeIndexView[0] = 10;
        model.VoltIndexView[0] = 6;
        model.VoltPerCount[0] = 10.0F; // 0.5 V a division: 50 counts
        inputs.selected[0] = true;
        inputs.markerTop[0] = Twips{2910};
        std::uint32_t state = 1;
        for (int i = 0; i < kSampleRows; ++i) {
            constexpr double kTurn = 6.283185307179586;
            const int noise = static_cast<int>(nextRandom(state) % 401) - 200;
            const auto sine = std::lround(150 * std::sin(i * kTurn * 5 / kSampleRows));
            model.SampleData(0, i) = static_cast<std::int16_t>(content == Content::Noise ? noise : sine);
        }
        renderer.PicReDrawT(model, inputs, picture2, picHidden0);
    }
};

/// There and back again, so that the trace stays where it is however long the run.
int alternate(int& step) {
    step = (step + 1) % 8;
    return step < 4 ? 2 : -2;
}

void traceDrag(benchmark::State& state, Content content) {
    const auto scene = std::make_unique<Scene>(content);
    static_cast<void>(beginTraceDrag(scene->model, 0, scene->picture2, scene->picHidden1));
    int step = 0;
    for ([[maybe_unused]] auto _ : state) {
        if (!moveTraceDrag(scene->model, 0, ScreenX(alternate(step)), scene->picHidden0, scene->picHidden1,
                           scene->picture2)) {
            state.SkipWithError("the drag has ended");
        }
        benchmark::ClobberMemory();
    }
}

void markerDrag(benchmark::State& state, Content content) {
    const auto scene = std::make_unique<Scene>(content);
    scene->picture2.drawMode = DrawMode::XorPen;
    scene->picture2.ForeColor = kGhostColour;
    static_cast<void>(beginMarkerDrag(scene->model, 0, scene->picture2, scene->picHidden0));
    int step = 0;
    Twips top = scene->inputs.markerTop[0];
    for ([[maybe_unused]] auto _ : state) {
        top += alternate(step) * kPixel;
        if (!moveMarkerDrag(scene->model, 0, top, scene->picHidden0, scene->picture2)) {
            state.SkipWithError("the drag has ended");
        }
        benchmark::ClobberMemory();
    }
}

/// The least that a step of a drag must do: the frame at the press to the hidden picture and from there to the screen.
void twoCopies(benchmark::State& state) {
    const auto scene = std::make_unique<Scene>(Content::Sine);
    static_cast<void>(beginTraceDrag(scene->model, 0, scene->picture2, scene->picHidden1));
    for ([[maybe_unused]] auto _ : state) {
        scene->picHidden1.BitBlt(0, 0, kScreenWidth, kScreenHeight, scene->picHidden0, 0, 0);
        scene->picture2.BitBlt(0, 0, kScreenWidth, kScreenHeight, scene->picHidden1, 0, 0);
        benchmark::ClobberMemory();
    }
}

/// Six full records one below the other.
std::vector<CaptureBlock> sixFlatTraces() {
    std::vector<CaptureBlock> blocks;
    int zeroLevel = 75;
    for (const char id : {'1', '2', 'A', 'B', 'C', 'D'}) {
        blocks.push_back({.id = id,
                          .screenPoints = kSampleRows,
                          .sampleCount = kSampleRows,
                          .timeIndex = 10,
                          .zeroLevel = zeroLevel,
                          .voltIndex = 7,
                          .sampleInterval = 2.5F,
                          .voltPerCount = 10,
                          .samples = std::vector<std::int16_t>(kSampleRows, 0)});
        zeroLevel -= 25;
    }
    return blocks;
}

class Repaints final : public QObject {
public:
    int count = 0;
    bool eventFilter(QObject* watched, QEvent* event) override {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
};

/// A shown main window with a capture of six traces.
struct Window {
    QTemporaryDir folder;
    std::unique_ptr<publicM> model = std::make_unique<publicM>();
    OneFile dialogs{folder.filePath(QStringLiteral("six.bin"))};
    std::unique_ptr<FrmCom> form;
    PictureBox* screen = nullptr;
    ListCombo* cursors = nullptr;
    Repaints repaints;

    Window() {
        const QByteArray bytes = captureBytes(*captureForm("V11"), sixFlatTraces());
        std::ofstream(folder.filePath(QStringLiteral("six.bin")).toStdString(), std::ios::binary)
            .write(bytes.constData(), bytes.size());
        form = std::make_unique<FrmCom>(*model, FrmComServices{dialogs, [this] { return folder.path(); }, [] {}});
        form->show();
        form->menuBar()->findChild<QAction*>(QStringLiteral("mnuOpen"))->trigger();
        screen = form->findChild<PictureBox*>(QStringLiteral("Picture2"));
        cursors = form->findChild<ListCombo*>(QStringLiteral("Combo3"));
        QCoreApplication::processEvents();
        screen->installEventFilter(&repaints);
    }
};

/// Moves between the traces, where all six have to be looked at, and now and then onto one.
void mouseMove(benchmark::State& state, int cursorType) {
    Window window;
    window.cursors->setListIndex(cursorType);
    QCoreApplication::processEvents();
    window.repaints.count = 0;
    int step = 0;
    for ([[maybe_unused]] auto _ : state) {
        step = (step + 7) % 380;
        Q_EMIT window.screen->mouseMove(10 + step, step);
        benchmark::ClobberMemory();
    }
    QCoreApplication::processEvents();
    state.counters["repaints"] = window.repaints.count;
}

/// A microsecond by the clock, so that the goal can be told as a ratio like the others.
void oneMicrosecond(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        state.SetIterationTime(1e-6);
    }
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    applyLook(*qApp);
    const auto add = [](const char* name, auto run) { return benchmark::RegisterBenchmark(name, run); };
    add("trace_drag_sine", [](benchmark::State& state) { traceDrag(state, Content::Sine); });
    add("trace_drag_noise", [](benchmark::State& state) { traceDrag(state, Content::Noise); });
    add("marker_drag_sine", [](benchmark::State& state) { markerDrag(state, Content::Sine); });
    add("marker_drag_noise", [](benchmark::State& state) { markerDrag(state, Content::Noise); });
    add("two_copies", twoCopies);
    add("mouse_move", [](benchmark::State& state) { mouseMove(state, 0); });
    add("mouse_move_cursors", [](benchmark::State& state) { mouseMove(state, 3); });
    add("one_microsecond", oneMicrosecond)->UseManualTime()->Iterations(1000);
    return sixtrace::bench::runAndCompare(
        argc, argv,
        {
            {"sideways drag, sine / two copies", "trace_drag_sine", "two_copies", 1.5},
            {"sideways drag, noise / two copies", "trace_drag_noise", "two_copies", 2.5},
            {"marker drag, sine / two copies", "marker_drag_sine", "two_copies", 1.5},
            {"marker drag, noise / two copies", "marker_drag_noise", "two_copies", 2.5},
            {"mouse move over six traces / 1 us", "mouse_move", "one_microsecond", 1},
            {"the same with all cursors / 1 us", "mouse_move_cursors", "one_microsecond", 1},
        });
}
