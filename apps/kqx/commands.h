// SPDX-License-Identifier: MIT
#pragma once

#include "arguments.h"
#include "batch.h"
#include "captureinfo.h"

#include "capture/capturefile.h"
#include "capture/publicm.h"
#include "platform/files/bytefile.h"

#include <QCommandLineParser>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace sixtrace::kqx {

/// A sentence on standard error, and the code to end with.
int fail(ExitCode code, const QString& text);

/// A model with default settings.
[[nodiscard]] std::unique_ptr<publicM> defaultModel();

/// The folder that kqx lies in.
[[nodiscard]] QString kqxFolder();
/// The program folder of the kqx that was called.
[[nodiscard]] QString kqxProgramFolder();

/// A capture file, and what it says.
struct OpenedFile {
    ByteFile file;
    CaptureRecord record;
};

/// Opens a capture as the program does, and reads its record; the answer takes the faults. Whether there is a capture
/// to work on.
[[nodiscard]] bool openCapture(const std::string& file, const Scope& scope, OpenedFile& opened, Answer& answer);

/// Parses the arguments behind a subcommand. Nothing when the command goes on, else the code to end with: help was
/// asked for and given, or the arguments are wrong.
std::optional<int> parse(QCommandLineParser& parser, const QString& command, const QStringList& arguments,
                         const QStringList& positional);

/// The subcommands. `arguments` begin behind the subcommand's name.
int fetch(const QStringList& arguments);
int open(const std::vector<std::string>& arguments);
int page(const std::vector<std::string>& arguments);
int ports(const QStringList& arguments);
int screen(const std::vector<std::string>& arguments);
int table(const std::vector<std::string>& arguments);

} // namespace sixtrace::kqx
