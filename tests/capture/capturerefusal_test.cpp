// SPDX-License-Identifier: MIT
// Files that hold no capture.
#include "capture/bytes.h"
#include "support/hardships.h"
#include "support/strings.h"

#include <QFileInfo>

namespace sixtrace::test {
namespace {

TEST_F(SimpleWavTest, AFileOfFewerThanThreeBytesOrAnotherMagicChangesNothingButClosesTheTable) {
    load("V11", {{}});
    for (const QByteArray& content : {QByteArray(), QByteArray("K"), QByteArray("KQ"), QByteArray("KQY"),
                                      QByteArray("kqxV11....."), QByteArray("\0\0\0", 3)}) {
        view->tableLoaded = true;
        const int frames = view->frames;
        load(content);
        EXPECT_FALSE(view->tableLoaded);
        EXPECT_EQ(view->frames, frames);
        EXPECT_EQ(model->FileKind, 4);
        EXPECT_EQ(model->ChannelPresent[0], 1);
        EXPECT_EQ(model->SampleCount[0], 4);
        EXPECT_TRUE(view->ticks[0]);
        EXPECT_EQ(view->rows[0], u"ch1          500uS          500 mV       / 1"_s);
    }
}

TEST_F(SimpleWavTest, AnUnknownTagDoesTheSameWithFileKind0) {
    for (const QByteArray& content : {QByteArray("KQXV02\0\0\0\0", 10), QByteArray("KQXBIN"), QByteArray("KQX"),
                                      QByteArray("KQXV1"), QByteArray("KQXv11")}) {
        load("V11", {{}});
        ASSERT_EQ(model->FileKind, 4);
        const int frames = view->frames;
        load(content);
        EXPECT_EQ(model->FileKind, 0);
        EXPECT_FALSE(view->tableLoaded);
        EXPECT_EQ(view->frames, frames);
        EXPECT_EQ(model->ChannelPresent[0], 1);
        EXPECT_TRUE(view->ticks[0]);
    }
}

TEST_F(SimpleWavTest, AMissingFileIsMadeEmptyAndHoldsNoCapture) {
    SimpleWav(path(u"missing.bin"_s), view->scope());
    EXPECT_TRUE(QFile::exists(path(u"missing.bin"_s)));
    EXPECT_EQ(QFile(path(u"missing.bin"_s)).size(), 0);
    EXPECT_FALSE(view->tableLoaded);
    EXPECT_EQ(view->frames, 0);
}

TEST_F(SimpleWavTest, AFolderADeviceOrNoNameAtAllIsRefused) {
    load("V11", {{}});
    for (const QString& name : {u"/"_s, u"/dev/zero"_s, QString()}) {
        SimpleWav(name, view->scope());
        EXPECT_EQ(model->FileKind, 4);
        EXPECT_EQ(model->ChannelPresent[0], 1);
    }
}

TEST_F(SimpleWavTest, AnUnreadableFileIsRefusedInSilence) {
    load("V11", {{}});
    const QString file = put(capture("W01", {{.mark = "CH2"}}));
    ASSERT_TRUE(QFile::setPermissions(file, QFile::Permissions()));
    ASSERT_TRUE(QFile::setPermissions(QFileInfo(file).path(), QFile::Permissions(0x7755)));
    view->tableLoaded = true;
    const OrdinaryUser user;
    SimpleWav(file, view->scope());
    EXPECT_EQ(model->FileKind, 4);
    EXPECT_EQ(model->ChannelPresent, (PerChannel<std::uint8_t>{1, 0, 0, 0, 0, 0}));
    EXPECT_FALSE(view->tableLoaded);
}

} // namespace
} // namespace sixtrace::test
