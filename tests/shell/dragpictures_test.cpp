// SPDX-License-Identifier: MIT
// Compares what the screen shows during the drag of a trace or a marker with pictures that are drawn point by point.
#include "shell/capturewindow.h"
#include "support/plainpicture.h"

#include <QList>
#include <QRandomGenerator>

#include <cmath>

namespace sixtrace::test {
namespace {

/// The positions of one trace. The test moves them by the plain rules while the program moves its own.
struct Positions {
    QList<std::int64_t> x;
    QList<std::int64_t> y;

    Positions(const publicM& model, int channel) {
        for (int i = 0; i < model.SampleCount[channel]; ++i) {
            x.push_back(model.PlotX(channel, i));
            y.push_back(model.PlotY(channel, i));
        }
    }
    [[nodiscard]] qsizetype size() const { return x.size(); }

    /// The first sample right of column 0 and the last sample left of column 600.
    struct Range {
        qsizetype first;
        qsizetype last;
    };
    /// Adds a step to one coordinate of the samples up to the first one of the range, then of those from the end down
    /// to its last one, then of those between the two.
    Range shift(QList<std::int64_t>& coordinate, std::int64_t step) {
        const qsizetype count = size();
        Range range{count, -1};
        for (qsizetype i = 0; i < count; ++i) {
            coordinate[i] += step;
            if (x[i] > 0) {
                range.first = i;
                break;
            }
        }
        for (qsizetype i = count - 1; i >= 0; --i) {
            coordinate[i] += step;
            if (x[i] < 600) {
                range.last = i;
                break;
            }
        }
        for (qsizetype i = range.first + 1; i < range.last; ++i) {
            coordinate[i] += step;
        }
        return range;
    }
};

class DragPictures : public CaptureWindow {
protected:
    void openAndSelect(const std::vector<CaptureBlock>& blocks, int channel) {
        load();
        form->show();
        open(blocks);
        list().setListIndex(channel);
    }
    static CaptureBlock wave(char id, int samples, bool noise) {
        CaptureBlock made = flat(id, 0);
        made.screenPoints = samples;
        made.sampleCount = samples;
        made.samples.clear();
        QRandomGenerator random(7);
        for (int i = 0; i < samples; ++i) {
            made.samples.push_back(static_cast<std::int16_t>(
                noise ? random.bounded(-180, 181) : std::lround(120 * std::sin(i * 6.283185307179586 * 3 / samples))));
        }
        return made;
    }
    /// The row of the sample at column `x`, which a press has to hit to pick the trace.
    [[nodiscard]] double rowUnder(int channel, double x) const {
        const auto i = static_cast<int>(std::nearbyint(x * model->SampleCount[channel] / 600.0));
        return 200 - model->SampleData(channel, i); // one row a count around row 200
    }

    void expectTraceDrag(const std::vector<double>& places) {
        const PlainPicture frame(screenImage());
        Positions trace(*model, 0);
        const double row = rowUnder(0, places.front());
        ASSERT_GE(row, 0);
        ASSERT_LT(row, 400);

        press(screen(), places.front(), row);
        PlainPicture pressed = frame;
        pressed.pen = PlainPicture::Pen::Xor;
        pressed.point(0, trace.y[0]);
        pressed.moveTo(trace.x[0], trace.y[0]);
        for (qsizetype i = 0; i < trace.size(); ++i) {
            pressed.lineTo(trace.x[i], trace.y[i]);
        }
        EXPECT_EQ(pressed.differences(screenImage()), 0) << "the ghost lies by exclusive or on the trace";

        double last = places.front();
        for (std::size_t move = 1; move < places.size(); ++move) {
            drag(screen(), places[move], row);
            const auto step = static_cast<std::int64_t>(places[move] - last);
            last = places[move];
            PlainPicture moved = frame;
            moved.point(trace.x[0], trace.y[0]);
            const auto range = trace.shift(trace.x, step);
            if (range.first < trace.size()) {
                moved.point(trace.x[range.first], trace.y[range.first]);
            }
            const auto thinning =
                std::max<qsizetype>(1, std::lrint(static_cast<double>(range.last - range.first - 2) / 600));
            for (qsizetype i = range.first + 1; i < range.last; i += thinning) {
                moved.lineTo(trace.x[i], trace.y[i]);
            }
            EXPECT_EQ(moved.differences(screenImage()), 0) << "move " << move;
            for (qsizetype i = 0; i < trace.size(); ++i) {
                ASSERT_EQ(model->PlotX(0, static_cast<int>(i)), trace.x[i]) << "move " << move << " sample " << i;
            }
        }
        release(screen(), last, row);
    }

