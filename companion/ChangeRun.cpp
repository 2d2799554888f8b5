#include "companion/ChangeRun.h"

#include "companion/shown_text.h"
#include "companion/tag_text.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int status_cells = 9;

/// A line of output: what happens, the path, and what there is to say.
QByteArray status_line(const QByteArray& status, const QByteArray& path, const QByteArray& rest)
{
    QByteArray line = status.leftJustified(status_cells);
    append_shown(line, path);
    return line + rest;
}

QByteArray status_of(const Change& change, bool is_done)
{
    if (change.renames())
        return is_done ? "renamed" : "rename";
    return is_done ? "tagged" : "tag";
}

QByteArray change_text(const Change& change)
{
    QByteArray text;
    if (change.renames())
        text += " -> " + shown(change.new_name);
    if (change.block)
        text += (change.renames() ? "; tag: " : ": ") + tag_change_text(change.block->before, change.block->after);
    if (change.tagless)
        text += "; no tag: " + change.tagless.text();
    return text;
}

QByteArray files_text(qint64 count)
{
    return QByteArray::number(count) + (count == 1 ? " file" : " files");
}

} // namespace

LookAhead::Reach ChangeRun::reach() const
{
    const bool writes_tags_at_once =
        order_.apply && !order_.writes_journal && (order_.tags || order_.command == Command::tag);
    return writes_tags_at_once ? LookAhead::Reach::not_at_all : LookAhead::Reach::far;
}

void ChangeRun::take(const Decision& decision)
{
    const Change& change = decision.change;
    if (decision.reason)
        cannot(change.shown_path(), decision.reason);
    else if (change.tagless && !change.renames())
        cannot(change.shown_path(), change.tagless);
    else if (change.does_something())
        this->change(change);
    else
        keep(change.shown_path());
}

void ChangeRun::change(const Change& change)
{
    if (!order_.apply)
        tell(change, {}, false);
    else if (order_.writes_journal)
        note(change);
    else
        make(change);
}

void ChangeRun::keep(const QByteArray& shown_path)
{
    ++kept_;
    if (!output_.is_json())
        return output_.write(status_line("keep", shown_path, {}));
    QJsonObject object{{u"status"_s, u"keep"_s}};
    put_bytes(object, u"path"_s, shown_path);
    output_.write(object);
}

void ChangeRun::cannot(const QByteArray& shown_path, const Reason& reason, const QByteArray& new_name)
{
    ++failed_;
    output_.fail();
    if (!output_.is_json()) {
        const QByteArray wanted = new_name.isEmpty() ? QByteArray() : " -> " + shown(new_name);
        return output_.write(status_line("cannot", shown_path, wanted + ": " + reason.text()));
    }
    QJsonObject object{{u"status"_s, u"cannot"_s}};
    put_bytes(object, u"path"_s, shown_path);
    if (!new_name.isEmpty())
        put_bytes(object, u"new_name"_s, new_name);
    put_reason(object, reason);
    output_.write(object);
}

void ChangeRun::note(const Change& change)
{
    if (!journal_)
        journal_ = std::make_unique<JournalWriter>(order_.journal);
    journal_->add(change);
    if (change.tagless)
        tagless_.insert(noted_, change.tagless);
    ++noted_;
}

/// Gives whether its file is in doubt.
bool ChangeRun::make(const Change& change)
{
    const Made made = perform(change);
    tell(change, made.reason, true);
    return made.is_in_doubt;
}

void ChangeRun::tell(const Change& change, const Reason& reason, bool is_done)
{
    ++(reason ? failed_ : changed_);
    if (reason || change.tagless)
        output_.fail();
    const QByteArray status = reason ? "failed" : status_of(change, is_done);
    if (!output_.is_json()) {
        const QByteArray why = reason ? ": " + reason.text() : QByteArray();
        return output_.write(status_line(status, change.shown_path(), change_text(change) + why));
    }
    QJsonObject object{{u"status"_s, QString::fromLatin1(status)}};
    put_bytes(object, u"path"_s, change.shown_path());
    if (change.renames())
        put_bytes(object, u"new_name"_s, change.new_name);
    if (change.block) {
        object.insert(u"tag_before"_s, tag_object(change.block->before));
        object.insert(u"tag_after"_s, tag_object(change.block->after));
    }
    put_reason(object, reason ? reason : change.tagless);
    output_.write(object);
}

void ChangeRun::finish()
{
    if (journal_)
        make_noted();
    tell_sum();
}

void ChangeRun::make_noted()
{
    journal_->finish();
    const JournalReader journal(journal_->path());
    output_.remark("journal: " + shown(journal_->path()));
    JournalDoubt doubt = journal_->doubt();
    qint64 number = 0;
    journal.each_forwards([&](Change change) {
        change.tagless = tagless_.value(number++);
        if (change.block)
            doubt.note(number);
        if (make(change))
            doubt.keep();
        output_.step("changing");
    });
    doubt.note(0);
}

void ChangeRun::tell_sum()
{
    if (output_.is_json())
        return;
    const QByteArray rest = QByteArray::number(kept_) + " kept, " + QByteArray::number(failed_) + " not possible";
    const QByteArray files = files_text(changed_ + kept_ + failed_) + ": " + QByteArray::number(changed_);
    if (order_.apply)
        output_.remark(files + " changed, " + rest);
    else
        output_.remark(files + " to change, " + rest + (changed_ > 0 ? "; --apply changes them" : ""));
}
