// Copy, move, rename and remove any list of paths on any small tree, with any answers: no content is lost that nobody
// gave up, and nothing but whole files stands under a real name.

#include "platform/file_operation/FileOperation.h"
#include "platform/paths.h"
#include "scratch_disks.h"
#include "support.h"

#include <QSet>
#include <QStringList>

#include <fcntl.h>
#include <fuzzer/FuzzedDataProvider.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

using namespace Qt::StringLiterals;

namespace {

using Contents = QSet<QByteArray>;

const std::array<QByteArray, 12> names = {
    "a", "b", "c.mp3", "Copy of a", "A", "\xFF", "x\\y", "\xEA\xB0\x80", ".hidden", QByteArray(250, 'n'), "%41", " "};
const std::array<QByteArray, 6> leads = {".", "a", "b", "a/b", "missing", "SECRET"};

QByteArray pick_name(FuzzedDataProvider& input)
{
    return names.at(input.ConsumeIntegralInRange<std::size_t>(0, names.size() - 1));
}

Contents files_of(const QList<Standing>& all, const auto& is_meant)
{
    Contents contents;
    for (const Standing& one : all) {
        if (one.is_file() && is_meant(one))
            contents.insert(one.content);
    }
    return contents;
}

/// Fills the drives with files, each of its own content, folders, links and pipes.
void plant(FuzzedDataProvider& input, const ScratchDisks& disks)
{
    constexpr int most_entries = 12;
    constexpr std::array<mode_t, 4> modes = {0600, 0644, 0755, 0444};
    QByteArrayList folders = {disks.c(), disks.d()};
    const int count = input.ConsumeIntegralInRange(0, most_entries);
    for (int number = 1; number <= count; ++number) {
        const auto kind = input.ConsumeIntegralInRange(0, 9);
        const auto folder = input.ConsumeIntegralInRange<qsizetype>(0, folders.size() - 1);
        const QByteArray path = folders[folder] + '/' + pick_name(input);
        const mode_t mode = modes.at(static_cast<std::size_t>(number) % modes.size());
        if (kind <= 4) {
            const QByteArray content = "Content " + QByteArray::number(number) + QByteArray(number, '.').repeated(3);
            const int file = open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
            if (file < 0)
                continue;
            const timespec time = {.tv_sec = number, .tv_nsec = number};
            const timespec times[] = {time, time};
            require(write(file, content.constData(), static_cast<std::size_t>(content.size())) == content.size() &&
                        fchmod(file, mode) == 0 && futimens(file, times) == 0,
                    "a file can be made");
            close(file);
        } else if (kind <= 7) {
            if (mkdir(path.constData(), S_IRWXU) == 0)
                folders.append(path);
        } else if (kind == 8) {
            const QByteArray& lead = leads.at(static_cast<std::size_t>(number) % leads.size());
            symlink(lead == "SECRET" ? disks.secret().constData() : lead.constData(), path.constData());
        } else {
            mkfifo(path.constData(), S_IRUSR | S_IWUSR);
        }
    }
}

/// A path as the program writes it: mostly one of what stands on the drives, else any.
QString pick_path(FuzzedDataProvider& input, const QList<Standing>& all)
{
    constexpr std::size_t longest_text = 20;
    const int kind = input.ConsumeIntegralInRange(0, 7);
    if (kind == 0) {
        const std::string text = input.ConsumeRandomLengthString(longest_text);
        return (input.ConsumeBool() ? u"C:\\"_s : QString()) + any_text(QByteArrayView(text));
    }
    const QString drive = input.ConsumeBool() ? u"C:"_s : u"D:"_s;
    if (kind == 1 || all.isEmpty())
        return drive + (input.ConsumeBool() ? u"\\"_s : QString());
    const Standing& one = all[input.ConsumeIntegralInRange<qsizetype>(0, all.size() - 1)];
    if (kind == 2)
        return program_path(one.path + '/' + pick_name(input));
    return program_path(one.path) + (kind == 3 ? u"\\"_s : QString());
}

/// A person who answers as the input says, and who keeps in mind what was given up.
class FuzzedGuide : public FileOperationGuide
{
public:
    FuzzedGuide(FuzzedDataProvider& input, const ScratchDisks& disks)
        : input_(input), disks_(disks), cancels_at_(input.ConsumeIntegralInRange(0, 100))
    {
    }

