// SPDX-License-Identifier: MIT
// With and without a window the same operations have the same result: the rules decide, and the widgets only show.
#include "capture/channellist.h"
#include "platform/controls/arrowpair.h"
#include "shell/shownwindow.h"
#include "support/strings.h"
#include "view/cursors.h"
#include "view/scopescreen.h"
#include "view/screenmouse.h"
#include "view/timevoltcontrols.h"

#include <QKeyEvent>
#include <QRandomGenerator>

namespace sixtrace::test {
namespace {

constexpr int kOperations = 10'000;
constexpr int kOperationsAForm = kOperations / 6 + 1;
constexpr int kOperationsAPicture = 97;

class Windowless : public ShownWindow, public ::testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        ShownWindow::SetUp();
        load();
        form->show();
        twin->fillTables();
        twin->LineColor = model->LineColor;
        twin->GridColor = model->GridColor;
        twin->BackColor = model->BackColor;
        twin->LanguageId = model->LanguageId;
        scope = std::make_unique<OffscreenScope>(*twin);
        scope->state.stripColor = form->state().stripColor;
        List1_Click(rules());
        scope->state.CurChannel = -1;
        mouse = std::make_unique<ScreenMouse>(rules(), scope->screen());
        loading = std::make_unique<CaptureLoading>(rules(), twinDialogs, [this] { return path(QString()); });
    }

    [[nodiscard]] Scope rules() const { return scope->scope(); }
    [[nodiscard]] ScreenState& state() const { return scope->state; }
    [[nodiscard]] int below(int limit) { return static_cast<int>(random.bounded(limit)); }

    /// A capture of one of the shorter scenes, in the form of this test.
    void openAnyScene() {
        std::optional<std::vector<CaptureBlock>> blocks;
        while (!blocks) {
            const auto& all = scenes();
            const Scene& scene = all[static_cast<std::size_t>(below(static_cast<int>(all.size())))];
            if (QLatin1String(scene.name) != u"full"_s) {
                blocks = sceneBlocks(QString::fromLatin1(scene.name), random.generate());
            }
        }
        write(u"scene.bin"_s, captureBytes(*captureForm(GetParam()), *blocks));
        for (ScriptedDialogs* answered : {&dialogs, &twinDialogs}) {
            answered->files.emplace_back(FileChoice{path(u"scene.bin"_s), 1});
        }
        item("mnuOpen").trigger();
        loading->mnuOpen_Click();
    }

