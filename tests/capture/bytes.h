// SPDX-License-Identifier: MIT
#pragma once

#include "capture/capturefile.h"
#include "capture/channellist.h"
#include "support/strings.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstring>
#include <memory>
#include <vector>

namespace sixtrace::test {

/// Bytes of a capture put together by hand, field by field, independent of the program's own writer.
class Bytes {
public:
    Bytes& text(const char* characters) {
        m_bytes.append(characters);
        return *this;
    }
    Bytes& int32(std::int32_t value) {
        const auto bits = static_cast<std::uint32_t>(value);
        for (int shift = 0; shift < 32; shift += 8) {
            m_bytes.append(static_cast<char>((bits >> shift) & 0xFFU));
        }
        return *this;
    }
    Bytes& int16(int value) {
        const auto bits = static_cast<std::uint32_t>(value);
        m_bytes.append(static_cast<char>(bits & 0xFFU));
        m_bytes.append(static_cast<char>((bits >> 8) & 0xFFU));
        return *this;
    }
    Bytes& real(float value) {
        std::int32_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        return int32(bits);
    }
    Bytes& header(const char* tag) { return text("KQX").text(tag).int32(0); }

    [[nodiscard]] const QByteArray& bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
};

/// A channel block with everything that a test may want to change.
struct Block {
    const char* mark = "CH1";
    std::int32_t screenPoints = 4;
    std::int32_t sampleCount = 4;
    std::int32_t scanPoint = 0;
    std::int32_t timeIndex = 15;
    std::int32_t zeroLevel = 0;
    std::int32_t voltIndex = 7;
    int probeExp = 0;
    float interval = 5;
    float frequency = 1000;
    float period = 1000;
    float voltPerCount = 20;
    std::vector<int> samples{1, 2, 3, 4};
    int filling = 0; ///< slots after the samples

    void appendTo(Bytes& bytes, bool withProbe) const {
        bytes.text(mark).int32(0).int32(screenPoints).int32(sampleCount).int32(scanPoint).int32(timeIndex);
        bytes.int32(zeroLevel).int32(voltIndex);
        if (withProbe) {
            bytes.int16(probeExp).int16(0x7777); // the upper half has no meaning
        }
        bytes.real(interval).real(frequency).real(period).real(voltPerCount);
        for (const int sample : samples) {
            bytes.int16(sample);
        }
        for (int i = 0; i < filling; ++i) {
            bytes.int16(0x5555);
        }
    }
};

inline QByteArray capture(const char* tag, const std::vector<Block>& blocks) {
    Bytes bytes;
    bytes.header(tag);
    for (const Block& block : blocks) {
        block.appendTo(bytes, std::strcmp(tag, "bin") != 0);
    }
    return bytes.bytes();
}

/// The screen's state. It counts the duties that the rules ask of it, and draws nothing.
class RecordedScreen : public ScreenState, public ScreenDuties {
public:
    explicit RecordedScreen(publicM& model)
        : m_model(model) {
        beginStart(scope());
        endStart(scope());
        frames = 0;
    }
    [[nodiscard]] Scope scope() { return {m_model, *this, *this}; }

    int frames = 0; ///< frames asked for
    int blanks = 0; ///< empty screens asked for
    bool tableLoaded = false;

    void frameDue() override { ++frames; }
    void blankDue() override { ++blanks; }
    void closeTable() override { tableLoaded = false; }
    void openTable() override { tableLoaded = true; }

private:
    publicM& m_model;
};

/// A model, a screen that records its duties, and a folder for files.
class CaptureTest : public ::testing::Test {
protected:
    CaptureTest() {
        model->fillTables();
        view = std::make_unique<RecordedScreen>(*model);
        view->markers[3].standInShown = true;
        view->tableLoaded = true;
    }

    [[nodiscard]] QString path(const QString& name = u"capture.bin"_s) const { return m_folder.filePath(name); }
    QString put(const QByteArray& content) const {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
        return path();
    }
    void load(const QByteArray& content) { SimpleWav(put(content), view->scope()); }
    void load(const char* tag, const std::vector<Block>& blocks) { load(capture(tag, blocks)); }

    std::unique_ptr<publicM> model = std::make_unique<publicM>();
    std::unique_ptr<RecordedScreen> view;

private:
    QTemporaryDir m_folder;
};

/// Tests of SimpleWav, in several files.
class SimpleWavTest : public CaptureTest {};

} // namespace sixtrace::test
