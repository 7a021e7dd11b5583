// SPDX-License-Identifier: MIT
#include "capture/capturefile.h"

#include "capture/bytesource.h"
#include "capture/channelrows.h"
#include "capture/samplespread.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <limits>

namespace sixtrace {

namespace {

constexpr std::array<CaptureForm, 6> kForms{{
    {"bin", 1, "VRT3310L", TimeBaseFamily::Of25},
    {"V01", 2, "ZMK 3310R", TimeBaseFamily::Of25},
    {"W01", 3, "ZMK 3470R", TimeBaseFamily::Of20},
    {"V11", 4, "VRT3310L", TimeBaseFamily::Of25},
    {"W11", 5, "VRT3470L", TimeBaseFamily::Of20},
    {"V10", 6, "VRT3310L-T", TimeBaseFamily::Of20},
}};

constexpr std::string_view kMagic = "KQX";

bool isRow(std::int64_t index, int rows) {
    return index >= 0 && index < rows;
}

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

/// Reads a capture into the model. FilePos is the position of the next read; a field that the file does not hold
/// whole keeps its old value, and the position advances over it all the same.
class Loader {
public:
    Loader(publicM& model, CaptureView& view, ByteSource& source)
        : m_model(model)
        , m_view(view)
        , m_source(source) {}

    /// A byte at FilePos, as a character; none of those that mean anything when the file has ended.
    char nextByte() {
        const char byte = m_source.number<char>(m_model.FilePos).value_or('\0');
        m_model.FilePos += 1;
        return byte;
    }

    bool magicMatches() {
        return std::all_of(kMagic.begin(), kMagic.end(), [this](char expected) { return nextByte() == expected; });
    }

    const CaptureForm* readTag() {
        const std::array<char, 3> tag{nextByte(), nextByte(), nextByte()};
        return captureForm({tag.data(), tag.size()});
    }

    void skipNumber() { m_model.FilePos += 4; }

    bool atEnd() const { return m_source.atEnd(m_model.FilePos); }

    /// "C", "H" and the id; false when the loop over the blocks is over. An unknown id leaves the channel of the block
    /// before (channel 0 if there was none) and its ChannelPresent.
    bool nextBlock() {
        if (nextByte() != 'C' || nextByte() != 'H') {
            return false;
        }
        const int channel = channelOfId(nextByte());
        if (channel >= 0) {
            m_channel = static_cast<std::size_t>(channel);
            m_model.ChannelPresent[m_channel] = 1;
        }
        return true;
    }

    template<typename T>
    void field(PerChannel<T>& target) {
        assign(target[m_channel], m_source.number<T>(m_model.FilePos));
        m_model.FilePos += sizeof(T);
    }

    std::optional<std::int32_t> rawZeroLevel() {
        const auto level = m_source.number<std::int32_t>(m_model.FilePos);
        m_model.FilePos += 4;
        return level;
    }

    void probeExp() {
        assign(m_model.ProbeExp[m_channel], m_source.number<std::int16_t>(m_model.FilePos));
        m_model.FilePos += 4; // the field is four bytes wide, the upper two are not read
    }

    void derive(int voltOffset) {
        publicM& m = m_model;
        const std::size_t c = m_channel;
        assign(m.TimeIndexFile[c], narrowed<std::int16_t>(m.TimeIndex[c]));
        assign(m.VoltIndexFile[c], narrowed<std::int16_t>(m.VoltIndex[c]));
        m.TimeIndexView[c] = m.TimeIndexFile[c];
        assign(m.VoltIndexView[c], narrowed<std::int16_t>(m.VoltIndexFile[c] + voltOffset));
    }

    /// Samples 0 to count - 1 from FilePos on, which stays on the first of them. Rows that the file does not hold keep
    /// their old samples, and these count for the extremes like all others; rows beyond the array are dropped. The
    /// samples may reach the model as late as with finishSamples.
    SampleExtremes samples(std::int64_t count) {
        const auto rows = static_cast<std::size_t>(std::clamp<std::int64_t>(count, 1, kSampleRows));
        const ByteSource::Stretch stretch = m_source.upTo(m_model.FilePos, rows * 2);
        const std::size_t held = stretch.count / 2;
        m_spread.add(channel(), stretch.bytes, held);
        if (held < rows || !m_source.holdsWholeFile()) {
            m_spread.flush();
        }

        SampleExtremes extremes = extremesOf(stretch.bytes, held);
        for (std::size_t i = held; i < rows; ++i) {
            const int sample = m_model.SampleData(channel(), static_cast<int>(i));
            extremes.least = std::min(extremes.least, sample);
            extremes.greatest = std::max(extremes.greatest, sample);
        }
        return extremes;
    }
    void finishSamples() { m_spread.flush(); }

