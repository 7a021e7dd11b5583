// SPDX-License-Identifier: MIT
#pragma once

namespace sixtrace {

/// Lets the toolkit's own dialogs and buttons speak the program's language: 0 is Chinese, anything else English. What
/// shows next follows at once. Where the toolkit's Chinese is not installed they stay English.
void setToolkitLanguage(int languageId);

} // namespace sixtrace
