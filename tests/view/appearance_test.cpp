// SPDX-License-Identifier: MIT
#include "view/appearance.h"

#include "platform/files/profilefile.h"
#include "support/scripteddialogs.h"
#include "support/strings.h"
#include "view/flatscope.h"

namespace sixtrace::test {
namespace {

class AppearanceRules : public FlatScope {
protected:
    AppearanceRules() { model->IniFile = folder.filePath(u"vkq.ini"_s); }
    void SetUp() override { loadFlat(); }
    void answer(Colour colour) { dialogs.colours.emplace_back(colour); }
    [[nodiscard]] QString written(const char* section, const char* key) const {
        return readProfile(QString::fromLatin1(section), QString::fromLatin1(key), u"none"_s, model->IniFile).trimmed();
    }
    [[nodiscard]] unsigned frames() const { return scope->screen().changes(); }

    ScriptedDialogs dialogs;
    Appearance appearance{scope->screen(), dialogs};
};

TEST_F(AppearanceRules, EachChosenColourIsShownDrawnAndWritten) {
    unsigned drawn = frames();
    answer(0x00010203);
    appearance.Picture2_DblClick();
    EXPECT_EQ(model->BackColor, 0x00010203U);
    EXPECT_EQ(state().screenColor, 0x00010203U);
    EXPECT_EQ(scope->Picture2.Point(310, 310), 0x00010203U);
    EXPECT_EQ(frames(), ++drawn);
    EXPECT_EQ(written("Pic2Color", "BackColor"), u"66051"_s);
    answer(7);
    appearance.Picture3_DblClick();
    EXPECT_EQ(state().stripColor, 7U);
    EXPECT_EQ(frames(), drawn) << "the strip is no part of the frame";
    EXPECT_EQ(written("Pic3Color", "back"), u"7"_s);
    answer(8);
    appearance.image1_DblClick(2);
    EXPECT_EQ(model->LineColor[2], 8U);
    EXPECT_EQ(marker(2).back, 8U);
    EXPECT_EQ(frames(), ++drawn);
    EXPECT_EQ(written("LineColor", "2"), u"8"_s);
    answer(9);
    appearance.MnuGridColor_Click();
    EXPECT_EQ(model->GridColor, 9U);
    EXPECT_EQ(frames(), ++drawn);
    EXPECT_EQ(written("GridColor", "Grid"), u"9"_s);
}

TEST_F(AppearanceRules, ACancelledDialogChangesNothing) {
    const unsigned drawn = frames();
    const Colour strip = state().stripColor;
    appearance.Picture2_DblClick();
    appearance.Picture3_DblClick();
    appearance.image1_DblClick(2);
    appearance.MnuGridColor_Click();
    EXPECT_EQ(dialogs.colourTitles.size(), 4);
    EXPECT_EQ(frames(), drawn);
    EXPECT_EQ(state().stripColor, strip);
    EXPECT_FALSE(QFile::exists(model->IniFile));
}

TEST_F(AppearanceRules, DuringTimedAcquisitionNoColourDialogOpens) {
    model->AutoRun = true;
    appearance.Picture2_DblClick();
    EXPECT_TRUE(dialogs.colourTitles.isEmpty());
    appearance.Picture3_DblClick();
    EXPECT_TRUE(dialogs.colourTitles.isEmpty());
    appearance.image1_DblClick(0);
    EXPECT_TRUE(dialogs.colourTitles.isEmpty());
    appearance.MnuGridColor_Click();
    EXPECT_TRUE(dialogs.colourTitles.isEmpty());
}

TEST_F(AppearanceRules, TheGraticuleIsDrawnAtOnceEvenDuringTimedAcquisition) {
    model->AutoRun = true;
    const unsigned drawn = frames();
    appearance.mnuGraticule_Click();
    EXPECT_EQ(state().graticule, Graticule::Cross);
    EXPECT_EQ(written("Common", "Graticule"), u"False"_s);
    appearance.mnuGraticule_Click();
    EXPECT_EQ(state().graticule, Graticule::Dotted);
    EXPECT_EQ(written("Common", "Graticule"), u"True"_s);
    EXPECT_EQ(frames(), drawn + 2);
}

TEST_F(AppearanceRules, LinesAndPointsExcludeEachOtherAndWaitForTheNextFrameDuringTimedAcquisition) {
    unsigned drawn = frames();
    appearance.mnuPoint_Click();
    EXPECT_FALSE(state().lineTicked);
    EXPECT_TRUE(state().pointTicked);
    EXPECT_EQ(frames(), ++drawn);
    EXPECT_EQ(written("Common", "DrawLine"), u"False"_s);
    EXPECT_EQ(written("Common", "DrawPoint"), u"True"_s);
    model->AutoRun = true;
    appearance.mnuLine_Click();
    EXPECT_TRUE(state().lineTicked);
    EXPECT_FALSE(state().pointTicked);
    EXPECT_EQ(frames(), drawn);
}

TEST_F(AppearanceRules, TheDialogNamesWhatIsColouredInThePresentLanguage) {
    appearance.image1_DblClick(2);
    EXPECT_EQ(dialogs.colourTitles.back(), u"A 波形颜色"_s);
    model->LanguageId = 1;
    appearance.image1_DblClick(2);
    EXPECT_EQ(dialogs.colourTitles.back(), u"Trace Color of A"_s);
}

} // namespace
} // namespace sixtrace::test
