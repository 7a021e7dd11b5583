// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace sixtrace {

/// What the areas of the main window share beside the model. Made by the window, passed by reference.
struct ChannelSelection {
    std::int16_t CurChannel = -1; ///< channel whose marker VScroll1 drives; -1 when there is none
    bool ScrollLive = false;      ///< false while code moves VScroll1, so that its change event does nothing
};

} // namespace sixtrace
