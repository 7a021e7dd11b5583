// SPDX-License-Identifier: MIT
#include "capture/publicm.h"

#include "capture/rangetexts.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace sixtrace {

namespace {

struct VoltRow {
    double volts;
    const char16_t* text;
    std::int16_t range;
};

constexpr std::array<VoltRow, kVoltRows> kVolts{{
    {0.005, u"5.00mV", 400},
    {0.01, u"10.0mV", 200},
    {0.02, u"20.0mV", 100},
    {0.05, u"50.0mV", 40},
    {0.1, u"100 mV", 20},
    {0.2, u"200 mV", 10},
    {0.5, u"500 mV", 100},
    {1, u"1.00 V", 50},
    {2, u"2.00 V", 25},
    {5, u"5.00 V", 10},
}};

} // namespace

static_assert(kTimeBaseTexts.size() == kTimeBaseRows && kTimeBaseTextsOf20.size() == kFamilyRows.size());

void publicM::fillTables() {
    for (std::size_t row = 0; row < kTimeBaseTexts.size(); ++row) {
        TimeBaseTable[row] = kTimeBaseTexts[row].milliseconds;
        TimeBaseText[row] = QString::fromLatin1(kTimeBaseTexts[row].text);
    }
    for (std::size_t row = 0; row < kVolts.size(); ++row) {
        VoltTable[row] = kVolts[row].volts;
        VoltText[row] = QString::fromUtf16(kVolts[row].text);
        VoltRange[row] = kVolts[row].range;
    }
}

void publicM::setTimeBaseFamily(TimeBaseFamily family) {
    for (std::size_t i = 0; i < kFamilyRows.size(); ++i) {
        const auto row = static_cast<std::size_t>(kFamilyRows[i]);
        const TimeBaseRow& entry = family == TimeBaseFamily::Of25 ? kTimeBaseTexts[row] : kTimeBaseTextsOf20[i];
        TimeBaseTable[row] = entry.milliseconds;
        // Most captures are of the family of the one before.
        if (const QLatin1StringView text(entry.text); TimeBaseText[row] != text) {
            TimeBaseText[row] = text;
        }
    }
}

QString channelLabel(int channel) {
    return channelName(channel).leftJustified(3);
}

QString channelName(int channel) {
    const std::string_view name = kChannelNames.at(channel);
    return QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()));
}

double probeFactor(int probeExp) {
    return std::pow(10.0, probeExp);
}

const PerVoltRange<QString>* voltListTexts(int probeExp) {
    static const auto lists = [] {
        std::array<PerVoltRange<QString>, kVoltListTexts.size()> made;
        for (std::size_t probe = 0; probe < made.size(); ++probe) {
            std::transform(kVoltListTexts[probe].begin(), kVoltListTexts[probe].end(), made[probe].begin(),
                           [](const char* text) { return QString::fromLatin1(text); });
        }
        return made;
    }();
    return probeExp >= 0 && probeExp < 4 ? &lists[static_cast<std::size_t>(probeExp)] : nullptr;
}

} // namespace sixtrace
