// SPDX-License-Identifier: MIT
#pragma once

#include "capture/mdllan.h"
#include "platform/text/runtimeerror.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace sixtrace {

/// Why a transfer came to its end.
enum class TransferEnd {
    Finished,   ///< it came to its regular end; TransferReport::whole tells whether all of the file has come
    BrokenOff,  ///< the instrument fell silent, or sent wrong blocks too often
    Cancelled,  ///< the user cancelled it
    Error,      ///< a run-time error, see TransferReport::error
    Superseded, ///< another transfer has taken its place
};

/// How a transfer ended: how many bytes of how many came, and why no more did.
struct TransferReport {
    TransferEnd end = TransferEnd::BrokenOff;
    std::optional<RuntimeError> error;     ///< set for TransferEnd::Error and for no other end
    std::optional<std::int32_t> announced; ///< size of the file in bytes by the first header; nothing when none came
    std::int32_t stored = 0;               ///< data bytes that came and belong to the file
    std::int32_t total = 0;                ///< data bytes that came, padding included
    bool inOrder = true;                   ///< false when data came twice, or more than was announced
    bool bitmap = false;                   ///< whether the instrument calls the file a bitmap
    QString path;                          ///< of the file; empty over USB until a header has come

    /// Whether the file holds exactly what the first header has announced, and that is at least one byte.
    [[nodiscard]] bool whole() const;
};

/// The ending in one sentence without a full stop.
[[nodiscard]] QString sentenceOf(const TransferReport& report, Language language);

} // namespace sixtrace