    /// The user chooses an entry of a list. It may be the one that is chosen already.
    static void choose(ListCombo& list, int row) {
        list.setCurrentIndex(row);
        Q_EMIT list.Click();
    }
    static void key(QWidget& widget, int key) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &event);
    }

    QString operateLists() {
        const int row = below(kChannels);
        switch (below(6)) {
        case 0: {
            const int chosen = below(20) == 0 ? -1 : row;
            list().setListIndex(chosen);
            selectRow(rules(), chosen);
            return u"row %1"_s.arg(chosen);
        }
        case 1: {
            const bool ticked = below(3) != 0;
            list().setSelected(row, ticked);
            setTick(rules(), row, ticked);
            return u"tick %1 %2"_s.arg(row).arg(ticked);
        }
        case 2: {
            const int time = below(kTimeBaseRows);
            choose(control<ListCombo>("Combo1"), time);
            chooseTimeRow(rules(), time);
            return u"time %1"_s.arg(time);
        }
        case 3: {
            const int volts = below(kVoltRows);
            choose(control<ListCombo>("Combo2"), volts);
            chooseVoltRow(rules(), volts);
            return u"volts %1"_s.arg(volts);
        }
        case 4: {
            const int type = below(4);
            choose(cursorType(), type);
            state().cursorChoice = static_cast<CursorType>(type);
            Combo3_Click(rules());
            return u"cursors %1"_s.arg(type);
        }
        default: {
            const Step step = below(2) == 0 ? Step::Up : Step::Down;
            const bool volts = below(2) == 0;
            auto& arrows = control<ArrowPair>(volts ? "UpDown1" : "UpDown2");
            if (step == Step::Up) {
                Q_EMIT arrows.UpClick();
            } else {
                Q_EMIT arrows.DownClick();
            }
            volts ? stepVoltRow(rules(), step) : stepTimeRow(rules(), step);
            return u"arrow"_s;
        }
        }
    }

    QString operateBar() {
        const int value = std::clamp(bar().Value() + below(9) - 4, 0, bar().Max());
        const bool moves = value != state().bar.value;
        if (below(2) == 0) {
            bar().setValue(value);
        } else {
            bar().setSliderDown(true);
            bar().setSliderPosition(value);
            if (moves) {
                state().bar.value = value;
                VScroll1_Scroll(rules());
            }
            EXPECT_EQ(control<QLabel>("CenterPoint").isVisible(), state().CenterPoint.has_value());
            EXPECT_EQ(control<QLabel>("CenterPoint").text(),
                      state().CenterPoint.value_or(control<QLabel>("CenterPoint").text()));
            bar().setSliderDown(false);
        }
        if (moves) {
            state().bar.value = value;
            VScroll1_Change(rules());
        }
        return u"bar %1"_s.arg(value);
    }

    /// A place on the screen, beside it, or near a cursor or zero line.
    QPointF somewhere() {
        QPointF at(below(2520) / 4.0 - 15, below(1720) / 4.0 - 15);
        const auto number = static_cast<std::size_t>(below(2));
        switch (below(4)) {
        case 0:
            at.setY(state().cursors.voltage[number].number() + below(5) - 2);
            break;
        case 1:
            at.setX(state().cursors.time[number].number() + below(5) - 2);
            break;
        case 2:
            at.setY(twin->ChannelYPos[below(kChannels)] + below(9) - 4);
            break;
        default:
            break;
        }
        return at;
    }

    QString operateScreen() {
        const QPointF at = somewhere();
        switch (below(6)) {
        case 0:
            press(screen(), at.x(), at.y(), below(2) == 0 ? Qt::LeftButton : Qt::RightButton);
            mouse->Picture2_MouseDown(ScreenX(at.x()), ScreenY(at.y()));
            return u"press %1 %2"_s.arg(at.x()).arg(at.y());
        case 1:
            release(screen(), at.x(), at.y());
            mouse->Picture2_MouseUp();
            return u"release"_s;
        default:
            drag(screen(), at.x(), at.y());
            mouse->Picture2_MouseMove(ScreenX(at.x()), ScreenY(at.y()));
            return u"move %1 %2"_s.arg(at.x()).arg(at.y());
        }
    }

    QString operateMarker() {
        const int channel = below(kChannels);
        const int y = below(15);
        press(marker(channel), 3, y);
        mouse->image1_MouseDown(channel, twipsOfPixels(y));
        const int moves = below(4);
        for (int i = 0; i < moves; ++i) {
            const int to = y + below(121) - 60;
            const bool left = below(5) != 0;
            drag(marker(channel), 3, to, left ? Qt::LeftButton : Qt::RightButton);
            mouse->image1_MouseMove(channel, left ? Qt::LeftButton : Qt::RightButton, twipsOfPixels(to));
        }
        if (below(5) != 0) {
            release(marker(channel), 3, y);
            mouse->image1_MouseUp(channel);
        }
        return u"marker %1"_s.arg(channel);
    }

    QString operateKeys() {
        const bool up = below(2) == 0;
        if (below(2) == 0) {
            const int channel = below(kChannels);
            key(marker(channel), up ? Qt::Key_Up : Qt::Key_Down);
            mouse->moveMarkerBy(channel, ScreenY(up ? -1 : 1));
            return u"marker key %1"_s.arg(channel);
        }
        static const std::array names{"Line1Keys(0)", "Line1Keys(1)", "Line2Keys(0)", "Line2Keys(1)"};
        static const std::array hits{CursorHit::Voltage1, CursorHit::Voltage2, CursorHit::Time1, CursorHit::Time2};
        const auto line = static_cast<std::size_t>(below(4));
        const bool lying = line < 2;
        key(control<QWidget>(names[line]),
            lying ? (up ? Qt::Key_Up : Qt::Key_Down) : (up ? Qt::Key_Left : Qt::Key_Right));
        mouse->moveCursorBy(hits[line], up ? -1 : 1);
        return u"cursor key %1"_s.arg(line);
    }

    QString turnTimedAcquisition() {
        model->AutoRun = !model->AutoRun;
        twin->AutoRun = model->AutoRun;
        if (!model->AutoRun) {
            showTrueChoices(form->pictures().scope());
            form->showState();
            showTrueChoices(rules());
        }
        return u"timed acquisition %1"_s.arg(model->AutoRun);
    }

    QString operate() {
        const int kind = below(1000);
        if (kind < 12) {
            openAnyScene();
            return u"load"_s;
        }
        if (kind < (model->AutoRun ? 112 : 32)) {
            return turnTimedAcquisition();
        }
        return kind < 350   ? operateLists()
               : kind < 450 ? operateBar()
               : kind < 800 ? operateScreen()
               : kind < 900 ? operateMarker()
                            : operateKeys();
    }

    std::unique_ptr<publicM> twin = std::make_unique<publicM>();
    ScriptedDialogs twinDialogs;
    std::unique_ptr<OffscreenScope> scope;
    std::unique_ptr<ScreenMouse> mouse;
    std::unique_ptr<CaptureLoading> loading;
    /// Each form of capture file gets its own series of operations.
    QRandomGenerator random{20'251'122U + static_cast<std::uint32_t>(captureForm(GetParam())->fileKind)};
};

TEST_P(Windowless, AnySeriesOfOperationsShowsTheSameInTheWindowAndWithoutOne) {
    openAnyScene();
    QStringList last;
    for (int i = 0; i < kOperationsAForm; ++i) {
        last << operate();
        last = last.mid(std::max<qsizetype>(0, last.size() - 6));
        const std::string story = "operation " + std::to_string(i) + ": " + last.join(u", ").toStdString();
        ASSERT_EQ(shownByWindow(), shownByState(state(), *twin)) << story;
        ASSERT_EQ(form->state().CurChannel, state().CurChannel) << story;
        ASSERT_EQ(model->TimeIndexView, twin->TimeIndexView) << story;
        ASSERT_EQ(model->VoltIndexView, twin->VoltIndexView) << story;
        ASSERT_EQ(model->ChannelXShift, twin->ChannelXShift) << story;
        ASSERT_EQ(model->ChannelYPos, twin->ChannelYPos) << story;
        ASSERT_EQ(screen().picture().drawMode, scope->Picture2.drawMode) << story;
        if (i % kOperationsAPicture == 0) {
            ASSERT_EQ(screenImage(), scope->Picture2.view()) << story;
            ASSERT_EQ(form->pictures().background().view(), scope->screen().background().view()) << story;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(OfEveryForm, Windowless, ::testing::Values("bin", "V01", "W01", "V11", "W11", "V10"),
                         [](const auto& form) { return std::string(form.param); });

} // namespace
} // namespace sixtrace::test
