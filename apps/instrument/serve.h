// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/server.h"

#include <memory>
#include <vector>

namespace sixtrace {

/// Serves until SIGINT, SIGTERM or SIGHUP comes, or until no client has sent anything for `idleSeconds` (0 waits for
/// ever).
void serve(const std::vector<std::unique_ptr<LinkServer>>& links, int idleSeconds);

} // namespace sixtrace
