// SPDX-License-Identifier: MIT
#pragma once

#include "acquire/transferreport.h"

#include <QString>

#include <memory>

namespace sixtrace::kqx {

/// The result of one fetch.
struct Fetched {
    enum class How {
        Whole,        ///< the file holds every byte that the header announced
        BrokenOff,    ///< there is no whole file
        NoInstrument, ///< there is no connection to an instrument, or no instrument answers
    };
    How how = How::BrokenOff;
    QString file; ///< path of a whole file
    bool bitmap = false;
    QString sentence; ///< why there is no whole file
};

/// A connection to the instrument.
class FetchLink {
public:
    FetchLink() = default;
    FetchLink(const FetchLink&) = delete;
    FetchLink& operator=(const FetchLink&) = delete;
    virtual ~FetchLink() = default;

    /// Fetches one file into a folder.
    [[nodiscard]] virtual Fetched fetch(const QString& folder) = 0;
};

[[nodiscard]] std::unique_ptr<FetchLink> serialLink(const QString& location, int timeoutMs);
[[nodiscard]] std::unique_ptr<FetchLink> usbLink(const QString& libraryFolder);

/// From now on the first Ctrl+C or SIGTERM makes interrupted() true, and the second ends the process.
void catchInterrupt();
[[nodiscard]] bool interrupted();

} // namespace sixtrace::kqx
