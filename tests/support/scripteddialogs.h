// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop/dialogs.h"

#include <QStringList>

#include <deque>
#include <functional>
#include <vector>

namespace sixtrace::test {

/// Answers dialogs from a script and records the calls. A dialog without a scripted answer is cancelled; a question
/// without one is answered with No.
class ScriptedDialogs : public Dialogs {
public:
    std::deque<std::optional<FileChoice>> files;
    std::deque<std::optional<Colour>> colours;
    std::deque<Answer> answers;
    std::vector<FileRequest> fileRequests;
    QStringList messages; ///< texts of messages and questions
    QStringList colourTitles;
    QStringList titles; ///< title of each message and question
    std::vector<MessageIcon> messageIcons;
    std::function<void()> whileFileDialogIsOpen; ///< is called while a file dialog is open
    std::function<void()> whileMessageStands;    ///< is called while a message or question is shown

    std::optional<FileChoice> ShowOpen(const FileRequest& request) override {
        fileRequests.push_back(request);
        if (whileFileDialogIsOpen) {
            whileFileDialogIsOpen();
        }
        return take(files);
    }
    std::optional<FileChoice> ShowSave(const FileRequest& request) override { return ShowOpen(request); }
    std::optional<Colour> ShowColor(Colour, const QString& title) override {
        colourTitles.append(title);
        return take(colours);
    }
    void message(const QString& text, MessageIcon icon, const QString& title) override {
        messages.append(text);
        titles.append(title);
        messageIcons.push_back(icon);
        if (whileMessageStands) {
            whileMessageStands();
        }
    }
    Answer question(const QString& text, MessageIcon icon, const QString& title) override {
        message(text, icon, title);
        return take(answers).value_or(Answer::No);
    }
    std::optional<QString> input(const QString&, const QString&, const QString&) override { return std::nullopt; }

private:
    template<typename T>
    static std::optional<T> take(std::deque<std::optional<T>>& scripted) {
        if (scripted.empty()) {
            return std::nullopt;
        }
        auto answer = scripted.front();
        scripted.pop_front();
        return answer;
    }
    static std::optional<Answer> take(std::deque<Answer>& scripted) {
        if (scripted.empty()) {
            return std::nullopt;
        }
        const Answer answer = scripted.front();
        scripted.pop_front();
        return answer;
    }
};

} // namespace sixtrace::test
