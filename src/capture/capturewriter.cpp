// SPDX-License-Identifier: MIT
#include "capture/capturewriter.h"

#include <algorithm>
#include <bit>

namespace sixtrace {

namespace {

void put16(QByteArray& bytes, std::uint16_t value) {
    bytes += static_cast<char>(value & 0xFFU);
    bytes += static_cast<char>(value >> 8);
}

void put32(QByteArray& bytes, std::int32_t value) {
    const auto bits = static_cast<std::uint32_t>(value);
    put16(bytes, static_cast<std::uint16_t>(bits & 0xFFFFU));
    put16(bytes, static_cast<std::uint16_t>(bits >> 16));
}

void put(QByteArray& bytes, std::int32_t value) {
    put32(bytes, value);
}
/// The upper half of the field's four bytes stays empty.
void put(QByteArray& bytes, std::int16_t value) {
    put16(bytes, static_cast<std::uint16_t>(value));
    put16(bytes, 0);
}
void put(QByteArray& bytes, float value) {
    put32(bytes, std::bit_cast<std::int32_t>(value));
}

void putField(QByteArray& bytes, layout::FieldId id, const CaptureBlock& block) {
    switch (id) {
    case layout::FieldId::ScreenPoints:
        return put(bytes, block.screenPoints);
    case layout::FieldId::SampleCount:
        return put(bytes, block.sampleCount);
    case layout::FieldId::ScanPoint:
        return put(bytes, block.scanPoint);
    case layout::FieldId::TimeIndex:
        return put(bytes, block.timeIndex);
    case layout::FieldId::ZeroLevel:
        return put(bytes, block.zeroLevel);
    case layout::FieldId::VoltIndex:
        return put(bytes, block.voltIndex);
    case layout::FieldId::ProbeExp:
        return put(bytes, block.probeExp);
    case layout::FieldId::SampleInterval:
        return put(bytes, block.sampleInterval);
    case layout::FieldId::Frequency:
        return put(bytes, block.frequency);
    case layout::FieldId::Period:
        return put(bytes, block.period);
    case layout::FieldId::VoltPerCount:
        return put(bytes, block.voltPerCount);
    }
}

QByteArray blockBody(const CaptureForm& form, const CaptureBlock& block) {
    QByteArray body;
    for (const layout::Field& field : layout::blockFields(form.fileKind)) {
        putField(body, field.id, block);
    }
    for (const std::int16_t sample : block.samples) {
        put16(body, static_cast<std::uint16_t>(sample));
    }
    const auto held = static_cast<std::int64_t>(block.samples.size());
    const std::int64_t slots = std::max<std::int64_t>(block.screenPoints, held) + (held == 0 ? 1 : 0);
    body.append(qsizetype{2 * (slots - held)}, '\0');
    return body;
}

} // namespace

QByteArray captureBytes(const CaptureForm& form, const std::vector<CaptureBlock>& blocks) {
    QByteArray bytes(layout::kMagic.data(), static_cast<qsizetype>(layout::kMagic.size()));
    bytes.append(form.tag.data(), static_cast<qsizetype>(form.tag.size()));
    put32(bytes, static_cast<std::int32_t>(blocks.size()));
    for (const CaptureBlock& block : blocks) {
        const QByteArray body = blockBody(form, block);
        bytes.append(layout::kBlockMark.data(), static_cast<qsizetype>(layout::kBlockMark.size()));
        bytes += block.id;
        put32(bytes, static_cast<std::int32_t>(body.size()));
        bytes += body;
    }
    return bytes;
}

} // namespace sixtrace
