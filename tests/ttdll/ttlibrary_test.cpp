// SPDX-License-Identifier: MIT
// The transfer library as the program loads it: the six functions, and what they do when the other end misbehaves.
#include "platform/ports/ttlink.h"

#include "support/strings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLibrary>
#include <QTemporaryDir>

#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

namespace sixtrace::test {
namespace {

/// An instrument at a socket, which does what the test says.
class Instrument {
public:
    explicit Instrument(const QString& path)
        : m_listening(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const QByteArray name = QFile::encodeName(path);
        EXPECT_LT(static_cast<std::size_t>(name.size()), sizeof address.sun_path);
        std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
        EXPECT_EQ(bind(m_listening, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(listen(m_listening, 1), 0);
    }
    ~Instrument() {
        hangUp();
        close(m_listening);
    }
    Instrument(const Instrument&) = delete;
    Instrument& operator=(const Instrument&) = delete;

    void answerCall() { m_link = accept(m_listening, nullptr, nullptr); }
    void send(const QByteArray& bytes) const {
        EXPECT_EQ(::send(m_link, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL),
                  bytes.size());
    }
    [[nodiscard]] QByteArray take(int count) const {
        QByteArray bytes(count, '\0');
        bytes.resize(recv(m_link, bytes.data(), static_cast<std::size_t>(count), MSG_WAITALL));
        return bytes;
    }
    void hangUp() {
        if (m_link >= 0) {
            close(m_link);
        }
        m_link = -1;
    }

private:
    int m_listening;
    int m_link = -1;
};

/// A copy of the library in a folder of its own, which is where it looks for its settings.
class TransferLibrary : public ::testing::Test {
protected:
    TransferLibrary() {
        EXPECT_TRUE(QFile::copy(QStringLiteral(SIXTRACE_BIN "/libttdll.so"), path(u"libttdll.so"_s)));
        settings("Link=socket\nReadTimeout=100\nWriteTimeout=100\n");
    }
    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }
    void settings(const QByteArray& content) const { write(u"ttdll.ini"_s, content); }
    void write(const QString& name, const QByteArray& content) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }
    [[nodiscard]] std::string log() const {
        QFile file(path(u"ttdll.log"_s));
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
    }
    [[nodiscard]] bool logHas(const char* text) const { return log().find(text) != std::string::npos; }

private:
    QTemporaryDir m_folder;

protected:
    TtLibrary library{m_folder.path() + u'/'};
};

TEST_F(TransferLibrary, BytesGoBothWaysByBothNamesOfTheServices) {
    Instrument instrument(path(u"instrument.socket"_s));
    ASSERT_EQ(library.InitializeTt(0), 1);
    instrument.answerCall();
    EXPECT_EQ(library.WriteThread("abc", 3), 3);
    EXPECT_EQ(library.senddatatoTt("de", 2), 2);
    EXPECT_EQ(instrument.take(5), QByteArray("abcde"));
    instrument.send("12345");
    QByteArray came(5, '\0');
    EXPECT_EQ(library.ReadThread(came.data(), 3), 3);
    EXPECT_EQ(library.getTtData(came.data() + 3, 2), 2);
    EXPECT_EQ(came, QByteArray("12345"));
    EXPECT_EQ(log(), "");
}

TEST_F(TransferLibrary, NothingGoesWithoutALinkAndNothingIsAsked) {
    char byte = 'x';
    EXPECT_EQ(library.WriteThread(&byte, 1), 0);
    EXPECT_EQ(library.ReadThread(&byte, 1), 0);
    library.closeTt(0);
    Instrument instrument(path(u"instrument.socket"_s));
    ASSERT_EQ(library.InitializeTt(1), 1); // a socket's link has nothing to recover from
    EXPECT_EQ(library.WriteThread(nullptr, 1), 0);
    EXPECT_EQ(library.WriteThread(&byte, -1), 0);
    EXPECT_EQ(library.ReadThread(nullptr, 1), 0);
    EXPECT_EQ(library.ReadThread(&byte, 0), 0);
    library.closeTt(1);
    EXPECT_EQ(library.WriteThread(&byte, 1), 0);
    EXPECT_EQ(byte, 'x');
}

TEST_F(TransferLibrary, AnInstrumentThatIsNotThereIsNamedInTheLog) {
    EXPECT_EQ(library.InitializeTt(0), 0);
    EXPECT_TRUE(logHas("socket: nobody listens at ")) << log();
    EXPECT_TRUE(logHas("No such file or directory")) << log();
}

TEST_F(TransferLibrary, AnInstrumentThatHangsUpEndsTheReadWithWhatCame) {
    Instrument instrument(path(u"instrument.socket"_s));
    ASSERT_EQ(library.InitializeTt(0), 1);
    instrument.answerCall();
    instrument.send("12");
    instrument.hangUp();
    QByteArray came(5, '\0');
    EXPECT_EQ(library.ReadThread(came.data(), 5), 2);
    EXPECT_TRUE(logHas("socket: the instrument has closed the link after 2 bytes")) << log();
    EXPECT_EQ(library.WriteThread("a", 1), 0);
    EXPECT_TRUE(logHas("socket: sending failed after 0 bytes")) << log();
}

TEST_F(TransferLibrary, AnInstrumentThatHangsUpUnheardBreaksTheRead) {
    Instrument instrument(path(u"instrument.socket"_s));
    ASSERT_EQ(library.InitializeTt(0), 1);
    instrument.answerCall();
    ASSERT_EQ(library.WriteThread("abc", 3), 3);
    instrument.hangUp();
    char byte = 'x';
    EXPECT_EQ(library.ReadThread(&byte, 1), 0);
    EXPECT_TRUE(logHas("socket: reading failed after 0 bytes")) << log();
}

TEST_F(TransferLibrary, AnInstrumentThatTakesNothingIsGivenUpAfterTheTime) {
    Instrument instrument(path(u"instrument.socket"_s));
    ASSERT_EQ(library.InitializeTt(0), 1);
    const QByteArray much(16 * 1024 * 1024, 'm'); // far more than a socket keeps
    const std::int32_t sent = library.WriteThread(much.constData(), static_cast<std::int32_t>(much.size()));
    EXPECT_GT(sent, 0);
    EXPECT_LT(sent, much.size());
    EXPECT_TRUE(logHas("socket: sending took too long after ")) << log();
}

TEST_F(TransferLibrary, AServerThatTakesNoCallIsGivenUpAfterTheTimeOfARead) {
    const Instrument instrument(path(u"instrument.socket"_s));
    std::vector<int> callers; // fill the queue
    for (;;) {
        const int caller = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        callers.push_back(caller);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const QByteArray name = QFile::encodeName(path(u"instrument.socket"_s));
        std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
        if (connect(caller, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
            break;
        }
    }
    EXPECT_EQ(library.InitializeTt(0), 0);
    EXPECT_TRUE(logHas("takes no call")) << log();
    settings("Link=socket\nReadTimeout=0\n");
    EXPECT_EQ(library.InitializeTt(0), 0) << "no time is no limit nowhere";
    EXPECT_TRUE(library.describe().value().contains(u"\tsilent\n")) << library.describe().value().toStdString();
    for (const int caller : callers) {
        close(caller);
    }
}

TEST_F(TransferLibrary, TellsWhetherTheInstrumentHasSentMoreThanWasRead) {
    EXPECT_FALSE(library.hasMore()) << "no link";
    Instrument instrument(path(u"instrument.socket"_s));
    ASSERT_EQ(library.InitializeTt(0), 1);
    instrument.answerCall();
    EXPECT_FALSE(library.hasMore());
    instrument.send("12");
    char byte = 0;
    ASSERT_EQ(library.ReadThread(&byte, 1), 1);
    EXPECT_TRUE(library.hasMore());
    ASSERT_EQ(library.ReadThread(&byte, 1), 1);
    EXPECT_EQ(byte, '2') << "asking takes nothing away";
    EXPECT_FALSE(library.hasMore());
    instrument.hangUp();
    EXPECT_FALSE(library.hasMore());
}

TEST_F(TransferLibrary, TheNumberAtTheThirdArgumentAndTheDescriptionsBufferMayBeMissing) {
    QLibrary plain(library.fileName());
    const auto initialize = reinterpret_cast<decltype(&::InitializeTt)>(plain.resolve("InitializeTt"));
    const auto writeThread = reinterpret_cast<decltype(&::WriteThread)>(plain.resolve("WriteThread"));
    const auto readThread = reinterpret_cast<decltype(&::ReadThread)>(plain.resolve("ReadThread"));
    const auto describe = reinterpret_cast<decltype(&::describeTt)>(plain.resolve("describeTt"));
    Instrument instrument(path(u"instrument.socket"_s));
    ASSERT_EQ(initialize(0), 1);
    instrument.answerCall();
    std::int32_t done = -1;
    EXPECT_EQ(writeThread("abc", 3, &done), 3);
    EXPECT_EQ(done, 3);
    EXPECT_EQ(writeThread("abc", 3, nullptr), 3);
    instrument.send("12345");
    QByteArray came(5, '\0');
    EXPECT_EQ(readThread(came.data(), 2, &done), 2);
    EXPECT_EQ(done, 2);
    EXPECT_EQ(readThread(came.data(), 3, nullptr), 3);

    settings("Link=usb\n"); // asking at the socket would fill its queue
    const std::int32_t size = describe(nullptr, 100);
    EXPECT_GT(size, 4);
    QByteArray begin(8, 'x');
    EXPECT_EQ(describe(begin.data(), 4), size);
    EXPECT_EQ(begin, "settxxxx");
    EXPECT_EQ(describe(begin.data(), 0), size);
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

TEST(TransferLibraryOfAnother, AbsentOrWithoutTheFunctionsEveryCallFails) {
    const QTemporaryDir folder;
    const auto expectFailures = [&folder] {
        TtLibrary library(folder.path() + u'/');
        char byte = 'x';
        EXPECT_EQ(library.InitializeTt(0), 0);
        EXPECT_EQ(library.WriteThread(&byte, 1), 0);
        EXPECT_EQ(library.ReadThread(&byte, 1), 0);
        EXPECT_EQ(library.senddatatoTt(&byte, 1), 0);
        EXPECT_EQ(library.getTtData(&byte, 1), 0);
        EXPECT_FALSE(library.hasMore());
        EXPECT_FALSE(library.isUsable());
        EXPECT_EQ(library.describe(), std::nullopt);
        library.closeTt(0);
    };
    expectFailures();
    // Any library that every machine has, without the six functions.
    void* const mathematics = dlopen("libm.so.6", RTLD_LAZY);
    ASSERT_NE(mathematics, nullptr);
    link_map* found = nullptr;
    ASSERT_EQ(dlinfo(mathematics, RTLD_DI_LINKMAP, static_cast<void*>(&found)), 0);
    ASSERT_TRUE(QFile::copy(QString::fromLocal8Bit(found->l_name), folder.filePath(u"libttdll.so"_s)));
    expectFailures();
    dlclose(mathematics);
}

} // namespace
} // namespace sixtrace::test