    Overwrite ask_overwrite(const FileFacts& source, const FileFacts& target) override
    {
        ask();
        require(!gave_up_any, "after a word for all no further question comes");
        require(!source.is_folder && !target.is_folder, "no folder is overwritten");
        const QByteArray native = native_path(target.path);
        const auto answer = static_cast<Overwrite>(input_.ConsumeIntegralInRange(0, 4));
        if (answer == Overwrite::yes || answer == Overwrite::yes_to_all) {
            const QByteArray place = real_place(native);
            require(!place.isEmpty(), "what is asked about is there");
            given_up += files_of(disks_.all_within(), [&](const Standing& one) { return one.path == place; });
            gave_up_one = true;
        }
        gave_up_any = answer == Overwrite::yes_to_all;
        said_no = said_no || answer == Overwrite::no || answer == Overwrite::no_to_all;
        stopped = answer == Overwrite::cancel;
        return answer;
    }
    OnError ask_error(const QString&, const QString& reason, bool) override
    {
        require(!reason.isEmpty(), "an error has a reason");
        told_error = true;
        const bool cancels = input_.ConsumeIntegralInRange(0, 3) == 1;
        stopped = stopped || cancels;
        return cancels ? OnError::cancel : OnError::skip;
    }
    bool ask_trash(const QStringList& paths) override
    {
        ask();
        require(!paths.isEmpty(), "there is something to remove");
        stopped = input_.ConsumeIntegralInRange(0, 7) == 1;
        return !stopped;
    }
    bool ask_delete(const QStringList& paths) override
    {
        ask();
        stopped = input_.ConsumeBool();
        for (qsizetype i = 0; i < paths.size() && !stopped; ++i) {
            const QByteArray place = real_place(native_path(paths[i]));
            given_up += files_of(disks_.all_within(), [&](const Standing& one) { return lies_in(one.path, place); });
            gave_up_one = true;
        }
        return !stopped;
    }
    void progress(const FileProgress& progress) override
    {
        require(progress.bytes_done >= 0 && !progress.name.contains(u'\\'), "progress names a file");
        ++steps_;
    }
    bool is_cancelled() const override
    {
        has_cancelled = cancels_at_ != 0 && steps_ >= cancels_at_;
        return has_cancelled;
    }

    Contents given_up;
    bool gave_up_one = false;
    bool gave_up_any = false;
    bool said_no = false;
    bool told_error = false;
    bool stopped = false;
    mutable bool has_cancelled = false;

private:
    /// Errors are told even then: what has been done must still reach the disk.
    void ask() const { require(!stopped, "no leave is asked once the person has stopped the operation"); }