    void expectMarkerDrag(const std::vector<double>& pixels) {
        const PlainPicture frame(screenImage());
        Positions trace(*model, 0);
        press(marker(0), 12, 7);
        PlainPicture ghost = frame;
        ghost.pen = PlainPicture::Pen::Xor;
        ghost.point(trace.x[0], trace.y[0]);
        for (qsizetype i = 1; i < trace.size(); ++i) {
            ghost.lineTo(trace.x[i], trace.y[i]);
        }
        EXPECT_EQ(ghost.differences(screenImage()), 0) << "the ghost lies by exclusive or on the trace";
        const PlainPicture snapshot = ghost;

        double top = marker(0).Top().number();
        int zeroLine = model->ChannelYPos[0];
        for (const double pixel : pixels) {
            drag(marker(0), 12, 7 + pixel);
            top += 15 * std::floor(pixel);
            const int newLine = static_cast<int>(std::nearbyint((105 + top) / 6030 * 400));
            const auto range = trace.shift(trace.y, newLine - zeroLine);
            zeroLine = newLine;
            PlainPicture moved = snapshot;
            if (range.first < trace.size()) {
                moved.point(trace.x[range.first], trace.y[range.first]);
            }
            for (qsizetype k = range.first + 1; k < range.last; ++k) {
                if (trace.x[k] != trace.x[k - 1]) {
                    moved.lineTo(trace.x[k], trace.y[k]);
                }
            }
            EXPECT_EQ(moved.differences(screenImage()), 0) << "at " << top;
            for (qsizetype i = 0; i < trace.size(); ++i) {
                ASSERT_EQ(model->PlotY(0, static_cast<int>(i)), trace.y[i]) << "at " << top << " sample " << i;
            }
        }
        release(marker(0), 12, 7);
    }
};

const std::vector<double> kWalk{300, 301, 320, 260, 0, 599, 595, 310};

TEST_F(DragPictures, ASineDraggedSidewaysIsTheFrameAtThePressWithTheMovedTraceInBlue) {
    openAndSelect({wave('1', 600, false), flat('A', 50)}, 0);
    expectTraceDrag(kWalk);
}

TEST_F(DragPictures, AFullRecordDraggedSidewaysIsThinned) {
    openAndSelect({wave('1', kSampleRows, false), flat('A', 50)}, 0);
    expectTraceDrag(kWalk);
}

TEST_F(DragPictures, NoiseDraggedSidewaysIsThinned) {
    openAndSelect({wave('1', kSampleRows, true), wave('A', 600, false)}, 0);
    expectTraceDrag(kWalk);
}

TEST_F(DragPictures, With901And902And903SamplesOnTheScreenTheThinningBeginsAtTheEvenTwo) {
    // All samples lie inside but the last and those in column 0, so the range is a little shorter than the record.
    for (const int samples : {900, 901, 902, 903, 904, 905, 906, 1500, 1502, 1504}) {
        openAndSelect({wave('1', samples, true)}, 0);
        expectTraceDrag({300, 301, 299});
    }
}

TEST_F(DragPictures, AZoomedTraceDraggedFromBeyondBothEndsShowsItsVisiblePart) {
    openAndSelect({wave('1', kSampleRows, false)}, 0);
    control<ListCombo>("Combo1").setListIndex(9); // less time a division: the trace is wider than the screen
    const double row = model->PlotY(0, kSampleRows / 2);
    const PlainPicture frame(screenImage());
    press(screen(), 300, row);
    drag(screen(), 310, row);
    EXPECT_GT(frame.differences(screenImage()), 100);
    release(screen(), 310, row);
}

TEST_F(DragPictures, AfterTheReleaseTheTraceIsDrawnWholeAndTheGhostIsGone) {
    openAndSelect({wave('1', 600, false)}, 0);
    press(screen(), 300, rowUnder(0, 300));
    drag(screen(), 340, 200);
    release(screen(), 340, 200);
    const QImage after = screenImage();
    list().setSelected(0, true); // draws a frame from the same state
    EXPECT_EQ(screenImage(), after);
    EXPECT_EQ(screen().picture().drawMode, DrawMode::CopyPen);
}

TEST_F(DragPictures, ASineDraggedByItsMarkerIsTheGhostOnTheSnapshotOfThePress) {
    openAndSelect({wave('1', 600, false), flat('A', 50)}, 0);
    expectMarkerDrag({1, 5, -20, 33.5, -90, 150.25});
}

TEST_F(DragPictures, AFullRecordDraggedByItsMarkerStepsOverSamplesOfOneColumn) {
    openAndSelect({wave('1', kSampleRows, true), wave('A', 600, false)}, 0);
    expectMarkerDrag({1, 5, -20, 33.5, -90, 150.25});
}

TEST_F(DragPictures, AShiftedTraceDraggedByItsMarkerIsDrawnAsFarAsItIsVisible) {
    openAndSelect({wave('1', 2000, false)}, 0);
    model->ChannelXShift[0] = -250;
    list().setSelected(0, true);
    expectMarkerDrag({10, -25, 60});
    model->ChannelXShift[0] = 320;
    list().setSelected(0, true);
    expectMarkerDrag({10, -25, 60});
}

} // namespace
} // namespace sixtrace::test
