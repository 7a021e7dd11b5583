// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace sixtrace {

/// What can be made to go wrong on a link.
enum class FaultKind {
    Crc,         ///< a block with a wrong check value
    Complement,  ///< a block with a wrong complement of its number
    Sequence,    ///< a block with a number five too high
    LostByte,    ///< a block without its tenth byte
    LostBlock,   ///< a block that is not sent
    Repeat,      ///< a block that is sent again after it was acknowledged
    Noise,       ///< three bytes before a block
    Silence,     ///< nothing more from this block on
    EarlyEnd,    ///< the end of the transmission in place of a block
    Stop,        ///< half a block, then nothing more
    Bitmap,      ///< a picture in place of a capture
    WrongLength, ///< a length that is 1000 bytes too large
    ShortLength, ///< a length that is 1000 bytes too small
    Late,        ///< a block that comes a second late
    Unplug,      ///< the line goes away before a block
};

/// One fault of a fetch.
struct Fault {
    FaultKind kind = FaultKind::Crc;
    int block = 1; ///< 0 is the header
    int times = 1; ///< how often the fault happens when the block is sent again

    friend bool operator==(const Fault&, const Fault&) = default;
};

/// All fault names, for help texts.
[[nodiscard]] QString faultNames();
/// Reads "NAME", "NAME@BLOCK" or "NAME@BLOCKxTIMES", such as "crc@3x5"; nothing for any other text.
[[nodiscard]] std::optional<Fault> parseFault(const QString& text);

/// How one fetch differs from the usual one.
struct FetchPlan {
    QString scene; ///< empty for the usual one
    std::vector<Fault> faults;

    [[nodiscard]] bool has(FaultKind kind) const;
    /// The fault of this kind at a block; null when there is none.
    [[nodiscard]] const Fault* at(FaultKind kind, int block) const;
    /// The length that the header tells for a file of `length` bytes.
    [[nodiscard]] int told(int length) const;
};

/// Reads one line of a script: faults and "scene=NAME", separated by blanks. "#" begins a comment. Nothing for any
/// other text.
[[nodiscard]] std::optional<FetchPlan> parsePlan(const QString& text);

} // namespace sixtrace
