#include "file_operations.h"
#include "rights.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTest>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <memory>

using namespace Qt::StringLiterals;
using Overwrite = FileOperationGuide::Overwrite;

namespace {

constexpr qsizetype large = 3'000'000;

/// Files can't grow beyond a size as long as the object lives, as on a disk that fills up.
class SmallFilesOnly
{
public:
    explicit SmallFilesOnly(rlim_t size) : old_handler_(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &old_);
        const rlimit limit = {.rlim_cur = size, .rlim_max = old_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallFilesOnly()
    {
        setrlimit(RLIMIT_FSIZE, &old_);
        std::signal(SIGXFSZ, old_handler_);
    }
    SmallFilesOnly(const SmallFilesOnly&) = delete;
    SmallFilesOnly& operator=(const SmallFilesOnly&) = delete;

private:
    rlimit old_{};
    void (*old_handler_)(int);
};

/// A disk that is full after so many bytes of a file.
FileCalls calls_of_a_full_disk(off_t room, bool has_unnamed_files = true)
{
    FileCalls calls = FileCalls::of_this_machine();
    calls.copy_range = [copy_range = calls.copy_range, room](int source, int target, off_t offset, size_t length) {
        return offset >= room ? -ENOSPC : copy_range(source, target, offset, std::min<size_t>(length, 65'536));
    };
    calls.write = [write = calls.write, room](int file, const char* bytes, size_t length, off_t offset) {
        return offset >= room ? -ENOSPC : write(file, bytes, std::min<size_t>(length, 65'536), offset);
    };
    if (!has_unnamed_files)
        calls.open_unnamed = [](const QByteArray&) { return -EOPNOTSUPP; };
    return calls;
}

FileCalls calls_with_hidden_names()
{
    FileCalls calls = FileCalls::of_this_machine();
    calls.open_unnamed = [](const QByteArray&) { return -EOPNOTSUPP; };
    return calls;
}

void add_copies_and_moves()
{
    QTest::addColumn<FileAction>("action");
    QTest::addColumn<QString>("target");
    QTest::newRow("a copy on one disk") << FileAction::copy << u"C:\\to"_s;
    QTest::newRow("a copy to another disk") << FileAction::copy << u"D:\\to"_s;
    QTest::newRow("a move to another disk") << FileAction::move << u"D:\\to"_s;
}

/// A machine that loses its power before the given one of the steps at which an operation changes a disk.
FileCalls calls_until(int step, FileCalls calls)
{
    const auto left = std::make_shared<int>(step);
    const auto live_on = [left] {
        if (--*left == 0)
            kill(getpid(), SIGKILL);
    };
    calls.open_unnamed = [=](const QByteArray& folder) {
        live_on();
        return calls.open_unnamed(folder);
    };
    calls.copy_range = [=](int source, int target, off_t offset, size_t length) {
        live_on();
        return calls.copy_range(source, target, offset, length);
    };
    calls.write = [=](int file, const char* bytes, size_t length, off_t offset) {
        live_on();
        return calls.write(file, bytes, length, offset);
    };
    calls.sync = [=](int file) {
        live_on();
        return calls.sync(file);
    };
    calls.rename.rename_no_replace = [=](const QByteArray& old_native, const QByteArray& new_native) {
        live_on();
        return calls.rename.rename_no_replace(old_native, new_native);
    };
    return calls;
}

/// Runs `work` in a process of its own, and kills it after so many microseconds if it has not ended by itself. Gives
/// whether it came to its end.
template<typename Work> bool finishes_before(useconds_t microseconds, const Work& work)
{
    const pid_t child = fork();
    if (child == 0) {
        work();
        _exit(0);
    }
    int status = 0;
    if (microseconds > 0) {
        usleep(microseconds);
        kill(child, SIGKILL);
    }
    waitpid(child, &status, 0);
    return WIFEXITED(status);
}

} // namespace

class TestFileOperationFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void full_disk_leaves_no_half_file_data();
    void full_disk_leaves_no_half_file();
    void file_size_limit_leaves_no_half_file();
    void failed_overwriting_keeps_the_old_file_data();
    void failed_overwriting_keeps_the_old_file();
    void locked_folder_in_the_middle_is_told_and_passed_over();
    void locked_target_is_told();
    void source_that_vanishes_is_told_and_passed_over();
    void source_that_changes_while_copied_is_not_taken_data();
    void source_that_changes_while_copied_is_not_taken();
    void file_swapped_for_a_link_is_not_followed();
    void target_that_appears_is_asked_about_data() { add_copies_and_moves(); }
    void target_that_appears_is_asked_about();
    void target_that_changes_after_the_answer_is_asked_about_data() { add_copies_and_moves(); }
    void target_that_changes_after_the_answer_is_asked_about();
    void target_that_vanishes_after_the_answer_is_no_hindrance();
    void target_that_changes_under_a_move_on_one_disk_is_asked_about();
    void folder_that_appears_is_not_replaced();
    void cancel_in_a_large_file_is_prompt();
    void person_is_heard_often();
    void killed_copy_leaves_whole_files_alone_data() { add_copies_and_moves(); }
    void killed_copy_leaves_whole_files_alone();
};

void TestFileOperationFaults::full_disk_leaves_no_half_file_data()
{
    QTest::addColumn<FileAction>("action");
    QTest::addColumn<bool>("has_unnamed_files");
    QTest::newRow("copy") << FileAction::copy << true;
    QTest::newRow("copy through a hidden name") << FileAction::copy << false;
    QTest::newRow("move") << FileAction::move << true;
    QTest::newRow("move through a hidden name") << FileAction::move << false;
}

void TestFileOperationFaults::full_disk_leaves_no_half_file()
{
    QFETCH(FileAction, action);
    QFETCH(bool, has_unnamed_files);
    const TwoDisks disks;
    if (action == FileAction::move && !disks.are_two())
        QSKIP("there is one file system alone");
    disks.write(u"C:\\f\\large"_s, content_of_size(large));
    disks.write(u"C:\\small"_s, "small");
    ScriptedGuide guide;
    const FileOutcome outcome = run_file_operation(action, {u"C:\\f"_s, u"C:\\small"_s}, u"D:\\"_s, guide,
                                                   calls_of_a_full_disk(1'000'000, has_unnamed_files));
    QVERIFY(outcome.failed && !outcome.aborted);
    QCOMPARE(guide.take(), QStringList{error_text(u"D:\\f\\large"_s, ENOSPC) + u" ..."_s});
    QCOMPARE(tree_of(disks.native(u"D:\\"_s)), (QByteArrayList{"f/", "small = small"}));
    QCOMPARE(disks.read(u"C:\\f\\large"_s), content_of_size(large));

    guide.on_error = FileOperationGuide::OnError::cancel;
    disks.write(u"C:\\small2"_s, "small");
    QVERIFY(run_file_operation(action, {u"C:\\f"_s, u"C:\\small2"_s}, u"D:\\"_s, guide,
                               calls_of_a_full_disk(1'000'000, has_unnamed_files))
                .aborted);
    QVERIFY(!disks.exists(u"D:\\small2"_s) && disks.exists(u"C:\\small2"_s));
}

void TestFileOperationFaults::file_size_limit_leaves_no_half_file()
{
    for (const FileCalls& calls : {FileCalls::of_this_machine(), calls_with_hidden_names()}) {
        const TwoDisks disks;
        disks.write(u"C:\\large"_s, content_of_size(large));
        disks.make_folder(u"C:\\to"_s);
        for (const QString& target : {u"C:\\to"_s, u"D:\\"_s}) {
            ScriptedGuide guide;
            const SmallFilesOnly limit(1'500'000);
            QVERIFY(run_file_operation(FileAction::copy, {u"C:\\large"_s}, target, guide, calls).failed);
            QCOMPARE(guide.take().size(), 1);
            QCOMPARE(tree_of(disks.native(target)), QByteArrayList());
        }
    }
}

void TestFileOperationFaults::failed_overwriting_keeps_the_old_file_data()
{
    QTest::addColumn<FileCalls>("calls");
    FileCalls unsynced = FileCalls::of_this_machine();
    unsynced.sync = [](int) { return EIO; };
    QTest::newRow("full disk") << calls_of_a_full_disk(1'000'000);
    QTest::newRow("full disk, with a hidden name") << calls_of_a_full_disk(1'000'000, false);
    QTest::newRow("disk that fails to write") << unsynced;
}

void TestFileOperationFaults::failed_overwriting_keeps_the_old_file()
{
    QFETCH(FileCalls, calls);
    const TwoDisks disks;
    disks.write(u"C:\\a"_s, content_of_size(large));
    disks.write(u"D:\\a"_s, "old");
    ScriptedGuide guide;
    guide.overwrites = {Overwrite::yes};
    QVERIFY(run_file_operation(FileAction::copy, {u"C:\\a"_s}, u"D:\\"_s, guide, calls).failed);
    QCOMPARE(guide.take().size(), 2);
    QCOMPARE(tree_of(disks.native(u"D:\\"_s)), QByteArrayList{"a = old"});
}

void TestFileOperationFaults::locked_folder_in_the_middle_is_told_and_passed_over()
{
    for (const FileAction action : {FileAction::copy, FileAction::move}) {
        const TwoDisks disks;
        if (!disks.are_two())
            QSKIP("there is one file system alone");
        disks.write(u"C:\\f\\locked\\a"_s, "a");
        disks.write(u"C:\\f\\b"_s, "b");
        disks.write(u"C:\\c"_s, "c");
        disks.write(u"C:\\d"_s, "d");
        const WithoutRights locked(disks.native(u"C:\\f\\locked"_s));
        chmod(disks.native(u"C:\\c"_s).constData(), 0);
        ScriptedGuide guide;
        const QStringList sources = {u"C:\\f"_s, u"C:\\c"_s, u"C:\\d"_s};
        QVERIFY(run_file_operation(action, sources, u"D:\\"_s, guide).failed);
        QCOMPARE(guide.take().first(2), (QStringList{error_text(u"C:\\f\\locked"_s, EACCES) + u" ..."_s,
                                                     error_text(u"C:\\c"_s, EACCES) + u" ..."_s}));
        QCOMPARE(disks.read(u"D:\\f\\b"_s), QByteArray("b"));
        QCOMPARE(disks.read(u"D:\\d"_s), QByteArray("d"));
        QVERIFY(stands(disks.native(u"C:\\f\\locked"_s)) && stands(disks.native(u"C:\\c"_s)));
        QVERIFY(!stands(disks.native(u"D:\\c"_s)));
    }
}

void TestFileOperationFaults::locked_target_is_told()
{
    const TwoDisks disks;
    disks.write(u"C:\\a"_s, "a");
    disks.write(u"C:\\f\\b"_s, "b");
    disks.make_folder(u"D:\\to"_s);
    chmod(disks.native(u"D:\\to"_s).constData(), 0555);
    const BoundByRights bound;
    for (const FileAction action : {FileAction::copy, FileAction::move}) {
        ScriptedGuide guide;
        QVERIFY(run_file_operation(action, {u"C:\\a"_s, u"C:\\f"_s}, u"D:\\to"_s, guide).failed);
        QCOMPARE(guide.take(),
                 (QStringList{error_text(u"D:\\to\\a"_s, EACCES) + u" ..."_s, error_text(u"D:\\to\\f"_s, EACCES)}));
        QCOMPARE(tree_of(disks.root()), (QByteArrayList{"a = a", "f/", "f/b = b"}));
    }
}

void TestFileOperationFaults::source_that_vanishes_is_told_and_passed_over()
{
    const TwoDisks disks;
    for (const QString& name : {u"a"_s, u"b"_s, u"c"_s})
        disks.write(u"C:\\"_s + name, "x");
    ScriptedGuide guide;
    guide.on_progress = [&disks](const FileProgress& progress) {
        if (progress.bytes_done > 0)
            unlink(disks.native(u"C:\\b"_s).constData());
    };
    QVERIFY(run_file_operation(FileAction::copy, {u"C:\\a"_s, u"C:\\b"_s, u"C:\\c"_s}, u"D:\\"_s, guide).failed);
    QCOMPARE(guide.take(), QStringList{error_text(u"C:\\b"_s, ENOENT) + u" ..."_s});
    QCOMPARE(tree_of(disks.native(u"D:\\"_s)), (QByteArrayList{"a = x", "c = x"}));
}

void TestFileOperationFaults::source_that_changes_while_copied_is_not_taken_data()
{
    QTest::addColumn<bool>("shrinks");
    QTest::newRow("cut short") << true;
    QTest::newRow("written anew") << false;
}

void TestFileOperationFaults::source_that_changes_while_copied_is_not_taken()
{
    QFETCH(bool, shrinks);
    const TwoDisks disks;
    disks.write(u"C:\\a"_s, content_of_size(large));
    disks.write(u"C:\\b"_s, "b");
    const QByteArray native = disks.native(u"C:\\a"_s);
    ScriptedGuide guide;
    guide.on_progress = [&](const FileProgress& progress) {
        if (progress.bytes_done == 0 || progress.name != u"a")
            return;
        if (shrinks)
            QCOMPARE(truncate(native.constData(), 10), 0);
        else
            write_native(native, content_of_size(large + 1));
    };
    QVERIFY(run_file_operation(FileAction::copy, {u"C:\\a"_s, u"C:\\b"_s}, u"D:\\"_s, guide).failed);
    QCOMPARE(guide.take(), QStringList{error_text(u"C:\\a"_s, Word::reason_changed) + u" ..."_s});
    QCOMPARE(tree_of(disks.native(u"D:\\"_s)), QByteArrayList{"b = b"});
}

void TestFileOperationFaults::file_swapped_for_a_link_is_not_followed()
{
    const TwoDisks disks;
    disks.write(u"C:\\secret"_s, "secret");
    disks.write(u"C:\\a"_s, "plain");
    disks.write(u"D:\\a"_s, "old");
    ScriptedGuide guide;
    guide.overwrites = {Overwrite::yes};
    guide.on_overwrite = [&disks](const FileFacts&, const FileFacts&) {
        unlink(disks.native(u"C:\\a"_s).constData());
        make_link("secret", disks.native(u"C:\\a"_s));
    };
    QVERIFY(run_file_operation(FileAction::copy, {u"C:\\a"_s}, u"D:\\"_s, guide).failed);
    QCOMPARE(tree_of(disks.native(u"D:\\"_s)), QByteArrayList{"a = old"});
}

void TestFileOperationFaults::target_that_appears_is_asked_about()
{
    QFETCH(FileAction, action);
    QFETCH(QString, target);
    for (const FileCalls& calls : {FileCalls::of_this_machine(), calls_with_hidden_names()}) {
        for (const Overwrite answer : {Overwrite::yes, Overwrite::no, Overwrite::cancel}) {
            const TwoDisks disks;
            disks.make_folder(target);
            disks.write(u"C:\\a"_s, "new");
            ScriptedGuide guide;
            guide.overwrites = {answer};
            guide.on_progress = [&](const FileProgress& progress) {
                if (progress.bytes_done > 0 && !disks.exists(target + u"\\a"_s))
                    disks.write(target + u"\\a"_s, "appeared");
            };
            const FileOutcome outcome = run_file_operation(action, {u"C:\\a"_s}, target, guide, calls);
            QCOMPARE(outcome.aborted, answer == Overwrite::cancel);
            QVERIFY(!outcome.failed);
            QCOMPARE(guide.take(), QStringList{u"overwrite "_s + target + u"\\a"_s});
            QCOMPARE(tree_of(disks.native(target)),
                     QByteArrayList{answer == Overwrite::yes ? "a = new" : "a = appeared"});
            QCOMPARE(disks.exists(u"C:\\a"_s), action == FileAction::copy || answer != Overwrite::yes);
        }
    }
}

void TestFileOperationFaults::target_that_changes_after_the_answer_is_asked_about()
{
    QFETCH(FileAction, action);
    QFETCH(QString, target);
    for (const bool is_replaced : {false, true}) {
        const TwoDisks disks;
        disks.write(u"C:\\a"_s, "new");
        disks.write(target + u"\\a"_s, "old");
        disks.write(target + u"\\other"_s, "valuable");
        ScriptedGuide guide;
        guide.overwrites = {Overwrite::yes, Overwrite::no};
        guide.on_progress = [&](const FileProgress& progress) {
            if (progress.bytes_done == 0 || !disks.exists(target + u"\\other"_s))
                return;
            const std::string other = disks.native(target + u"\\other"_s).toStdString();
            if (is_replaced)
                std::filesystem::rename(other, disks.native(target + u"\\a"_s).toStdString());
            else
                disks.write(target + u"\\a"_s, "valuable");
            std::filesystem::remove(other);
        };
        QVERIFY(is_done(run_file_operation(action, {u"C:\\a"_s}, target, guide)));
        QCOMPARE(guide.take().size(), 2);
        QCOMPARE(tree_of(disks.native(target)), QByteArrayList{"a = valuable"});
        QCOMPARE(disks.read(u"C:\\a"_s), QByteArray("new"));
    }
}

void TestFileOperationFaults::target_that_vanishes_after_the_answer_is_no_hindrance()
{
    for (const FileAction action : {FileAction::copy, FileAction::move}) {
        for (const QString& target : {u"C:\\to"_s, u"D:\\to"_s}) {
            const TwoDisks disks;
            disks.write(u"C:\\a"_s, "new");
            disks.write(target + u"\\a"_s, "old");
            ScriptedGuide guide;
            guide.overwrites = {Overwrite::yes};
            guide.on_overwrite = [&](const FileFacts&, const FileFacts&) {
                unlink(disks.native(target + u"\\a"_s).constData());
            };
            QVERIFY(is_done(run_file_operation(action, {u"C:\\a"_s}, target, guide)));
            QCOMPARE(tree_of(disks.native(target)), QByteArrayList{"a = new"});
        }
    }
}

void TestFileOperationFaults::target_that_changes_under_a_move_on_one_disk_is_asked_about()
{
    const TwoDisks disks;
    disks.write(u"C:\\a"_s, "new");
    disks.write(u"C:\\to\\a"_s, "old");
    ScriptedGuide guide;
    guide.overwrites = {Overwrite::yes, Overwrite::no};
    guide.on_overwrite = [&disks](const FileFacts&, const FileFacts& target) {
        if (target.size == 3)
            disks.write(u"C:\\to\\a"_s, "valuable");
    };
    QVERIFY(is_done(run_file_operation(FileAction::move, {u"C:\\a"_s}, u"C:\\to"_s, guide)));
    QCOMPARE(guide.take().size(), 2);
    QCOMPARE(tree_of(disks.root()), (QByteArrayList{"a = new", "to/", "to/a = valuable"}));
}

void TestFileOperationFaults::folder_that_appears_is_not_replaced()
{
    const TwoDisks disks;
    disks.write(u"C:\\a"_s, "new");
    ScriptedGuide guide;
    guide.on_progress = [&disks](const FileProgress& progress) {
        if (progress.bytes_done > 0)
            disks.make_folder(u"D:\\a"_s);
    };
    QVERIFY(run_file_operation(FileAction::copy, {u"C:\\a"_s}, u"D:\\"_s, guide).failed);
    QCOMPARE(guide.take(), QStringList{error_text(u"D:\\a"_s, Word::reason_folder_in_the_way)});
    QCOMPARE(tree_of(disks.native(u"D:\\"_s)), QByteArrayList{"a/"});
}

void TestFileOperationFaults::cancel_in_a_large_file_is_prompt()
{
    for (const FileCalls& calls : {FileCalls::of_this_machine(), calls_with_hidden_names()}) {
        const TwoDisks disks;
        constexpr qsizetype size = 60'000'000;
        disks.write(u"C:\\large"_s, content_of_size(size));
        ScriptedGuide guide;
        QElapsedTimer timer;
        guide.on_progress = [&](const FileProgress& progress) {
            QVERIFY(!guide.cancelled);
            if (progress.bytes_done > size / 2) {
                guide.cancelled = true;
                timer.start();
            }
        };
        for (const QString& target : {u"C:\\to"_s, u"D:\\to"_s}) {
            disks.make_folder(target);
            guide.cancelled = false;
            const FileOutcome outcome = run_file_operation(FileAction::copy, {u"C:\\large"_s}, target, guide, calls);
            QVERIFY(timer.elapsed() < 1000); // some milliseconds on a machine that does nothing else
            QVERIFY(outcome.aborted && !outcome.failed);
            QCOMPARE(guide.take(), QStringList());
            QCOMPARE(tree_of(disks.native(target)), QByteArrayList());
        }
    }
}

void TestFileOperationFaults::person_is_heard_often()
{
    const TwoDisks disks;
    constexpr qsizetype size = 3'000'000;
    disks.write(u"C:\\large"_s, content_of_size(size));
    disks.make_folder(u"C:\\to"_s);
    // A disk that takes 200 milliseconds for each MB.
    FileCalls calls = FileCalls::of_this_machine();
    calls.copy_range = [copy_range = calls.copy_range](int source, int target, off_t offset, size_t length) {
        usleep(static_cast<useconds_t>(length / 5));
        return copy_range(source, target, offset, length);
    };
    ScriptedGuide guide;
    QList<qint64> steps;
    qint64 last = 0;
    guide.on_progress = [&](const FileProgress& progress) {
        if (progress.bytes_done > last)
            steps.append(progress.bytes_done - last);
        last = progress.bytes_done;
    };
    QVERIFY(is_done(run_file_operation(FileAction::copy, {u"C:\\large"_s}, u"C:\\to"_s, guide, calls)));
    // Chunks have become so small that each takes some hundredths of a second at most.
    steps.removeLast();
    QVERIFY(*std::ranges::min_element(steps) <= 262'144);
}

void TestFileOperationFaults::killed_copy_leaves_whole_files_alone()
{
    QFETCH(FileAction, action);
    QFETCH(QString, target);
    constexpr int at_random = 5;
    const QByteArray content = content_of_size(300'000);
    for (const FileCalls& calls : {FileCalls::of_this_machine(), calls_with_hidden_names()}) {
        bool has_ended = false;
        for (int round = 1 - at_random; !has_ended || round <= 1; ++round) {
            const TwoDisks disks;
            disks.make_folder(target);
            QStringList sources;
            for (const QString& name : {u"fresh"_s, u"taken"_s}) {
                disks.write(u"C:\\from\\"_s + name, content);
                sources.append(u"C:\\from\\"_s + name);
            }
            disks.write(target + u"\\taken"_s, "old");
            const bool is_random = round < 1;
            const auto microseconds = is_random ? QRandomGenerator::global()->bounded(1U, 30'000U) : 0U;
            has_ended = finishes_before(microseconds, [&] {
                ScriptedGuide guide;
                guide.overwrites = {Overwrite::yes};
                run_file_operation(action, sources, target, guide, is_random ? calls : calls_until(round, calls));
            });
            for (const QString& source : sources) {
                const QByteArray there = disks.read(target + source.sliced(source.lastIndexOf(u'\\')));
                QVERIFY(there == content || (there == "old" && source.endsWith(u"taken")) ||
                        (there.isNull() && source.endsWith(u"fresh")));
                QVERIFY(disks.read(source) == content || (action == FileAction::move && there == content));
            }
            QVERIFY(!has_ended || is_random || disks.read(target + u"\\taken"_s) == content);
        }
    }
}

QUILMO_LOGIC_TEST(TestFileOperationFaults)
#include "test_file_operation_faults.moc"
