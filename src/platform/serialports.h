// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

namespace sixtrace {

/// The machine's serial ports in a stable order: USB adapters first, then built-in ports, each by name and number.
/// Built-in ports that no hardware answers for are left out.
[[nodiscard]] QStringList machineSerialPorts();

/// Where port `number` (1 and up) is to be found, or an empty text where there is none: "ports/comN" of the program
/// folder (which ends in a separator), a link to any terminal device, so that a user can pin names; otherwise the n-th
/// of the machine's ports. On Windows simply COMn.
[[nodiscard]] QString serialPortLocation(const QString& appDir, int number);

} // namespace sixtrace
