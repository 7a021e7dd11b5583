// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/server.h"

#include <memory>
#include <vector>

namespace sixtrace {

/// From here on SIGINT, SIGTERM and SIGHUP are noted and end the serving; before anything is made that has to be taken
/// away at the end.
void catchEndSignals();

/// Serves until one of those signals comes, or until no client has sent anything for `idleSeconds` (0 waits for
/// ever).
void serve(const std::vector<std::unique_ptr<LinkServer>>& links, int idleSeconds);

} // namespace sixtrace
