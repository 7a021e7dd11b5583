// SPDX-License-Identifier: MIT
#include "apps/kqxfixture.h"
#include "support/strings.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace sixtrace::test {
namespace {

TEST_F(Kqx, WithoutACommandOrWithAnUnknownOneItEndsWith2) {
    for (const QStringList& arguments : {QStringList{}, QStringList{u"dance"_s}, QStringList{u"--frob"_s}}) {
        const Ran ran = kqx(arguments);
        EXPECT_EQ(ran.exitCode, 2);
        EXPECT_TRUE(ran.err.contains("Usage: kqx COMMAND"));
        EXPECT_TRUE(ran.out.isEmpty());
    }
}

TEST_F(Kqx, SaysHelpAndVersion) {
    EXPECT_EQ(kqx({u"--help"_s}).exitCode, 0);
    EXPECT_TRUE(kqx({u"--help"_s}).out.contains("screen"));
    EXPECT_EQ(kqx({u"--version"_s}).out, "kqx " SIXTRACE_VERSION "\n");
    EXPECT_TRUE(kqx({u"info"_s, u"--help"_s}).out.contains("--json"));
    EXPECT_TRUE(kqx({u"screen"_s, u"--help"_s}).out.contains("--points"));
}

TEST_F(Kqx, WrongUseOfACommandEndsWith2) {
    const QString file = scene("V11", "sine");
    const std::vector<QStringList> wrong{
        {u"info"_s},
        {u"info"_s, u"--jobs"_s, u"0"_s, file},
        {u"measure"_s},
        {u"measure"_s, u"--json"_s, u"--csv"_s, file},
        {u"measure"_s, u"--channels"_s, u"ch3"_s, file},
        {u"convert"_s, file},
        {u"convert"_s, file, path(u"o.ods"_s)},
        {u"info"_s, u"--frob"_s, file},
        {u"screen"_s, file},
        {u"screen"_s, file, path(u"o.png"_s), u"--scale"_s, u"0"_s},
        {u"screen"_s, file, path(u"o.png"_s), u"--scale"_s, u"17"_s},
        {u"screen"_s, file, path(u"o.png"_s), u"--scale"_s, u"x"_s},
    };
    for (const QStringList& arguments : wrong) {
        const Ran ran = kqx(arguments);
        EXPECT_EQ(ran.exitCode, 2) << arguments.join(u' ').toStdString();
        EXPECT_TRUE(ran.err.startsWith("kqx: "));
    }
    EXPECT_FALSE(QFile::exists(path(u"o.png"_s)));
}

TEST_F(Kqx, NamesThatAreNoTextAreOpenedAndToldInJson) {
    const QByteArray odd = path(QString()).toUtf8().append("/b\xFF\x80.bin");
    ASSERT_EQ(std::rename(scene("V11", "six").toUtf8().constData(), odd.constData()), 0);
    // Qt passes arguments as texts, which cannot hold such a name, so a shell starts the process.
    const auto shell = [this](const QString& line) {
        QProcess process;
        process.setWorkingDirectory(path(QString()));
        process.start(u"sh"_s, {u"-c"_s, QString(line).replace(u"KQX"_s, QStringLiteral(SIXTRACE_BIN "/kqx"))});
        process.waitForFinished(60000);
        return Ran{process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    };
    const Ran info = shell(u"KQX info --json b*.bin"_s);
    EXPECT_EQ(info.exitCode, 0) << info.err.toStdString();
    const QJsonObject json = QJsonDocument::fromJson(info.out).object();
    EXPECT_EQ(json[u"file"_s].toString(), u"b\uFFFD\uFFFD.bin"_s);
    EXPECT_EQ(json[u"file_bytes"_s].toString(), u"62ff802e62696e"_s);
    EXPECT_EQ(json[u"channels"_s].toArray().size(), 6);
    EXPECT_EQ(shell(u"KQX screen b*.bin out.png"_s).exitCode, 0);
    EXPECT_EQ(picture(), golden("six_lines.png"));
    EXPECT_EQ(shell(u"KQX table b*.bin t.csv && KQX page b*.bin p.pdf && KQX convert b*.bin c.csv"_s).exitCode, 0);
    // The name of the result has the same bytes.
    EXPECT_EQ(shell(u"KQX convert --to npz b*.bin"_s).exitCode, 0);
    EXPECT_EQ(shell(u"test -f b$(printf '\\377\\200').npz"_s).exitCode, 0);
}

TEST_F(Kqx, SaysNothingThatNobodyAskedForOnStandardError) {
    const QString file = scene("V11", "sine");
    const QByteArray locale = qgetenv("LC_ALL");
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    qputenv("LC_ALL", "C");
    qunsetenv("XDG_RUNTIME_DIR");
    for (const QStringList& arguments : std::vector<QStringList>{{u"info"_s, file},
                                                                 {u"measure"_s, file},
                                                                 {u"screen"_s, file, path(u"o.png"_s)},
                                                                 {u"table"_s, file, path(u"o.csv"_s)},
                                                                 {u"page"_s, file, path(u"o.pdf"_s)},
                                                                 {u"fetch"_s, u"--help"_s},
                                                                 {u"open"_s, u"--help"_s}}) {
        const Ran ran = kqx(arguments);
        EXPECT_EQ(ran.exitCode, 0);
        EXPECT_EQ(ran.err, QByteArray()) << arguments.join(u' ').toStdString();
    }
    qputenv("LC_ALL", locale);
    qputenv("XDG_RUNTIME_DIR", runtime);
}

TEST_F(Kqx, OpenTellsWhatItTakesAndWhyItCannot) {
    EXPECT_TRUE(kqx({u"open"_s, u"--help"_s}).out.contains("FILE"));
    const QByteArray bus = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + path(u"no-bus"_s).toUtf8());
    qputenv("XDG_RUNTIME_DIR", path(QString()).toUtf8());
    const QString file = scene("V11", "sine");
    for (const QStringList& arguments :
         {QStringList{u"open"_s}, QStringList{u"open"_s, file}, QStringList{u"open"_s, u"--"_s, file}}) {
        const Ran ran = kqx(arguments);
        EXPECT_EQ(ran.exitCode, 1) << arguments.join(u' ').toStdString();
        EXPECT_TRUE(ran.err.contains("no session bus")) << ran.err.toStdString();
    }
    const Ran gone = kqx({u"open"_s, u"--"_s, path(u"-gone.bin"_s)});
    EXPECT_EQ(gone.exitCode, 1);
    EXPECT_TRUE(gone.err.contains("no such file"));
    EXPECT_EQ(kqx({u"open"_s, file, file}).exitCode, 2);
    EXPECT_EQ(kqx({u"open"_s, u"--frob"_s}).exitCode, 2);
    bus.isNull() ? qunsetenv("DBUS_SESSION_BUS_ADDRESS") : qputenv("DBUS_SESSION_BUS_ADDRESS", bus);
    runtime.isNull() ? qunsetenv("XDG_RUNTIME_DIR") : qputenv("XDG_RUNTIME_DIR", runtime);
}

TEST_F(Kqx, HelpIsWrappedForATerminal) {
    for (const QString& command : {u"info"_s, u"measure"_s, u"convert"_s, u"screen"_s, u"table"_s}) {
        const QByteArray help = kqx({command, u"--help"_s}).out;
        EXPECT_TRUE(help.startsWith(QByteArray("Usage: kqx ").append(command.toUtf8()).append(" [options] FILE")))
            << help.toStdString();
        qsizetype longest = 0;
        for (const QByteArray& line : help.split('\n')) {
            longest = std::max(longest, line.size());
            EXPECT_FALSE(line.endsWith(' ')) << line.toStdString();
        }
        EXPECT_LE(longest, 79) << help.toStdString();
        EXPECT_GE(longest, 70) << help.toStdString();
    }
    EXPECT_TRUE(kqx({u"screen"_s, u"-h"_s})
                    .out.contains("\n  --points           Draw points instead of lines.\n"
                                  "  --cross            Draw a cross instead of the dotted graticule.\n"));
    EXPECT_TRUE(kqx({u"convert"_s, u"-h"_s})
                    .out.contains("\n  --channels <list>  Write only these channels: ch1, ch2, A, B, "
                                  "C, D, separated\n                     by commas.\n"));
    EXPECT_TRUE(kqx({u"convert"_s, u"-h"_s}).out.contains("\n  --files-from <list>\n                     Read more"));
}

TEST_F(Kqx, WrongOptionsAreToldWithTheirNames) {
    const QString file = scene("V11", "sine");
    const std::vector<std::pair<QStringList, QByteArray>> wrong{
        {{u"--frob"_s}, "kqx: unknown option --frob\n"},
        {{u"--frob=3"_s}, "kqx: unknown option --frob\n"},
        {{u"-x"_s}, "kqx: unknown option -x\n"},
        {{u"--json=yes"_s}, "kqx: --json takes no value\n"},
        {{u"--jobs"_s}, "kqx: --jobs needs a value\n"},
        {{u"--jobs=x"_s}, "kqx: --jobs takes a whole number from 1 to 256\n"},
        {{u"--jobs="_s}, "kqx: --jobs takes a whole number from 1 to 256\n"},
        {{u"--jobs=2x"_s}, "kqx: --jobs takes a whole number from 1 to 256\n"},
        {{u"--jobs=257"_s}, "kqx: --jobs takes a whole number from 1 to 256\n"},
    };
    for (const auto& [arguments, sentence] : wrong) {
        const Ran ran = kqx(QStringList{u"info"_s, file} + arguments);
        EXPECT_EQ(ran.exitCode, 2);
        EXPECT_EQ(ran.err, sentence);
    }
    EXPECT_EQ(kqx({u"info"_s, file, u"--jobs=1"_s, u"--jobs"_s, u"256"_s}).exitCode, 0);
}

TEST_F(Kqx, BehindTwoDashesEverythingIsAName) {
    const QString file = scene("V11", "sine");
    ASSERT_TRUE(QFile::rename(file, path(u"--json"_s)));
    QProcess process;
    process.setWorkingDirectory(path(QString()));
    process.start(QStringLiteral(SIXTRACE_BIN "/kqx"), {u"info"_s, u"--"_s, u"--json"_s});
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_TRUE(process.readAllStandardOutput().startsWith("form V11"));
}

} // namespace
} // namespace sixtrace::test
