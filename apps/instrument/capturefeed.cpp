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

/// A small picture that differs from fetch to fetch.
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
    fetch.content = fetch.bitmap ? bitmap(m_fetches) : capture(fetch.plan.scene.isEmpty() ? m_scene : fetch.plan.scene);
    ++m_fetches;
    return fetch;
}

QByteArray CaptureFeed::capture(const QString& scene) const {
    QString name = scene;
    if (scene == u"all") {
        name = QString::fromLatin1(scenes().at(static_cast<std::size_t>(m_fetches) % scenes().size()).name);
    }
    const auto blocks = sceneBlocks(name, m_seed + static_cast<std::uint32_t>(m_fetches));
    const CaptureForm* form = captureForm(m_form.toStdString());
    return blocks && form != nullptr ? captureBytes(*form, *blocks) : QByteArray();
}

std::optional<std::deque<FetchPlan>> readScript(const QString& path, int& badLine) {
    badLine = 0;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    std::deque<FetchPlan> plans;
    const QString text = QString::fromUtf8(file.read(kLargestScript));
    for (const QString& line : text.split(u'\n')) {
        ++badLine;
        const QString content = line.trimmed();
        if (content.isEmpty() || content.startsWith(u'#')) {
            continue;
        }
        // "clean" stands for a fetch without faults, which an empty line cannot tell.
        const auto plan = content == u"clean" ? std::optional(FetchPlan{}) : parsePlan(content);
        if (!plan || (!plan->scene.isEmpty() && plan->scene != u"all" && !sceneBlocks(plan->scene, 1))) {
            return std::nullopt;
        }
        plans.push_back(*plan);
    }
    return plans;
}

} // namespace sixtrace
