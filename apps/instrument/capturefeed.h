// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/fault.h"
#include "platform/text/runtimeerror.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <deque>

namespace sixtrace {

/// What one fetch brings.
struct Fetch {
    QByteArray name; ///< of the file, which only the serial line tells
    QByteArray content;
    bool bitmap = false;
    FetchPlan plan;
};

/// What the instrument holds: each fetch brings the next capture. All show the same scene, with other noise each time;
/// scene "all" stands for each scene in turn. Each fetch takes the next line of the script for its faults; after the
/// last line the standing faults hold.
class CaptureFeed {
public:
    CaptureFeed(QString form, QString scene, std::uint32_t seed, FetchPlan standing, std::deque<FetchPlan> script);

    [[nodiscard]] Fetch next();

private:
    [[nodiscard]] QByteArray capture(const QString& scene) const;

    QString m_form;
    QString m_scene;
    std::uint32_t m_seed;
    FetchPlan m_standing;
    std::deque<FetchPlan> m_script;
    std::uint32_t m_fetches = 0;
};

/// Reads a script: one plan in each line, without empty lines and comments. The error of a file that does not open, and
/// of a line that is no plan, says so in a sentence.
[[nodiscard]] Result<std::deque<FetchPlan>> readScript(const QString& path);

} // namespace sixtrace
