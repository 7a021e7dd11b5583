// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/profilefile.h"
#include "support/strings.h"

#include <QFile>
#include <QTemporaryDir>

namespace sixtrace::test {

/// A profile file in a folder of the test.
class ProfileFile : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(m_folder.isValid()); }

    [[nodiscard]] QString path(const QString& name = u"some.ini"_s) const { return m_folder.filePath(name); }
    void put(const QByteArray& content) const {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }
    [[nodiscard]] QByteArray content() const {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no such file)");
    }
    [[nodiscard]] QString get(const QString& section, const QString& key) const {
        return readProfile(section, key, u"fallback"_s, path());
    }
    [[nodiscard]] bool set(const QString& section, const QString& key, const QString& value) const {
        return writeProfile(section, key, value, path()).ok();
    }

private:
    QTemporaryDir m_folder;
};

} // namespace sixtrace::test
