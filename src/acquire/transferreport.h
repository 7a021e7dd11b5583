// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/runtimeerror.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace sixtrace {

/// Why a transfer came to its end.
enum class TransferEnd {
    Finished,   ///< the instrument ended it, or the last read was made: see TransferReport::whole
    BrokenOff,  ///< the instrument fell silent, or what came was wrong too often
    Cancelled,  ///< by the user
    Error,      ///< a run-time error, see TransferReport::error
    Superseded, ///< another transfer has taken its place
};

/// What a transfer has brought: how much of how much, and why it ended.
struct TransferReport {
    TransferEnd end = TransferEnd::BrokenOff;
    std::optional<RuntimeError> error;
    std::optional<std::int32_t> announced; ///< bytes of the file, as the first header tells
    std::int32_t stored = 0;               ///< data bytes that came and belong to the file
    std::int32_t total = 0;                ///< data bytes that came, padding included
    bool inOrder = true;                   ///< false: something came twice, or more than was announced
    bool bitmap = false;
    QString path; ///< of the file; empty where none was begun

    /// Whether the file holds exactly what the first header has announced.
    [[nodiscard]] bool whole() const;
};

/// The ending in one sentence without a full stop, by language (0 Chinese, otherwise English).
[[nodiscard]] QString sentenceOf(const TransferReport& report, int languageId);

} // namespace sixtrace
