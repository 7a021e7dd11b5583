// SPDX-License-Identifier: MIT
#pragma once

#include "capture/capturefile.h"
#include "capture/capturewriter.h"
#include "capture/channellist.h"
#include "capture/settings.h"
#include "support/flatcapture.h"
#include "support/strings.h"
#include "view/cursors.h"
#include "view/scene.h"
#include "view/scopescreen.h"
#include "view/screenmouse.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace sixtrace::test {

/// The whole scope without a window, and the flat capture: ch1 on row 200 and A on row 250, ch1 selected. The cursors
/// stand on rows 100 and 300 and columns 180 and 420.
class FlatScope : public ::testing::Test, protected FlatCapture {
protected:
    FlatScope() {
        model->fillTables();
        applyDefaultColours(*model);
        scope = std::make_unique<OffscreenScope>(*model);
        mouse = std::make_unique<ScreenMouse>(scope->scope(), scope->screen());
    }

    void load(const std::vector<CaptureBlock>& blocks) {
        const QString path = folder.filePath(u"capture.bin"_s);
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        const QByteArray bytes = captureBytes(*captureForm("V11"), blocks);
        ASSERT_EQ(file.write(bytes), bytes.size());
        file.close();
        SimpleWav(path, rules());
    }
    void loadFlat() {
        load(flatBlocks());
        selectRow(rules(), 0);
    }

    [[nodiscard]] Scope rules() const { return scope->scope(); }
    [[nodiscard]] ScreenState& state() const { return scope->state; }
    [[nodiscard]] ZeroMarker& marker(int channel) const { return state().markers[channel]; }

    QTemporaryDir folder;
    std::unique_ptr<publicM> model = std::make_unique<publicM>();
    std::unique_ptr<OffscreenScope> scope;
    std::unique_ptr<ScreenMouse> mouse;
};

/// A mouse over the flat capture. Places are screen units.
class Mouse : public FlatScope {
protected:
    void SetUp() override { loadFlat(); }
    void press(double x, double y) { mouse->Picture2_MouseDown(ScreenX(x), ScreenY(y)); }
    void moveTo(double x, double y) { mouse->Picture2_MouseMove(ScreenX(x), ScreenY(y)); }
    void show(CursorType type) {
        state().cursorChoice = type;
        Combo3_Click(rules());
    }
    [[nodiscard]] const drag::CursorLines* lines() const { return std::get_if<drag::CursorLines>(&mouse->held()); }
    [[nodiscard]] const drag::Trace* trace() const { return std::get_if<drag::Trace>(&mouse->held()); }
    [[nodiscard]] DrawMode drawMode() const { return scope->Picture2.drawMode; }
    [[nodiscard]] unsigned frames() const { return scope->screen().changes(); }
};

} // namespace sixtrace::test
