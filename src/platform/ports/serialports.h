// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace sixtrace {

/// The machine's serial ports in a stable order: USB adapters first, then built-in ports, each by name and number.
/// Built-in ports that no hardware answers for are left out.
[[nodiscard]] QStringList machineSerialPorts();

/// Where port `number` (1 and up) is to be found, or an empty text where there is none: "ports/comN" of the program
/// folder (which ends in a separator), a link to any terminal device, so that a user can pin names; otherwise the n-th
/// of the machine's ports. On Windows simply COMn.
[[nodiscard]] QString serialPortLocation(const QString& appDir, int number);

/// What an adapter says of itself, as far as the system knows it.
struct AdapterName {
    QString maker;
    QString product;
    QString serialNumber;

    /// "maker, product, serial number" without what is empty.
    [[nodiscard]] QString text() const;
};
[[nodiscard]] AdapterName adapterAt(const QString& location);

/// How an opening of a port ended.
enum class PortState {
    Open,   ///< it can be opened
    Rights, ///< this user may not
    Busy,   ///< another process has it
    Gone,   ///< there is no such device any more
    Failed, ///< the system refuses it for another reason
};

/// One numbered port that the program would use.
struct PortWay {
    int number = 0;
    QString location; ///< of the device
    bool pinned = false;
    AdapterName adapter;
    PortState state = PortState::Open;
    QString reason; ///< of a port that does not open: a group's name, a process, the system's words
};

/// Ports 1 to `highest`, those that lead somewhere, each tried by opening it.
[[nodiscard]] std::vector<PortWay> serialWays(const QString& appDir, int highest);

} // namespace sixtrace
