// SPDX-License-Identifier: MIT
#include "output/compoundfile.h"

#include "output/littleendian.h"

#include <algorithm>

namespace sixtrace {

namespace {

constexpr qsizetype kSector = 512;
constexpr qsizetype kShortestStream = 4096;
constexpr std::uint32_t kEntriesPerSector = kSector / 4;
constexpr std::uint32_t kMostTables = 109; ///< sector tables that the header itself can name

constexpr std::uint32_t kTableSector = 0xFFFFFFFD;
constexpr std::uint32_t kEndOfChain = 0xFFFFFFFE;
constexpr std::uint32_t kFree = 0xFFFFFFFF;
constexpr std::uint32_t kNoEntry = 0xFFFFFFFF;

enum class EntryKind : std::uint8_t { Unused = 0, Stream = 2, Root = 5 };

struct Entry {
    QString name;
    EntryKind kind = EntryKind::Unused;
    std::uint32_t child = kNoEntry;
    std::uint32_t start = 0;
    std::uint32_t size = 0;
};

void fillSector(QByteArray& bytes) {
    const qsizetype over = bytes.size() % kSector;
    if (over != 0) {
        bytes.append(kSector - over, '\0');
    }
}

void appendEntry(QByteArray& bytes, const Entry& entry) {
    constexpr qsizetype kNameBytes = 64;
    constexpr std::uint8_t kBlack = 1;
    const qsizetype start = bytes.size();
    for (const QChar c : entry.name) {
        append16(bytes, c.unicode());
    }
    bytes.append(kNameBytes - (bytes.size() - start), '\0');
    append16(bytes, static_cast<std::uint16_t>(entry.name.isEmpty() ? 0 : 2 * (entry.name.size() + 1)));
    append8(bytes, static_cast<std::uint8_t>(entry.kind));
    append8(bytes, kBlack);
    append32(bytes, kNoEntry); // left
    append32(bytes, kNoEntry); // right
    append32(bytes, entry.child);
    bytes.append(16 + 4 + 16, '\0'); // class, flags, times
    append32(bytes, entry.start);
    append32(bytes, entry.size);
    append32(bytes, 0); // upper half of the size
}

void appendHeader(QByteArray& bytes, std::uint32_t firstDirectory, std::uint32_t firstTable, std::uint32_t tables) {
    bytes.append("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8);
    bytes.append(16, '\0');
    append16(bytes, 0x003E); // minor and
    append16(bytes, 3);      // major version
    append16(bytes, 0xFFFE); // byte order
    append16(bytes, 9);      // sectors of 2^9 bytes
    append16(bytes, 6);      // short sectors of 2^6, of which there are none
    bytes.append(6 + 4, '\0');
    append32(bytes, tables);
    append32(bytes, firstDirectory);
    append32(bytes, 0);
    append32(bytes, static_cast<std::uint32_t>(kShortestStream));
    append32(bytes, kEndOfChain); // short sectors
    append32(bytes, 0);
    append32(bytes, kEndOfChain); // further names of sector tables
    append32(bytes, 0);
    for (std::uint32_t i = 0; i < kMostTables; ++i) {
        append32(bytes, i < tables ? firstTable + i : kFree);
    }
}

} // namespace

Result<QByteArray> compoundFile(const QString& streamName, QByteArray stream) {
    if (stream.size() < kShortestStream) {
        stream.append(kShortestStream - stream.size(), '\0');
    }
    const qsizetype streamSectors = (stream.size() + kSector - 1) / kSector;
    std::uint32_t tables = 1;
    while (static_cast<qsizetype>(tables) * kEntriesPerSector < streamSectors + 1 + tables) {
        if (++tables > kMostTables) {
            return RuntimeError::of(ErrorNumber::InvalidCall);
        }
    }
    const auto firstDirectory = static_cast<std::uint32_t>(streamSectors);
    const std::uint32_t firstTable = firstDirectory + 1;

    QByteArray bytes;
    bytes.reserve((1 + streamSectors + 1 + tables) * kSector);
    appendHeader(bytes, firstDirectory, firstTable, tables);
    bytes.append(stream);
    fillSector(bytes);
    appendEntry(bytes, {QStringLiteral("Root Entry"), EntryKind::Root, 1, kEndOfChain, 0});
    appendEntry(bytes, {streamName, EntryKind::Stream, kNoEntry, 0, static_cast<std::uint32_t>(stream.size())});
    appendEntry(bytes, {});
    appendEntry(bytes, {});
    for (std::uint32_t sector = 0; sector < tables * kEntriesPerSector; ++sector) {
        if (sector + 1 < firstDirectory) {
            append32(bytes, sector + 1);
        } else if (sector <= firstDirectory) {
            append32(bytes, kEndOfChain); // last of the stream, and the directory
        } else {
            append32(bytes, sector < firstTable + tables ? kTableSector : kFree);
        }
    }
    return bytes;
}

} // namespace sixtrace
