// SPDX-License-Identifier: MIT
#pragma once

#include "platform/runtimeerror.h"

#include <QString>

#include <memory>

namespace sixtrace::kqx {

/// A way to the instrument.
class FetchLink {
public:
    FetchLink() = default;
    FetchLink(const FetchLink&) = delete;
    FetchLink& operator=(const FetchLink&) = delete;
    virtual ~FetchLink() = default;

    /// Fetches one capture to `path`, or to the bare name of a bitmap in the current folder; gives the file's path, or
    /// a sentence that says why there is none.
    [[nodiscard]] virtual Result<QString> fetch(const QString& path) = 0;
};

[[nodiscard]] std::unique_ptr<FetchLink> serialLink(const QString& location, int timeoutMs);
[[nodiscard]] std::unique_ptr<FetchLink> usbLink(const QString& libraryFolder);

/// From here on the first Ctrl+C is noted, the second ends the process.
void catchInterrupt();
[[nodiscard]] bool interrupted();

} // namespace sixtrace::kqx
