// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string_view>

namespace sixtrace::kqx {

/// Which program does a command: reading numbers out of files needs no library of the desktop, and starts in no time
/// without them.
enum class DoneBy { Data, Desktop };

struct CommandEntry {
    std::string_view name;
    std::string_view summary;
    DoneBy by;
};

/// All commands in the order of their names.
inline constexpr std::array kCommands{
    CommandEntry{"convert", "write the samples of captures for other programs (.csv, .npz, .sr)", DoneBy::Data},
    CommandEntry{"fetch", "fetch captures from the instrument", DoneBy::Desktop},
    CommandEntry{"info", "print what capture files hold, and what is wrong with them", DoneBy::Data},
    CommandEntry{"measure", "measure the samples of captures in volts and seconds", DoneBy::Data},
    CommandEntry{"open", "open a capture in the running program, or start it", DoneBy::Desktop},
    CommandEntry{"page", "write the printed page of captures as PDF files", DoneBy::Desktop},
    CommandEntry{"ports", "list the connections to an instrument, and why one does not open", DoneBy::Desktop},
    CommandEntry{"screen", "write the screen of captures as PNG files", DoneBy::Desktop},
    CommandEntry{"table", "write the samples of captures as text, CSV or workbook", DoneBy::Desktop},
};

/// The program for the commands of the desktop; it lies beside kqx.
inline constexpr std::string_view kDesktopProgram = "kqx-desktop";

} // namespace sixtrace::kqx
