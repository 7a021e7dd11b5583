// SPDX-License-Identifier: MIT
#include "shell/capturefaults.h"

#include "capture/capturecheck.h"
#include "platform/controls/labels.h"

namespace sixtrace {

void markFaultsOfCaptures(PathLabel& Label4) {
    QObject::connect(&Label4, &PathLabel::captionSet, &Label4, [&Label4](const QString& path) {
        if (path.isEmpty()) {
            return;
        }
        const auto faults = checkCapture(path);
        if (!faults.empty()) {
            Label4.setFault(faults.front().text);
        }
    });
}

} // namespace sixtrace
