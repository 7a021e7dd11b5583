// SPDX-License-Identifier: MIT
#include "platform/files/privatefolder.h"

#include "support/strings.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#if defined(Q_OS_UNIX)
#include <sys/stat.h>
#endif

namespace sixtrace::test {
namespace {

/// The user's cache folder lies in a folder of the test.
class PrivateFolderOfTheUser : public ::testing::Test {
protected:
    PrivateFolderOfTheUser() { qputenv("XDG_CACHE_HOME", QFile::encodeName(cache())); }
    ~PrivateFolderOfTheUser() override {
        if (m_before.isNull()) {
            qunsetenv("XDG_CACHE_HOME");
        } else {
            qputenv("XDG_CACHE_HOME", m_before);
        }
    }
    [[nodiscard]] QString cache() const { return m_place.filePath(u"cache"_s); }

private:
    QTemporaryDir m_place;
    QByteArray m_before = qgetenv("XDG_CACHE_HOME");
};

TEST_F(PrivateFolderOfTheUser, LiesInTheCacheWhichIsMadeWhereItIsMissing) {
    const Result<QString> folder = privateFolder();
    ASSERT_TRUE(folder.ok());
    EXPECT_EQ(folder.value(), cache() + u"/sixtrace/");
    EXPECT_TRUE(QFileInfo(folder.value()).isDir());
}

TEST_F(PrivateFolderOfTheUser, HoldsTheFileOfTimedAcquisition) {
    const Result<QString> file = autoGetFile();
    ASSERT_TRUE(file.ok());
    EXPECT_EQ(file.value(), cache() + u"/sixtrace/AutoGet.bin");
    EXPECT_FALSE(QFileInfo::exists(file.value()));
}

TEST_F(PrivateFolderOfTheUser, AFileInItsPlaceLeavesTimedAcquisitionWithoutOne) {
    ASSERT_TRUE(privateFolderAt(cache()).ok());
    ASSERT_TRUE(QFile(cache() + u"/sixtrace").open(QIODevice::WriteOnly));
    const Result<QString> file = autoGetFile();
    ASSERT_FALSE(file.ok());
    EXPECT_EQ(file.error().number, ErrorNumber::PathAccess);
}

TEST(PrivateFolder, IsMadeForItsOwnerAlone) {
    const QTemporaryDir place;
    const auto folder = privateFolderAt(place.filePath(u"own"_s));
    ASSERT_TRUE(folder.ok());
    EXPECT_EQ(QFileInfo(folder.value()).permissions() & QFileDevice::Permissions(0x0777),
              QFileDevice::Permissions(QFileDevice::ReadUser | QFileDevice::WriteUser | QFileDevice::ExeUser));
    EXPECT_TRUE(folder.value().endsWith(u'/'));
}

TEST(PrivateFolder, ALinkInItsPlaceIsRefused) {
    const QTemporaryDir place;
    const QTemporaryDir elsewhere;
    ASSERT_TRUE(QFile::link(elsewhere.path(), place.filePath(u"own"_s)));
    EXPECT_EQ(privateFolderAt(place.filePath(u"own"_s)).error().number, ErrorNumber::PathAccess);
}

TEST(PrivateFolder, APlantedLinkNamedAutoGetIsRemovedAndNotFollowed) {
    const QTemporaryDir place;
    const QString victim = place.filePath(u"victim"_s);
    QFile(victim).open(QIODevice::WriteOnly);
    const QString folder = privateFolderAt(place.filePath(u"own"_s)).value();
    ASSERT_TRUE(QFile::link(victim, folder + u"AutoGet.bin"_s));
    const auto file = autoGetFileIn(folder);
    ASSERT_TRUE(file.ok());
    EXPECT_EQ(file.value(), folder + u"AutoGet.bin"_s);
    EXPECT_FALSE(QFileInfo(file.value()).isSymLink());
    EXPECT_TRUE(QFileInfo::exists(victim));
}

#if defined(Q_OS_UNIX)
/// Sets the mask for new files during a test.
class Mask {
public:
    explicit Mask(mode_t mask)
        : m_before(umask(mask)) {}
    ~Mask() { umask(m_before); }
    Mask(const Mask&) = delete;
    Mask& operator=(const Mask&) = delete;

private:
    mode_t m_before;
};

mode_t modeOf(const QString& path) {
    struct stat found {};
    return lstat(QFile::encodeName(path).constData(), &found) == 0 ? found.st_mode & 07777U : 0;
}

TEST(PrivateFolder, IsPrivateWithAllThatHadToBeMadeAboveItWhateverTheMask) {
    const QTemporaryDir place;
    for (const mode_t mask : {mode_t{0}, mode_t{022}, mode_t{077}}) {
        const Mask masked(mask);
        const QString top = place.filePath(u"top%1"_s.arg(mask));
        const Result<QString> made = makePrivateFolder(top + u"/middle/own"_s);
        ASSERT_TRUE(made.ok());
        EXPECT_EQ(made.value(), top + u"/middle/own/");
        for (const QString& folder : {top, QString(top + u"/middle"), QString(top + u"/middle/own")}) {
            EXPECT_EQ(modeOf(folder), mode_t{0700}) << folder.toStdString();
        }
    }
}

TEST(PrivateFolder, OneThatOthersCouldEnterIsClosedToThem) {
    const QTemporaryDir place;
    const QString own = place.filePath(u"own"_s);
    ASSERT_EQ(mkdir(QFile::encodeName(own).constData(), 0700), 0);
    ASSERT_EQ(chmod(QFile::encodeName(own).constData(), 0777), 0);
    ASSERT_TRUE(makePrivateFolder(own).ok());
    EXPECT_EQ(modeOf(own), mode_t{0700});
}

TEST(PrivateFolder, ALinkOfTheUsersLeadsToTheFolderThatIsMeant) {
    const QTemporaryDir place;
    const QString target = place.filePath(u"elsewhere"_s);
    ASSERT_EQ(mkdir(QFile::encodeName(target).constData(), 0700), 0);
    ASSERT_EQ(chmod(QFile::encodeName(target).constData(), 0755), 0);
    ASSERT_TRUE(QFile::link(target, place.filePath(u"own"_s)));
    const Result<QString> made = makePrivateFolder(place.filePath(u"own"_s));
    ASSERT_TRUE(made.ok());
    EXPECT_EQ(modeOf(target), mode_t{0700});
}
#endif

TEST(PrivateFolder, CannotBeMadeWhereItsOwnFolderIsMissing) {
    const QTemporaryDir place;
    const Result<QString> folder = privateFolderAt(place.filePath(u"none/own"_s));
    ASSERT_FALSE(folder.ok());
    EXPECT_EQ(folder.error().number, ErrorNumber::FileNotFound);
}

TEST(PrivateFolder, IsClosedToOthersAgainWhereItStoodOpen) {
    const QTemporaryDir place;
    const QString path = place.filePath(u"own"_s);
    ASSERT_TRUE(privateFolderAt(path).ok());
    const QFileDevice::Permissions own = QFileDevice::ReadUser | QFileDevice::WriteUser | QFileDevice::ExeUser;
    ASSERT_TRUE(QFile::setPermissions(path, own | QFileDevice::ReadGroup | QFileDevice::ReadOther));
    ASSERT_TRUE(privateFolderAt(path).ok());
    EXPECT_FALSE(QFileInfo(path).permissions().testAnyFlags(QFileDevice::ReadGroup | QFileDevice::ReadOther));
}

} // namespace
} // namespace sixtrace::test
