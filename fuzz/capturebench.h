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

/// A model and a screen that are made once and used for all inputs. They are reset before each input, so that a failure
/// depends on that input alone.
class CaptureBench {
public:
    CaptureBench();

    /// Resets what an input of `size` bytes can have changed. To clear whole arrays would take longer than a load.
    void clear(std::size_t size);
    /// Loads a capture with the present reader.
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

/// The bytes of an input in the type that readers take.
[[nodiscard]] inline std::span<const std::byte> inputBytes(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const std::byte*>(data), size};
}

} // namespace sixtrace
