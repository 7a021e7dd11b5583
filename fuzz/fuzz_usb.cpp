// SPDX-License-Identifier: MIT
// Both USB exchanges over a link that answers with any bytes, comes short anywhere and is cancelled anywhere.
#include "acquire/usbexchange.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace {

using namespace sixtrace;

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

/// Byte 0 of the input: what opens; byte 1: after how many reads a cancel comes; then the stream.
class FuzzedLink final : public TtLink {
public:
    FuzzedLink(QByteArray stream, bool opens)
        : m_stream(std::move(stream))
        , m_opens(opens) {}
    std::int32_t InitializeTt(std::int32_t) override {
        m_open = m_opens;
        return m_opens ? 1 : 0;
    }
    void closeTt(std::int32_t) override { m_open = false; }
    std::int32_t WriteThread(const char*, std::int32_t count) override { return m_open ? count : 0; }
    std::int32_t ReadThread(char* buffer, std::int32_t count) override {
        require(count >= 0 && count <= kUsbBlockSize);
        if (!m_open) {
            return 0;
        }
        const qsizetype given = std::min<qsizetype>(count, m_stream.size());
        std::copy_n(m_stream.cbegin(), given, buffer);
        m_stream.remove(0, given);
        return static_cast<std::int32_t>(given);
    }
    std::int32_t senddatatoTt(const char* bytes, std::int32_t count) override { return WriteThread(bytes, count); }
    std::int32_t getTtData(char* buffer, std::int32_t count) override { return ReadThread(buffer, count); }

private:
    QByteArray m_stream;
    bool m_opens;
    bool m_open = false;
};

class SilentDialogs final : public Dialogs {
public:
    std::optional<FileChoice> ShowOpen(const FileRequest&) override { return std::nullopt; }
    std::optional<FileChoice> ShowSave(const FileRequest&) override { return std::nullopt; }
    std::optional<Colour> ShowColor(Colour) override { return std::nullopt; }
    void message(const QString& text, MessageIcon, const QString&) override { require(!text.isEmpty()); }
    Answer question(const QString&, MessageIcon, const QString&) override { return Answer::No; }
    std::optional<QString> input(const QString&, const QString&, const QString&) override { return std::nullopt; }
};

class SilentForm final : public UsbForm {
public:
    SilentForm(QString path, int cancelAt)
        : m_path(std::move(path))
        , m_cancelAt(cancelAt) {}
    UsbTransfer* transfer = nullptr;

    QString Text1() override { return QStringLiteral("D.bin"); }
    QString Text2() override { return m_path; }
    void setText1(const QString&) override {}
    void setText2(const QString& path) override { m_path = path; }
    void setText5(std::int32_t) override {}
    void setText6(std::int32_t length) override { require(length >= 0 && length <= 2147583); }
    void setBarMaximum(std::int32_t) override {}
    void setBar(std::int32_t) override {}
    void setCommand4Enabled(bool) override {}
    void yield() override {
        if (--m_cancelAt == 0) {
            transfer->CancelButton_Click();
        }
    }
    void waitForTimer1() override {}
    void unload() override {}

private:
    QString m_path;
    int m_cancelAt;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir folder;
    static const auto model = std::make_unique<publicM>();
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const int how = input.isEmpty() ? 0 : static_cast<unsigned char>(input[0]);
    const int cancelAt = input.size() < 2 ? 0 : static_cast<unsigned char>(input[1]);
    SilentDialogs dialogs;
    model->LanguageId = static_cast<std::int16_t>(how & 1);
    {
        FuzzedLink link(input.mid(2), (how & 6) != 6);
        SilentForm form(folder.filePath(QStringLiteral("D.bin")), cancelAt);
        UsbTransfer transfer(link, form, dialogs, *model);
        form.transfer = &transfer;
        model->ReceiveResult = 0;
        transfer.Command4_Click();
        require(!transfer.UsbBusy());
        if (model->ReceiveResult == 1) {
            require(QFileInfo(model->ReceivedFile).size() >= 1);
        }
        QFile::remove(model->ReceivedFile);
    }
    FuzzedLink link(input.mid(2), (how & 6) != 6);
    static_cast<void>(getfromUSB(link, dialogs, *model, folder.filePath(QStringLiteral("AutoGet.bin"))));
    QFile::remove(model->ReceivedFile);
    return 0;
}
