// SPDX-License-Identifier: MIT
#include "platform/privatefolder.h"

#include "support/printing.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace sixtrace {
namespace {

/// A cache of the user's in a folder of the test's.
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
} // namespace sixtrace
