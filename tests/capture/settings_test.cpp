// SPDX-License-Identifier: MIT
#include "capture/settings.h"

#include "capture/mdllan.h"
#include "support/strings.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace sixtrace::test {
namespace {

class StartSettingsFile : public ::testing::Test {
protected:
    StartSettings settingsOf(const QByteArray& text) {
        const QString name = m_folder.filePath(u"vkq.ini"_s);
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.close();
        return readStartSettings(name);
    }
    [[nodiscard]] QString missing() const { return m_folder.filePath(u"none.ini"_s); }

private:
    QTemporaryDir m_folder;
};

TEST_F(StartSettingsFile, MissingFileGivesEveryDefault) {
    const StartSettings settings = readStartSettings(missing());
    EXPECT_EQ(settings.LineColor, (PerChannel<Colour>{255, 65535, 16711935, 16711808, 4227072, 33023}));
    EXPECT_EQ(settings.GridColor, 16776960);
    EXPECT_EQ(settings.stripColor, 16776960);
    EXPECT_EQ(settings.screenColor, 4194368);
    EXPECT_EQ(settings.LanguageId, 0);
    EXPECT_TRUE(settings.Graticule);
    EXPECT_TRUE(settings.DrawLine);
    EXPECT_FALSE(settings.DrawPoint);
}

TEST_F(StartSettingsFile, EveryKeyIsReadFromItsSection) {
    const StartSettings settings =
        settingsOf("[LineColor]\n0=1\n1=2\n2=3\n3=4\n4=5\n5=6\n[GridColor]\nGrid=7\n"
                   "[Pic3Color]\nback=8\n[Pic2Color]\nBackColor=9\n"
                   "[Common]\nLanguage=1\nGraticule=False\nDrawLine=False\nDrawPoint=True\n");
    EXPECT_EQ(settings.LineColor, (PerChannel<Colour>{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(settings.GridColor, 7);
    EXPECT_EQ(settings.stripColor, 8);
    EXPECT_EQ(settings.screenColor, 9);
    EXPECT_EQ(settings.LanguageId, 1);
    EXPECT_FALSE(settings.Graticule);
    EXPECT_FALSE(settings.DrawLine);
    EXPECT_TRUE(settings.DrawPoint);
}

TEST_F(StartSettingsFile, BlankBeforeTheDigitsIsSkippedAndFractionsAreRounded) {
    const StartSettings settings = settingsOf("[LineColor]\n0= 255\n1=2.5\n2=3.5\n[GridColor]\nGrid=\" 12\"\n");
    EXPECT_EQ(settings.LineColor[0], 255);
    EXPECT_EQ(settings.LineColor[1], 2) << "halves to even";
    EXPECT_EQ(settings.LineColor[2], 4);
    EXPECT_EQ(settings.GridColor, 12);
}

TEST_F(StartSettingsFile, ColourThatIsNoNumberIsBlackNotItsDefault) {
    EXPECT_EQ(settingsOf("[GridColor]\nGrid=cyan\n").GridColor, 0);
}

TEST_F(StartSettingsFile, EmptyValueGivesTheDefault) {
    const StartSettings settings = settingsOf("[GridColor]\nGrid=\n[Common]\nGraticule=\nLanguage=\n");
    EXPECT_EQ(settings.GridColor, 16776960);
    EXPECT_TRUE(settings.Graticule);
    EXPECT_EQ(settings.LanguageId, 0);
}

TEST_F(StartSettingsFile, NumberTooLargeForItsKeyGivesTheDefault) {
    const StartSettings settings = settingsOf("[GridColor]\nGrid=99999999999\n[Common]\nLanguage=40000\n");
    EXPECT_EQ(settings.GridColor, 16776960);
    EXPECT_EQ(settings.LanguageId, 0);
}

TEST_F(StartSettingsFile, TruthValueThatIsNeitherWordNorNumberGivesTheDefault) {
    const StartSettings wrong = settingsOf("[Common]\nGraticule=maybe\nDrawLine=yes\nDrawPoint=no\n");
    EXPECT_TRUE(wrong.Graticule);
    EXPECT_TRUE(wrong.DrawLine);
    EXPECT_FALSE(wrong.DrawPoint);
    const StartSettings numbers = settingsOf("[Common]\nGraticule=0\nDrawLine=FALSE\nDrawPoint=-1\n");
    EXPECT_FALSE(numbers.Graticule);
    EXPECT_FALSE(numbers.DrawLine);
    EXPECT_TRUE(numbers.DrawPoint);
}

TEST(ProgramFolder, RootOfADriveGetsNoSecondSeparator) {
    auto model = std::make_unique<publicM>();
    setProgramFolder(*model, u"/"_s);
    EXPECT_EQ(model->AppDir, u"/"_s);
    EXPECT_EQ(model->IniFile, u"/vkq.ini"_s);
    setProgramFolder(*model, u"/opt/six"_s);
    EXPECT_EQ(model->AppDir, u"/opt/six/"_s);
    EXPECT_EQ(model->IniFile, u"/opt/six/vkq.ini"_s);
}

TEST(LanguageOfTheModel, IsChineseFor0AndEnglishForAnyOtherNumber) {
    auto model = std::make_unique<publicM>();
    EXPECT_EQ(languageOf(*model), Language::Chinese);
    for (const std::int16_t id : {std::int16_t{1}, std::int16_t{7}, std::int16_t{-1}}) {
        model->LanguageId = id;
        EXPECT_EQ(languageOf(*model), Language::English) << id;
    }
}

TEST(StartedModel, HasNoChannelProbeExponentsOf1AndTheFirstColumnOfTheTables) {
    auto model = std::make_unique<publicM>();
    prepareModel(*model, StartSettings{});
    EXPECT_EQ(model->ChannelPresent, PerChannel<std::uint8_t>{});
    EXPECT_EQ(model->ProbeExp, (PerChannel<std::int16_t>{1, 1, 1, 1, 1, 1}));
    EXPECT_EQ(model->FileKind, 0);
    EXPECT_DOUBLE_EQ(model->TimeBaseTable[2], 0.000025);
    EXPECT_EQ(model->TimeBaseText[26], u"2.5 S"_s);
    EXPECT_EQ(model->VoltRange[6], 100);
}

} // namespace
} // namespace sixtrace::test
