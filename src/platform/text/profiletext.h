// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <map>

namespace sixtrace {

/// The longest value that reading gives, in characters (UTF-16 units): values are read through a buffer of 128.
inline constexpr int kProfileValueLimit = 127;
/// So much of a profile file is read, in bytes: settings and language files are a thousandth of it.
inline constexpr qsizetype kProfileReadLimit = 1024 * 1024;

/// What a profile file says at one moment. profilefile.h tells the rules. Building it takes time and room in proportion
/// to the content, and a look-up the logarithm of it, whatever the content is.
class ProfileText {
public:
    /// Of content beyond kProfileReadLimit, all from the line that the limit cuts is passed over.
    explicit ProfileText(QByteArrayView content);
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

/// The content of a profile file once `key` of `section` is set: its line replaced, or added behind the last line of
/// its section, or the section added at the end. Every other byte stays. The line ends as the others of the content do.
[[nodiscard]] QByteArray withProfileKey(const QByteArray& content, const QString& section, const QString& key,
                                        const QString& value);

} // namespace sixtrace
