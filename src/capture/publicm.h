// SPDX-License-Identifier: MIT
#pragma once

#include "capture/channels.h"
#include "platform/drawing/colour.h"

#include <QString>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace sixtrace {

/// Samples by channels, sample-major: the element of channel c and sample i stands at c + 6 i. Fixed capacity.
template<typename T>
class SampleArray {
public:
    static constexpr std::size_t kSize = std::size_t{kChannels} * kSampleRows;

    [[nodiscard]] T& operator()(int channel, int sample) { return m_data[index(channel, sample)]; }
    [[nodiscard]] T operator()(int channel, int sample) const { return m_data[index(channel, sample)]; }
    /// Sample 0 of a channel; the next sample of it stands six elements further.
    [[nodiscard]] T* channel(int channel) { return m_data.data() + channel; }
    [[nodiscard]] const T* channel(int channel) const { return m_data.data() + channel; }

private:
    [[nodiscard]] static std::size_t index(int channel, int sample) {
        return static_cast<std::size_t>(channel) + std::size_t{kChannels} * static_cast<std::size_t>(sample);
    }
    /// Aligned to a cache line, for wide stores. Vectors read and write eight elements where a row has six.
    alignas(64) std::array<T, kSize + 2> m_data{};
};

/// The capture model: the one shared record of the program. It says what the instrument recorded, how each channel is
/// shown just now and which form of capture is loaded. Made once, passed by reference, nothing in it is ever grown.
///
/// A channel's fields are consistent only while its ChannelPresent is 1: a load clears ChannelPresent, ProbeExp,
/// ChannelXShift and SampleCount of all channels and leaves everything else of a channel that the file lacks.
// The fields are ordered by meaning; the few bytes of padding do not matter.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding)
struct publicM {
    // Read from the capture file.
    PerChannel<std::uint8_t> ChannelPresent{}; ///< 1 when the loaded capture holds the channel
    PerChannel<std::int32_t> ScreenPoints{};   ///< samples per screen width, and sample slots of the file's block
    PerChannel<std::int32_t> SampleCount{};    ///< samples held, as the file says it; more than 10231 are not stored
    PerChannel<std::int32_t> ScanPoint{};      ///< slow scan: new data reach up to this sample; time rows 22 and up
    PerChannel<std::int32_t> TimeIndex{};      ///< row of TimeBaseTable at the capture
    PerChannel<std::int32_t> ZeroLevel{};      ///< vertical zero, 0 top, 100 middle, 200 bottom of the screen
    PerChannel<std::int32_t> VoltIndex{};      ///< row of VoltTable at the capture, counted from 1
    PerChannel<std::int16_t> ProbeExp{};       ///< readouts are multiplied by 10 to this power
    PerChannel<float> SampleInterval{};        ///< between two samples, microseconds
    PerChannel<float> Frequency{};             ///< of the signal, hertz
    PerChannel<float> Period{};                ///< of the signal, microseconds
    PerChannel<float> VoltPerCount{};          ///< millivolts per count at probe factor 1
    SampleArray<std::int16_t> SampleData;      ///< counts

    // Derived by a load.
    PerChannel<std::int16_t> TimeIndexFile{}; ///< TimeIndex, fixed until the next load
    PerChannel<std::int16_t> VoltIndexFile{}; ///< VoltIndex, fixed until the next load
    PerChannel<std::int16_t> TimeIndexView{}; ///< row of TimeBaseTable now shown
    PerChannel<std::int16_t> VoltIndexView{}; ///< row of VoltTable now shown; starts as VoltIndexFile - 1
    PerChannel<std::int16_t> PeakToPeak{};    ///< counts

    // Of the view.
    PerChannel<std::int16_t> ChannelYPos{}; ///< screen Y of the zero line; every frame derives it from the marker
    PerChannel<float> ChannelXShift{};      ///< horizontal shift, screen units
    PerChannel<Colour> LineColor{};         ///< trace colour
    PerChannel<float> SampleStep{};         ///< SampleInterval of the channel as last drawn
    PerChannel<float> MsPerPixel{};         ///< milliseconds per screen unit as last drawn
    PerChannel<float> VoltPerPixel{};       ///< volts per screen unit as last drawn
    SampleArray<std::int32_t> PlotX;        ///< screen position of each sample that a frame has visited
    SampleArray<std::int32_t> PlotY;

    /// 1024 points by 6 channels for the 500 by 400 screen of PicReDraw. Nothing fills it.
    NumberedArray<std::int16_t, std::size_t{1024} * kChannels> ScreenTrace{};

    // Tables.
    PerTimeBase<double> TimeBaseTable{};    ///< milliseconds per division
    PerTimeBase<QString> TimeBaseText;      ///< five characters each
    PerVoltRange<double> VoltTable{};       ///< volts per division
    PerVoltRange<QString> VoltText;         ///< six characters each
    PerVoltRange<std::int16_t> VoltRange{}; ///< half the range of VScroll1, divisions

    // Shared scalars.
    std::int16_t FileKind = 0;      ///< 0 none or unknown, 1 "bin", 2 "V01", 3 "W01", 4 "V11", 5 "W11", 6 "V10"
    QString AppDir;                 ///< program folder, with a separator at its end
    QString IniFile;                ///< settings file
    std::int16_t LanguageId = 0;    ///< 0 Chinese, 1 English
    QString LanFile;                ///< language file in use
    Colour GridColor = 0;           ///< of the graticule
    Colour BackColor = 0;           ///< of the screen; a page prints in it too
    bool AutoRun = false;           ///< timed acquisition runs: view controls, marker drags and cursors refuse input
    double FilePos = 0;             ///< 1-based read position of SimpleWav
    std::int16_t ComPort = 0;       ///< index of the serial port; below 1 selects USB
    QString ComSetText;             ///< scratch of the port settings
    QString ReceivedFile;           ///< file being received, or chosen for saving
    std::int32_t ReceiveResult = 0; ///< of the last transfer: above 0 when ReceivedFile names a complete file
    std::int16_t XferCancel = 0;    ///< 1 asks a serial transfer to stop

    /// Fills the five tables, the time bases with the rows of the 25 family.
    void fillTables();
    /// Rewrites the nine rows 2, 5, 8 ... 26 of TimeBaseTable and TimeBaseText.
    void setTimeBaseFamily(TimeBaseFamily family);
};

/// The rows that differ between the two time-base families.
inline constexpr std::array<int, 9> kFamilyRows{2, 5, 8, 11, 14, 17, 20, 23, 26};

/// Label of a channel's row: "ch1", "ch2", "A  " ... three characters.
[[nodiscard]] QString channelLabel(int channel);
/// Name of a channel without padding: "ch1", "ch2", "A" ...
[[nodiscard]] QString channelName(int channel);

/// 10 to the power of a probe exponent.
[[nodiscard]] double probeFactor(int probeExp);

/// The ten texts of the volt list for a probe exponent 0 to 3, or null for any other: the list then stays as it is.
[[nodiscard]] const PerVoltRange<QString>* voltListTexts(int probeExp);

} // namespace sixtrace
