// SPDX-License-Identifier: MIT
#include "platform/text/profiletext.h"

#include <algorithm>
#include <optional>

namespace sixtrace {

namespace {

constexpr QByteArrayView kByteOrderMark = "\xEF\xBB\xBF";

/// Steps through the lines of a content. Reading and writing both use it, so that they agree on what is a section and
/// what is a key.
class ProfileLines {
public:
    explicit ProfileLines(QByteArrayView content)
        : m_content(content)
        , m_next(content.startsWith(kByteOrderMark) ? kByteOrderMark.size() : 0) {}

    /// Steps to the next line; false when there is none. The text after the last line feed is a line unless it is
    /// empty.
    bool next() {
        if (m_next >= m_content.size()) {
            return false;
        }
        m_begin = m_next;
        const qsizetype feed = m_content.indexOf('\n', m_begin);
        m_end = feed < 0 ? m_content.size() : feed;
        m_next = feed < 0 ? m_end : feed + 1;
        m_text = QString::fromUtf8(m_content.sliced(m_begin, m_end - m_begin)).trimmed();
        return true;
    }

    [[nodiscard]] const QString& text() const { return m_text; } ///< without blanks around it
    [[nodiscard]] qsizetype begin() const { return m_begin; }
    [[nodiscard]] qsizetype end() const { return m_end; }    ///< of its line feed, or of the content
    [[nodiscard]] qsizetype after() const { return m_next; } ///< where the next line begins
    [[nodiscard]] bool isEnded() const { return m_next > m_end; }

    /// The name in a line "[name]", or nothing.
    [[nodiscard]] std::optional<QString> section() const {
        const auto end = m_text.startsWith(u'[') ? m_text.indexOf(u']') : -1;
        return end < 0 ? std::nullopt : std::optional(m_text.sliced(1, end - 1).trimmed());
    }

    /// The key of a line "key=value", or nothing for a comment or anything else.
    [[nodiscard]] std::optional<QString> key() const {
        const auto mark = m_text.indexOf(u'=');
        return mark < 0 || m_text.startsWith(u';') ? std::nullopt : std::optional(m_text.first(mark).trimmed());
    }

    /// The value of a line that has a key.
    [[nodiscard]] QString value() const {
        const QString value = m_text.sliced(m_text.indexOf(u'=') + 1).trimmed();
        const bool quoted =
            value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') && value.front() == value.back();
        return quoted ? value.sliced(1, value.size() - 2) : value;
    }

private:
    QByteArrayView m_content;
    qsizetype m_begin = 0;
    qsizetype m_end = 0;
    qsizetype m_next = 0;
    QString m_text;
};

bool sameName(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

/// A value cut to the limit, never inside a character of two units.
QString cutValue(const QString& value) {
    if (value.size() <= kProfileValueLimit) {
        return value;
    }
    return value.first(value.at(kProfileValueLimit - 1).isHighSurrogate() ? kProfileValueLimit - 1
                                                                          : kProfileValueLimit);
}

QByteArrayView readablePart(QByteArrayView content) {
    if (content.size() <= kProfileReadLimit) {
        return content;
    }
    return content.first(content.first(kProfileReadLimit).lastIndexOf('\n') + 1);
}

} // namespace

ProfileText::ProfileText(QByteArrayView content) {
    Entries* entries = nullptr; // null before the first section, and in a section whose name has been there before
    ProfileLines lines(readablePart(content));
    while (lines.next()) {
        if (auto name = lines.section()) {
            const auto [section, isNew] = m_sections.try_emplace(*std::move(name));
            entries = isNew ? &section->second : nullptr;
        } else if (entries == nullptr) {
            continue;
        } else if (auto key = lines.key()) {
            entries->try_emplace(*std::move(key), cutValue(lines.value()));
        }
    }
}

QString ProfileText::value(const QString& section, const QString& key, const QString& fallback) const {
    const auto found = m_sections.find(section);
    if (found == m_sections.end()) {
        return fallback;
    }
    const auto entry = found->second.find(key);
    return entry == found->second.end() || entry->second.isEmpty() ? fallback : entry->second;
}

QByteArray withProfileKey(const QByteArray& content, const QString& section, const QString& key, const QString& value) {
    QString told = value;
    std::replace_if(
        told.begin(), told.end(), [](QChar c) { return c == u'\n' || c == u'\r' || c.isNull(); }, u' ');
    const QByteArray entry = key.toUtf8() + '=' + told.toUtf8();
    // The first line that is added turns a carriage return at the very end into a part of a line end.
    const bool halfEnd = content.endsWith('\r');
    const QByteArray lineEnd =
        halfEnd || content.contains("\r\n") ? QByteArrayLiteral("\r\n") : QByteArrayLiteral("\n");
    const QByteArray lastLineEnd = halfEnd ? QByteArrayLiteral("\n") : lineEnd;

    std::optional<qsizetype> insertAt; // after the last line of the section that is not empty
    bool endsInLine = false;           // the line before that place has no line feed
    bool inside = false;
    ProfileLines lines(content);
    while (lines.next()) {
        if (const auto name = lines.section()) {
            if (inside) {
                break;
            }
            inside = sameName(*name, section);
        } else if (const auto old = inside ? lines.key() : std::nullopt; old && sameName(*old, key)) {
            // A last line without a line feed gets none, and then no carriage return either.
            const QByteArray end = lines.isEnded() ? lineEnd : QByteArray();
            return content.first(lines.begin()) + entry + end + content.sliced(lines.after());
        }
        if (inside && !lines.text().isEmpty()) {
            insertAt = lines.after();
            endsInLine = !lines.isEnded();
        }
    }
    if (insertAt) {
        return content.first(*insertAt) + (endsInLine ? lastLineEnd : QByteArray()) + entry + lineEnd +
               content.sliced(*insertAt);
    }
    // A new section at the end, on a line of its own.
    const bool atLineStart = content.isEmpty() || content == kByteOrderMark || content.endsWith('\n');
    return content + (atLineStart ? QByteArray() : lastLineEnd) + '[' + section.toUtf8() + ']' + lineEnd + entry +
           lineEnd;
}

} // namespace sixtrace
