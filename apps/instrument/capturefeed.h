// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/fault.h"

#include <QByteArray>
#include <QString>

#include <deque>

namespace sixtrace {

/// One capture as the instrument hands it out.
struct Fetch {
    QByteArray name; ///< of the file, as the serial line tells it
    QByteArray content;
    bool bitmap = false;
    FetchPlan plan;
};

/// What the instrument holds: every fetch brings the next capture. The scene stays and its noise moves on, unless the
/// scene is "all", which goes through them all. Faults come from a script, one line a fetch; behind its end the
/// standing faults hold.
class CaptureFeed {
public:
    CaptureFeed(QString form, QString scene, std::uint32_t seed, FetchPlan standing, std::deque<FetchPlan> script);

    [[nodiscard]] Fetch next();
    [[nodiscard]] int fetches() const { return m_fetches; }

private:
    [[nodiscard]] QByteArray capture(const QString& scene) const;

    QString m_form;
    QString m_scene;
    std::uint32_t m_seed;
    FetchPlan m_standing;
    std::deque<FetchPlan> m_script;
    int m_fetches = 0;
};

/// Reads a script: one plan a line, empty lines and comments left out. Nothing, and the number of the bad line in
/// `badLine`, where one cannot be read; line 0 is a file that does not open.
[[nodiscard]] std::optional<std::deque<FetchPlan>> readScript(const QString& path, int& badLine);

} // namespace sixtrace
