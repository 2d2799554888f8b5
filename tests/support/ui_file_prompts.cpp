#include "ui_file_prompts.h"

#include <QTest>

#include <utility>

using namespace Qt::StringLiterals;

ScriptedPrompts::ScriptedPrompts()
{
    set_file_prompts(this);
}

ScriptedPrompts::~ScriptedPrompts()
{
    set_file_prompts(nullptr);
}

QStringList ScriptedPrompts::take()
{
    return std::exchange(questions_, {});
}

ScriptedPrompts::Answer ScriptedPrompts::answer(const QString& question, const QList<Answer>& fitting)
{
    questions_.append(question);
    const std::optional<Answer> given = answers.isEmpty() ? always : answers.takeFirst();
    const bool fits = given && fitting.contains(*given);
    if (!fits)
        QTest::qFail(qPrintable(u"no fitting answer to: "_s + question), __FILE__, __LINE__);
    return fits ? *given : fitting.last();
}

FilePrompts::Overwrite ScriptedPrompts::ask_overwrite(const FileFacts& source, const FileFacts& target)
{
    switch (answer(u"overwrite %1 from %2"_s.arg(target.path, source.path),
                   {Answer::yes, Answer::yes_to_all, Answer::no, Answer::no_to_all, Answer::cancel})) {
    case Answer::yes:
        return Overwrite::yes;
    case Answer::yes_to_all:
        return Overwrite::yes_to_all;
    case Answer::no:
        return Overwrite::no;
    case Answer::no_to_all:
        return Overwrite::no_to_all;
    default:
        return Overwrite::cancel;
    }
}

FilePrompts::OnError ScriptedPrompts::ask_error(const QString& path, const QString& reason, bool more_follow)
{
    last_reason = reason;
    const QString question = u"error "_s + path + (more_follow ? u" and more"_s : QString());
    return answer(question, {Answer::skip, Answer::cancel}) == Answer::skip ? OnError::skip : OnError::cancel;
}

bool ScriptedPrompts::ask_trash(const QStringList& paths)
{
    return answer(u"trash "_s + paths.join(u", "_s), {Answer::yes, Answer::no}) == Answer::yes;
}

bool ScriptedPrompts::ask_delete(const QStringList& paths)
{
    return answer(u"delete "_s + paths.join(u", "_s), {Answer::yes, Answer::no}) == Answer::yes;
}
