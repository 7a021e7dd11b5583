// SPDX-License-Identifier: MIT
// kqx ports: the connections to an instrument that the program can use, and why one of them does not open.
#include "commands.h"

#include "acquire/porttable.h"
#include "platform/ports/serialports.h"
#include "platform/ports/ttlink.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>

#include <algorithm>

namespace sixtrace::kqx {

namespace {

const QString kOwnRules = QStringLiteral("/etc/udev/rules.d/70-sixtrace-own.rules");

/// One row of the list.
struct Row {
    QString way;    ///< "1 com1", "usb 1209:0001"
    QString device; ///< path, or place on the bus
    QString adapter;
    QString state; ///< "open", or a word for the reason why it does not open
    QString reason;
    QString remedy; ///< what the user can do
    QJsonObject json;
    bool isWay = true; ///< false for a device on the bus that is no instrument
};

QString wordOf(PortState state) {
    switch (state) {
    case PortState::Open:
        return QStringLiteral("open");
    case PortState::Rights:
        return QStringLiteral("rights");
    case PortState::Busy:
        return QStringLiteral("busy");
    case PortState::Gone:
        return QStringLiteral("absent");
    case PortState::Failed:
        break;
    }
    return QStringLiteral("failed");
}

QString remedyOf(const PortWay& way) {
    switch (way.state) {
    case PortState::Rights:
        return way.reason.isEmpty() || way.reason == u"root"
                   ? QStringLiteral("a udev rule has to give %1 to you, for example in %2").arg(way.location, kOwnRules)
                   : QStringLiteral("join the group %1 (sudo usermod -aG %1 $USER) and log in again").arg(way.reason);
    case PortState::Busy:
        return way.reason.isEmpty() ? QStringLiteral("end the program that has it open")
                                    : QStringLiteral("end %1, which has it open").arg(way.reason);
    case PortState::Gone:
        return way.pinned ? QStringLiteral("plug the adapter in, or change the link ports/com%1").arg(way.number)
                          : QStringLiteral("plug the adapter in");
    default:
        return {};
    }
}

Row rowOf(const PortWay& way) {
    Row row;
    row.way = QStringLiteral("%1 com%1%2").arg(way.number).arg(way.pinned ? QStringLiteral(" (pinned)") : QString());
    row.device = way.location;
    row.adapter = way.adapter.text();
    row.state = wordOf(way.state);
    row.reason = way.reason;
    row.remedy = remedyOf(way);
    row.json = {{QStringLiteral("kind"), QStringLiteral("serial")},
                {QStringLiteral("number"), way.number},
                {QStringLiteral("name"), QStringLiteral("com%1").arg(way.number)},
                {QStringLiteral("pinned"), way.pinned},
                {QStringLiteral("maker"), way.adapter.maker},
                {QStringLiteral("product"), way.adapter.product},
                {QStringLiteral("serialNumber"), way.adapter.serialNumber}};
    return row;
}

/// What the transfer library reports about USB.
struct UsbFacts {
    QString settingsFile;
    QString link;
    QString wanted; ///< vendor:product
    QString interfaceNumber;
    QString endpointOut;
    QString endpointIn;
    std::vector<Row> rows;
};

QString usbRemedy(const QString& state, const UsbFacts& facts) {
    const QString vendor = facts.wanted.section(u':', 0, 0);
    const QString product = facts.wanted.section(u':', 1, 1);
    if (state == u"rights") {
        return QStringLiteral("a udev rule has to name the device: put  SUBSYSTEM==\"usb\", ATTR{idVendor}==\"%1\", "
                              "ATTR{idProduct}==\"%2\", TAG+=\"uaccess\"  into %3 and plug it in again")
            .arg(vendor, product, kOwnRules);
    }
    if (state == u"absent") {
        return QStringLiteral("plug the instrument in; if it has other ids, enter them in %1").arg(facts.settingsFile);
    }
    if (state == u"endpoints") {
        return QStringLiteral("the device lacks these endpoints; enter its own in %1").arg(facts.settingsFile);
    }
    if (state == u"busy") {
        return QStringLiteral("end the program that uses the device");
    }
    return {};
}

Row socketRow(const QStringList& fields, const UsbFacts& facts) {
    Row row;
    row.way = QStringLiteral("usb (simulated)");
    row.device = fields.value(1);
    row.state = fields.value(2);
    if (row.state == u"absent") {
        row.remedy = QStringLiteral("start sixtrace-instrument --usb %1").arg(row.device);
    } else if (row.state == u"silent") {
        row.remedy = QStringLiteral("end the program that listens there and accepts no connection");
    }
    row.json = {{QStringLiteral("kind"), QStringLiteral("socket")}};
    // Without a simulated instrument the program uses the USB bus, unless the settings forbid that.
    row.isWay = row.state == u"open" || facts.link == u"socket";
    return row;
}

Row deviceRow(const QStringList& fields, const UsbFacts& facts) {
    Row row;
    row.way = QStringLiteral("usb ") + fields.value(2);
    row.device = fields.value(3);
    QStringList names = fields.mid(4, 3);
    names.removeAll(QString());
    row.adapter = names.join(QStringLiteral(", "));
    row.state = fields.value(7);
    row.isWay = row.state != u"other";
    row.remedy = usbRemedy(row.state, facts);
    row.json = {{QStringLiteral("kind"), QStringLiteral("usb")}, {QStringLiteral("ids"), fields.value(2)},
                {QStringLiteral("place"), fields.value(1)},      {QStringLiteral("maker"), fields.value(4)},
                {QStringLiteral("product"), fields.value(5)},    {QStringLiteral("serialNumber"), fields.value(6)},
                {QStringLiteral("matches"), row.isWay}};
    return row;
}

UsbFacts usbFacts(const QString& description) {
    UsbFacts facts;
    for (const QString& line : description.split(u'\n', Qt::SkipEmptyParts)) {
        const QStringList fields = line.split(u'\t');
        const QString& kind = fields.constFirst();
        if (kind == u"settings") {
            facts.settingsFile = fields.value(1);
            facts.link = fields.value(2);
        } else if (kind == u"wanted") {
            facts.wanted = fields.value(1);
            facts.interfaceNumber = fields.value(2);
            facts.endpointOut = fields.value(3);
            facts.endpointIn = fields.value(4);
        } else if (kind == u"socket") {
            facts.rows.push_back(socketRow(fields, facts));
        } else if (kind == u"device") {
            facts.rows.push_back(deviceRow(fields, facts));
        }
    }
    const bool matched = std::any_of(facts.rows.cbegin(), facts.rows.cend(), [](const Row& row) { return row.isWay; });
    if (!facts.wanted.isEmpty() && !matched) {
        Row row;
        row.way = QStringLiteral("usb ") + facts.wanted;
        row.state = QStringLiteral("absent");
        row.remedy = usbRemedy(row.state, facts);
        row.json = {{QStringLiteral("kind"), QStringLiteral("usb")},
                    {QStringLiteral("ids"), facts.wanted},
                    {QStringLiteral("matches"), false}};
        facts.rows.push_back(row);
    }
    return facts;
}

/// Another maker's library has no description. All that can be found out is whether it opens its link.
UsbFacts factsOfAnother(TtLibrary& library) {
    Row row;
    row.way = QStringLiteral("usb");
    row.device = library.fileName();
    row.json = {{QStringLiteral("kind"), QStringLiteral("usb")}};
    if (!library.isUsable()) {
        row.state = QStringLiteral("absent");
        row.reason = QStringLiteral("the transfer library is missing, or lacks a function");
    } else if (library.InitializeTt(0) != 0) {
        library.closeTt(0);
        row.state = QStringLiteral("open");
    } else {
        row.state = QStringLiteral("failed");
        row.reason = QStringLiteral("another maker's transfer library does not open its link");
    }
    UsbFacts facts;
    facts.rows.push_back(row);
    return facts;
}

QJsonObject jsonOf(const Row& row) {
    QJsonObject json = row.json;
    json.insert(QStringLiteral("device"), row.device);
    json.insert(QStringLiteral("state"), row.state);
    json.insert(QStringLiteral("reason"), row.reason);
    json.insert(QStringLiteral("remedy"), row.remedy);
    return json;
}

QJsonObject jsonOf(const std::vector<Row>& rows, const UsbFacts& facts) {
    QJsonArray ways;
    QJsonArray others;
    for (const Row& row : rows) {
        (row.isWay ? ways : others).append(jsonOf(row));
    }
    return {{QStringLiteral("ways"), ways},
            {QStringLiteral("others"), others},
            {QStringLiteral("usb"), QJsonObject{{QStringLiteral("settings"), facts.settingsFile},
                                                {QStringLiteral("link"), facts.link},
                                                {QStringLiteral("wanted"), facts.wanted},
                                                {QStringLiteral("interface"), facts.interfaceNumber.toInt()},
                                                {QStringLiteral("endpointOut"), facts.endpointOut},
                                                {QStringLiteral("endpointIn"), facts.endpointIn}}}};
}

void print(const std::vector<Row>& rows, const UsbFacts& facts) {
    QTextStream out(stdout);
    for (const Row& row : rows) {
        if (!row.isWay && row.state == u"absent") {
            continue; // there is no simulated instrument, which is the normal case
        }
        QStringList parts{row.way, row.device, row.adapter,
                          row.state == u"other" ? QStringLiteral("not the instrument") : row.state};
        parts.removeAll(QString());
        out << parts.join(QStringLiteral("  "))
            << (row.reason.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(row.reason)) << '\n';
        if (!row.remedy.isEmpty()) {
            out << "    " << row.remedy << '\n';
        }
    }
    if (!facts.wanted.isEmpty()) {
        out << "usb settings: " << facts.settingsFile << ", link " << facts.link << ", wanted " << facts.wanted
            << ", interface " << facts.interfaceNumber << ", end points " << facts.endpointOut << " out and "
            << facts.endpointIn << " in\n";
    }
}

} // namespace

ExitCode ports(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Lists the connections to an instrument that the program can use, one per row: serial ports 1 "
                       "to 16, and USB with the transfer library beside the program. Each row says whether the "
                       "connection can be opened, and what to do if not. The exit code is 0 if at least one can be "
                       "opened, and otherwise 1."));
    const QCommandLineOption json(QStringLiteral("json"), QStringLiteral("Print JSON instead of text."));
    parser.addOption(json);
    if (const auto code = parse(parser, QStringLiteral("ports"), arguments, {})) {
        return *code;
    }
    std::vector<Row> rows;
    for (const PortWay& way : serialWays(kqxProgramFolder(), kHighestPort)) {
        rows.push_back(rowOf(way));
    }
    TtLibrary library(ttLibraryFolder(kqxProgramFolder()));
    const auto description = library.describe();
    const UsbFacts facts = description ? usbFacts(*description) : factsOfAnother(library);
    rows.insert(rows.end(), facts.rows.cbegin(), facts.rows.cend());
    if (parser.isSet(json)) {
        QTextStream(stdout) << QJsonDocument(jsonOf(rows, facts)).toJson();
    } else {
        print(rows, facts);
    }
    const bool anyOpen = std::any_of(rows.cbegin(), rows.cend(), [](const Row& row) { return row.state == u"open"; });
    return anyOpen ? Done : Failed;
}

} // namespace sixtrace::kqx
