// SPDX-License-Identifier: MIT
#pragma once

#include "capture/capturewriter.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace sixtrace {

/// A kind of capture that the simulated instrument can make.
struct Scene {
    const char* name;
    const char* description;
};

/// All scenes in the order in which they are listed.
[[nodiscard]] const std::vector<Scene>& scenes();

/// The blocks of a scene; nothing for a name that is not listed. The same name and seed give the same blocks on every
/// machine.
[[nodiscard]] std::optional<std::vector<CaptureBlock>> sceneBlocks(const QString& name, std::uint32_t seed);

} // namespace sixtrace
