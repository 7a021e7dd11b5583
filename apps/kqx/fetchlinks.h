// SPDX-License-Identifier: MIT
#pragma once

#include "acquire/transferreport.h"

#include <QString>

#include <memory>

namespace sixtrace::kqx {

/// What one fetch has brought.
struct Fetched {
    enum class How {
        Whole,        ///< every byte that the header announced lies in the file
        BrokenOff,    ///< there is no whole file
        NoInstrument, ///< no way to an instrument, or nobody answers there
    };
    How how = How::BrokenOff;
    QString file; ///< of a whole one
    bool bitmap = false;
    QString sentence; ///< why there is none
};

/// A way to the instrument.
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

/// From here on the first Ctrl+C is noted, the second ends the process.
void catchInterrupt();
[[nodiscard]] bool interrupted();

} // namespace sixtrace::kqx
