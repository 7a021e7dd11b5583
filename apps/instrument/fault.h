// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace sixtrace {

/// What can go wrong on a link on request.
enum class FaultKind {
    Crc,         ///< a block with a wrong check value
    Complement,  ///< a block with a wrong complement of its number
    Sequence,    ///< a block with a number five too high
    LostByte,    ///< a block without its tenth byte
    LostBlock,   ///< a block that never leaves
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

/// One fault: what, at which block (0 is the header), how many times over.
struct Fault {
    FaultKind kind = FaultKind::Crc;
    int block = 1;
    int times = 1;

    friend bool operator==(const Fault&, const Fault&) = default;
};

/// All fault names, for help texts.
[[nodiscard]] QString faultNames();
/// "crc", "crc@3" or "crc@3x5"; nothing for any other text.
[[nodiscard]] std::optional<Fault> parseFault(const QString& text);

/// What one fetch brings: a scene (empty for the usual one) and faults.
struct FetchPlan {
    QString scene;
    std::vector<Fault> faults;

    [[nodiscard]] bool has(FaultKind kind) const;
    [[nodiscard]] const Fault* at(FaultKind kind, int block) const;
    /// The length that a header tells of a file of `length` bytes.
    [[nodiscard]] int told(int length) const;
};

/// One line of a script: faults and "scene=NAME" separated by blanks, "#" begins a comment. Nothing for a line that
/// cannot be read.
[[nodiscard]] std::optional<FetchPlan> parsePlan(const QString& text);

} // namespace sixtrace
