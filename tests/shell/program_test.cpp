// SPDX-License-Identifier: MIT
#include "shell/program.h"

#include "capture/scenes.h"
#include "platform/controls/look.h"
#include "shell/frmcomfixture.h"
#include "shell/frmsplash.h"
#include "support/strings.h"

#include <QLabel>
#include <QTest>
#include <QTimer>
#include <QUrl>

namespace sixtrace::test {
namespace {

class StartOfTheProgram : public FrmComTest {
protected:
    void SetUp() override {
        FrmComTest::SetUp();
        program =
            std::make_unique<Program>(FrmComServices{dialogs, [this] { return path(u"."_s); }, [this] { ++ends; }});
        program->start();
    }
    static constexpr int kPatienceMs = 120'000;
    std::unique_ptr<Program> program;
};

TEST_F(StartOfTheProgram, ASplashDismissedBeforeItsFirstTickStillBringsUpTheMainWindow) {
    ASSERT_EQ(program->frmCom(), nullptr) << "no tick has come";
    QTest::keyClick(&program->splash(), Qt::Key_A);
    ASSERT_NE(program->frmCom(), nullptr);
    EXPECT_TRUE(program->frmCom()->isVisible());
    EXPECT_FALSE(program->splash().isVisible());
    EXPECT_TRUE(QFile::exists(iniFile())) << "loaded as ever";
}

TEST_F(StartOfTheProgram, TheFirstTickLoadsTheMainWindowUnseenAndTheSecondShowsThatOne) {
    ASSERT_TRUE(QTest::qWaitFor([this] { return program->frmCom() != nullptr; }, kPatienceMs));
    const FrmCom* const loaded = program->frmCom();
    EXPECT_FALSE(loaded->isVisible());
    EXPECT_TRUE(program->splash().isVisible());
    program->splash().findChild<QTimer*>(u"Timer1"_s)->setInterval(0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return loaded->isVisible(); }, kPatienceMs));
    EXPECT_EQ(program->frmCom(), loaded);
    EXPECT_FALSE(program->splash().isVisible());
}

TEST_F(StartOfTheProgram, ACaptureThatIsMissingDoesNotHoldTheSplashUp) {
    const QString missing = path(u"missing.bin"_s);
    program->calls().Open({QUrl::fromLocalFile(missing).toString()}, {});
    program->splash().unload();
    EXPECT_FALSE(program->splash().isVisible());
    EXPECT_TRUE(dialogs.messages.isEmpty()) << "what is said about it comes behind";
    ASSERT_TRUE(QTest::qWaitFor([this] { return !dialogs.messages.isEmpty(); }, kPatienceMs));
    EXPECT_TRUE(dialogs.messages.front().contains(missing));
}

TEST_F(StartOfTheProgram, ACallBringsAMinimisedWindowBack) {
    program->splash().unload();
    program->frmCom()->showMinimized();
    ASSERT_TRUE(program->frmCom()->isMinimized());
    program->calls().Activate({});
    EXPECT_FALSE(program->frmCom()->isMinimized());
    EXPECT_TRUE(program->frmCom()->isVisible());
}

} // namespace
} // namespace sixtrace::test
