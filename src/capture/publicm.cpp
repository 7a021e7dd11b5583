// SPDX-License-Identifier: MIT
#include "capture/publicm.h"

#include <cmath>
#include <string_view>

namespace sixtrace {

namespace {

struct TimeBaseRow {
    double milliseconds;
    const char16_t* text;
};

constexpr std::array<TimeBaseRow, kTimeBaseRows> kTimeBases{{
    {0.000005, u"5  nS"}, {0.00001, u"10 nS"}, {0.000025, u"25 nS"}, {0.00005, u"50 nS"}, {0.0001, u"100nS"},
    {0.00025, u"250nS"},  {0.0005, u"500nS"},  {0.001, u"1  uS"},    {0.0025, u"2.5uS"},  {0.005, u"5  uS"},
    {0.01, u"10 uS"},     {0.025, u"25 uS"},   {0.05, u"50 uS"},     {0.1, u"100uS"},     {0.25, u"250uS"},
    {0.5, u"500uS"},      {1, u"1  mS"},       {2.5, u"2.5mS"},      {5, u"5  mS"},       {10, u"10 mS"},
    {25, u"25 mS"},       {50, u"50 mS"},      {100, u"100mS"},      {250, u"250mS"},     {500, u"500mS"},
    {1000, u"1   S"},     {2500, u"2.5 S"},    {5000, u"5   S"},
}};

/// What the 20 family has in the rows of kFamilyRows.
constexpr std::array<TimeBaseRow, kFamilyRows.size()> kTimeBasesOf20{{
    {0.00002, u"20 nS"},
    {0.0002, u"200nS"},
    {0.002, u"2  uS"},
    {0.02, u"20 uS"},
    {0.2, u"200uS"},
    {2, u"2  mS"},
    {20, u"20 mS"},
    {200, u"200mS"},
    {2000, u"2   S"},
}};

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

constexpr std::string_view kIds = "12ABCD";

} // namespace

void publicM::fillTables() {
    for (std::size_t row = 0; row < kTimeBases.size(); ++row) {
        TimeBaseTable[row] = kTimeBases[row].milliseconds;
        TimeBaseText[row] = QString::fromUtf16(kTimeBases[row].text);
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
        const TimeBaseRow& entry = family == TimeBaseFamily::Of25 ? kTimeBases[row] : kTimeBasesOf20[i];
        TimeBaseTable[row] = entry.milliseconds;
        TimeBaseText[row] = QString::fromUtf16(entry.text);
    }
}

QString channelLabel(int channel) {
    return channelName(channel).leftJustified(3);
}

QString channelName(int channel) {
    const QLatin1Char id(kIds.at(static_cast<std::size_t>(channel)));
    return channel < 2 ? QStringLiteral("ch") + id : QString(id);
}

int channelOfId(char id) {
    const auto position = kIds.find(id);
    return position == std::string_view::npos ? -1 : static_cast<int>(position);
}

double probeFactor(int probeExp) {
    return std::pow(10.0, probeExp);
}

const std::array<QString, kVoltRows>* voltListTexts(int probeExp) {
    // The first text of the first list has a small v, unlike VoltText.
    static const std::array<std::array<QString, kVoltRows>, 4> lists{{
        {QStringLiteral("5.00mv"), QStringLiteral("10.0mV"), QStringLiteral("20.0mV"), QStringLiteral("50.0mV"),
         QStringLiteral("100 mV"), QStringLiteral("200 mV"), QStringLiteral("500 mV"), QStringLiteral("1.00 V"),
         QStringLiteral("2.00 V"), QStringLiteral("5.00 V")},
        {QStringLiteral("50.0mV"), QStringLiteral("100 mV"), QStringLiteral("200 mV"), QStringLiteral("500 mV"),
         QStringLiteral("1.00 V"), QStringLiteral("2.00 V"), QStringLiteral("5.00 V"), QStringLiteral("10.0 V"),
         QStringLiteral("20.0 V"), QStringLiteral("50.0 V")},
        {QStringLiteral("500 mV"), QStringLiteral("1.00 V"), QStringLiteral("2.00 V"), QStringLiteral("5.00 V"),
         QStringLiteral("10.0 V"), QStringLiteral("20.0 V"), QStringLiteral("50.0 V"), QStringLiteral("100  V"),
         QStringLiteral("200  V"), QStringLiteral("500  V")},
        {QStringLiteral("5.00 V"), QStringLiteral("10.0 V"), QStringLiteral("20.0 V"), QStringLiteral("50.0 V"),
         QStringLiteral("100  V"), QStringLiteral("200  V"), QStringLiteral("500  V"), QStringLiteral("1000 V"),
         QStringLiteral("2000 V"), QStringLiteral("5000 V")},
    }};
    return probeExp >= 0 && probeExp < 4 ? &lists[static_cast<std::size_t>(probeExp)] : nullptr;
}

} // namespace sixtrace
