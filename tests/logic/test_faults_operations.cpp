#include "disk_things.h"
#include "faulty_disk.h"

#include "platform/FileSystemObject.h"
#include "platform/RunTimeError.h"
#include "platform/paths.h"

#include <QCoreApplication>
#include <QTest>

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <iterator>

using namespace Qt::StringLiterals;
using Overwrite = FileOperationGuide::Overwrite;

namespace {

/// A work on files. It says whether all was done.
using Work = std::function<bool(ScriptedGuide& guide, const FileCalls& calls)>;

struct Scene
{
    std::function<void(const TestDisk&)> make;
    Work work;
    QByteArrayList given_up{}; ///< what the person agrees to lose, as things_in calls it
};

/// A folder with a folder and all kinds of things in it, a single file, and what has nothing to do with them.
void make_sources(const TestDisk& disk)
{
    disk.write(u"C:\\from\\f\\a"_s, "a, with more than one call to copy it");
    disk.write(u"C:\\from\\f\\sub\\b"_s, "b");
    disk.make_folder(u"C:\\from\\f\\empty"_s);
    make_link("a", disk.native(u"C:\\from\\f\\link"_s));
    disk.write(u"C:\\from\\c"_s, "c, which is a single file");
    disk.write(u"C:\\other"_s, "other");
}

/// The same, and things of the same names at the target, which the person gives up.
void make_taken(const TestDisk& disk, const QString& target)
{
    make_sources(disk);
    disk.write(target + u"\\f\\a"_s, "old a");
    disk.write(target + u"\\f\\kept"_s, "kept");
    make_link("old link", disk.native(target + u"\\f\\link"_s));
    disk.write(target + u"\\c"_s, "old c");
}

const QByteArrayList taken = {"= old a", "-> old link", "= old c"};

Work operation(FileAction action, const QStringList& sources, const QString& target)
{
    return [=](ScriptedGuide& guide, const FileCalls& calls) {
        return is_done(run_file_operation(action, sources, target, guide, calls));
    };
}

Work without_error(const std::function<void()>& work)
{
    return [work](ScriptedGuide&, const FileCalls&) {
        try {
            work();
        } catch (const RunTimeError&) {
            return false;
        }
        return true;
    };
}

void add_copy_and_move_scenes()
{
    const QStringList sources = {u"C:\\from\\f"_s, u"C:\\from\\c"_s};
    const auto make_free = [](const TestDisk& disk) {
        make_sources(disk);
        disk.make_folder(u"C:\\to"_s);
    };
    const auto taken_at = [](const QString& target) {
        return [target](const TestDisk& disk) { make_taken(disk, target); };
    };
    const auto row = [](const char* name, const Scene& scene) { QTest::newRow(name) << scene; };
    row("copying",
        {.make = taken_at(u"C:\\to"_s), .work = operation(FileAction::copy, sources, u"C:\\to"_s), .given_up = taken});
    row("moving", {.make = make_free, .work = operation(FileAction::move, sources, u"C:\\to"_s)});
    row("moving over what is there",
        {.make = taken_at(u"C:\\to"_s), .work = operation(FileAction::move, sources, u"C:\\to"_s), .given_up = taken});
    row("moving to another disk", {.make = taken_at(u"D:\\to"_s),
                                   .work =
                                       [sources](ScriptedGuide& guide, const FileCalls& calls) {
                                           return operation(FileAction::move, sources,
                                                            u"D:\\to"_s)(guide, calls_between_disks(calls));
                                       },
                                   .given_up = taken});
    QTest::newRow("copying beside itself")
        << Scene{.make =
                     [](const TestDisk& disk) {
                         make_sources(disk);
                         disk.write(u"C:\\from\\Copy of c"_s, "an older copy");
                     },
                 .work =
                     [](ScriptedGuide& guide, const FileCalls& calls) {
                         // Where a disk denies that the older copy is there, it turns out later, and the person is
                         // asked.
                         guide.overwrites.fill(Overwrite::no);
                         return operation(FileAction::copy, {u"C:\\from\\c"_s}, u"C:\\from"_s)(guide, calls);
                     }};
    QTest::newRow("copying a file with a hole")
        << Scene{.make =
                     [](const TestDisk& disk) {
                         disk.write(u"C:\\from"_s, "data");
                         if (truncate(disk.native(u"C:\\from"_s).constData(), 100'000) != 0)
                             qFatal("no hole");
                         disk.make_folder(u"C:\\to"_s);
                     },
                 .work = operation(FileAction::copy, {u"C:\\from"_s}, u"C:\\to"_s)};
}

void add_rename_scenes()
{
    const auto row = [](const char* name, const Work& work) {
        QTest::newRow(name) << Scene{.make = make_sources, .work = work, .given_up = {"f/"}};
    };
    row("renaming a file", operation(FileAction::rename, {u"C:\\from\\c"_s}, u"C:\\from\\new"_s));
    row("renaming a folder", operation(FileAction::rename, {u"C:\\from\\f"_s}, u"C:\\from\\new"_s));
    row("renaming a link", operation(FileAction::rename, {u"C:\\from\\f\\link"_s}, u"C:\\from\\new"_s));
    row("renaming to a name that is taken", [](ScriptedGuide& guide, const FileCalls& calls) {
        return !operation(FileAction::rename, {u"C:\\from\\c"_s}, u"C:\\other"_s)(guide, calls);
    });
    row("MoveFileA", [](ScriptedGuide&, const FileCalls&) { return MoveFileA(u"C:\\from\\c"_s, u"C:\\from\\new"_s); });
    row("MoveFileA to a name that is taken",
        [](ScriptedGuide&, const FileCalls&) { return !MoveFileA(u"C:\\from\\c"_s, u"C:\\other"_s); });
    row("MoveFolder", without_error([] { FileSystemObject().MoveFolder(u"C:\\from\\f"_s, u"C:\\new"_s); }));
    row("CreateFolder", without_error([] { FileSystemObject().CreateFolder(u"C:\\from\\new"_s); }));
}

void add_removal_scenes()
{
    const Work remove = operation(FileAction::remove, {u"C:\\from\\f"_s, u"C:\\from\\c"_s}, {});
    const auto keeping = [remove](ScriptedGuide& guide, const FileCalls& calls) {
        guide.deletes = false;
        return remove(guide, calls);
    };
    QTest::newRow("putting into the trash")
        << Scene{.make = make_sources, .work = [keeping](ScriptedGuide& guide, const FileCalls& calls) {
                     return keeping(guide, calls_on_one_volume(calls));
                 }};
    const auto on_a_volume_of_its_own = [](const Work& work) {
        return [work](ScriptedGuide& guide, FileCalls calls) {
            calls.volume_root = [](const QByteArray& native) {
                const QByteArray root = native_path(u"C:\\"_s);
                const bool is_of_home = native == root + "/Trash/files";
                return native.startsWith(root) && !is_of_home ? root : QByteArray("/");
            };
            return work(guide, calls);
        };
    };
    QTest::newRow("putting into the trash of a volume")
        << Scene{.make = make_sources, .work = on_a_volume_of_its_own(keeping)};
    const auto make_without_trash = [](const TestDisk& disk) {
        make_sources(disk);
        write_native(disk.root() + "/.Trash-" + QByteArray::number(geteuid()), "no folder");
    };
    const QByteArrayList sources = {"f/",
                                    "sub/",
                                    "empty/",
                                    "-> a",
                                    "= a, with more than one call to copy it",
                                    "= b",
                                    "= c, which is a single file"};
    QTest::newRow("deleting for good") << Scene{
        .make = make_without_trash, .work = on_a_volume_of_its_own(remove), .given_up = sources};
}

struct FileSystem
{
    const char* name;
    FileCalls calls;
    bool has_second_names = true;
    bool meets_all_faults = false; ///< else those alone that an operation takes for something else than an error

    bool meets(const DiskFault& fault) const
    {
        return meets_all_faults || fault.is_short() || fault.error == ENOENT || fault.error == EIO;
    }
};

/// What a file system may lack, from nothing on; the kernel copies in small parts.
std::vector<FileSystem> file_systems()
{
    FileCalls calls = FileCalls::of_this_machine();
    calls.copy_range = [copy_range = calls.copy_range](int source, int target, off_t offset, size_t length) {
        return copy_range(source, target, offset, std::min<size_t>(length, 50'000));
    };
    std::vector<FileSystem> systems = {
        {.name = "a file system with everything", .calls = calls, .meets_all_faults = true}};
    calls.open_unnamed = [](const QByteArray&) { return -EOPNOTSUPP; };
    calls.copy_range = [](int, int, off_t, size_t) { return -EOPNOTSUPP; };
    systems.push_back({.name = "one without unnamed files", .calls = calls});
    calls.rename.rename_no_replace = [](const QByteArray&, const QByteArray&) { return EINVAL; };
    calls.rename.exchange = [](const QByteArray&, const QByteArray&) { return EINVAL; };
    systems.push_back({.name = "one that can't refuse to replace", .calls = calls});
    calls.rename.rename_no_replace = [](const QByteArray&, const QByteArray&) { return ENOSYS; };
    calls.rename.link = [](const QByteArray&, const QByteArray&) { return EPERM; };
    systems.push_back({.name = "one without second names", .calls = calls, .has_second_names = false});
    return systems;
}

/// The lines without the time at which a thing came into the trash, and without the number that it gets there where its
/// own name seemed to be taken.
QByteArrayList without_chance(QByteArrayList lines)
{
    for (QByteArray& line : lines) {
        if (const qsizetype date = line.indexOf("\nDeletionDate="); date >= 0)
            line = line.first(date) + (line.endsWith('\n') ? "" : " (half)");
        for (const QByteArray folder : {"/files/", "/info/"}) {
            for (const QByteArray name : {"f", "c"})
                line.replace(folder + name + ".2", folder + name);
        }
    }
    return lines;
}

/// Whether a line is of a folder that makes up a trash.
bool is_of_a_trash(const QByteArray& line)
{
    return line.endsWith("/Trash/") || line.endsWith("/files/") || line.endsWith("/info/") ||
           line.endsWith("/.Trash-" + QByteArray::number(geteuid()) + '/');
}

QByteArrayList without_notes(QByteArrayList lines)
{
    lines.removeIf([](const QByteArray& line) { return line.contains(".trashinfo = "); });
    return lines;
}

/// The things in a trash by the paths of their notes, and those notes.
struct TrashContent
{
    QSet<QByteArray> things;
    QSet<QByteArray> notes;
    QSet<QByteArray> whole_notes;
};

TrashContent trash_in(const QByteArrayList& lines)
{
    const QByteArray files = "/files/";
    TrashContent content;
    for (const QByteArray& line : lines) {
        if (const qsizetype end = line.indexOf(".trashinfo = "); end >= 0) {
            const QByteArray note = line.first(line.indexOf(" = "));
            content.notes.insert(note);
            if (line.contains(" = [Trash Info]\nPath=") && !line.endsWith(" (half)"))
                content.whole_notes.insert(note);
        } else if (const qsizetype start = line.indexOf(files); start >= 0) {
            const QByteArray name = line.sliced(start + files.size()).split('/').first().split(' ').first();
            content.things.insert(line.first(start) + "/info/" + name + ".trashinfo");
        }
    }
    return content;
}

int open_files()
{
    return static_cast<int>(std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}));
}

/// The disks after a run of a scene, each path with its drive in front, and what the run said.
struct Run
{
    QByteArray failed_call;
    QByteArrayList before;
    QByteArrayList after;
    QStringList told;
    bool is_done = false;
    bool has_left_files_open = false;
};

Run run(const Scene& scene, const FileCalls& calls, int nth, const DiskFault& fault)
{
    const FilesInMemory memory;
    const TwoDisks disks;
    qputenv("XDG_DATA_HOME", disks.root());
    scene.make(disks);
    const QByteArrayList folders = {disks.root(), disks.native(u"D:\\"_s)};
    const auto lines = [&] {
        QByteArrayList all = without_chance(trees_of(folders));
        all.removeIf(is_of_a_trash);
        for (QByteArray& line : all)
            line.replace(disks.root(), "C:").replace(disks.native(u"D:\\"_s), "D:");
        std::ranges::sort(all);
        return all;
    };
    ScriptedGuide guide;
    guide.overwrites = QList<Overwrite>(100, Overwrite::yes);
    Run result;
    result.before = lines();
    const int open_before = open_files();
    result.failed_call = with_fault(folders, nth, fault, [&] { result.is_done = scene.work(guide, calls); });
    result.after = lines();
    result.told = guide.take();
    result.has_left_files_open = open_files() != open_before;
    return result;
}

/// Where a file system can neither refuse to replace nor give a file a second name, a look tells whether a name is
/// free; a disk that denies the file there loses it. That can't be helped.
bool is_denied_target(const Run& result, const FileSystem& system, const DiskFault& fault)
{
    return !system.has_second_names && fault.error == ENOENT && result.failed_call.startsWith("lstat ");
}

/// What is wrong with how a run ended; empty when nothing is.
QByteArray wrong_in(const Run& result, const Run& undisturbed, const Scene& scene, const FileSystem& system,
                    const DiskFault& fault)
{
    const QSet<QByteArray> before = things_in(result.before);
    const QSet<QByteArray> after = things_in(without_notes(result.after));
    const QSet<QByteArray> given_up(scene.given_up.begin(), scene.given_up.end());
    for (const QByteArray& thing : before - given_up - after)
        return is_denied_target(result, system, fault) ? QByteArray() : "lost: " + thing;
    const QSet<QByteArray> known = before + things_in(undisturbed.after);
    for (const QByteArray& thing : after - known)
        return "neither old nor new: " + thing;
    if (result.is_done && result.after != undisturbed.after && result.told == undisturbed.told)
        return "not done, and not told";
    // Nobody else is at work; a disk that denies a file makes it look as if.
    if (fault.error != ENOENT && !result.told.filter(own_word(Word::reason_changed_later)).isEmpty())
        return "told of a change that nobody made";
    if (result.has_left_files_open)
        return "left files open";
    if (result.failed_call.isEmpty() && !result.is_done)
        return "failed by itself";
    const TrashContent trash = trash_in(result.after);
    if (!trash.whole_notes.contains(trash.things))
        return "in the trash without a note";
    // What could not be cleared up on a disk that goes on failing, or that did not do just that.
    if (fault.lasts || result.failed_call.startsWith("unlink"))
        return {};
    if (trash.notes != trash.things)
        return "left a note of nothing";
    for (const QByteArray& line : result.after) {
        if (is_unfinished(line))
            return "left: " + line;
    }
    return {};
}

} // namespace

Q_DECLARE_METATYPE(Scene)

class TestFaultsOperations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothing_is_lost_in_copies_and_moves_data() { add_scenes(add_copy_and_move_scenes); }
    void nothing_is_lost_in_copies_and_moves() { expect_nothing_lost(); }
    void nothing_is_lost_in_renames_data() { add_scenes(add_rename_scenes); }
    void nothing_is_lost_in_renames() { expect_nothing_lost(); }
    void nothing_is_lost_in_removals_data() { add_scenes(add_removal_scenes); }
    void nothing_is_lost_in_removals() { expect_nothing_lost(); }

private:
    static void add_scenes(void (*add)());
    static void expect_nothing_lost();
};

void TestFaultsOperations::add_scenes(void (*add)())
{
    QTest::addColumn<Scene>("scene");
    add();
}

void TestFaultsOperations::expect_nothing_lost()
{
    QFETCH(const Scene, scene);
    int runs = 0;
    for (const FileSystem& system : file_systems()) {
        const Run undisturbed = run(scene, system.calls, 0, DiskFault{.name = "none"});
        QVERIFY2(undisturbed.is_done, undisturbed.told.join(u'|').toUtf8().constData());
        for (const DiskFault& fault : disk_faults()) {
            bool has_failed = system.meets(fault);
            for (int nth = 1; has_failed; ++nth, ++runs) {
                const Run result = run(scene, system.calls, nth, fault);
                has_failed = !result.failed_call.isEmpty();
                const QByteArray wrong = wrong_in(result, undisturbed, scene, system, fault);
                if (!wrong.isEmpty())
                    qWarning("%s\n  after %s\n", qPrintable(result.told.join(u" | "_s)),
                             result.after.join("\n        ").constData());
                QVERIFY2(wrong.isEmpty(), (wrong + " (" + system.name + ", " + fault.name + ", call " +
                                           QByteArray::number(nth) + ": " + result.failed_call + ')')
                                              .constData());
                QVERIFY(nth < 2000);
            }
        }
    }
    qInfo("%d runs", runs);
}

QUILMO_LOGIC_TEST(TestFaultsOperations)
#include "test_faults_operations.moc"
