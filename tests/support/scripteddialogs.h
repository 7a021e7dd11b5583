// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dialogs.h"

#include <QStringList>

#include <deque>
#include <vector>

namespace sixtrace {

/// Answers dialogs from a script and keeps what was asked. A dialog without a scripted answer is cancelled.
class ScriptedDialogs : public Dialogs {
public:
    std::deque<std::optional<FileChoice>> files;
    std::deque<std::optional<Colour>> colours;
    std::vector<FileRequest> fileRequests;
    QStringList messages;
    std::vector<MessageIcon> messageIcons;

    std::optional<FileChoice> ShowOpen(const FileRequest& request) override {
        fileRequests.push_back(request);
        return take(files);
    }
    std::optional<FileChoice> ShowSave(const FileRequest& request) override { return ShowOpen(request); }
    std::optional<Colour> ShowColor(Colour) override { return take(colours); }
    void message(const QString& text, MessageIcon icon, const QString&) override {
        messages.append(text);
        messageIcons.push_back(icon);
    }
    Answer question(const QString& text, MessageIcon, const QString&) override {
        messages.append(text);
        return Answer::No;
    }
    std::optional<QString> input(const QString&, const QString&, const QString&) override { return std::nullopt; }

private:
    template<typename T>
    static std::optional<T> take(std::deque<std::optional<T>>& answers) {
        if (answers.empty()) {
            return std::nullopt;
        }
        auto answer = answers.front();
        answers.pop_front();
        return answer;
    }
};

} // namespace sixtrace
