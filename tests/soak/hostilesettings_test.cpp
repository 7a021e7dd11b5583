// SPDX-License-Identifier: MIT
// Whatever stands in the place of the settings file, the program starts without a message, and with defaults where
// nothing can be read.
#include "capture/settings.h"
#include "platform/files/profilefile.h"
#include "shell/frmcomfixture.h"
#include "support/hardships.h"
#include "support/strings.h"

#include <QLockFile>

#include <array>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace sixtrace::test {
namespace {

constexpr Colour kMyColour = 0x00123456;

class HostileSettings : public FrmComTest {
protected:
    void SetUp() override {
        FrmComTest::SetUp();
        installLanguages();
        write(u"vkq.ini"_s, "[Common]\nLanguage=1\nDrawLine=False\nDrawPoint=True\n[LineColor]\n0=1193046\n");
        before = read(u"vkq.ini"_s);
    }
    void remove() const { ASSERT_TRUE(QFile::remove(iniFile())); }
    void expectDefaults() {
        load();
        form->show();
        EXPECT_EQ(model->LineColor[0], StartSettings{}.LineColor[0]);
        EXPECT_EQ(model->LanguageId, 0);
        EXPECT_TRUE(item("mnuLine").isChecked());
        expectSilentWork();
    }
    void expectMine() {
        load();
        form->show();
        EXPECT_EQ(model->LineColor[0], kMyColour);
        EXPECT_EQ(model->LanguageId, 1);
        EXPECT_FALSE(item("mnuLine").isChecked());
        expectSilentWork();
    }
    /// Expects that commands which write settings change the screen as usual, with or without the file.
    void expectSilentWork() {
        item("mnuEnglish").trigger();
        EXPECT_EQ(model->LanguageId, 1);
        item("mnuPoint").trigger();
        EXPECT_FALSE(item("mnuLine").isChecked());
        item("mnuLine").trigger();
        EXPECT_TRUE(item("mnuLine").isChecked());
        EXPECT_TRUE(dialogs.messages.isEmpty()) << dialogs.messages.join(u'|').toStdString();
    }
    [[nodiscard]] QStringList besideIt() const {
        return QDir(path(u"."_s)).entryList({u"vkq.ini?*"_s}, QDir::AllEntries | QDir::Hidden | QDir::System);
    }

