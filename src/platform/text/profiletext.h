// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <map>

namespace sixtrace {

/// The longest value that reading gives, in UTF-16 units.
inline constexpr int kProfileValueLimit = 127;
/// The bytes of a profile file that are read at most. Settings and language files have a thousandth of that.
inline constexpr qsizetype kProfileReadLimit = 1024 * 1024;

/// The content of a profile file, by the rules that profilefile.h states. For any content, the constructor takes time
/// and memory in proportion to its size, and a look-up takes time in proportion to the logarithm.
class ProfileText {
public:
    /// Content that is longer than kProfileReadLimit is read up to its last whole line within the limit.
    explicit ProfileText(QByteArrayView content);
    /// The value of a key; `fallback` when the key is missing or its value is empty.
    [[nodiscard]] QString value(const QString& section, const QString& key, const QString& fallback) const;

private:
    struct WithoutCase {
        [[nodiscard]] bool operator()(const QString& a, const QString& b) const {
            return a.compare(b, Qt::CaseInsensitive) < 0;
        }
    };
    using Entries = std::map<QString, QString, WithoutCase>;
    std::map<QString, Entries, WithoutCase> m_sections;
};

/// The content of a profile file after `key` of `section` is set. Its line is replaced, or added after the last line of
/// the section, or a new section is added at the end. All other bytes stay. The new line ends like the other lines.
[[nodiscard]] QByteArray withProfileKey(const QByteArray& content, const QString& section, const QString& key,
                                        const QString& value);

} // namespace sixtrace
