// SPDX-License-Identifier: MIT
#pragma once

namespace sixtrace {

class PathLabel;

/// From now on the label of the loaded capture's path tells what is wrong with the file, where something is: the first
/// finding of a check that reads as the loader does. Loading itself says nothing, and nothing else changes.
void markFaultsOfCaptures(PathLabel& Label4);

} // namespace sixtrace
