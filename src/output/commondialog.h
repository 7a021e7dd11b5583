// SPDX-License-Identifier: MIT
#pragma once

namespace sixtrace {

/// What the main window's one common dialog (Dialog1) keeps from one command to the next: a command that does not set
/// it finds it as the last one left it. Owned by the main window.
struct CommonDialogState {
    bool CancelError = false; ///< a cancelled dialog raises error 32755
};

} // namespace sixtrace