    QByteArray before;
};

TEST_F(HostileSettings, WithTheFileAsItIsTheProgramTakesIt) {
    expectMine();
    EXPECT_TRUE(read(u"vkq.ini"_s).contains("DrawLine=True")) << "and keeps what is chosen";
    EXPECT_TRUE(read(u"vkq.ini"_s).contains("0=1193046"));
}

TEST_F(HostileSettings, AFolderInItsPlaceMeansDefaults) {
    remove();
    ASSERT_TRUE(QDir().mkdir(iniFile()));
    expectDefaults();
    EXPECT_TRUE(QFileInfo(iniFile()).isDir());
    EXPECT_TRUE(besideIt().isEmpty());
}

TEST_F(HostileSettings, APipeInItsPlaceMeansDefaultsAndNobodyWaits) {
    remove();
    ASSERT_EQ(::mkfifo(iniFile().toLocal8Bit().constData(), 0666), 0);
    expectDefaults();
    EXPECT_FALSE(QFileInfo(iniFile()).isFile());
}

TEST_F(HostileSettings, ALinkIsFollowedAndStays) {
    ASSERT_TRUE(QFile::rename(iniFile(), path(u"mine.ini"_s)));
    ASSERT_TRUE(QFile::link(path(u"mine.ini"_s), iniFile()));
    expectMine();
    EXPECT_TRUE(QFileInfo(iniFile()).isSymLink());
    EXPECT_TRUE(read(u"mine.ini"_s).contains("DrawLine=True"));
}

TEST_F(HostileSettings, ALinkThatLeadsNowhereMeansDefaultsAndFillsWithTheFirstWrite) {
    remove();
    ASSERT_TRUE(QFile::link(path(u"mine.ini"_s), iniFile()));
    expectDefaults();
    EXPECT_TRUE(QFileInfo(iniFile()).isSymLink());
    EXPECT_TRUE(read(u"mine.ini"_s).contains("DrawLine=True"));
}

TEST_F(HostileSettings, LinksInACircleMeanDefaults) {
    remove();
    ASSERT_TRUE(QFile::link(path(u"round.ini"_s), iniFile()));
    ASSERT_TRUE(QFile::link(iniFile(), path(u"round.ini"_s)));
    expectDefaults();
}

TEST_F(HostileSettings, ADeviceInItsPlaceMeansDefaults) {
    remove();
    ASSERT_TRUE(QFile::link(u"/dev/zero"_s, iniFile()));
    expectDefaults();
    EXPECT_TRUE(QFileInfo(iniFile()).isSymLink());
}

TEST_F(HostileSettings, DeletedUnderTheProgramItComesBackWithTheNextWrite) {
    load();
    remove();
    item("mnuLine").trigger();
    EXPECT_TRUE(read(u"vkq.ini"_s).contains("DrawLine=True"));
    EXPECT_EQ(readProfile(u"LineColor"_s, u"0"_s, u"none"_s, iniFile()), u"none"_s);
    EXPECT_TRUE(dialogs.messages.isEmpty());
}

TEST_F(HostileSettings, ReplacedUnderTheProgramTheNewFileIsTheOneThatChanges) {
    load();
    write(u"other"_s, "[Common]\nComPort=4\n[Mine]\nk=v\n");
    ASSERT_EQ(::rename(path(u"other"_s).toLocal8Bit().constData(), iniFile().toLocal8Bit().constData()), 0);
    item("mnuLine").trigger();
    const QByteArray now = read(u"vkq.ini"_s);
    EXPECT_TRUE(now.startsWith("[Common]\nComPort=4\n")) << now.toStdString();
    EXPECT_TRUE(now.endsWith("[Mine]\nk=v\n"));
    EXPECT_TRUE(now.contains("DrawLine=True\n"));
}

TEST_F(HostileSettings, AReadOnlyFileInAReadOnlyFolderIsReadAndLeftAlone) {
    const auto readable = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
    const auto folderToo = readable | QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;
    ASSERT_TRUE(QFile::setPermissions(iniFile(), readable));
    ASSERT_TRUE(QFile::setPermissions(path(u"."_s), folderToo));
    {
        const OrdinaryUser user;
        expectMine();
    }
    EXPECT_EQ(read(u"vkq.ini"_s), before);
    EXPECT_TRUE(besideIt().isEmpty());
    EXPECT_TRUE(QFile::setPermissions(path(u"."_s), folderToo | QFile::WriteOwner));
}

TEST_F(HostileSettings, AFullDiskLeavesTheFileAsItWas) {
    {
        const SmallDisk disk(20);
        expectMine();
    }
    EXPECT_EQ(read(u"vkq.ini"_s), before);
    EXPECT_TRUE(besideIt().isEmpty()) << besideIt().join(u' ').toStdString();
}

// Another copy of the program holds the lock of the settings file for longer than a write waits.
TEST_F(HostileSettings, LockedByAnotherProcessItIsReadAndKept) {
    std::array<int, 2> locked{};
    std::array<int, 2> over{};
    ASSERT_EQ(::pipe(locked.data()), 0);
    ASSERT_EQ(::pipe(over.data()), 0);
    const pid_t other = ::fork();
    ASSERT_GE(other, 0);
    if (other == 0) {
        ::close(over[1]);
        QLockFile lock(iniFile() + u".lock"_s);
        char byte = lock.tryLock(0) ? 'y' : 'n';
        static_cast<void>(::write(locked[1], &byte, 1) == 1);
        static_cast<void>(::read(over[0], &byte, 1) == 0); // waits until the test closes its end
        lock.unlock();
        ::_exit(0);
    }
    ::close(over[0]);
    char byte = 0;
    ASSERT_EQ(::read(locked[0], &byte, 1), 1);
    ASSERT_EQ(byte, 'y');
    load();
    EXPECT_EQ(model->LineColor[0], kMyColour);
    item("mnuChinese").trigger();
    EXPECT_EQ(model->LanguageId, 0);
    EXPECT_EQ(read(u"vkq.ini"_s), before) << "nobody writes past the lock";
    EXPECT_EQ(besideIt(), QStringList(u"vkq.ini.lock"_s));
    ::close(over[1]);
    int status = -1;
    ASSERT_EQ(::waitpid(other, &status, 0), other);
    item("mnuLine").trigger();
    EXPECT_TRUE(read(u"vkq.ini"_s).contains("DrawLine=True"));
    EXPECT_TRUE(besideIt().isEmpty());
    EXPECT_TRUE(dialogs.messages.isEmpty());
    ::close(locked[0]);
    ::close(locked[1]);
}

} // namespace
} // namespace sixtrace::test
