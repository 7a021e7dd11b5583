// SPDX-License-Identifier: MIT
#pragma once

namespace sixtrace {

/// What the main window's common dialog (Dialog1) keeps from one use to the next: a command that does not set it finds
/// what the last one left.
struct CommonDialogState {
    bool CancelError = false; ///< whether a cancelled dialog counts as error 32755
};

} // namespace sixtrace
