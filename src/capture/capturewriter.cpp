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

void putFloat(QByteArray& bytes, float value) {
    put32(bytes, std::bit_cast<std::int32_t>(value));
}

QByteArray blockBody(const CaptureForm& form, const CaptureBlock& block) {
    QByteArray body;
    put32(body, block.screenPoints);
    put32(body, block.sampleCount);
    put32(body, block.scanPoint);
    put32(body, block.timeIndex);
    put32(body, block.zeroLevel);
    put32(body, block.voltIndex);
    if (form.fileKind != 1) {
        put16(body, static_cast<std::uint16_t>(block.probeExp));
        put16(body, 0);
    }
    putFloat(body, block.sampleInterval);
    putFloat(body, block.frequency);
    putFloat(body, block.period);
    putFloat(body, block.voltPerCount);
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
    QByteArray bytes("KQX");
    bytes.append(form.tag.data(), static_cast<qsizetype>(form.tag.size()));
    put32(bytes, static_cast<std::int32_t>(blocks.size()));
    for (const CaptureBlock& block : blocks) {
        const QByteArray body = blockBody(form, block);
        bytes += "CH";
        bytes += block.id;
        put32(bytes, static_cast<std::int32_t>(body.size()));
        bytes += body;
    }
    return bytes;
}

} // namespace sixtrace
