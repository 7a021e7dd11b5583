// SPDX-License-Identifier: MIT
#include "capturebench.h"

#include "capture/bytesource.h"
#include "view/defaults.h"

#include <algorithm>

namespace sixtrace {

CaptureBench::CaptureBench() {
    model->fillTables();
    applyDefaultColours(*model);
    m_timeBasesAtStart = model->TimeBaseTable;
    m_timeTextsAtStart = model->TimeBaseText;
    m_screen = std::make_unique<UnseenScreen>(*model);
    m_stateAtStart = m_screen->state;
}

void CaptureBench::clear(std::size_t size) {
    const std::size_t rows = std::min<std::size_t>(kSampleRows, size / layout::kSampleSize);
    std::fill_n(model->SampleData.channel(0), rows * kChannels, std::int16_t{0});
    for (const layout::Field& field : layout::blockFields(2)) {
        layout::withMember(field.id, *model, [](auto& member) { member.fill({}); });
    }
    model->ChannelPresent.fill(0);
    model->TimeIndexFile.fill(0);
    model->VoltIndexFile.fill(0);
    model->TimeIndexView.fill(0);
    model->VoltIndexView.fill(0);
    model->PeakToPeak.fill(0);
    model->ChannelXShift.fill(0);
    model->FileKind = 0;
    model->FilePos = 0;
    model->TimeBaseTable = m_timeBasesAtStart;
    model->TimeBaseText = m_timeTextsAtStart;
    m_screen->state = m_stateAtStart;
}

void CaptureBench::load(std::span<const std::byte> bytes) {
    ByteSource source;
    source.openBytes(bytes);
    loadCapture(source, m_screen->scope());
}

BinFileOutcome CaptureBench::loadOlder(std::span<const std::byte> bytes) {
    ByteSource source;
    source.openBytes(bytes);
    return loadOlderCapture(source, m_screen->scope());
}

} // namespace sixtrace
