// SPDX-License-Identifier: MIT
#pragma once

#include "batch.h"

#include "capture/capturerecord.h"
#include "platform/files/bytefile.h"

#include <string>
#include <string_view>

namespace sixtrace::kqx {

/// Reads captures one after another, and keeps its memory between them. Each job has one of its own.
struct CaptureReader {
    ByteFile file;
    CaptureRecord record;

    /// Reads a file into the record. Its faults go to the answer, as lines and as the code Failed.
    void read(const std::string& name, Answer& answer);
};

/// Appends `,"faults":[...]`.
void appendFaults(std::string& out, const CaptureRecord& record);

/// Appends a line of JSON with the file's name, its form and FileKind, the channels that it holds, and its faults. A
/// channel has the fields of the model under their names, and figures in volts and seconds besides. For a file that is
/// no capture the line is that of appendErrorJson().
void appendInfoJson(std::string& out, std::string_view file, const CaptureRecord& record);

/// Appends the line of a file that is no capture: its name and the error.
void appendErrorJson(std::string& out, std::string_view file, const CaptureRecord& record);

/// Appends the line above the text about one file of several; `index` counts them from 0.
void appendTitle(std::string& out, std::string_view file, std::size_t index);

/// Appends what appendInfoJson() gives, as text for people. The record is that of a capture.
void appendInfoText(std::string& out, const CaptureRecord& record);

} // namespace sixtrace::kqx
