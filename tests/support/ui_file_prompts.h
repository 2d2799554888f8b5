#pragma once

#include "platform/controls/FilePrompts.h"

#include <QList>
#include <QStringList>

#include <optional>

/// Answers the questions of file operations as long as the object lives, and notes them: from `answers`, the first
/// first, else with `always`. A question without either, or with an answer that doesn't fit it, fails the test and gets
/// the answer that ends the operation.
class ScriptedPrompts : public FilePrompts
{
public:
    enum class Answer
    {
        yes,
        yes_to_all,
        no,
        no_to_all,
        skip,
        cancel
    };

    ScriptedPrompts();
    ~ScriptedPrompts() override;
    ScriptedPrompts(const ScriptedPrompts&) = delete;
    ScriptedPrompts& operator=(const ScriptedPrompts&) = delete;

    /// The questions since the last take, oldest first: "overwrite TARGET from SOURCE", "error PATH" and, where
    /// something would be left to do, "error PATH and more", "trash PATH, PATH", "delete PATH, PATH".
    QStringList take();

    QList<Answer> answers;
    std::optional<Answer> always;
    QString last_reason; ///< of the last error

    Overwrite ask_overwrite(const FileFacts& source, const FileFacts& target) override;
    OnError ask_error(const QString& path, const QString& reason, bool more_follow) override;
    bool ask_trash(const QStringList& paths) override;
    bool ask_delete(const QStringList& paths) override;

private:
    Answer answer(const QString& question, const QList<Answer>& fitting);

    QStringList questions_;
};
