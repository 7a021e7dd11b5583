// SPDX-License-Identifier: MIT
#include "platform/files/standarddescriptors.h"

#include <QtGlobal>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace sixtrace {

void openStandardDescriptors() {
#ifdef Q_OS_UNIX
    // The lowest free number comes first, so this ends with the first one above them.
    int opened = 0;
    while (opened >= 0 && opened <= STDERR_FILENO) {
        opened = open("/dev/null", O_RDWR);
    }
    if (opened >= 0) {
        close(opened);
    }
#endif
}

} // namespace sixtrace
