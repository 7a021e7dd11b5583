// SPDX-License-Identifier: MIT
#pragma once

#include "view/cursors.h"
#include "view/flatscope.h"

#include <optional>

namespace sixtrace::test {

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
