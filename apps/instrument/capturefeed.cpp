// SPDX-License-Identifier: MIT
#include "instrument/capturefeed.h"

#include "capture/scenes.h"

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QTextStream>

#include <utility>

namespace sixtrace {

namespace {

constexpr qint64 kLargestScript = 1 << 20;

/// A small picture, which differs from one fetch to the next.
QByteArray bitmap(int fetch) {
    QImage image(160, 100, QImage::Format_RGB888);
    image.fill(qRgb(64, 0, 64));
    for (int x = 0; x < image.width(); ++x) {
        image.setPixel(x, 50 + ((x + fetch * 7) % 20) - 10, qRgb(255, 255, 0));
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "BMP");
    return bytes;
}

} // namespace

CaptureFeed::CaptureFeed(QString form, QString scene, std::uint32_t seed, FetchPlan standing,
                         std::deque<FetchPlan> script)
    : m_form(std::move(form))
    , m_scene(std::move(scene))
    , m_seed(seed)
    , m_standing(std::move(standing))
    , m_script(std::move(script)) {}

Fetch CaptureFeed::next() {
    Fetch fetch;
    if (m_script.empty()) {
        fetch.plan = m_standing;
    } else {
        fetch.plan = m_script.front();
        m_script.pop_front();
    }
    fetch.bitmap = fetch.plan.has(FaultKind::Bitmap);
    const QByteArray stem = "CAP" + QByteArray::number(m_fetches).rightJustified(4, '0');
    fetch.name = stem + (fetch.bitmap ? ".bmp" : ".bin");
    fetch.content = fetch.bitmap ? bitmap(static_cast<int>(m_fetches))
                                 : capture(fetch.plan.scene.isEmpty() ? m_scene : fetch.plan.scene);
    ++m_fetches;
    return fetch;
}

QByteArray CaptureFeed::capture(const QString& scene) const {
    QString name = scene;
    if (scene == u"all") {
        name = QString::fromLatin1(scenes().at(m_fetches % scenes().size()).name);
    }
    const auto blocks = sceneBlocks(name, m_seed + m_fetches);
    const CaptureForm* form = captureForm(m_form.toStdString());
    return blocks && form != nullptr ? captureBytes(*form, *blocks) : QByteArray();
}

Result<std::deque<FetchPlan>> readScript(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return RuntimeError{ErrorNumber::FileNotFound, QStringLiteral("%1 cannot be read").arg(path)};
    }
    std::deque<FetchPlan> plans;
    int number = 0;
    for (const QString& line : QString::fromUtf8(file.read(kLargestScript)).split(u'\n')) {
        ++number;
        const QString content = line.trimmed();
        if (content.isEmpty() || content.startsWith(u'#')) {
            continue;
        }
        // A word for a fetch without faults, since an empty line is left out.
        const auto plan = content == u"clean" ? std::optional(FetchPlan{}) : parsePlan(content);
        if (!plan || (!plan->scene.isEmpty() && plan->scene != u"all" && !sceneBlocks(plan->scene, 1))) {
            return RuntimeError{ErrorNumber::TypeMismatch,
                                QStringLiteral("%1: line %2 is not understood").arg(path).arg(number)};
        }
        plans.push_back(*plan);
    }
    return plans;
}

} // namespace sixtrace
