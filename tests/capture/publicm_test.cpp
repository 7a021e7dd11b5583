// SPDX-License-Identifier: MIT
#include "capture/publicm.h"

#include "capture/channellist.h"
#include "support/strings.h"

#include <memory>

namespace sixtrace::test {
namespace {

struct TimeRow {
    double milliseconds;
    QString text;
    double otherMilliseconds;
    QString otherText;
};

/// Both families, row by row.
const std::array<TimeRow, 28>& timeRows() {
    static const std::array<TimeRow, 28> rows{{
        {0.000005, u"5  nS"_s, 0.000005, u"5  nS"_s},
        {0.00001, u"10 nS"_s, 0.00001, u"10 nS"_s},
        {0.000025, u"25 nS"_s, 0.00002, u"20 nS"_s},
        {0.00005, u"50 nS"_s, 0.00005, u"50 nS"_s},
        {0.0001, u"100nS"_s, 0.0001, u"100nS"_s},
        {0.00025, u"250nS"_s, 0.0002, u"200nS"_s},
        {0.0005, u"500nS"_s, 0.0005, u"500nS"_s},
        {0.001, u"1  uS"_s, 0.001, u"1  uS"_s},
        {0.0025, u"2.5uS"_s, 0.002, u"2  uS"_s},
        {0.005, u"5  uS"_s, 0.005, u"5  uS"_s},
        {0.01, u"10 uS"_s, 0.01, u"10 uS"_s},
        {0.025, u"25 uS"_s, 0.02, u"20 uS"_s},
        {0.05, u"50 uS"_s, 0.05, u"50 uS"_s},
        {0.1, u"100uS"_s, 0.1, u"100uS"_s},
        {0.25, u"250uS"_s, 0.2, u"200uS"_s},
        {0.5, u"500uS"_s, 0.5, u"500uS"_s},
        {1, u"1  mS"_s, 1, u"1  mS"_s},
        {2.5, u"2.5mS"_s, 2, u"2  mS"_s},
        {5, u"5  mS"_s, 5, u"5  mS"_s},
        {10, u"10 mS"_s, 10, u"10 mS"_s},
        {25, u"25 mS"_s, 20, u"20 mS"_s},
        {50, u"50 mS"_s, 50, u"50 mS"_s},
        {100, u"100mS"_s, 100, u"100mS"_s},
        {250, u"250mS"_s, 200, u"200mS"_s},
        {500, u"500mS"_s, 500, u"500mS"_s},
        {1000, u"1   S"_s, 1000, u"1   S"_s},
        {2500, u"2.5 S"_s, 2000, u"2   S"_s},
        {5000, u"5   S"_s, 5000, u"5   S"_s},
    }};
    return rows;
}

class Model : public ::testing::Test {
protected:
    Model() { m->fillTables(); }
    std::unique_ptr<publicM> m = std::make_unique<publicM>();
};

TEST_F(Model, TimeBaseTableStartsWithThe25Family) {
    for (std::size_t row = 0; row < 28; ++row) {
        EXPECT_EQ(m->TimeBaseTable[row], timeRows()[row].milliseconds) << row;
        EXPECT_EQ(m->TimeBaseText[row], timeRows()[row].text) << row;
        EXPECT_EQ(m->TimeBaseText[row].size(), 5) << row;
    }
}

TEST_F(Model, The20FamilyChangesNineRows) {
    m->setTimeBaseFamily(TimeBaseFamily::Of20);
    int changed = 0;
    for (std::size_t row = 0; row < 28; ++row) {
        EXPECT_EQ(m->TimeBaseTable[row], timeRows()[row].otherMilliseconds) << row;
        EXPECT_EQ(m->TimeBaseText[row], timeRows()[row].otherText) << row;
        EXPECT_EQ(m->TimeBaseText[row].size(), 5) << row;
        changed += timeRows()[row].text != timeRows()[row].otherText ? 1 : 0;
    }
    EXPECT_EQ(changed, 9);
}

TEST_F(Model, TheFamilyCanBeChangedBack) {
    m->setTimeBaseFamily(TimeBaseFamily::Of20);
    m->setTimeBaseFamily(TimeBaseFamily::Of25);
    for (std::size_t row = 0; row < 28; ++row) {
        EXPECT_EQ(m->TimeBaseTable[row], timeRows()[row].milliseconds) << row;
        EXPECT_EQ(m->TimeBaseText[row], timeRows()[row].text) << row;
    }
}

TEST_F(Model, VoltTableVoltTextAndVoltRange) {
    const std::array<double, 10> volts{0.005, 0.01, 0.02, 0.05, 0.1, 0.2, 0.5, 1, 2, 5};
    const std::array<QString, 10> texts{u"5.00mV"_s, u"10.0mV"_s, u"20.0mV"_s, u"50.0mV"_s, u"100 mV"_s,
                                        u"200 mV"_s, u"500 mV"_s, u"1.00 V"_s, u"2.00 V"_s, u"5.00 V"_s};
    const std::array<std::int16_t, 10> ranges{400, 200, 100, 40, 20, 10, 100, 50, 25, 10};
    EXPECT_EQ(m->VoltTable, volts);
    EXPECT_EQ(m->VoltText, texts);
    EXPECT_EQ(m->VoltRange, ranges);
}

TEST(VoltListTexts, FollowTheProbeFactor) {
    using Texts = std::array<QString, 10>;
    const Texts probe0{u"5.00mv"_s, u"10.0mV"_s, u"20.0mV"_s, u"50.0mV"_s, u"100 mV"_s,
                       u"200 mV"_s, u"500 mV"_s, u"1.00 V"_s, u"2.00 V"_s, u"5.00 V"_s};
    const Texts probe1{u"50.0mV"_s, u"100 mV"_s, u"200 mV"_s, u"500 mV"_s, u"1.00 V"_s,
                       u"2.00 V"_s, u"5.00 V"_s, u"10.0 V"_s, u"20.0 V"_s, u"50.0 V"_s};
    const Texts probe2{u"500 mV"_s, u"1.00 V"_s, u"2.00 V"_s, u"5.00 V"_s, u"10.0 V"_s,
                       u"20.0 V"_s, u"50.0 V"_s, u"100  V"_s, u"200  V"_s, u"500  V"_s};
    const Texts probe3{u"5.00 V"_s, u"10.0 V"_s, u"20.0 V"_s, u"50.0 V"_s, u"100  V"_s,
                       u"200  V"_s, u"500  V"_s, u"1000 V"_s, u"2000 V"_s, u"5000 V"_s};
    ASSERT_NE(voltListTexts(0), nullptr);
    EXPECT_EQ(*voltListTexts(0), probe0);
    EXPECT_EQ(*voltListTexts(1), probe1);
    EXPECT_EQ(*voltListTexts(2), probe2);
    EXPECT_EQ(*voltListTexts(3), probe3);
}

TEST(VoltListTexts, DoNotExistForOtherProbes) {
    for (const int probe : {-32768, -1, 4, 32767}) {
        EXPECT_EQ(voltListTexts(probe), nullptr);
    }
}

TEST(Channels, OrderIdsAndLabels) {
    const PerChannel<char> ids{'1', '2', 'A', 'B', 'C', 'D'};
    const PerChannel<QString> labels{u"ch1"_s, u"ch2"_s, u"A  "_s, u"B  "_s, u"C  "_s, u"D  "_s};
    const PerChannel<QString> names{u"ch1"_s, u"ch2"_s, u"A"_s, u"B"_s, u"C"_s, u"D"_s};
    for (int channel = 0; channel < 6; ++channel) {
        EXPECT_EQ(channelOfId(ids[channel]), channel);
        EXPECT_EQ(channelLabel(channel), labels[channel]);
        EXPECT_EQ(channelName(channel), names[channel]);
    }
    for (const char foreign : {'0', '3', 'E', 'a', ' ', '\0', '\xFF'}) {
        EXPECT_EQ(channelOfId(foreign), std::nullopt);
    }
}

TEST_F(Model, SamplesAreStoredSampleMajorWithRoomFor10231) {
    EXPECT_EQ(SampleArray<std::int16_t>::kSize, 61386U);
    m->SampleData(3, 2) = 77;
    EXPECT_EQ(m->SampleData.channel(0)[3 + 6 * 2], 77);
    EXPECT_EQ(m->SampleData.channel(3)[6 * 2], 77);
    m->SampleData(5, 10230) = -1;
    EXPECT_EQ(m->SampleData.channel(0)[61385], -1);
}

TEST(ProbeFactor, IsAPowerOfTen) {
    EXPECT_EQ(probeFactor(0), 1.0);
    EXPECT_EQ(probeFactor(3), 1000.0);
    EXPECT_EQ(probeFactorText(0), u"1"_s);
    EXPECT_EQ(probeFactorText(1), u"10"_s);
    EXPECT_EQ(probeFactorText(3), u"1000"_s);
    EXPECT_EQ(probeFactorText(16), u"1E+16"_s);
}

TEST(ChannelRow, IsComposedToTheBlank) {
    EXPECT_EQ(channelRow(u"ch1", u"5  nS"_s, u"5.00mV"_s, RowGap::Eight, u"1"_s),
              u"ch1          5  nS          5.00mV        / 1"_s);
    EXPECT_EQ(channelRow(u"A  ", u"100uS"_s, u"20.0 V"_s, RowGap::Seven, u"10"_s),
              u"A            100uS          20.0 V       / 10"_s);
}

TEST(ChannelRow, TakesTheFirstThreeCharactersOfTheRowBefore) {
    EXPECT_EQ(channelRow(u"B            old row", u"1  mS"_s, u"1.00 V"_s, RowGap::Seven, u"1"_s),
              u"B            1  mS          1.00 V       / 1"_s);
}

} // namespace
} // namespace sixtrace::test
