#include "companion/ChangeRun.h"
#include "companion/companion.h"
#include "companion/look.h"
#include "companion/rights.h"
#include "companion/shown_text.h"
#include "companion/walk_files.h"
#include "fif/mod_of_FIF.h"
#include "platform/file_operation/disk_entry.h"

#include <QSet>

#include <cerrno>

namespace {

/// Which names the changes decided on so far take and leave. A folder that is walked is done with when its files are
/// through; what concerns files that were named one by one stays.
class NamesMeanwhile
{
public:
    void rename(const Change& change, bool is_named)
    {
        (is_named ? named_taken_ : taken_).insert(qHash(change.new_path()));
        (is_named ? named_left_ : left_).insert(qHash(change.old_path()));
    }
    bool is_taken(const QByteArray& path) const { return holds(taken_, path) || holds(named_taken_, path); }
    /// Whether a file that was named got this path: what stands there is no other file.
    bool was_given(const QByteArray& path) const { return holds(named_taken_, path); }
    bool is_left(const QByteArray& path) const { return holds(left_, path) || holds(named_left_, path); }
    void folder_end()
    {
        taken_.clear();
        left_.clear();
    }

private:
    /// Marks stand for paths, to keep the memory for thousands of names small. Two paths with one mark, which no
    /// collection will ever have, would make a file be left alone.
    using Marks = QSet<size_t>;
    static bool holds(const Marks& marks, const QByteArray& path)
    {
        return !marks.isEmpty() && marks.contains(qHash(path));
    }

    Marks taken_;
    Marks left_;
    Marks named_taken_;
    Marks named_left_;
};

/// Why a file can't get a path: something stands there, or the system won't tell.
Reason hindrance_at(const QByteArray& path)
{
    if (status_of(path))
        return {.code = Reason::exists};
    return errno == ENOENT ? Reason()
                           : Reason{.code = Reason::not_done, .detail = "cannot be renamed: " + error_text(errno)};
}

class Conversion
{
public:
    Conversion(const Order& order, Output& output)
        : order_(order),
          changes_(order, output),
          rule_{.also_fif_names = order.type || order.fixed.artist || order.fixed.genre, .fixed = order.fixed}
    {
    }

    LookAhead::Reach reach() const { return changes_.reach(); }
    /// Called by several threads at a time.
    Decision decide(const MusicFile& file) const;
    void take(const Decision& decision, bool is_named);
    void folder_end() { names_.folder_end(); }
    void finish() { changes_.finish(); }

private:
    /// Whether rights, as a preview asks for them, or another file stand in the way.
    Reason obstacle(const Decision& decision);
    /// Whether another file stands in the way of the new name. What no change of this run has taken since it was free
    /// is so still, or the rename will refuse.
    Reason name_obstacle(const Decision& decision) const;
    /// Adds the tag that a file gets by the rule of its conversion.
    void add_tag(const MusicFile& file, Look& look, const FifFields& fields, Change& change) const;

    const Order& order_;
    ChangeRun changes_;
    NamingRule rule_;
    NamesMeanwhile names_;
    FolderRights rights_;
};

Decision Conversion::decide(const MusicFile& file) const
{
    Look look = look_at(file);
    const NewName wanted = new_name_of(look, rule_);
    Decision decision{.change = Change::of(file), .reason = wanted.reason};
    Change& change = decision.change;
    if (decision.reason)
        return decision;
    change.new_name = bytes_of_field(wanted.name);
    add_tag(file, look, wanted.fields, change);
    decision.saw_target_free = change.renames() && !hindrance_at(change.new_path());
    if (changes_.notes() && change.does_something())
        decision.reason = note_state(change, look.end);
    return decision;
}

void Conversion::take(const Decision& decision, bool is_named)
{
    const Change& change = decision.change;
    if (changes_.is_journal(change) || names_.was_given(change.old_path()))
        return;
    if (!decision.reason && change.does_something()) {
        if (const Reason reason = obstacle(decision))
            return changes_.cannot(change.shown_path(), reason, change.renames() ? change.new_name : QByteArray());
        if (change.renames())
            names_.rename(change, is_named);
    }
    changes_.take(decision);
}

Reason Conversion::obstacle(const Decision& decision)
{
    const Reason reason = decision.change.renames() ? name_obstacle(decision) : Reason();
    return reason || order_.apply ? reason : rights_.obstacle(decision.change);
}

Reason Conversion::name_obstacle(const Decision& decision) const
{
    const QByteArray new_path = decision.change.new_path();
    if (names_.is_taken(new_path))
        return {.code = Reason::wanted_twice};
    return decision.saw_target_free || names_.is_left(new_path) ? Reason() : hindrance_at(new_path);
}

/// The batch conversion brings the tags of names that are FIF in line with them, and takes new names from tags that
/// stay; the auto conversion writes the tag of each file that it renames.
void Conversion::add_tag(const MusicFile& file, Look& look, const FifFields& fields, Change& change) const
{
    const bool gets_tag = rule_.also_fif_names ? change.renames() : look.kind == 1;
    if (!order_.tags || !gets_tag)
        return;
    if (!look.end)
        look.end = read_end(file.native());
    change.tagless = look.end->reason;
    if (change.tagless)
        return;
    TagRecord tag;
    if (TagRecord::is_tag(look.end->block))
        tag.read(look.end->block);
    QString genre = fields.genre;
    set_fif_fields(tag, fields.artist, fields.title, genre);
    add_block(change, *look.end, tag.block());
    if (change.block && !order_.apply)
        change.tagless = no_right_to_write(file.native(), *look.end->status);
    if (change.tagless)
        change.block.reset();
}

} // namespace

void run_convert(const Order& order, PathSource& paths, Output& output)
{
    Conversion conversion(order, output);
    const auto convert_file = [&](const MusicFile& file) -> LookAhead::Turn {
        return [&, decision = conversion.decide(file), is_named = file.is_named] {
            conversion.take(decision, is_named);
            output.step("reading");
        };
    };
    LookAhead looks(convert_file, conversion.reach(), order.helpers);
    walk_files(paths, output, looks, [&] { conversion.folder_end(); });
    conversion.finish();
}
