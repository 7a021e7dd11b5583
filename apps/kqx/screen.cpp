// SPDX-License-Identifier: MIT
// kqx screen: the picture that the program shows after opening a capture with default settings.
#include "commands.h"
#include "jsontext.h"

#include "view/scopescreen.h"

#include <QBuffer>

namespace sixtrace::kqx {

namespace {

constexpr int kGreatestScale = 16;
constexpr int kGreatestThumbnail = 4096;

const Usage& usage() {
    static const Usage made{
        "screen", "FILE OUT.png | FILE...",
        "Writes a picture of the screen for each capture, 601 by 401 pixels, as the program draws it with default "
        "settings. OUT may be - for standard output.",
        withOptions(
            {{"points", nullptr, "Draw points instead of lines."},
             {"cross", nullptr, "Draw a cross instead of the dotted graticule."},
             {"scale", "n", "Enlarge each pixel n times, 1 to 16."},
             {"thumbnail", "size",
              "Write a small PNG picture, at most this many pixels wide and high; OUT may have any name. A faulty FILE "
              "gives no picture, and no message where OUT is given."}},
            writingOptions("The kind of file; only png."))};
    return made;
}

/// How the picture is made from the screen.
struct PictureWishes {
    Graticule graticule = Graticule::Dotted;
    TraceStyle style = TraceStyle::Lines;
    int scale = 1;
    std::optional<int> thumbnail;
    bool quiet = false; ///< faults of the capture give an exit code but no message
};

QImage scaled(const QImage& image, const PictureWishes& wishes) {
    if (wishes.thumbnail) {
        const QSize size = image.size().scaled(QSize(*wishes.thumbnail, *wishes.thumbnail), Qt::KeepAspectRatio);
        return image
            .scaled(size.expandedTo(QSize(1, 1)).boundedTo(image.size()), Qt::IgnoreAspectRatio,
                    Qt::SmoothTransformation)
            .convertToFormat(QImage::Format_RGB888);
    }
    return image.scaled(image.size() * wishes.scale, Qt::IgnoreAspectRatio, Qt::FastTransformation);
}

QByteArray pngOf(const QImage& image) {
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    return image.save(&buffer, "PNG") ? png : QByteArray();
}

void draw(const Task& task, const PictureWishes& wishes, Existing existing, Answer& answer) {
    const auto model = defaultModel();
    OffscreenScope view(*model, wishes.graticule, wishes.style);
    CaptureReader reader;
    const bool isOpen = openCapture(task.file, view.scope(), reader, answer);
    if (wishes.quiet) {
        answer.err.clear();
    }
    if (!isOpen) {
        return;
    }
    if (wishes.thumbnail && !reader.record.faults.empty()) {
        return;
    }
    const QByteArray png = pngOf(scaled(view.Picture2.view(), wishes));
    if (png.isEmpty()) {
        answer.fail(validUtf8(task.file) + ": the picture could not be made");
        return;
    }
    deliver(task, png, existing, answer);
}

/// The tasks of the arguments. A thumbnail may have any name.
OrExit<Tasks> tasksOf(const Arguments& given, const PictureWishes& wishes) {
    const bool named = wishes.thumbnail && given.positional().size() == 2 && !given.has("to") &&
                       !given.has("out-dir") && !given.has("files-from");
    if (!named) {
        return filesToWrite(usage(), given, {"png"});
    }
    Tasks tasks;
    tasks.tasks.push_back({given.positional()[0], given.positional()[1]});
    tasks.extension = "png";
    tasks.existing = given.has("no-clobber") ? Existing::Kept : Existing::Replaced;
    return tasks;
}

} // namespace

ExitCode screen(const std::vector<std::string>& arguments) {
    Arguments given;
    if (const auto code = given.parse(usage(), arguments)) {
        return *code;
    }
    PictureWishes wishes;
    wishes.graticule = given.has("cross") ? Graticule::Cross : Graticule::Dotted;
    wishes.style = given.has("points") ? TraceStyle::Points : TraceStyle::Lines;
    const auto factor = wholeNumber(given.value("scale", "1"), 1, kGreatestScale);
    if (!factor) {
        return failWith(WrongUse, "--scale takes a whole number from 1 to 16");
    }
    wishes.scale = *factor;
    if (given.has("thumbnail")) {
        wishes.thumbnail = wholeNumber(given.value("thumbnail"), 1, kGreatestThumbnail);
        if (!wishes.thumbnail || given.has("scale")) {
            return failWith(WrongUse,
                            "--thumbnail takes a whole number from 1 to 4096, and cannot be combined with --scale");
        }
    }
    const auto tasks = tasksOf(given, wishes);
    if (!tasks) {
        return tasks.error();
    }
    // A file manager asks for one picture at a time and needs no message. In a batch the user wants to know which
    // pictures are missing.
    wishes.quiet = wishes.thumbnail && !tasks.value().isBatch;
    const auto jobs = jobsOf(given);
    if (!jobs) {
        return jobs.error();
    }
    const Tasks& all = tasks.value();
    return runBatch(all.tasks.size(), jobs.value(), [&]() -> Work {
        return [&](std::size_t i, Answer& answer) { draw(all.tasks[i], wishes, all.existing, answer); };
    });
}

} // namespace sixtrace::kqx
