// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ports/ttlink.h"
#include "support/strings.h"

#include <QByteArray>
#include <QStringList>

#include <algorithm>
#include <functional>
#include <optional>

namespace sixtrace::test {

/// A USB link without a cable. It delivers `stream` and records every call as text. Once closed, it delivers nothing.
class ScriptedLink final : public TtLink {
public:
    QByteArray stream;
    bool opens = true;
    std::optional<int> failingRead; ///< index of the ReadThread call that delivers nothing
    QStringList calls;
    int reads = 0;
    std::function<void(int read)> onRead; ///< called before each read with its index

    /// The stream of a transfer: header for `length` and content kind, then data.
    static QByteArray transfer(const QByteArray& data, char kind = 0) {
        QByteArray bytes(12, '\x7F');
        bytes[0] = static_cast<char>(data.size() & 0xFF);
        bytes[1] = static_cast<char>((data.size() >> 8) & 0xFF);
        bytes[2] = static_cast<char>((data.size() >> 16) & 0xFF);
        bytes[8] = kind;
        return bytes + data;
    }

    std::int32_t InitializeTt(std::int32_t mode) override {
        calls << u"InitializeTt %1"_s.arg(mode);
        m_open = opens;
        return opens ? 1 : 0;
    }
    void closeTt(std::int32_t mode) override {
        calls << u"closeTt %1"_s.arg(mode);
        m_open = false;
    }
    std::int32_t WriteThread(const char* bytes, std::int32_t count) override {
        calls << u"WriteThread "_s + QString::fromLatin1(bytes, count);
        return m_open ? count : 0;
    }
    std::int32_t ReadThread(char* buffer, std::int32_t count) override {
        calls << u"ReadThread %1"_s.arg(count);
        if (!m_open) {
            return 0;
        }
        if (onRead) {
            onRead(reads);
        }
        const qsizetype given = reads++ == failingRead ? 0 : std::min<qsizetype>(count, stream.size());
        std::copy_n(stream.cbegin(), given, buffer);
        stream.remove(0, given);
        return static_cast<std::int32_t>(given);
    }
    std::int32_t senddatatoTt(const char* bytes, std::int32_t count) override { return WriteThread(bytes, count); }
    std::int32_t getTtData(char* buffer, std::int32_t count) override { return ReadThread(buffer, count); }

private:
    bool m_open = false;
};

} // namespace sixtrace::test