    /// From the first sample to the block behind: the samples, and the slots that hold filling.
    void skipSamples() {
        const double count = m_model.SampleCount[m_channel];
        const double slots = m_model.ScreenPoints[m_channel];
        m_model.FilePos += count > 1 ? 2 * (count - 1) : 0; // the last sample that was read
        m_model.FilePos += 2 + 2 * std::max(slots - count, 0.0);
    }

    /// Rewrites the row of the channel; a missing table row or an overflowing factor leaves it.
    void rewriteRow(const QString* voltText) {
        const std::int32_t timeRow = m_model.TimeIndex[m_channel];
        const int exponent = m_model.ProbeExp[m_channel];
        if (!isRow(timeRow, kTimeBaseRows) || voltText == nullptr || !std::isfinite(probeFactor(exponent))) {
            return;
        }
        const int c = channel();
        m_view.setRowText(c, channelRow(m_view.rowText(c), m_model.TimeBaseText[static_cast<std::size_t>(timeRow)],
                                        *voltText, RowGap::Seven, probeFactorText(exponent)));
    }

    [[nodiscard]] const QString* voltTextOfFile() const {
        const std::int32_t row = m_model.VoltIndex[m_channel];
        return isRow(row, kVoltRows) ? &m_model.VoltText[static_cast<std::size_t>(row)] : nullptr;
    }

    void tickIfPresent() {
        if (m_model.ChannelPresent[m_channel] != 0) {
            if (m_view.ticksShowSamples()) {
                m_spread.flush();
            }
            m_view.setTick(channel(), true);
            m_view.showMarker(channel(), true);
        }
    }