    FuzzedDataProvider& input_;
    const ScratchDisks& disks_;
    int cancels_at_;
    int steps_ = 0;
};

/// A file system that lacks this or that, or fails at some call.
FileCalls pick_calls(FuzzedDataProvider& input, const ScratchDisks& disks)
{
    FileCalls calls = disks.calls();
    if (input.ConsumeBool())
        calls.open_unnamed = [](const QByteArray&) { return -EOPNOTSUPP; };
    const int copying = input.ConsumeIntegralInRange(0, 2);
    if (copying == 1)
        calls.copy_range = [](int, int, off_t, size_t) { return ssize_t{-EXDEV}; };
    else if (copying == 2)
        calls.copy_range = [of_machine = calls.copy_range](int source, int target, off_t offset, size_t length) {
            return of_machine(source, target, offset, std::min(length, size_t{5}));
        };
    const int renaming = input.ConsumeIntegralInRange(0, 2);
    if (renaming != 0)
        calls.rename.rename_no_replace = [](const QByteArray&, const QByteArray&) { return EINVAL; };
    if (renaming == 2)
        calls.rename.link = [](const QByteArray&, const QByteArray&) { return EPERM; };
    const int failing_write = input.ConsumeIntegralInRange(0, 9);
    if (failing_write != 0)
        calls.write = [left = failing_write, of_machine = calls.write](int file, const char* bytes, size_t length,
                                                                       off_t offset) mutable {
            return --left == 0 ? ssize_t{-ENOSPC} : of_machine(file, bytes, std::min(length, size_t{9}), offset);
        };
    const int failing_sync = input.ConsumeIntegralInRange(0, 9);
    if (failing_sync != 0)
        calls.sync = [left = failing_sync](int) mutable { return --left == 0 ? EIO : 0; };
    return calls;
}

const Standing* standing_at(const QList<Standing>& all, const QByteArray& path)
{
    const auto found = std::ranges::find(all, path, &Standing::path);
    return found == all.end() ? nullptr : &*found;
}

/// Each thing in a trash has a note of where it belongs, and each note a thing.
void check_trash(const QList<Standing>& all, const QByteArray& trash)
{
    for (const Standing& one : all) {
        const QByteArray name = one.path.sliced(one.path.lastIndexOf('/') + 1);
        if (one.path == trash + "/files/" + name) {
            const Standing* const note = standing_at(all, trash + "/info/" + name + ".trashinfo");
            require(note != nullptr && note->content.startsWith("[Trash Info]\nPath="),
                    "what is in the trash has a note");
        }
        if (one.path == trash + "/info/" + name)
            require(standing_at(all, trash + "/files/" + name.chopped(10)) != nullptr, "a note is of something");
    }
}

void check_contents(const ScratchDisks& disks, const QList<Standing>& before, const QList<Standing>& after,
                    const FuzzedGuide& guide)
{
    for (const Standing& one : after) {
        const bool is_note = one.path.contains("/info/") && one.path.endsWith(".trashinfo");
        require(!one.path.contains("/.quilmo-"), "no half file is left behind");
        if (!one.is_file() || is_note)
            continue;
        const auto is_it = [&one](const Standing& old) {
            return old.content == one.content && old.mode == one.mode && old.modified == one.modified;
        };
        require(std::ranges::any_of(before, is_it), "what stands under a real name is whole, with its time and rights");
    }
    const auto all = [](const Standing&) { return true; };
    const Contents lost = files_of(before, all) - files_of(after, all);
    require(guide.gave_up_any || guide.given_up.contains(lost), "no content is lost that nobody gave up");
    check_trash(after, disks.home_trash());
    check_trash(after, disks.d_trash());
}

void check_outcome(const FileOutcome& outcome, const FuzzedGuide& guide)
{
    require(outcome.failed == guide.told_error, "what fails is told, and nothing else");
    require(!outcome.aborted || guide.stopped || guide.has_cancelled, "nothing stops without the person's word");
    require(outcome.aborted || !guide.stopped, "the person's word stops");
}

/// What must be true of an operation that ran without a fault: the contents of its sources are where they should be.
void check_done(FileAction action, const ScratchDisks& disks, const Contents& meant, const QList<Standing>& after)
{
    for (const QByteArray& content : meant) {
        const auto is_it = [&content](const Standing& one) { return one.is_file() && one.content == content; };
        const auto count = std::ranges::count_if(after, is_it);
        require(action == FileAction::copy ? count >= 2 : count == 1, "a copy makes two of one, all else keeps one");
        const auto is_out = [&](const Standing& one) {
            return is_it(one) && !lies_in(one.path, disks.home_trash()) && !lies_in(one.path, disks.d_trash());
        };
        require(action != FileAction::remove || std::ranges::none_of(after, is_out), "what is removed is in the trash");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr int most_sources = 4;
    static const ScratchDisks disks;
    static const QList<Standing> outside = disks.all_outside();
    FuzzedDataProvider input(data, size);
    disks.clear();
    const auto action = static_cast<FileAction>(input.ConsumeIntegralInRange(1, 4));
    plant(input, disks);
    const QList<Standing> before = disks.all_within();
    QString list;
    for (int left = input.ConsumeIntegralInRange(0, most_sources); left > 0; --left)
        list += pick_path(input, before) + QChar::Null;
    const QString target = pick_path(input, before);
    FuzzedGuide guide(input, disks);
    const FileCalls calls = pick_calls(input, disks);

    QByteArrayList places;
    for (const QString& source : listed_paths(list))
        places.append(real_place(native_path(source)));
    places.removeAll({});
    const auto is_source = [&places](const Standing& one) {
        return std::ranges::any_of(places, [&one](const QByteArray& place) { return lies_in(one.path, place); });
    };
    const FileOutcome outcome = run_file_operation(action, listed_paths(list), target, guide, calls);

    const QList<Standing> after = disks.all_within();
    require(disks.all_outside() == outside, "nothing is touched beside the drives");
    check_outcome(outcome, guide);
    check_contents(disks, before, after, guide);
    const bool is_clean = !outcome.failed && !outcome.aborted && !guide.gave_up_one && !guide.said_no;
    if (is_clean && !listed_paths(list).isEmpty())
        check_done(action, disks, files_of(before, is_source), after);
    for (const Standing& one : before) {
        const Standing* const now = standing_at(after, one.path);
        const bool may_go = guide.gave_up_one || (action != FileAction::copy && is_source(one));
        require(may_go || (now != nullptr && now->mode == one.mode && now->content == one.content),
                "what was no source stays where it was");
    }
    return 0;
}
