#pragma once

#include "companion/Change.h"
#include "companion/Journal.h"
#include "companion/LookAhead.h"
#include "companion/Output.h"
#include "companion/command_line.h"

#include <QHash>

#include <memory>

/// What a command does with the changes that it decides on: it shows them, makes them at once, or notes all of them in
/// a journal before it makes the first.
class ChangeRun
{
public:
    ChangeRun(const Order& order, Output& output) : order_(order), output_(output) {}

    /// Whether changes go into a journal, which holds the states of their files.
    bool notes() const { return order_.apply && order_.writes_journal; }
    /// How far ahead of the changes files may be looked at: a tag that is written at once must not be seen before by a
    /// look at another name of the same file, and after by the next.
    LookAhead::Reach reach() const;
    /// Whether a file is the run's own journal, which lies among the music and is called like it.
    bool is_journal(const Change& change) const { return journal_ && journal_->is_at(change.folder, change.old_name); }
    /// A file that gets what is decided.
    void take(const Decision& decision);
    /// A file that can't get what it should; `new_name` the name that it can't have, empty for none.
    void cannot(const QByteArray& shown_path, const Reason& reason, const QByteArray& new_name = {});
    /// All files are decided on. Raises JournalError, with nothing changed, when the journal can't be written.
    void finish();

private:
    void change(const Change& change);
    void keep(const QByteArray& shown_path);
    void note(const Change& change);
    bool make(const Change& change);
    void make_noted();
    void tell(const Change& change, const Reason& reason, bool is_done);
    void tell_sum();

    const Order& order_;
    Output& output_;
    std::unique_ptr<JournalWriter> journal_;
    qint64 noted_ = 0;              ///< changes in the journal
    QHash<qint64, Reason> tagless_; ///< by their numbers there: the few that get no tag
    qint64 changed_ = 0;
    qint64 kept_ = 0;
    qint64 failed_ = 0;
};
