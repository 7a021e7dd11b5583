// SPDX-License-Identifier: MIT
#pragma once

#include "capture/capturecheck.h"
#include "capture/publicm.h"

#include <QJsonObject>
#include <QString>

#include <vector>

namespace sixtrace::kqx {

/// A capture as JSON: form, FileKind, the channels that it holds with the model's fields under their names, faults.
[[nodiscard]] QJsonObject captureJson(const publicM& model, const std::vector<CaptureFault>& faults);

/// The same for people.
[[nodiscard]] QString captureText(const publicM& model);

} // namespace sixtrace::kqx
