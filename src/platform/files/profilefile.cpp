// SPDX-License-Identifier: MIT
#include "platform/files/profilefile.h"

#include "platform/files/wholefile.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QList>
#include <QLockFile>

#include <algorithm>
#include <optional>

namespace sixtrace {

namespace {

constexpr qint64 kReadLimit = 1024 * 1024;
constexpr qint64 kWriteLimit = 16 * 1024 * 1024;
constexpr int kLockPatienceMs = 3000;
constexpr int kLockShortPatienceMs = 50;
constexpr int kLockStuckMs = 5000;
/// A lock that names no living process is left by one that was killed. A holder who lives is not robbed, however long
/// he takes: the system's own lock on the file goes with him, and without it nobody takes the file away.
constexpr int kLockOrphanedMs = 500;
const QByteArray kByteOrderMark = QByteArrayLiteral("\xEF\xBB\xBF");

bool sameName(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

/// The name in a line "[name]", or nothing.
std::optional<QString> sectionOf(const QString& line) {
    if (!line.startsWith(u'[')) {
        return std::nullopt;
    }
    const auto end = line.indexOf(u']');
    return end < 0 ? std::nullopt : std::optional(line.mid(1, end - 1).trimmed());
}

/// Key and value of a line "key=value", or nothing for a comment or anything else.
std::optional<ProfileEntry> entryOf(const QString& line) {
    const auto mark = line.indexOf(u'=');
    if (mark < 0 || line.startsWith(u';')) {
        return std::nullopt;
    }
    QString value = line.mid(mark + 1).trimmed();
    if (value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') && value.front() == value.back()) {
        value = value.mid(1, value.size() - 2);
    }
    return ProfileEntry{line.left(mark).trimmed(), value};
}

QString textOf(QByteArray bytes) {
    if (bytes.endsWith('\r')) {
        bytes.chop(1);
    }
    return QString::fromUtf8(bytes).trimmed();
}

/// The lines of a file without their line feeds; carriage returns stay.
QList<QByteArray> linesOf(QByteArray content) {
    if (content.startsWith(kByteOrderMark)) {
        content.remove(0, kByteOrderMark.size());
    }
    return content.split('\n');
}

std::optional<QByteArray> contentOf(const QString& path, qint64 limit) {
    if (!QFileInfo(path).isFile()) {
        return std::nullopt; // a folder, a pipe or a device could block or be endless
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    // No more room than the file needs: settings are a few hundred bytes, the limit is megabytes.
    const QByteArray content = file.read(std::min(limit, file.size() + 1));
    // What a failing disk gives is not the whole; writing it back would lose the rest.
    return file.error() == QFileDevice::NoError ? std::optional(content) : std::nullopt;
}

/// A line of `key` with `value`, in place of the old one or behind the last line of its section.
void setKey(QList<QByteArray>& lines, const QString& section, const QString& key, const QByteArray& entry,
            const QByteArray& lineEnd) {
    bool inside = false;
    qsizetype insertAt = -1;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString line = textOf(lines[i]);
        if (const auto name = sectionOf(line)) {
            if (inside) {
                break;
            }
            inside = sameName(*name, section);
            insertAt = inside ? i + 1 : insertAt;
            continue;
        }
        if (!inside) {
            continue;
        }
        if (const auto old = entryOf(line); old && sameName(old->key, key)) {
            // A last line without an end stays one: no carriage return without its line feed.
            lines[i] = i + 1 < lines.size() ? entry + lineEnd : entry;
            return;
        }
        insertAt = line.isEmpty() ? insertAt : i + 1;
    }
    if (insertAt >= 0) {
        if (insertAt == lines.size()) {
            lines.last() += lineEnd;
            lines.append(entry + lineEnd);
            lines.append(QByteArray());
        } else {
            lines.insert(insertAt, entry + lineEnd);
        }
        return;
    }
    // A new section at the end, on a line of its own.
    if (lines.last().isEmpty()) {
        lines.removeLast();
    } else {
        lines.last() += lineEnd;
    }
    lines.append('[' + section.toUtf8() + ']' + lineEnd);
    lines.append(entry + lineEnd);
    lines.append(QByteArray());
}

/// How long a write waits for the lock. It waits in the thread that paints the windows, and one choice of the user may
/// be several keys: where a holder has not let go in the whole time, writes that follow soon do not wait as long again.
/// A holder that works normally is done sooner than even they give up.
class LockPatience {
public:
    [[nodiscard]] int milliseconds(const QString& file) const {
        return file == m_file && !m_stuck.hasExpired() ? kLockShortPatienceMs : kLockPatienceMs;
    }
    void noteLocked(const QString& file) { m_file = file == m_file ? QString() : m_file; }
    void noteWaitedInVain(const QString& file) {
        m_file = file;
        m_stuck.setRemainingTime(kLockStuckMs);
    }

private:
    QString m_file;
    QDeadlineTimer m_stuck;
};

/// The file that a link leads to, so that all who change it take the same lock, by whatever name they know it.
QString behindLinks(const QString& file) {
    const QString target = QFileInfo(file).canonicalFilePath();
    return target.isEmpty() ? file : target;
}

/// A file as it is, and as it shall be.
struct Change {
    std::optional<QByteArray> before; ///< Nothing where there is no file.
    QByteArray after;

    [[nodiscard]] bool saysSoAlready() const { return before == after; }
};

/// What setting a key makes of a file, or nothing where the file cannot be read whole.
std::optional<Change> changeOf(const QString& file, const QString& section, const QString& key, const QString& value) {
    Change change;
    if (QFileInfo::exists(file)) {
        change.before = contentOf(file, kWriteLimit + 1);
        if (!change.before || change.before->size() > kWriteLimit) {
            return std::nullopt;
        }
    }
    const QByteArray content = change.before.value_or(QByteArray());
    const QByteArray mark = content.startsWith(kByteOrderMark) ? kByteOrderMark : QByteArray();
    const QByteArray lineEnd = content.contains("\r\n") ? QByteArrayLiteral("\r") : QByteArray();
    QString line = value;
    std::replace_if(
        line.begin(), line.end(), [](QChar c) { return c == u'\n' || c == u'\r' || c.isNull(); }, u' ');

    QList<QByteArray> lines = linesOf(content);
    setKey(lines, section, key, key.toUtf8() + '=' + line.toUtf8(), lineEnd);
    change.after = mark + lines.join('\n');
    return change;
}

} // namespace

ProfileText::ProfileText(const QString& file) {
    const QByteArray content = contentOf(file, kReadLimit).value_or(QByteArray());
    QByteArrayView rest = content;
    if (rest.startsWith(kByteOrderMark)) {
        rest = rest.sliced(kByteOrderMark.size());
    }
    while (!rest.isEmpty()) {
        const qsizetype end = rest.indexOf('\n');
        const QString line = QString::fromUtf8(rest.first(end < 0 ? rest.size() : end).trimmed());
        rest = end < 0 ? QByteArrayView() : rest.sliced(end + 1);
        if (auto name = sectionOf(line)) {
            m_sections.push_back({*std::move(name), {}});
        } else if (auto entry = m_sections.empty() ? std::nullopt : entryOf(line)) {
            m_sections.back().entries.push_back(*std::move(entry));
        }
    }
}

QString ProfileText::value(const QString& section, const QString& key, const QString& fallback) const {
    const auto found = std::find_if(m_sections.begin(), m_sections.end(),
                                    [&section](const Section& s) { return sameName(s.name, section); });
    if (found == m_sections.end()) {
        return fallback;
    }
    const auto entry = std::find_if(found->entries.begin(), found->entries.end(),
                                    [&key](const ProfileEntry& e) { return sameName(e.key, key); });
    return entry == found->entries.end() || entry->value.isEmpty() ? fallback : entry->value.left(kProfileValueLimit);
}

QString readProfile(const QString& section, const QString& key, const QString& fallback, const QString& file) {
    return ProfileText(file).value(section, key, fallback);
}

QString GetIniString(const QString& section, const QString& key, const QString& fallback, const QString& file) {
    return readProfile(section, key, fallback, file);
}

Outcome writeProfile(const QString& section, const QString& key, const QString& value, const QString& path) {
    const QString file = behindLinks(path);
    // A key that says so already needs no write, and none to wait for: the program sets the language at every start.
    // The file is only ever replaced whole, so what is read here stood there at one moment, and that is when this
    // counts.
    if (const auto change = changeOf(file, section, key, value); change && change->saysSoAlready()) {
        return success();
    }
    const QString lockName = file + QStringLiteral(".lock");
    if (const QFileInfo present(lockName); present.exists() && !present.isFile()) {
        return RuntimeError::of(ErrorNumber::PathAccess); // reading a pipe in its place would wait for the other end
    }
    QLockFile lock(lockName);
    lock.setStaleLockTime(kLockOrphanedMs);
    thread_local LockPatience patience;
    if (!lock.tryLock(patience.milliseconds(file))) {
        if (lock.error() == QLockFile::LockFailedError) {
            patience.noteWaitedInVain(file);
        }
        return RuntimeError::of(lock.error() == QLockFile::PermissionError ? ErrorNumber::PermissionDenied
                                                                           : ErrorNumber::PathAccess);
    }
    patience.noteLocked(file);
    const auto change = changeOf(file, section, key, value);
    if (!change) {
        return RuntimeError::of(ErrorNumber::PathAccess);
    }
    return change->saysSoAlready() ? success() : writeWhole(file, change->after);
}

} // namespace sixtrace
