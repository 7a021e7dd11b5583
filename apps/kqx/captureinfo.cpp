// SPDX-License-Identifier: MIT
#include "captureinfo.h"

#include "capture/capturefile.h"
#include "platform/numbers.h"

#include <QJsonArray>

#include <charconv>
#include <cmath>

namespace sixtrace::kqx {

namespace {

QString formName(const publicM& model) {
    if (model.FileKind < 1) {
        return {};
    }
    const std::string_view tag = captureForms().at(static_cast<std::size_t>(model.FileKind) - 1).tag;
    return QString::fromLatin1(tag.data(), static_cast<qsizetype>(tag.size()));
}

/// The shortest decimal that gives this 32-bit real back, as a JSON number; null where there is none.
QJsonValue number(float value) {
    if (!std::isfinite(value)) {
        return QJsonValue::Null;
    }
    std::array<char, 32> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    double decimal = 0;
    std::from_chars(buffer.data(), end, decimal);
    return decimal;
}

QString rowText(const auto& table, int row) {
    return row >= 0 && static_cast<std::size_t>(row) < table.size() ? table[static_cast<std::size_t>(row)]
                                                                    : QStringLiteral("no such row");
}

QJsonObject channelJson(const publicM& model, int channel) {
    const auto c = static_cast<std::size_t>(channel);
    return {
        {QStringLiteral("index"), channel},
        {QStringLiteral("label"), channelName(channel)},
        {QStringLiteral("ChannelPresent"), model.ChannelPresent[c]},
        {QStringLiteral("ScreenPoints"), model.ScreenPoints[c]},
        {QStringLiteral("SampleCount"), model.SampleCount[c]},
        {QStringLiteral("ScanPoint"), model.ScanPoint[c]},
        {QStringLiteral("TimeIndex"), model.TimeIndex[c]},
        {QStringLiteral("ZeroLevel"), model.ZeroLevel[c]},
        {QStringLiteral("VoltIndex"), model.VoltIndex[c]},
        {QStringLiteral("ProbeExp"), model.ProbeExp[c]},
        {QStringLiteral("SampleInterval"), number(model.SampleInterval[c])},
        {QStringLiteral("Frequency"), number(model.Frequency[c])},
        {QStringLiteral("Period"), number(model.Period[c])},
        {QStringLiteral("VoltPerCount"), number(model.VoltPerCount[c])},
        {QStringLiteral("TimeIndexFile"), model.TimeIndexFile[c]},
        {QStringLiteral("VoltIndexFile"), model.VoltIndexFile[c]},
        {QStringLiteral("TimeIndexView"), model.TimeIndexView[c]},
        {QStringLiteral("VoltIndexView"), model.VoltIndexView[c]},
        {QStringLiteral("PeakToPeak"), model.PeakToPeak[c]},
    };
}

} // namespace

QJsonObject captureJson(const publicM& model, const std::vector<CaptureFault>& faults) {
    QJsonArray channels;
    for (int channel = 0; channel < kChannels; ++channel) {
        if (model.ChannelPresent[static_cast<std::size_t>(channel)] == 1) {
            channels.append(channelJson(model, channel));
        }
    }
    QJsonArray faultList;
    for (const CaptureFault& fault : faults) {
        faultList.append(QJsonObject{{QStringLiteral("offset"), static_cast<qint64>(fault.offset)},
                                     {QStringLiteral("text"), fault.text}});
    }
    return {
        {QStringLiteral("form"), formName(model)},
        {QStringLiteral("FileKind"), model.FileKind},
        {QStringLiteral("channels"), channels},
        {QStringLiteral("faults"), faultList},
    };
}

QString captureText(const publicM& model) {
    QString text = QStringLiteral("form %1, FileKind %2\n").arg(formName(model)).arg(model.FileKind);
    for (int channel = 0; channel < kChannels; ++channel) {
        const auto c = static_cast<std::size_t>(channel);
        if (model.ChannelPresent[c] != 1) {
            continue;
        }
        const auto* volts = voltListTexts(model.ProbeExp[c]);
        const double peak =
            probeFactor(model.ProbeExp[c]) * model.PeakToPeak[c] * static_cast<double>(model.VoltPerCount[c]);
        const NumberMarks marks;
        text += QStringLiteral("\n%1\n").arg(channelName(channel));
        const auto line = [&text](const char* name, const QString& value) {
            text += QStringLiteral("  ") + QString::fromLatin1(name).leftJustified(16) + value + u'\n';
        };
        line("samples", QStringLiteral("%1, %2 a screen").arg(model.SampleCount[c]).arg(model.ScreenPoints[c]));
        line(
            "time base",
            QStringLiteral("%1 (row %2)").arg(rowText(model.TimeBaseText, model.TimeIndex[c])).arg(model.TimeIndex[c]));
        line("volts",
             QStringLiteral("%1 (row %2)")
                 .arg(volts != nullptr ? rowText(*volts, model.VoltIndexView[c]) : QStringLiteral("no such probe"))
                 .arg(model.VoltIndexView[c]));
        line("probe", QStringLiteral("1:%1").arg(generalText(probeFactor(model.ProbeExp[c]), marks)));
        line("zero level", QString::number(100 - std::int64_t{model.ZeroLevel[c]}));
        line("scan point", QString::number(model.ScanPoint[c]));
        line("interval", generalText(model.SampleInterval[c], marks) + QStringLiteral(" us"));
        line("frequency", generalText(model.Frequency[c], marks) + QStringLiteral(" Hz"));
        line("period", generalText(model.Period[c], marks) + QStringLiteral(" us"));
        line("per count", generalText(model.VoltPerCount[c], marks) + QStringLiteral(" mV"));
        line("peak to peak", generalText(static_cast<float>(peak), marks) + QStringLiteral(" mV"));
    }
    return text;
}

} // namespace sixtrace::kqx
