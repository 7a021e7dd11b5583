// SPDX-License-Identifier: MIT
#include "capture/capturerecord.h"

#include "capture/bytes.h"
#include "capture/scenes.h"
#include "platform/files/bytefile.h"
#include "support/sourcefolder.h"

#include <QDir>

namespace sixtrace::test {
namespace {

class CaptureRecords : public CaptureTest {
protected:
    const CaptureRecord& read(const QByteArray& content) {
        readRecord(put(content).toStdString(), m_file, m_record);
        return m_record;
    }
    /// Compares the record with the content of a new model after a load.
    void expectSameAsTheReader(const QByteArray& content, const std::string& what) {
        const CaptureRecord& record = read(content);
        model = std::make_unique<publicM>();
        model->fillTables();
        view = std::make_unique<RecordedScreen>(*model);
        load(content);
        EXPECT_EQ(record.FileKind, model->FileKind) << what;
        if (record.FileKind == 0) {
            return;
        }
        for (std::size_t c = 0; c < 6; ++c) {
            const ChannelRecord& channel = record.channels[c];
            EXPECT_EQ(channel.present, model->ChannelPresent[c] == 1) << what << c;
            EXPECT_EQ(channel.ScreenPoints, model->ScreenPoints[c]) << what << c;
            EXPECT_EQ(channel.SampleCount, model->SampleCount[c]) << what << c;
            EXPECT_EQ(channel.ScanPoint, model->ScanPoint[c]) << what << c;
            EXPECT_EQ(channel.TimeIndex, model->TimeIndex[c]) << what << c;
            EXPECT_EQ(channel.ZeroLevel, model->ZeroLevel[c]) << what << c;
            EXPECT_EQ(channel.VoltIndex, model->VoltIndex[c]) << what << c;
            EXPECT_EQ(channel.ProbeExp, model->ProbeExp[c]) << what << c;
            EXPECT_TRUE(sameReal(channel.SampleInterval, model->SampleInterval[c])) << what << c;
            EXPECT_TRUE(sameReal(channel.Frequency, model->Frequency[c])) << what << c;
            EXPECT_TRUE(sameReal(channel.Period, model->Period[c])) << what << c;
            EXPECT_TRUE(sameReal(channel.VoltPerCount, model->VoltPerCount[c])) << what << c;
            EXPECT_EQ(channel.TimeIndexFile, model->TimeIndexFile[c]) << what << c;
            EXPECT_EQ(channel.VoltIndexFile, model->VoltIndexFile[c]) << what << c;
            if (channel.present) { // after a mark without an id the reader derives the field of an absent channel again
                EXPECT_EQ(channel.VoltIndexView, model->VoltIndexView[c]) << what << c;
            }
            const std::int64_t counted = std::clamp<std::int64_t>(channel.SampleCount, 0, kSampleRows);
            ASSERT_LE(static_cast<std::int64_t>(channel.heldSamples()), counted) << what << c;
            for (std::size_t i = 0; i < channel.heldSamples(); ++i) {
                ASSERT_EQ(sampleAt(channel.samples, i), model->SampleData(static_cast<int>(c), static_cast<int>(i)))
                    << what << c;
            }
            if (static_cast<std::int64_t>(channel.heldSamples()) == counted) {
                EXPECT_EQ(channel.PeakToPeak, model->PeakToPeak[c]) << what << c;
            }
        }
    }
    static bool sameReal(float a, float b) { return a == b || (a != a && b != b); }

private:
    ByteFile m_file;
    CaptureRecord m_record;
};

TEST_F(CaptureRecords, FormsAndLabelsAreThoseOfTheReader) {
    for (const CaptureForm& form : captureForms()) {
        const CaptureRecord& record = read(capture(std::string(form.tag).c_str(), {{}}));
        EXPECT_EQ(record.form(), form.tag);
        EXPECT_EQ(record.FileKind, form.fileKind);
    }
    for (int channel = 0; channel < kChannels; ++channel) {
        EXPECT_EQ(recordLabel(static_cast<std::size_t>(channel)), channelName(channel).toStdString());
    }
}

TEST_F(CaptureRecords, EverySceneReadsAsInTheProgram) {
    for (const Scene& scene : scenes()) {
        for (const CaptureForm& form : captureForms()) {
            const QByteArray content = captureBytes(form, *sceneBlocks(QString::fromLatin1(scene.name), 1));
            ASSERT_NO_FATAL_FAILURE(expectSameAsTheReader(content, scene.name));
        }
    }
}

TEST_F(CaptureRecords, EveryFileThatAFuzzerKeptReadsAsInTheProgram) {
    int files = 0;
    for (const QFileInfo& info :
         QDir(QStringLiteral(SIXTRACE_SOURCE_DIR "/fuzz/corpus/capture")).entryInfoList(QDir::Files)) {
        QFile file(info.filePath());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        ASSERT_NO_FATAL_FAILURE(expectSameAsTheReader(file.readAll(), info.fileName().toStdString()));
        ++files;
    }
    EXPECT_GT(files, 50);
}

TEST_F(CaptureRecords, SamplesBeyondTheCutAreNotHeld) {
    const QByteArray whole = capture("V11", {{.samples = {5, -6, 7, 8}}});
    const CaptureRecord& record = read(whole.left(whole.size() - 3));
    EXPECT_EQ(record.channels[0].SampleCount, 4);
    ASSERT_EQ(record.channels[0].heldSamples(), 2U);
    EXPECT_EQ(sampleAt(record.channels[0].samples, 1), -6);
    EXPECT_EQ(record.channels[0].PeakToPeak, 11);
}

TEST_F(CaptureRecords, AFileThatDoesNotFitTheMemoryKeepsTheSamplesOfAllChannels) {
    const CaptureRecord& record =
        read(capture("V11", {{.screenPoints = 150000, .samples = {21, 22, 23, 24}, .filling = 149996},
                             {.mark = "CH2", .samples = {31, 32, 33, 34}}}));
    EXPECT_TRUE(record.faults.empty());
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(sampleAt(record.channels[0].samples, i), 21 + static_cast<int>(i));
        EXPECT_EQ(sampleAt(record.channels[1].samples, i), 31 + static_cast<int>(i));
    }
}

TEST_F(CaptureRecords, ARecordKeepsNothingOfThePreviousFile) {
    ASSERT_EQ(read(capture("V11", {{}, {.mark = "CHD", .timeIndex = 99}})).faults.size(), 1U);
    const CaptureRecord& next = read(capture("bin", {{.mark = "CH2"}}));
    EXPECT_TRUE(next.faults.empty());
    EXPECT_FALSE(next.channels[0].present);
    EXPECT_EQ(next.channels[5].TimeIndex, 0);
    EXPECT_EQ(next.channels[5].heldSamples(), 0U);
    EXPECT_FALSE(read("garbage").isCapture());
}

TEST_F(CaptureRecords, FaultsBeyondTheLimitAreNotKept) {
    EXPECT_EQ(read(capture("V11", std::vector<Block>(500, Block{.voltIndex = 99}))).faults.size(), 50U);
}

} // namespace
} // namespace sixtrace::test
