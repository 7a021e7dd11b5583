// SPDX-License-Identifier: MIT
#pragma once

#include "capture/capturecheck.h"
#include "capture/captureview.h"
#include "capture/publicm.h"

#include <QCommandLineParser>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace sixtrace::kqx {

/// What the process says at its end.
enum ExitCode {
    Done = 0,
    Failed = 1,
    WrongUse = 2,
    NoInstrument = 3, ///< no port or link to an instrument, or nobody answers there
    IsBitmap = 4,     ///< what was fetched is a bitmap and no capture
    NotStored = 5,    ///< what was fetched has no place to stand
};

/// A sentence on standard error, and the code to end with.
int fail(ExitCode code, const QString& text);

/// Names the faults of a file on standard error.
void nameFaults(const QString& file, const std::vector<CaptureFault>& faults);

/// A model with default settings.
[[nodiscard]] std::unique_ptr<publicM> defaultModel();

/// Opens a capture as the program does, and names its faults on standard error. The code for a command to end with once
/// it has done its work, or nothing where the file holds no capture to work on.
[[nodiscard]] std::optional<ExitCode> openCapture(const QString& file, publicM& model, CaptureView& view);

/// Parses the arguments behind a subcommand. Nothing when the command goes on, else the code to end with: help was
/// asked for and given, or the arguments are wrong.
std::optional<int> parse(QCommandLineParser& parser, const QString& command, const QStringList& arguments,
                         const QStringList& positional);

/// The subcommands. `arguments` begin behind the subcommand's name.
int fetch(const QStringList& arguments);
int info(const QStringList& arguments);
int open(const QStringList& arguments);
int page(const QStringList& arguments);
int ports(const QStringList& arguments);
int screen(const QStringList& arguments);
int table(const QStringList& arguments);

} // namespace sixtrace::kqx
