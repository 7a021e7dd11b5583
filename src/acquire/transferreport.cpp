// SPDX-License-Identifier: MIT
#include "acquire/transferreport.h"

namespace sixtrace {

namespace {

/// "1024 of 2461 bytes came".
QString amounts(const TransferReport& report, Language language) {
    const bool chinese = language == Language::Chinese;
    if (!report.announced) {
        return chinese ? QStringLiteral("没有收到文件头") : QStringLiteral("no header came");
    }
    return (chinese ? QStringLiteral("收到 %1 / %2 字节") : QStringLiteral("%1 of %2 bytes came"))
        .arg(report.stored)
        .arg(*report.announced);
}

QString reason(const TransferReport& report, Language language) {
    const bool chinese = language == Language::Chinese;
    switch (report.end) {
    case TransferEnd::BrokenOff:
        return chinese ? QStringLiteral("传输中断：仪器没有正确应答")
                       : QStringLiteral("the transfer broke off, as the instrument did not answer as it should");
    case TransferEnd::Cancelled:
        return chinese ? QStringLiteral("用户中断") : QStringLiteral("the transfer was cancelled");
    case TransferEnd::Error:
        return (chinese ? QStringLiteral("传输出错：%1") : QStringLiteral("the transfer failed: %1"))
            .arg(report.error ? report.error->description : QString());
    case TransferEnd::Superseded:
        return chinese ? QStringLiteral("已由新的传输取代") : QStringLiteral("another transfer took its place");
    case TransferEnd::Finished:
        break;
    }
    if (report.announced && *report.announced <= 0) {
        return chinese ? QStringLiteral("文件不完整：仪器没有给出长度")
                       : QStringLiteral("the file is not whole, as the instrument told no size");
    }
    if (!report.inOrder) {
        return chinese ? QStringLiteral("文件损坏：数据重复或多余")
                       : QStringLiteral("the file is damaged, as data came twice or beyond its size");
    }
    return chinese ? QStringLiteral("文件不完整") : QStringLiteral("the file is not whole");
}

} // namespace

bool TransferReport::whole() const {
    return end == TransferEnd::Finished && inOrder && announced && *announced > 0 && stored == *announced;
}

QString sentenceOf(const TransferReport& report, Language language) {
    const bool chinese = language == Language::Chinese;
    if (report.whole()) {
        return (chinese ? QStringLiteral("接收完成，共 %1 字节") : QStringLiteral("all %1 bytes came"))
            .arg(report.stored);
    }
    return reason(report, language) + (chinese ? QStringLiteral("；") : QStringLiteral("; ")) +
           amounts(report, language);
}

} // namespace sixtrace
