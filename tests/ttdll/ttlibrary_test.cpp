// SPDX-License-Identifier: MIT
// The transfer library as the program loads it: the six functions, and what they do when the other end misbehaves.
#include "ttdll/ttlibraryfixture.h"

#include "support/strings.h"

#include <QFile>
#include <QLibrary>
#include <QTemporaryDir>

#include <cstring>
#include <dlfcn.h>
#include <link.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

namespace sixtrace::test {
namespace {

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
