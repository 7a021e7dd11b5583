// SPDX-License-Identifier: MIT
#pragma once

#include "capture/capturefile.h"
#include "capture/channels.h"
#include "capture/screenstate.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace sixtrace {

/// A model and a screen that are made once and take one input after the other. Each input finds both as they are after
/// start-up, so that what one shows is shown by it alone.
class CaptureBench {
public:
    CaptureBench();

    /// Clears what an input of `size` bytes can have touched: to clear whole arrays would cost more than a load.
    void clear(std::size_t size);
    /// Loads a capture by the reader, or by the older one.
    void load(std::span<const std::byte> bytes);
    BinFileOutcome loadOlder(std::span<const std::byte> bytes);

    std::unique_ptr<publicM> model = std::make_unique<publicM>();
    [[nodiscard]] ScreenState& state() { return m_screen->state; }

private:
    std::unique_ptr<UnseenScreen> m_screen;
    ScreenState m_stateAtStart;
    PerTimeBase<double> m_timeBasesAtStart{};
    PerTimeBase<QString> m_timeTextsAtStart;
};

/// The bytes of an input, as readers take them.
[[nodiscard]] inline std::span<const std::byte> inputBytes(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const std::byte*>(data), size};
}

} // namespace sixtrace
