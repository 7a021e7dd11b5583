// SPDX-License-Identifier: MIT
#include "fetchtarget.h"

#include "platform/files/filenames.h"
#include "platform/files/wholefile.h"

#include <QDir>
#include <QFileInfo>

namespace sixtrace::kqx {

namespace {

RuntimeError sentence(ErrorNumber number, const QString& text) {
    return {number, text};
}

RuntimeError existsAlready(const QString& file) {
    return sentence(ErrorNumber::FileAlreadyExists,
                    QStringLiteral("%1 exists already; --force overwrites it").arg(file));
}

} // namespace

Result<FetchTarget> FetchTarget::of(const QString& output, Existing existing) {
    FetchTarget target;
    target.m_existing = existing;
    const QFileInfo given(output.isEmpty() ? QDir::currentPath() : output);
    if (given.isDir()) {
        target.m_folder = given.canonicalFilePath();
        return target;
    }
    const auto file = followed(given.absoluteFilePath());
    if (!file) {
        return sentence(ErrorNumber::PathAccess, QStringLiteral("%1 is a link that leads back to itself").arg(output));
    }
    const QFileInfo info(*file);
    if (!QFileInfo(info.absolutePath()).isDir()) {
        return sentence(ErrorNumber::PathNotFound, QStringLiteral("%1: there is no such folder").arg(output));
    }
    if (info.exists() && !info.isFile()) {
        return sentence(ErrorNumber::PathAccess, QStringLiteral("%1 is not an ordinary file").arg(output));
    }
    if (info.exists() && existing == Existing::Kept) {
        return existsAlready(output);
    }
    target.m_folder = info.absolutePath();
    target.m_file = info.absoluteFilePath();
    return target;
}

Result<QString> FetchTarget::place(const QString& received, bool bitmap) const {
    const QString suffix = bitmap ? QStringLiteral(".bmp") : QStringLiteral(".bin");
    if (isFolder()) {
        return placeStamped(received, suffix);
    }
    const QFileInfo wanted(m_file);
    const bool renamed = bitmap && wanted.suffix() != u"bmp";
    const QString name = renamed ? m_folder + u'/' + wanted.completeBaseName() + suffix : m_file;
    const Outcome placed = m_existing == Existing::Replaced ? placeOver(received, name) : placeNew(received, name);
    if (placed) {
        return name;
    }
    return placed.error().number == ErrorNumber::FileAlreadyExists ? existsAlready(name) : placed.error();
}

/// The name with date and time is given in one step that never replaces a file. So no file is lost to another fetch,
/// nor after the clock is set back: a further file of the same minute gets a number.
Result<QString> FetchTarget::placeStamped(const QString& received, const QString& suffix) const {
    const QString stem = m_folder + u'/' + dateName(QDateTime::currentDateTime());
    QString name = stem + suffix;
    for (int i = 2;; ++i) {
        const Outcome placed = placeNew(received, name);
        if (placed) {
            return name;
        }
        if (placed.error().number != ErrorNumber::FileAlreadyExists) {
            return placed.error();
        }
        name = stem + QStringLiteral("-%1").arg(i) + suffix;
    }
}

} // namespace sixtrace::kqx
