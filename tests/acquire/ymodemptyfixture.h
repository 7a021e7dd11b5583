// SPDX-License-Identifier: MIT
#pragma once

#include "acquire/ptypeer.h"
#include "acquire/receivefixture.h"
#include "acquire/scriptedport.h"
#include "platform/ports/mscomm.h"
#include "support/strings.h"

#include <QCoreApplication>

namespace sixtrace::test {

inline QByteArray data(int number, const QByteArray& bytes, int size) {
    return BlockSender::block(number, bytes, size, 0x1A);
}

inline const QByteArray kEot("\x04");
inline const QByteArray kAck("\x06");
inline const QByteArray kAckC("\x06"
                              "C");
inline const QByteArray kNak("\x0F");
inline const QByteArray kAbort("\x12\x12\x12\x12\x12\x08\x08\x08\x08\x08");

/// A receiver on a pseudo terminal, with a scripted peer at the other end.
class YModemOverALine : public ::testing::Test {
protected:
    YModemOverALine() {
        form.text2 = path("got.bin");
        form.onYield = [] { QCoreApplication::processEvents(); };
        receive.ReadTimeoutMs = 400;
        EXPECT_TRUE(port.setSettings(u"115200,N,8,1"_s).ok());
        EXPECT_TRUE(port.setPortOpen(true).ok());
    }
    [[nodiscard]] QString path(const char* name) const { return folder.filePath(QString::fromLatin1(name)); }
    [[nodiscard]] QByteArray stored(const char* name = "got.bin") const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }
    Result<std::int32_t> run(std::function<void(PtyPeer&)> script) {
        peer.play(std::move(script));
        Result<std::int32_t> result = receive.YModemReceive();
        peer.finish();
        return result;
    }
    /// The end of every good transfer, from the peer's side.
    static void end(PtyPeer& p) {
        p.send(kEot);
        p.take(2);
        p.send("\x01");
        p.take(1);
    }

    QTemporaryDir folder;
    PtyPeer peer;
    std::unique_ptr<publicM> model = std::make_unique<publicM>();
    MSComm port{[this](int) { return peer.location(); }};
    RecordedForm form;
    Receiver receive{port, form, *model};
};

} // namespace sixtrace::test
