// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/picture.h"
#include "view/geometry.h"

namespace sixtrace {

/// The copy of the last finished frame, picHidden(0), from which drags restore the background. Few frames are followed
/// by a drag, so the copy is noted when a frame is finished and made when a drag begins. Whoever draws on the screen
/// without finishing a frame brings the copy up to date first.
class FrameCopy {
public:
    FrameCopy(const Picture& screen, Picture& copy)
        : m_screen(screen)
        , m_copy(copy) {}

    /// A frame is finished on the screen.
    void noteFrame() { m_due = true; }
    /// A finished frame is about to replace the one that was noted, or the copy is cleared.
    void forget() { m_due = false; }
    void bringUpToDate() {
        if (m_due) {
            m_due = false;
            m_copy.BitBlt(0, 0, kScreenWidth, kScreenHeight, m_screen, 0, 0);
        }
    }

private:
    const Picture& m_screen;
    Picture& m_copy;
    bool m_due = false;
};

} // namespace sixtrace
