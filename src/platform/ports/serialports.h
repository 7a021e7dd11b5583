// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace sixtrace {

/// The devices of the machine's serial ports in a stable order: USB adapters first, then built-in ports, each group by
/// name and number. Built-in ports without hardware are left out.
[[nodiscard]] QStringList machineSerialPorts();

/// The device of port `number`, counted from 1; empty when there is none. It is the target of the link "ports/comN" in
/// the program folder `appDir` (which ends in a separator), by which a user can pin a port to a number; without such a
/// link the n-th of the machine's ports. On Windows it is COMn.
[[nodiscard]] QString serialPortLocation(const QString& appDir, int number);

/// The names that an adapter has for itself. One that the system does not know is empty.
struct AdapterName {
    QString maker;
    QString product;
    QString serialNumber;

    /// "maker, product, serial number", without the empty ones.
    [[nodiscard]] QString text() const;
};
/// The names of the adapter at a device; all empty when the system does not know the device.
[[nodiscard]] AdapterName adapterAt(const QString& location);

/// Whether a port opens, or why it does not.
enum class PortState {
    Open,   ///< it opens
    Rights, ///< this user lacks the rights
    Busy,   ///< another process has it open
    Gone,   ///< the device of a link is not there
    Failed, ///< the system refuses it for another reason
};

/// One numbered port, and whether it opens.
struct PortWay {
    int number = 0;
    QString location;    ///< the path of the device
    bool pinned = false; ///< whether the user has set a link for it
    AdapterName adapter;
    PortState state = PortState::Open;
    QString reason; ///< Rights: the group that has them. Busy: the process. Otherwise the system's words
};

/// Those of ports 1 to `highest` that have a device or a link, each tried by opening it.
[[nodiscard]] std::vector<PortWay> serialWays(const QString& appDir, int highest);

} // namespace sixtrace
