// SPDX-License-Identifier: MIT
#pragma once

#include "arguments.h"
#include "batch.h"
#include "captureinfo.h"

#include "capture/capturefile.h"
#include "capture/publicm.h"

#include <QByteArray>
#include <QCommandLineParser>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace sixtrace::kqx {

/// The same as failWith().
ExitCode fail(ExitCode code, const QString& text);

/// A model with default settings.
[[nodiscard]] std::unique_ptr<publicM> defaultModel();

/// The folder of the kqx that was called.
[[nodiscard]] QString kqxFolder();
/// Its program folder, with a separator at its end.
[[nodiscard]] QString kqxProgramFolder();

/// Reads a capture with `reader`, and loads it into the model and the screen's state as the program does. False when
/// there is nothing to work on; the answer then says why.
[[nodiscard]] bool openCapture(const std::string& file, const Scope& scope, CaptureReader& reader, Answer& answer);

/// Delivers the bytes of a desktop library.
void deliver(const Task& task, const QByteArray& content, Existing existing, Answer& answer);

/// Reads the arguments of a command into the parser, in the way of Arguments::parse().
[[nodiscard]] std::optional<ExitCode> parse(QCommandLineParser& parser, const QString& command,
                                            const QStringList& arguments, const QStringList& positional);

// The commands. `arguments` are those that follow the command's name.
[[nodiscard]] ExitCode fetch(const QStringList& arguments);
[[nodiscard]] ExitCode open(const std::vector<std::string>& arguments);
[[nodiscard]] ExitCode page(const std::vector<std::string>& arguments);
[[nodiscard]] ExitCode ports(const QStringList& arguments);
[[nodiscard]] ExitCode screen(const std::vector<std::string>& arguments);
[[nodiscard]] ExitCode table(const std::vector<std::string>& arguments);

} // namespace sixtrace::kqx
