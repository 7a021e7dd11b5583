// SPDX-License-Identifier: MIT
#include "capture/capturefile.h"

#include "capture/bytesource.h"
#include "capture/channellist.h"
#include "capture/zeromarkers.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <limits>

namespace sixtrace {

namespace {

/// Blocks of a file that draw a frame each. The instrument sends six at most.
constexpr int kDrawnBlocks = 64;

template<typename To>
std::optional<To> narrowed(std::int64_t value) {
    if (value < std::numeric_limits<To>::min() || value > std::numeric_limits<To>::max()) {
        return std::nullopt;
    }
    return static_cast<To>(value);
}

/// Assigns where there is a value: a statement that failed leaves its target alone.
template<typename T, typename U>
void assign(T& target, const std::optional<U>& value) {
    if (value) {
        target = *value;
    }
}

struct SampleExtremes {
    std::int16_t least = std::numeric_limits<std::int16_t>::max();
    std::int16_t greatest = std::numeric_limits<std::int16_t>::min();

    void include(std::int16_t sample) {
        least = std::min(least, sample);
        greatest = std::max(greatest, sample);
    }
};

/// Reads one capture into the model. FilePos is the position of the next read; a field that the file does not hold
/// whole keeps its old value, and the position advances over it all the same.
class Loader {
public:
    Loader(const Scope& scope, ByteSource& source)
        : m_scope(scope)
        , m_model(scope.model)
        , m_screen(scope.screen)
        , m_source(source) {
        m_model.FilePos = 1;
    }

    bool magicMatches() {
        return std::all_of(layout::kMagic.begin(), layout::kMagic.end(),
                           [this](char expected) { return nextByte() == expected; });
    }

    const CaptureForm* readTag() {
        const std::array<char, layout::kTagSize> tag{nextByte(), nextByte(), nextByte()};
        return captureForm({tag.data(), tag.size()});
    }

    /// The nine family rows in the tables and in the time list, and the name of the instrument, which is blanked at
    /// once.
    void applyForm(const CaptureForm& form) {
        m_model.FileKind = form.fileKind;
        m_model.setTimeBaseFamily(form.family);
        m_screen.modelName = QString();
        for (const int row : kFamilyRows) {
            m_screen.timeList[row] = m_model.TimeBaseText[row];
        }
    }

    void clearChannels() {
        for (m_channel = 0; m_channel < kChannels; ++m_channel) {
            clearChannel();
        }
        m_channel = 0;
    }

    void readBlocks() {
        startBlocks();
        std::optional<int> unseen;
        for (int count = 1; nextBlock(); ++count) {
            readBlock();
            if (m_model.ChannelPresent[m_channel] == 0) {
                continue;
            }
            if (count <= kDrawnBlocks) {
                tick();
            } else {
                setTickUnseen(m_scope, m_channel);
                unseen = m_channel;
            }
        }
        if (unseen) {
            setTick(m_scope, *unseen, true);
        }
    }

    void readOlderBlocks() {
        startBlocks();
        while (nextBlock()) {
            readOlderBlock();
            if (m_model.ChannelPresent[m_channel] != 0) {
                tick();
            }
        }
    }

private:
    /// A byte at FilePos, as a character; a zero byte where the file has ended, which no mark or tag contains.
    char nextByte() {
        const char byte = m_source.number<char>(m_model.FilePos).value_or('\0');
        m_model.FilePos += 1;
        return byte;
    }

    void startBlocks() { m_model.FilePos = 1 + static_cast<double>(layout::kHeaderSize); }

    /// Mark, id and length of the next block; false when there is none. An unknown id leaves the channel of the block
    /// before (channel 0 if there was none) and its ChannelPresent.
    bool nextBlock() {
        if (m_source.atEnd(m_model.FilePos) || !std::all_of(layout::kBlockMark.begin(), layout::kBlockMark.end(),
                                                            [this](char expected) { return nextByte() == expected; })) {
            return false;
        }
        if (const auto channel = channelOfId(nextByte())) {
            m_channel = *channel;
            m_model.ChannelPresent[m_channel] = 1;
        }
        m_model.FilePos += layout::kFieldSize; // the length: positions follow from the two counts
        return true;
    }

