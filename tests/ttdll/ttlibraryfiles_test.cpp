// SPDX-License-Identifier: MIT
// The files of the transfer library: its settings, its log, and the socket in the file system.
#include "ttdll/ttlibraryfixture.h"

#include "support/strings.h"

#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sixtrace::test {
namespace {

TEST_F(TransferLibrary, AnInstrumentThatIsNotThereIsNamedInTheLog) {
    EXPECT_EQ(library.InitializeTt(0), 0);
    EXPECT_TRUE(logHas("socket: nobody listens at ")) << log();
    EXPECT_TRUE(logHas("No such file or directory")) << log();
}

TEST_F(TransferLibrary, ASocketMayHaveANameOfAnyLength) {
    // An address holds 107 characters and a zero byte; the folder's path takes some of them.
    const QString folder(40, u'd');
    ASSERT_TRUE(QDir(path(QString())).mkpath(folder));
    for (qsizetype length = 105; length <= 110; ++length) {
        const QString name = folder + u'/' + QString(length - path(folder).size() - 1, u's');
        ASSERT_EQ(path(name).size(), length);
        const Instrument instrument(path(u"near"_s));
        ASSERT_TRUE(QFile::link(path(u"near"_s), path(name)));
        settings("Link=socket\nSocket=" + name.toUtf8() + '\n');
        EXPECT_EQ(library.InitializeTt(0), 1) << length << log();
        library.closeTt(0);
        ASSERT_TRUE(QFile::remove(path(name)));
        ASSERT_TRUE(QFile::remove(path(u"near"_s)));
    }
}

TEST_F(TransferLibrary, DescribesItsSettingsAndTheSocket) {
    const QString file = path(u"ttdll.ini"_s);
    const QString end = path(u"instrument.socket"_s);
    EXPECT_EQ(library.describe(), u"settings\t"_s + file + u"\tsocket\nsocket\t"_s + end + u"\tabsent\n"_s);
    const Instrument instrument(end);
    EXPECT_EQ(library.describe(), u"settings\t"_s + file + u"\tsocket\nsocket\t"_s + end + u"\topen\n"_s);
    settings("Link=usb\nVendor=0x1234\nProduct=0xabcd\nInterface=2\nEndpointOut=0x02\nEndpointIn=0x83\n");
    EXPECT_TRUE(
        library.describe().value().startsWith(u"settings\t"_s + file + u"\tusb\nwanted\t1234:abcd\t2\t02\t83\n"_s))
        << library.describe().value().toStdString();
    settings("Link=auto\n");
    EXPECT_TRUE(library.describe().value().contains(u"\topen\nwanted\t1209:0001\t0\t01\t81\n"_s));
}

TEST_F(TransferLibrary, ASocketMayLieDeeperThanAnAddressIsLong) {
    const QString deep = QString(60, u'd') + u'/' + QString(60, u'e');
    ASSERT_TRUE(QDir(path(QString())).mkpath(deep));
    const Instrument instrument(path(u"near"_s));
    ASSERT_TRUE(QFile::link(path(u"near"_s), path(deep + u"/far")));
    settings("Link=socket\nSocket=" + deep.toUtf8() + "/far\n");
    EXPECT_EQ(library.InitializeTt(0), 1) << log();
    settings("Link=socket\nSocket=" + path(deep).toUtf8() + "/nobody\n");
    EXPECT_EQ(library.InitializeTt(0), 0);
}

TEST_F(TransferLibrary, LinesThatItDoesNotUnderstandAreNamedInTheLogAndLeaveTheDefaults) {
    const Instrument instrument(path(u"instrument.socket"_s));
    settings(
        "; a remark\n[Link]\nLINK = Socket\nlink=wire\nSocket=\nVendor=12x9\nProduct=0x10000\nColour=3\nnonsense\n");
    EXPECT_EQ(library.InitializeTt(0), 1);
    for (const char* line : {"link=wire", "Socket=", "Vendor=12x9", "Product=0x10000", "Colour=3", "nonsense"}) {
        EXPECT_TRUE(logHas((std::string("ttdll.ini: \"") + line + "\" is not understood").c_str())) << log();
    }
    EXPECT_FALSE(logHas("remark"));
    EXPECT_FALSE(logHas("LINK"));
}

TEST_F(TransferLibrary, ALogThatHasGrownLongBeginsAgain) {
    write(u"ttdll.log"_s, QByteArray(262145, 'o'));
    EXPECT_EQ(library.InitializeTt(0), 0);
    EXPECT_TRUE(logHas("socket: nobody listens at "));
    EXPECT_LT(log().size(), 1000U);
}

TEST_F(TransferLibrary, PipesInThePlaceOfLogAndSettingsHoldNothingUp) {
    ASSERT_TRUE(QFile::remove(path(u"ttdll.ini"_s)));
    for (const QString& name : {u"ttdll.log"_s, u"ttdll.ini"_s}) {
        ASSERT_EQ(::mkfifo(QFile::encodeName(path(name)).constData(), 0600), 0);
    }
    EXPECT_EQ(library.InitializeTt(0), 0);
    // Nothing is written there either when its other end has a reader.
    const int reader = ::open(QFile::encodeName(path(u"ttdll.log"_s)).constData(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    EXPECT_EQ(library.InitializeTt(0), 0);
    char byte = 0;
    EXPECT_LE(::read(reader, &byte, 1), 0);
    ::close(reader);
}

TEST_F(TransferLibrary, ALinkInThePlaceOfTheLogIsNotFollowed) {
    write(u"victim"_s, "mine");
    ASSERT_TRUE(QFile::link(path(u"victim"_s), path(u"ttdll.log"_s)));
    EXPECT_EQ(library.InitializeTt(0), 0);
    EXPECT_EQ(log(), "mine");
}

} // namespace
} // namespace sixtrace::test
