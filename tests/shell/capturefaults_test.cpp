// SPDX-License-Identifier: MIT
#include "shell/frmcomfixture.h"

#include "capture/scenes.h"
#include "platform/controls/labels.h"
#include "support/strings.h"

namespace sixtrace::test {
namespace {

class CaptureFaults : public FrmComTest {
protected:
    PathLabel& open(const QString& name, const QByteArray& bytes) {
        write(name, bytes);
        dialogs.files.emplace_back(FileChoice{path(name), 1});
        item("mnuOpen").trigger();
        return control<PathLabel>("Label4");
    }
    const QByteArray sound = captureBytes(*captureForm("V11"), *sceneBlocks(u"sine"_s, 1));
};

TEST_F(CaptureFaults, ASoundCaptureHasItsPathAsToolTipAndNoMark) {
    load();
    PathLabel& label = open(u"a.bin"_s, sound);
    EXPECT_FALSE(label.hasFault());
    EXPECT_EQ(label.toolTip(), path(u"a.bin"_s));
}

TEST_F(CaptureFaults, TheFirstFindingStandsAsToolTipOfThePathUntilTheNextCapture) {
    load();
    // Cut in the middle of its samples.
    PathLabel& label = open(u"cut.bin"_s, sound.left(sound.size() / 2));
    EXPECT_TRUE(label.hasFault());
    const QStringList lines = label.toolTip().split(QLatin1Char('\n'));
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[0].contains(u"end"_s)) << lines[0].toStdString();
    EXPECT_EQ(lines[1], path(u"cut.bin"_s));
    EXPECT_EQ(label.text(), path(u"cut.bin"_s)) << "the caption stays the path";
    EXPECT_TRUE(dialogs.messages.isEmpty());
    open(u"a.bin"_s, sound);
    EXPECT_FALSE(label.hasFault());
    EXPECT_EQ(label.toolTip(), path(u"a.bin"_s));
}

TEST_F(CaptureFaults, AMarkIsPaintedBeforeThePath) {
    load();
    PathLabel& label = open(u"a.bin"_s, sound);
    const auto reds = [&label] {
        const QImage picture = label.grab().toImage();
        int count = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < 26; ++x) {
                count += picture.pixel(x, y) == 0xFFB3261E ? 1 : 0;
            }
        }
        return count;
    };
    EXPECT_EQ(reds(), 0);
    open(u"cut.bin"_s, sound.left(sound.size() / 2));
    EXPECT_GT(reds(), 30);
}

TEST_F(CaptureFaults, MarkupInTheNameOfAFileIsText) {
    load();
    for (const qsizetype length : {sound.size(), sound.size() / 2}) {
        const PathLabel& label = open(u"<b>bold<b>.bin"_s, sound.left(length));
        EXPECT_TRUE(!Qt::mightBeRichText(label.toolTip()) || label.toolTip().contains(u"&lt;b&gt;bold&lt;b&gt;.bin"_s))
            << label.toolTip().toStdString();
        EXPECT_TRUE(label.toolTip().contains(u"bold"_s));
    }
}

} // namespace
} // namespace sixtrace::test
