// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"

class QWidget;

namespace sixtrace {

/// Replaces the captions of a window, and the entries of its combo boxes, by those of the language file in use. What
/// the file does not hold keeps its present text. Controls are found by their object names; those of an array, named
/// "Label1(3)", are looked up as "Label1" and then as "Label13". A dialog gets the captions of its design first.
void ApplyLanguage(QWidget& form, const publicM& model);

} // namespace sixtrace
