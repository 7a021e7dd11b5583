// SPDX-License-Identifier: MIT
#include "platform/controls/look.h"
#include "shell/frmsplash.h"
#include "support/strings.h"

#include <QApplication>
#include <QtTest/QtTest>

#include <gtest/gtest.h>

namespace sixtrace::test {
namespace {

class Splash : public ::testing::Test {
protected:
    void SetUp() override {
        applyLook(*qApp);
        splash =
            std::make_unique<frmSplash>([this] { events.append(u"load"_s); }, [this] { events.append(u"show"_s); });
        // A busy machine may take longer to show the window than the first tick waits.
        firstInterval = timer().interval();
        timer().setInterval(3'600'000);
        splash->show();
    }
    [[nodiscard]] QTimer& timer() const { return *splash->findChild<QTimer*>(u"Timer1"_s); }
    /// Makes the running timer tick once, without waiting.
    void tick() {
        const int interval = timer().interval();
        const bool done = splash->SplashDone();
        timer().setInterval(0);
        EXPECT_TRUE(QTest::qWaitFor([&] { return splash->SplashDone() != done || !splash->isVisible(); }));
        if (splash->SplashDone() == done) {
            timer().setInterval(interval);
        }
    }
    [[nodiscard]] QWidget* part(const char* name) const {
        return splash->findChild<QWidget*>(QString::fromLatin1(name));
    }

    QStringList events;
    int firstInterval = 0;
    std::unique_ptr<frmSplash> splash;
};

TEST_F(Splash, FirstTickComesAfter10MsAndLoadsTheMainWindowUnseen) {
    EXPECT_EQ(firstInterval, 10);
    EXPECT_TRUE(timer().isActive());
    EXPECT_FALSE(splash->SplashDone());
    tick();
    EXPECT_TRUE(splash->SplashDone());
    EXPECT_EQ(events, QStringList{u"load"_s});
    EXPECT_EQ(timer().interval(), 2500);
    EXPECT_TRUE(splash->isVisible());
}

TEST_F(Splash, SecondTickUnloadsItAndShowsTheMainWindow) {
    tick();
    tick();
    EXPECT_EQ(events, (QStringList{u"load"_s, u"show"_s}));
    EXPECT_FALSE(splash->isVisible());
    EXPECT_FALSE(timer().isActive());
}

TEST_F(Splash, KeyBeforeItsFirstTickStillBringsUpTheMainWindow) {
    QTest::keyClick(splash.get(), Qt::Key_A);
    EXPECT_EQ(events, QStringList{u"show"_s});
    EXPECT_FALSE(splash->isVisible());
}

TEST_F(Splash, ClickOnThePictureBringsUpTheMainWindowAtOnce) {
    tick();
    QTest::mouseClick(part("imgLogo"), Qt::LeftButton);
    EXPECT_EQ(events, (QStringList{u"load"_s, u"show"_s}));
    EXPECT_FALSE(splash->isVisible());
}

TEST_F(Splash, ClickOnTheFrameBringsUpTheMainWindowAtOnce) {
    QTest::mouseClick(part("Frame1"), Qt::LeftButton, {}, QPoint(20, 290));
    EXPECT_EQ(events, QStringList{u"show"_s});
}

TEST_F(Splash, DismissedTwiceItShowsTheMainWindowOnce) {
    splash->unload();
    splash->unload();
    splash->close();
    EXPECT_EQ(events, QStringList{u"show"_s});
}

TEST_F(Splash, Is480By300WithAPictureOf196) {
    EXPECT_EQ(splash->size(), QSize(480, 300));
    EXPECT_EQ(part("imgLogo")->geometry().bottom() + 1, 196);
}

} // namespace
} // namespace sixtrace::test