    void select(int channel) { m_channel = static_cast<std::size_t>(channel); }
    [[nodiscard]] int channel() const { return static_cast<int>(m_channel); }
    [[nodiscard]] std::size_t index() const { return m_channel; }

private:
    publicM& m_model;
    CaptureView& m_view;
    ByteSource& m_source;
    SampleSpread m_spread{m_model.SampleData};
    std::size_t m_channel = 0;
};

/// The nine family rows in the tables and in the time list, and the name of the instrument, which is blanked at once.
void applyForm(const CaptureForm& form, publicM& model, CaptureView& view) {
    model.FileKind = form.fileKind;
    model.setTimeBaseFamily(form.family);
    view.setModelName(QString::fromLatin1(form.modelName.data(), static_cast<qsizetype>(form.modelName.size())));
    view.setModelName(QString());
    for (const int row : kFamilyRows) {
        view.setTimeListEntry(row, model.TimeBaseText[static_cast<std::size_t>(row)]);
    }
}

/// Clears one channel. Its row shows the ranges of the load before, the volt text one step above the others, until the
/// channel's block is read.
void clearChannel(int channel, publicM& model, CaptureView& view, Loader& loader) {
    const auto c = static_cast<std::size_t>(channel);
    model.ChannelPresent[c] = 0;
    model.ProbeExp[c] = 0;
    model.ChannelXShift[c] = 0;
    model.SampleCount[c] = 0;
    view.setTick(channel, false);
    view.showMarker(channel, false);
    loader.select(channel);
    loader.rewriteRow(loader.voltTextOfFile());
}

void readBlock(publicM& model, CaptureView& view, Loader& loader) {
    loader.skipNumber(); // length of the block; positions follow from the two counts
    loader.field(model.ScreenPoints);
    loader.field(model.SampleCount);
    loader.field(model.ScanPoint);
    loader.field(model.TimeIndex);

    const std::size_t c = loader.index();
    if (const auto level = loader.rawZeroLevel()) {
        assign(model.ZeroLevel[c], narrowed<std::int32_t>(std::int64_t{100} - *level));
    }
    view.setMarkerTop(loader.channel(), kStripHeight * model.ZeroLevel[c] / 200 - kMarkerHeight / 2);

    loader.field(model.VoltIndex);
    if (model.FileKind == 1) {
        model.ProbeExp[c] = 0;
    } else {
        loader.probeExp();
    }
    loader.field(model.SampleInterval);
    loader.field(model.Frequency);
    loader.field(model.Period);
    loader.field(model.VoltPerCount);
    loader.derive(-1);

    const auto [least, greatest] = loader.samples(model.SampleCount[c]);
    assign(model.PeakToPeak[c], narrowed<std::int16_t>(std::int64_t{greatest} - least));
    loader.skipSamples();

    view.FillVoltList(model.ProbeExp[c]);
    const int voltRow = model.VoltIndexView[c];
    const QString voltText = isRow(voltRow, kVoltRows) ? view.voltListEntry(voltRow) : QString();
    loader.rewriteRow(isRow(voltRow, kVoltRows) ? &voltText : nullptr);
    loader.tickIfPresent();
}

void readBlockOfOlderLayout(publicM& model, Loader& loader) {
    const std::size_t c = loader.index();
    loader.skipNumber();
    loader.field(model.ScreenPoints);
    loader.field(model.SampleCount);
    loader.field(model.ScanPoint);
    loader.field(model.TimeIndex);
    // The frequency of every block lands in channel 0: this reader never sets the index it stores it by.
    const int channel = loader.channel();
    loader.select(0);
    loader.field(model.Frequency);
    loader.select(channel);
    assign(model.ZeroLevel[c], loader.rawZeroLevel());
    loader.field(model.VoltIndex);
    loader.field(model.SampleInterval);
    loader.field(model.Period);
    loader.field(model.VoltPerCount);
    if (model.SampleCount[c] > 0) {
        static_cast<void>(loader.samples(model.SampleCount[c]));
        model.FilePos += 2.0 * model.SampleCount[c];
    }
    loader.derive(0);
    loader.rewriteRow(loader.voltTextOfFile());
    loader.tickIfPresent();
}

} // namespace

const std::array<CaptureForm, 6>& captureForms() {
    return kForms;
}

const CaptureForm* captureForm(std::string_view tag) {
    const auto form =
        std::find_if(kForms.begin(), kForms.end(), [tag](const CaptureForm& entry) { return entry.tag == tag; });
    return form == kForms.end() ? nullptr : form;
}

void SimpleWav(const QString& path, publicM& model, CaptureView& view) {
    view.unloadTable();

    ByteSource source;
    if (!source.open(path)) {
        // Opening a file that is not there makes an empty one, which holds no capture.
        if (!path.isEmpty() && !QFileInfo::exists(path)) {
            static_cast<void>(QFile(path).open(QIODevice::WriteOnly | QIODevice::NewOnly));
        }
        return;
    }
    Loader loader(model, view, source);
    model.FilePos = 1;
    if (!loader.magicMatches()) {
        return;
    }
    model.FileKind = 0;
    const CaptureForm* form = loader.readTag();
    if (form == nullptr) {
        return;
    }
    applyForm(*form, model, view);
    for (int channel = 0; channel < kChannels; ++channel) {
        clearChannel(channel, model, view, loader);
    }
    loader.select(0);
    model.FilePos = 11; // behind the number of the header, which nobody looks at
    while (!loader.atEnd() && loader.nextBlock()) {
        readBlock(model, view, loader);
    }
    loader.finishSamples();
    source.close();
    view.hideStandIns();
    view.PicReDrawT();
    view.loadTable();
}

BinFileOutcome OpenBinFile(const QString& path, publicM& model, CaptureView& view) {
    ByteSource source;
    if (!source.open(path)) {
        return QFileInfo::exists(path) ? BinFileOutcome::NotACapture : BinFileOutcome::MissingFile;
    }
    Loader loader(model, view, source);
    model.FilePos = 1;
    const CaptureForm* form = loader.magicMatches() ? loader.readTag() : nullptr;
    if (form == nullptr || form->fileKind != 1) {
        return BinFileOutcome::NotACapture;
    }
    loader.skipNumber();
    model.ChannelPresent.fill(0);
    while (!loader.atEnd() && loader.nextBlock()) {
        readBlockOfOlderLayout(model, loader);
    }
    loader.finishSamples();
    source.close();
    view.PicReDrawT();
    view.loadTable();
    return BinFileOutcome::Loaded;
}

} // namespace sixtrace
