// SPDX-License-Identifier: MIT
// Both readers of capture files with any bytes. The check for faults has to read the same values.
#include "capture/capturerecord.h"
#include "capturebench.h"
#include "platform/files/bytefile.h"
#include "require.h"

#include <bit>
#include <type_traits>

namespace {

using namespace sixtrace;

template<typename T>
bool same(T a, T b) {
    if constexpr (std::is_same_v<T, float>) {
        return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b); // equal also for NaN
    } else {
        return a == b;
    }
}

/// The values of the file, which an empty model has to hold after a load.
void checkModel(const publicM& model, const CaptureRecord& record) {
    require(model.FileKind == record.FileKind);
    for (int c = 0; c < kChannels; ++c) {
        const ChannelRecord& channel = record.channels.at(static_cast<std::size_t>(c));
        require((model.ChannelPresent[c] == 1) == channel.present && model.ChannelPresent[c] <= 1);
        for (const layout::Field& field : layout::blockFields(2)) {
            layout::withMember(field.id, channel, [&](auto said) {
                layout::withMember(field.id, model, [&]<typename Member>(const Member& member) {
                    if constexpr (std::is_same_v<typename Member::value_type, decltype(said)>) {
                        require(same(member[c], said));
                    }
                });
            });
        }
        require(channel.heldSamples() <= static_cast<std::size_t>(kSampleRows));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static CaptureBench bench;
    static ByteFile file;
    static CaptureRecord record;
    const auto bytes = inputBytes(data, size);

    bench.clear(size);
    bench.load(bytes);
    file.openBytes(bytes);
    readRecord(file, record);
    require(record.faults.size() <= CaptureRecord::kFaultLimit);
    require(record.isCapture() || record.faults.size() == 1);
    checkModel(*bench.model, record);
    for (int c = 0; c < kChannels; ++c) {
        require(bench.state().ticks[c] == (bench.model->ChannelPresent[c] == 1));
    }

    const BinFileOutcome older = bench.loadOlder(bytes);
    require(older == BinFileOutcome::NotACapture || record.FileKind == 1);
    bench.clear(size);
    return 0;
}
