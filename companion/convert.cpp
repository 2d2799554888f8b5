#include "companion/ChangeRun.h"
#include "companion/companion.h"
#include "companion/look.h"
#include "companion/shown_text.h"
#include "fif/mod_of_FIF.h"
#include "mp3/cIDV3.h"
#include "platform/file_operation/disk_entry.h"

#include <QHash>
#include <QSet>

#include <cerrno>

namespace {

/// Which names the changes decided on so far take and leave. A folder that is walked is done with when its files are
/// through; what concerns files that were named one by one stays.
class NamesMeanwhile
{
public:
    void rename(const MusicFile& file, const QByteArray& new_path)
    {
        (file.is_named ? named_taken_ : taken_).insert(qHash(new_path));
        (file.is_named ? named_left_ : left_).insert(qHash(file.native()));
    }
    bool is_taken(const QByteArray& path) const { return holds(taken_, path) || holds(named_taken_, path); }
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

class Conversion
{
public:
    Conversion(const Order& order, Output& output)
        : order_(order),
          output_(output),
          changes_(order, output),
          rule_{.also_fif_names = order.type || order.fixed.artist || order.fixed.genre, .fixed = order.fixed}
    {
    }

    void convert(const MusicFile& file)
    {
        decide(file);
        output_.step("reading");
    }
    void folder_end() { names_.folder_end(); }
    void finish() { changes_.finish(); }

private:
    void decide(const MusicFile& file);
    /// Whether another file stands in the way of a new name.
    Reason obstacle(const QByteArray& new_path) const;
    /// Adds the tag that a file gets by the rule of its conversion.
    Reason add_tag(const MusicFile& file, const Look& look, const FifFields& fields, Change& change) const;

    const Order& order_;
    Output& output_;
    ChangeRun changes_;
    NamingRule rule_;
    NamesMeanwhile names_;
};

void Conversion::decide(const MusicFile& file)
{
    const Look look = look_at(file);
    const NewName wanted = new_name_of(file, look, rule_);
    if (wanted.reason)
        return changes_.cannot(file.shown_path(), wanted.reason);
    Change change{.folder = file.folder.native,
                  .shown_folder = file.folder.shown,
                  .old_name = file.bytes,
                  .new_name = bytes_of_field(wanted.name),
                  .block = std::nullopt};
    if (change.renames()) {
        if (const Reason reason = obstacle(change.new_path()))
            return changes_.cannot(file.shown_path(), reason, change.new_name);
    }
    change.tagless = add_tag(file, look, wanted.fields, change);
    if (change.tagless && !change.renames())
        return changes_.cannot(file.shown_path(), change.tagless);
    if (!change.renames() && !change.block)
        return changes_.keep(file.shown_path());
    if (change.renames())
        names_.rename(file, change.new_path());
    changes_.change(std::move(change));
}

Reason Conversion::obstacle(const QByteArray& new_path) const
{
    if (names_.is_taken(new_path))
        return {.code = Reason::wanted_twice};
    const bool is_free = names_.is_left(new_path) || (!status_of(new_path) && errno == ENOENT);
    return {.code = is_free ? Reason::none : Reason::exists};
}

/// The batch conversion brings the tags of names that are FIF in line with them, and takes new names from tags that
/// stay; the auto conversion writes the tag of each file that it renames.
Reason Conversion::add_tag(const MusicFile& file, const Look& look, const FifFields& fields, Change& change) const
{
    const bool gets_tag = rule_.also_fif_names ? change.renames() : look.kind == 1;
    if (!order_.tags || !gets_tag)
        return {};
    QString genre = fields.genre;
    id3().set_FileName(file.path());
    set_fif_fields(id3().tag(), fields.artist, fields.title, genre);
    if (const Reason reason = obstacle_to_reading(file))
        return reason;
    return add_block(change, id3().tag().block());
}

} // namespace

void run_convert(const Order& order, PathSource& paths, Output& output)
{
    Conversion conversion(order, output);
    FileWalk walk(
        {.file = [&](const MusicFile& file) { conversion.convert(file); },
         .folder_end = [&] { conversion.folder_end(); },
         .failed = [&](const QByteArray& path, const QByteArray& reason) { output.path_failed(path, reason); }});
    walk.walk(paths);
    conversion.finish();
}