    /// The bytes of the fields from FilePos on, as far as the file holds them; valid until the samples are read.
    std::span<const std::byte> bytesOf(layout::Fields fields) {
        return m_source.upTo(m_model.FilePos, fields.size() * layout::kFieldSize);
    }
    /// A value of the field at FilePos. `fields` is what the file holds from there on.
    template<typename T>
    static std::optional<T> valueOf(std::span<const std::byte> fields) {
        return fields.size() >= sizeof(T) ? std::optional(ByteSource::decode<T>(fields.data())) : std::nullopt;
    }
    /// Goes on to the next field.
    void pass(std::span<const std::byte>& fields) {
        fields = fields.subspan(std::min(fields.size(), layout::kFieldSize));
        m_model.FilePos += layout::kFieldSize;
    }

    void readField(const layout::Field& field, int channel, std::span<const std::byte>& fields) {
        layout::withMember(field.id, m_model,
                           [&]<typename T>(PerChannel<T>& member) { assign(member[channel], valueOf<T>(fields)); });
        pass(fields);
    }

    /// Clears one channel. Its row shows the ranges of the load before, the volt text one step above the others, until
    /// the channel's block is read.
    void clearChannel() {
        m_model.ChannelPresent[m_channel] = 0;
        m_model.ProbeExp[m_channel] = 0;
        m_model.ChannelXShift[m_channel] = 0;
        m_model.SampleCount[m_channel] = 0;
        setTick(m_scope, m_channel, false);
        m_screen.markers[m_channel].shown = false;
        rewriteRow(m_model.VoltText, m_model.VoltIndex[m_channel]);
    }

    void readBlock() {
        const int c = m_channel;
        const layout::Fields fields = layout::blockFields(m_model.FileKind);
        auto bytes = bytesOf(fields);
        for (const layout::Field& field : fields) {
            if (field.id == layout::FieldId::ZeroLevel) {
                readZeroLevel(bytes);
            } else {
                readField(field, c, bytes);
            }
        }
        if (m_model.FileKind == 1) {
            m_model.ProbeExp[c] = 0;
        }
        derive(-1);
        const SampleExtremes extremes = readSamples(m_model.SampleCount[c]);
        assign(m_model.PeakToPeak[c], narrowed<std::int16_t>(extremes.greatest - extremes.least));
        m_model.FilePos +=
            static_cast<double>(layout::samplesToNextBlock(m_model.SampleCount[c], m_model.ScreenPoints[c]));
        FillVoltList(m_screen, m_model.ProbeExp[c]);
        rewriteRow(m_screen.voltList, m_model.VoltIndexView[c]);
    }

    /// The file counts from -100 at the bottom to 100 at the top, the model from 0 at the top to 200.
    void readZeroLevel(std::span<const std::byte>& fields) {
        const auto level = valueOf<std::int32_t>(fields);
        if (level) {
            assign(m_model.ZeroLevel[m_channel], narrowed<std::int32_t>(std::int64_t{100} - *level));
        }
        pass(fields);
        m_screen.markers[m_channel].top =
            strip::kHeight * m_model.ZeroLevel[m_channel] / 200 - strip::kMarkerHeight / 2;
    }

    void readOlderBlock() {
        const int c = m_channel;
        const layout::Fields fields = layout::olderBlockFields();
        auto bytes = bytesOf(fields);
        for (const layout::Field& field : fields) {
            // The frequency of every block lands in channel 0: this reader never sets the index it stores it by.
            readField(field, field.id == layout::FieldId::Frequency ? 0 : c, bytes);
        }
        if (m_model.SampleCount[c] > 0) {
            static_cast<void>(readSamples(m_model.SampleCount[c]));
            m_model.FilePos += 2.0 * m_model.SampleCount[c];
        }
        derive(0);
        rewriteRow(m_model.VoltText, m_model.VoltIndex[c]);
    }

