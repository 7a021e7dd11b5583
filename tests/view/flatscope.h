// SPDX-License-Identifier: MIT
#pragma once

#include "capture/capturefile.h"
#include "capture/capturewriter.h"
#include "capture/channellist.h"
#include "platform/text/numbers.h"
#include "support/printing.h"
#include "view/defaults.h"
#include "view/offscreenscope.h"
#include "view/screenmouse.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace sixtrace::testing {

/// The whole scope without a window, and a capture of which every figure is known: ch1 on row 200 and A on row 250,
/// ch1 selected. One screen unit is one sample and one count: 0.5 V a division at 10 mV a count, 600 samples of 2.5
/// microseconds at 10 microseconds a division. The cursors stand on rows 100 and 300 and columns 180 and 420.
class FlatScope : public ::testing::Test {
protected:
    FlatScope() {
        model->fillTables();
        applyDefaultColours(*model);
        scope = std::make_unique<OffscreenScope>(*model);
        mouse = std::make_unique<ScreenMouse>(scope->scope(), scope->screen());
    }

    /// A zero level of 0 is the screen's row 200, each 25 of it 50 rows.
    static CaptureBlock flat(char id, int zeroLevel, int probeExp = 0) {
        return {.id = id,
                .screenPoints = 600,
                .sampleCount = 600,
                .timeIndex = 10,
                .zeroLevel = zeroLevel,
                .voltIndex = 7,
                .probeExp = static_cast<std::int16_t>(probeExp),
                .sampleInterval = 2.5F,
                .voltPerCount = 10,
                .samples = std::vector<std::int16_t>(600, 0)};
    }
    void load(const std::vector<CaptureBlock>& blocks) {
        const QString path = folder.filePath(QStringLiteral("capture.bin"));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        const QByteArray bytes = captureBytes(*captureForm("V11"), blocks);
        ASSERT_EQ(file.write(bytes), bytes.size());
        file.close();
        SimpleWav(path, rules());
    }
    void loadFlat() {
        load({flat('1', 0), flat('A', -25)});
        selectRow(rules(), 0);
    }

    [[nodiscard]] Scope rules() const { return scope->scope(); }
    [[nodiscard]] ScreenState& state() const { return scope->state; }
    [[nodiscard]] ZeroMarker& marker(int channel) const { return state().markers[channel]; }
    /// A number as the desktop writes it, from "1,234.50".
    static QString number(const char* text) {
        const NumberMarks marks = NumberMarks::system();
        QString result;
        for (const QChar c : QString::fromLatin1(text)) {
            result += c == u'.' ? QString(marks.decimal) : c == u',' ? QString(marks.group) : QString(c);
        }
        return result;
    }

    QTemporaryDir folder;
    std::unique_ptr<publicM> model = std::make_unique<publicM>();
    std::unique_ptr<OffscreenScope> scope;
    std::unique_ptr<ScreenMouse> mouse;
};

} // namespace sixtrace::testing
