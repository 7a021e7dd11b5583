// SPDX-License-Identifier: MIT
#include "capture/capturecheck.h"

#include "capture/capturerecord.h"
#include "platform/files/bytefile.h"

#include <QFile>

namespace sixtrace {

std::vector<CaptureFault> checkCapture(const QString& path) {
    ByteFile file;
    CaptureRecord record;
    readRecord(QFile::encodeName(path).toStdString(), file, record);
    std::vector<CaptureFault> faults;
    for (const RecordFault& fault : record.faults) {
        faults.push_back({fault.offset, QString::fromStdString(fault.text)});
    }
    return faults;
}

} // namespace sixtrace
