// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop/dialogs.h"

namespace sixtrace::bench {

/// Answers the open dialog with one file.
class OneFile final : public Dialogs {
public:
    explicit OneFile(QString path)
        : m_path(std::move(path)) {}
    std::optional<FileChoice> ShowOpen(const FileRequest&) override { return FileChoice{m_path, 1}; }
    std::optional<FileChoice> ShowSave(const FileRequest&) override { return std::nullopt; }
    std::optional<Colour> ShowColor(Colour, const QString&) override { return std::nullopt; }
    void message(const QString&, MessageIcon, const QString&) override {}
    Answer question(const QString&, MessageIcon, const QString&) override { return Answer::No; }
    std::optional<QString> input(const QString&, const QString&, const QString&) override { return std::nullopt; }

private:
    QString m_path;
};

} // namespace sixtrace::bench