    void derive(int voltOffset) {
        const int c = m_channel;
        assign(m_model.TimeIndexFile[c], narrowed<std::int16_t>(m_model.TimeIndex[c]));
        assign(m_model.VoltIndexFile[c], narrowed<std::int16_t>(m_model.VoltIndex[c]));
        m_model.TimeIndexView[c] = m_model.TimeIndexFile[c];
        assign(m_model.VoltIndexView[c], narrowed<std::int16_t>(m_model.VoltIndexFile[c] + voltOffset));
    }

    /// Samples 0 to count - 1 from FilePos on, which stays on the first of them. Rows that the file does not hold keep
    /// their old samples, and these count for the extremes like all others; rows beyond the array are dropped.
    SampleExtremes readSamples(std::int64_t count) {
        const auto rows = static_cast<std::size_t>(std::clamp<std::int64_t>(count, 1, kSampleRows));
        const std::span<const std::byte> bytes = m_source.upTo(m_model.FilePos, rows * layout::kSampleSize);
        const std::size_t held = bytes.size() / layout::kSampleSize;
        std::int16_t* const samples = m_model.SampleData.channel(m_channel);
        SampleExtremes extremes;
        for (std::size_t i = 0; i < held; ++i) {
            const auto sample = ByteSource::decode<std::int16_t>(bytes.data() + layout::kSampleSize * i);
            samples[i * kChannels] = sample;
            extremes.include(sample);
        }
        for (std::size_t i = held; i < rows; ++i) {
            extremes.include(samples[i * kChannels]);
        }
        return extremes;
    }

    /// Rewrites the row of the channel with an entry of a volt list; a missing table row or an overflowing factor
    /// leaves it.
    void rewriteRow(const PerVoltRange<QString>& voltTexts, std::int32_t voltRow) {
        const std::int32_t timeRow = m_model.TimeIndex[m_channel];
        const int exponent = m_model.ProbeExp[m_channel];
        if (m_model.TimeBaseText.has(timeRow) && voltTexts.has(voltRow) && std::isfinite(probeFactor(exponent))) {
            QString& row = m_screen.rows[m_channel];
            row = channelRow(row, m_model.TimeBaseText[timeRow], voltTexts[voltRow], RowGap::Seven,
                             probeFactorText(exponent));
        }
    }

    void tick() {
        setTick(m_scope, m_channel, true);
        m_screen.markers[m_channel].shown = true;
    }

    const Scope& m_scope;
    publicM& m_model;
    ScreenState& m_screen;
    ByteSource& m_source;
    int m_channel = 0;
};

} // namespace

void SimpleWav(const QString& path, const Scope& scope) {
    scope.duties.closeTable();

    ByteSource source;
    if (!source.open(path)) {
        // Opening a file that is not there makes an empty one, which holds no capture.
        if (!path.isEmpty() && !QFileInfo::exists(path)) {
            static_cast<void>(QFile(path).open(QIODevice::WriteOnly | QIODevice::NewOnly));
        }
        return;
    }
    loadCapture(source, scope);
}

void loadCapture(ByteSource& source, const Scope& scope) {
    Loader loader(scope, source);
    if (!loader.magicMatches()) {
        return;
    }
    scope.model.FileKind = 0;
    const CaptureForm* form = loader.readTag();
    if (form == nullptr) {
        return;
    }
    loader.applyForm(*form);
    loader.clearChannels();
    loader.readBlocks();
    source.close();
    hideStandIns(scope.screen);
    scope.duties.frameDue();
    scope.duties.openTable();
}

BinFileOutcome OpenBinFile(const QString& path, const Scope& scope) {
    ByteSource source;
    if (!source.open(path)) {
        return QFileInfo::exists(path) ? BinFileOutcome::NotACapture : BinFileOutcome::MissingFile;
    }
    return loadOlderCapture(source, scope);
}

BinFileOutcome loadOlderCapture(ByteSource& source, const Scope& scope) {
    Loader loader(scope, source);
    const CaptureForm* form = loader.magicMatches() ? loader.readTag() : nullptr;
    if (form == nullptr || form->fileKind != 1) {
        return BinFileOutcome::NotACapture;
    }
    scope.model.ChannelPresent.fill(0);
    loader.readOlderBlocks();
    source.close();
    scope.duties.frameDue();
    scope.duties.openTable();
    return BinFileOutcome::Loaded;
}

} // namespace sixtrace
