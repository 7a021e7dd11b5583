// SPDX-License-Identifier: MIT
#pragma once

#include "capture/capturerecord.h"

#include <string>
#include <string_view>

namespace sixtrace::kqx {

/// Appends `,"faults":[...]`.
void appendFaults(std::string& out, const CaptureRecord& record);

/// Appends a line of JSON: file, form, FileKind, the channels that the capture holds with the model's fields under
/// their names and physical figures beside them, faults. A file that is no capture gives file and error.
void appendInfoJson(std::string& out, std::string_view file, const CaptureRecord& record);

/// Appends the line of a file that is no capture.
void appendErrorJson(std::string& out, std::string_view file, const CaptureRecord& record);

/// The line above what is told of file number `index` of several.
void appendTitle(std::string& out, std::string_view file, std::size_t index);

/// The same for people.
void appendInfoText(std::string& out, const CaptureRecord& record);

/// The sentences of the faults, as they go to standard error.
[[nodiscard]] std::string faultLines(std::string_view file, const CaptureRecord& record);

} // namespace sixtrace::kqx
