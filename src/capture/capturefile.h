// SPDX-License-Identifier: MIT
#pragma once

#include "capture/filelayout.h"
#include "capture/screenstate.h"

#include <QString>

namespace sixtrace {

class ByteSource;

/// Loads a capture file into the model and the screen's state, in the order of the file, and has a new frame drawn.
/// Nothing that is wrong with the file ends the load or shows a message: a field that the file does not hold keeps its
/// old value. A file that does not begin with "KQX" and a known tag is refused: the model and the screen
/// keep their content, only the data table is gone (and FileKind is 0 when the tag was the reason).
///
/// Costs at most one pass over the bytes that the file really has, whatever its counts say. Each block draws a frame,
/// as the window shows it; of more than 64 blocks, which no instrument sends, the first 64 and the last one do.
void SimpleWav(const QString& path, const Scope& scope);
/// What SimpleWav does once the table is closed and the file is open. Closes the source before the frame is drawn.
void loadCapture(ByteSource& source, const Scope& scope);

/// How the older reader ended.
enum class BinFileOutcome { Loaded, MissingFile, NotACapture };

/// The older reader, for the tag "bin" only and with a field order of its own: reads `path` into the model. It stores
/// ZeroLevel as the file has it, every Frequency in channel 0, and touches neither time bases nor PeakToPeak. No
/// command reaches it.
BinFileOutcome OpenBinFile(const QString& path, const Scope& scope);
/// What OpenBinFile does once the file is open; never MissingFile.
BinFileOutcome loadOlderCapture(ByteSource& source, const Scope& scope);

} // namespace sixtrace
