// SPDX-License-Identifier: MIT
#include "shell/screenfit.h"

#include "platform/controls/look.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QScrollArea>
#include <QScrollBar>

#include <gtest/gtest.h>

namespace sixtrace::test {
namespace {

TEST(CentredPlace, IsTheMiddleOfTheScreenUnlessTheTitleWouldLeaveItsFreeArea) {
    EXPECT_EQ(centredPlace({800, 579}, {0, 0, 1366, 768}, {0, 0, 1366, 768}), QPoint(283, 94));
    EXPECT_EQ(centredPlace({800, 579}, {0, 0, 911, 512}, {0, 24, 911, 488}), QPoint(55, 24));
    EXPECT_EQ(centredPlace({800, 579}, {100, 50, 700, 600}, {150, 50, 650, 600}), QPoint(150, 60));
}

class FittedWindow : public ::testing::Test {
protected:
    void fit(const QRect& freeArea) {
        applyLook(*qApp);
        form.menuBar()->setNativeMenuBar(false);
        form.menuBar()->setFixedHeight(26);
        client = new QWidget(&form);
        fitToScreen(form, *client, {800, 553}, 26, freeArea);
        form.show();
        QCoreApplication::sendPostedEvents();
    }
    QMainWindow form;
    QWidget* client = nullptr;
};

TEST_F(FittedWindow, WhereItFitsItHasItsFixedSizeAndNothingScrolls) {
    fit({0, 0, 800, 619});
    EXPECT_EQ(form.size(), QSize(800, 579));
    EXPECT_EQ(form.minimumSize(), form.maximumSize());
    EXPECT_EQ(form.centralWidget(), client);
    EXPECT_EQ(client->size(), QSize(800, 553));
}

TEST_F(FittedWindow, WhatDoesNotFitBelowIsReachedByScrolling) {
    fit({0, 24, 911, 488});
    EXPECT_EQ(form.height(), 448) << "the title has room above";
    EXPECT_EQ(client->size(), QSize(800, 553)) << "places of the controls stay";
    const auto* area = qobject_cast<QScrollArea*>(form.centralWidget());
    ASSERT_NE(area, nullptr);
    EXPECT_EQ(area->viewport()->width(), 800) << "nothing is hidden to the side";
    EXPECT_FALSE(area->horizontalScrollBar()->isVisible());
    EXPECT_EQ(area->verticalScrollBar()->maximum(), 553 - (448 - 26));
    area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum());
    EXPECT_EQ(client->mapTo(&form, QPoint(0, 553)).y(), 448);
}

TEST_F(FittedWindow, ANarrowScreenIsReachedToBothSides) {
    fit({0, 0, 640, 1000});
    EXPECT_EQ(form.width(), 640);
    const auto* area = qobject_cast<QScrollArea*>(form.centralWidget());
    ASSERT_NE(area, nullptr);
    EXPECT_EQ(area->horizontalScrollBar()->maximum(), 160);
    EXPECT_EQ(area->viewport()->height(), 553);
    EXPECT_FALSE(area->verticalScrollBar()->isVisible());
}

} // namespace
} // namespace sixtrace::test
