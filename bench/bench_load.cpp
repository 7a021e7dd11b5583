// SPDX-License-Identifier: MIT
// Loading a capture of six full channels against one read of the file and a copy of its bytes.
#include "capture/capturefile.h"
#include "capture/scenes.h"
#include "ratios.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstring>
#include <memory>

namespace {

using namespace sixtrace;

/// A capture file of its own for one benchmark.
struct CaptureFile {
    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("full.bin"));

    CaptureFile() {
        QFile file(path);
        if (file.open(QIODevice::WriteOnly)) {
            file.write(captureBytes(*captureForm("V11"), *sceneBlocks(QStringLiteral("full"), 1)));
        }
    }
};

void load(benchmark::State& state) {
    const CaptureFile file;
    const auto model = std::make_unique<publicM>();
    model->fillTables();
    UnseenScreen screen(*model);
    for ([[maybe_unused]] auto _ : state) {
        SimpleWav(file.path, screen.scope());
        benchmark::ClobberMemory();
    }
}

void readAndCopy(benchmark::State& state) {
    const CaptureFile capture;
    const auto size = static_cast<std::size_t>(QFile(capture.path).size());
    const auto copy = std::make_unique<char[]>(size);
    for ([[maybe_unused]] auto _ : state) {
        QFile file(capture.path);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
            state.SkipWithError("the capture cannot be read");
            return;
        }
        const QByteArray bytes = file.readAll();
        std::memcpy(copy.get(), bytes.constData(), static_cast<std::size_t>(bytes.size()));
        benchmark::ClobberMemory();
    }
}

} // namespace

int main(int argc, char** argv) {
    benchmark::RegisterBenchmark("load", load);
    benchmark::RegisterBenchmark("read_and_copy", readAndCopy);
    return sixtrace::bench::runAndCompare(argc, argv, {{"load / read and copy", "load", "read_and_copy", 2.5}});
}
