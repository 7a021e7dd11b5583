// SPDX-License-Identifier: MIT
#include "instrument/fault.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <array>
#include <utility>

namespace sixtrace {

namespace {

constexpr std::array<std::pair<const char*, FaultKind>, 15> kNames{{
    {"crc", FaultKind::Crc},
    {"complement", FaultKind::Complement},
    {"sequence", FaultKind::Sequence},
    {"lost-byte", FaultKind::LostByte},
    {"lost-block", FaultKind::LostBlock},
    {"repeat", FaultKind::Repeat},
    {"noise", FaultKind::Noise},
    {"silence", FaultKind::Silence},
    {"early-end", FaultKind::EarlyEnd},
    {"stop", FaultKind::Stop},
    {"bitmap", FaultKind::Bitmap},
    {"wrong-length", FaultKind::WrongLength},
    {"short-length", FaultKind::ShortLength},
    {"late", FaultKind::Late},
    {"unplug", FaultKind::Unplug},
}};

} // namespace

QString faultNames() {
    QStringList names;
    for (const auto& [name, kind] : kNames) {
        names << QLatin1String(name);
    }
    return names.join(QStringLiteral(", "));
}

std::optional<Fault> parseFault(const QString& text) {
    static const QRegularExpression form(QStringLiteral("^([a-z-]+)(?:@(\\d{1,5}))?(?:x(\\d{1,5}))?$"));
    const QRegularExpressionMatch match = form.match(text);
    const auto entry = std::find_if(kNames.cbegin(), kNames.cend(), [&match](const auto& name) {
        return match.captured(1) == QLatin1String(name.first);
    });
    if (!match.hasMatch() || entry == kNames.cend()) {
        return std::nullopt;
    }
    Fault fault;
    fault.kind = entry->second;
    fault.block = match.captured(2).isEmpty() ? 1 : match.captured(2).toInt();
    fault.times = match.captured(3).isEmpty() ? 1 : match.captured(3).toInt();
    return fault;
}

bool FetchPlan::has(FaultKind kind) const {
    return std::any_of(faults.cbegin(), faults.cend(), [kind](const Fault& fault) { return fault.kind == kind; });
}

const Fault* FetchPlan::at(FaultKind kind, int block) const {
    const auto found = std::find_if(faults.cbegin(), faults.cend(), [kind, block](const Fault& fault) {
        return fault.kind == kind && fault.block == block;
    });
    return found == faults.cend() ? nullptr : &*found;
}

int FetchPlan::told(int length) const {
    constexpr int kWrongBy = 1000;
    if (has(FaultKind::WrongLength)) {
        return length + kWrongBy;
    }
    return has(FaultKind::ShortLength) ? std::max(length - kWrongBy, 0) : length;
}

std::optional<FetchPlan> parsePlan(const QString& text) {
    FetchPlan plan;
    const QString content = text.section(u'#', 0, 0);
    for (const QString& word : content.split(u' ', Qt::SkipEmptyParts)) {
        if (word.startsWith(QLatin1String("scene="))) {
            plan.scene = word.mid(6);
            continue;
        }
        const std::optional<Fault> fault = parseFault(word.trimmed());
        if (!fault) {
            return std::nullopt;
        }
        plan.faults.push_back(*fault);
    }
    return plan;
}

} // namespace sixtrace
