#include "file_operations.h"
#include "platform/drives.h"
#include "platform/own_words.h"
#include "rights.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTest>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

using namespace Qt::StringLiterals;
using Overwrite = FileOperationGuide::Overwrite;

namespace {

constexpr qint64 long_ago = 1'000'000'000'123'456'789;

FileOutcome copy(const QStringList& sources, const QString& target, ScriptedGuide& guide,
                 const FileCalls& calls = FileCalls::of_this_machine())
{
    return run_file_operation(FileAction::copy, sources, target, guide, calls);
}

FileCalls calls_without_kernel_copy()
{
    FileCalls calls = FileCalls::of_this_machine();
    calls.copy_range = [](int, int, off_t, size_t) -> ssize_t { return -EXDEV; };
    return calls;
}

FileCalls calls_without_unnamed_files()
{
    FileCalls calls = FileCalls::of_this_machine();
    calls.open_unnamed = [](const QByteArray&) { return -EOPNOTSUPP; };
    return calls;
}

FileCalls calls_of_an_old_kernel()
{
    FileCalls calls = calls_without_kernel_copy();
    calls.open_unnamed = [](const QByteArray&) { return -EISDIR; };
    calls.rename.rename_no_replace = [](const QByteArray&, const QByteArray&) { return ENOSYS; };
    return calls;
}

/// A system that is interrupted at every other call and never does all at once.
FileCalls restless_calls(FileCalls calls)
{
    calls.copy_range = [copy_range = calls.copy_range, turn = 0](int source, int target, off_t offset,
                                                                 size_t length) mutable {
        return ++turn % 2 == 0 ? copy_range(source, target, offset, std::min<size_t>(length, 70'000)) : -EINTR;
    };
    calls.write = [write = calls.write, turn = 0](int file, const char* bytes, size_t length, off_t offset) mutable {
        return ++turn % 2 == 0 ? write(file, bytes, std::min<size_t>(length, 70'000), offset) : -EINTR;
    };
    return calls;
}

} // namespace

class TestFileOperationCopy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void file_arrives_whole_data();
    void file_arrives_whole();
    void time_and_rights_are_kept();
    void folder_arrives_with_all_below();
    void folders_of_one_name_become_one();
    void question_tells_both_files();
    void answers_are_followed_data();
    void answers_are_followed();
    void word_to_all_holds_for_the_whole_operation();
    void overwriting_works_on_every_system_data();
    void overwriting_works_on_every_system();
    void file_and_folder_never_replace_each_other();
    void copy_beside_the_source_gets_a_name_of_its_own();
    void own_folder_is_known_by_any_spelling();
    void file_is_never_copied_onto_itself();
    void folder_never_goes_into_itself_data();
    void folder_never_goes_into_itself();
    void links_are_copied_as_links();
    void pipes_are_told_and_passed_over();
    void names_of_every_kind_arrive();
    void long_name_arrives_or_is_told();
    void holes_stay_holes_data();
    void holes_stay_holes();
    void five_thousand_files_arrive();
    void nothing_to_do_asks_nothing();
    void source_that_leads_nowhere_is_told_data();
    void source_that_leads_nowhere_is_told();
    void target_that_is_no_folder_is_told_once();
    void progress_ends_at_all_bytes();
    void more_is_told_to_follow_until_the_last();
};

void TestFileOperationCopy::file_arrives_whole_data()
{
    QTest::addColumn<FileCalls>("calls");
    QTest::addColumn<int>("size");
    const FileCalls machine = FileCalls::of_this_machine();
    const std::vector<std::pair<const char*, FileCalls>> systems = {
        {"this machine", machine},
        {"a file system that leaves copying to the program", calls_without_kernel_copy()},
        {"a file system without unnamed files", calls_without_unnamed_files()},
        {"an old kernel", calls_of_an_old_kernel()},
        {"a restless system", restless_calls(machine)},
        {"a restless old kernel", restless_calls(calls_of_an_old_kernel())},
    };
    for (const auto& [name, calls] : systems) {
        for (const int size : {0, 1, 70'000, 1024 * 1024, 3 * 1024 * 1024 + 17})
            QTest::addRow("%s, %d bytes", name, size) << calls << size;
    }
}

void TestFileOperationCopy::file_arrives_whole()
{
    QFETCH(FileCalls, calls);
    QFETCH(int, size);
    const TwoDisks disks;
    const QByteArray content = content_of_size(size);
    disks.write(u"C:\\from\\a.mp3"_s, content);
    disks.make_folder(u"C:\\to"_s);

    for (const QString& target : {u"C:\\to"_s, u"D:\\"_s}) {
        ScriptedGuide guide;
        QVERIFY(is_done(copy({u"C:\\from\\a.mp3"_s}, target, guide, calls)));
        QCOMPARE(guide.take(), QStringList());
        QCOMPARE(tree_of(disks.native(target)), QByteArrayList{"a.mp3 = " + content});
    }
    QCOMPARE(disks.read(u"C:\\from\\a.mp3"_s), content);
}

void TestFileOperationCopy::time_and_rights_are_kept()
{
    const TwoDisks disks;
    disks.write(u"C:\\a.mp3"_s, "a");
    disks.write(u"C:\\folder\\b.mp3"_s, "b");
    const QByteArray folder = disks.native(u"C:\\folder"_s);
    chmod(disks.native(u"C:\\a.mp3"_s).constData(), 0640);
    chmod((folder + "/b.mp3").constData(), 04755);
    make_link("b.mp3", folder + "/link");
    for (const QByteArray& native : {disks.native(u"C:\\a.mp3"_s), folder + "/b.mp3", folder + "/link", folder})
        set_modified(native, long_ago);
    chmod(folder.constData(), 0555);

    ScriptedGuide guide;
    const BoundByRights bound;
    QVERIFY(is_done(copy({u"C:\\a.mp3"_s, u"C:\\folder"_s}, u"D:\\"_s, guide)));
    QCOMPARE(guide.take(), QStringList());
    for (const QString& path : {u"D:\\a.mp3"_s, u"D:\\folder\\b.mp3"_s, u"D:\\folder\\link"_s, u"D:\\folder"_s})
        QCOMPARE(modified_at(disks.native(path)), long_ago);
    QCOMPARE(status_at(disks.native(u"D:\\a.mp3"_s)).st_mode & 07777, 0640U);
    QCOMPARE(status_at(disks.native(u"D:\\folder"_s)).st_mode & 07777, 0555U);
    // The new owner has not been given the old one's powers.
    QCOMPARE(status_at(disks.native(u"D:\\folder\\b.mp3"_s)).st_mode & 07777, 0755U);
}

void TestFileOperationCopy::folder_arrives_with_all_below()
{
    const TwoDisks disks;
    disks.write(u"C:\\from\\a.mp3"_s, "a");
    disks.write(u"C:\\from\\deep\\deeper\\b.mp3"_s, "b");
    disks.make_folder(u"C:\\from\\empty"_s);
    disks.make_folder(u"C:\\to"_s);
    const QByteArrayList before = tree_of(disks.native(u"C:\\from"_s));

    for (const QString& target : {u"C:\\to"_s, u"D:\\"_s}) {
        ScriptedGuide guide;
        QVERIFY(is_done(copy({u"C:\\from"_s}, target, guide)));
        QCOMPARE(guide.take(), QStringList());
        QCOMPARE(tree_of(disks.native(target) + "/from"), before);
    }
    QCOMPARE(tree_of(disks.native(u"C:\\from"_s)), before);
}

void TestFileOperationCopy::folders_of_one_name_become_one()
{
    const TwoDisks disks;
    disks.write(u"C:\\album\\a.mp3"_s, "new a");
    disks.write(u"C:\\album\\sub\\b.mp3"_s, "b");
    disks.write(u"D:\\album\\a.mp3"_s, "old a");
    disks.write(u"D:\\album\\c.mp3"_s, "c");
    disks.write(u"D:\\album\\sub\\d.mp3"_s, "d");
    chmod(disks.native(u"D:\\album"_s).constData(), 0710);

    ScriptedGuide guide;
    guide.overwrites = {Overwrite::yes};
    QVERIFY(is_done(copy({u"C:\\album"_s}, u"D:\\"_s, guide)));
    QCOMPARE(guide.take(), QStringList{u"overwrite D:\\album\\a.mp3"_s});
    QCOMPARE(tree_of(disks.native(u"D:\\"_s)),
             (QByteArrayList{"album/", "album/a.mp3 = new a", "album/c.mp3 = c", "album/sub/", "album/sub/b.mp3 = b",
                             "album/sub/d.mp3 = d"}));
    QCOMPARE(status_at(disks.native(u"D:\\album"_s)).st_mode & 07777, 0710U);
}

void TestFileOperationCopy::question_tells_both_files()
{
    const TwoDisks disks;
    disks.write(u"C:\\a.mp3"_s, "new a");
    disks.write(u"D:\\a.mp3"_s, "older a");
    set_modified(disks.native(u"C:\\a.mp3"_s), long_ago);

    ScriptedGuide guide;
    guide.overwrites = {Overwrite::no};
    guide.on_overwrite = [](const FileFacts& source, const FileFacts& target) {
        QCOMPARE(source.path, u"C:\\a.mp3"_s);
        QCOMPARE(source.size, 5);
        QCOMPARE(source.modified_seconds, 1'000'000'000);
        QVERIFY(!source.is_folder && !target.is_folder);
        QCOMPARE(target.path, u"D:\\a.mp3"_s);
        QCOMPARE(target.size, 7);
        QVERIFY(target.modified_seconds > 1'000'000'000);
    };
    QVERIFY(is_done(copy({u"C:\\a.mp3"_s}, u"D:\\"_s, guide)));
    QCOMPARE(guide.take().size(), 1);
}

void TestFileOperationCopy::answers_are_followed_data()
{
    QTest::addColumn<QList<Overwrite>>("answers");
    QTest::addColumn<QByteArrayList>("contents");
    QTest::addColumn<bool>("aborted");
    const QByteArrayList all_old = {"a = old", "b = old", "c = old"};

    QTest::newRow("yes each time") << QList{Overwrite::yes, Overwrite::yes, Overwrite::yes}
                                   << QByteArrayList{"a = new", "b = new", "c = new"} << false;
    QTest::newRow("no each time") << QList{Overwrite::no, Overwrite::no, Overwrite::no} << all_old << false;
    QTest::newRow("no for one") << QList{Overwrite::yes, Overwrite::no, Overwrite::yes}
                                << QByteArrayList{"a = new", "b = old", "c = new"} << false;
    QTest::newRow("yes to all") << QList{Overwrite::yes_to_all} << QByteArrayList{"a = new", "b = new", "c = new"}
                                << false;
    QTest::newRow("no to all") << QList{Overwrite::no_to_all} << all_old << false;
    QTest::newRow("no, then yes to all") << QList{Overwrite::no, Overwrite::yes_to_all}
                                         << QByteArrayList{"a = old", "b = new", "c = new"} << false;
    QTest::newRow("cancel at once") << QList{Overwrite::cancel} << all_old << true;
    QTest::newRow("cancel later") << QList{Overwrite::yes, Overwrite::cancel}
                                  << QByteArrayList{"a = new", "b = old", "c = old"} << true;
}

void TestFileOperationCopy::answers_are_followed()
{
    QFETCH(QList<Overwrite>, answers);
    QFETCH(QByteArrayList, contents);
    QFETCH(bool, aborted);
    for (const FileAction action : {FileAction::copy, FileAction::move}) {
        for (const QString& target : {u"C:\\to"_s, u"D:\\to"_s}) {
            const TwoDisks disks;
            QStringList sources;
            for (const QString& name : {u"a"_s, u"b"_s, u"c"_s}) {
                disks.write(u"C:\\from\\"_s + name, "new");
                disks.write(target + u'\\' + name, "old");
                sources.append(u"C:\\from\\"_s + name);
            }
            ScriptedGuide guide;
            guide.overwrites = answers;
            const FileOutcome outcome = run_file_operation(action, sources, target, guide);
            QCOMPARE(outcome.aborted, aborted);
            QVERIFY(!outcome.failed);
            QCOMPARE(guide.take().size(), answers.size());
            QCOMPARE(tree_of(disks.native(target)), contents);
            for (const QByteArray& line : contents) {
                const bool has_gone = action == FileAction::move && line.endsWith("new");
                QCOMPARE(disks.exists(u"C:\\from\\"_s + QString::fromUtf8(line.first(1))), !has_gone);
            }
        }
    }
}

void TestFileOperationCopy::word_to_all_holds_for_the_whole_operation()
{
    const TwoDisks disks;
    for (const QString& path : {u"C:\\x\\a"_s, u"C:\\x\\y\\a"_s, u"C:\\a"_s})
        disks.write(path, "new");
    for (const QString& path : {u"D:\\x\\a"_s, u"D:\\x\\y\\a"_s, u"D:\\a"_s})
        disks.write(path, "old");
    ScriptedGuide guide;
    guide.overwrites = {Overwrite::yes_to_all};
    QVERIFY(is_done(copy({u"C:\\x"_s, u"C:\\a"_s}, u"D:\\"_s, guide)));
    QCOMPARE(guide.take().size(), 1);
    QCOMPARE(tree_of(disks.native(u"D:\\"_s)), (QByteArrayList{"a = new", "x/", "x/a = new", "x/y/", "x/y/a = new"}));

    disks.write(u"C:\\a"_s, "newer");
    guide.overwrites = {Overwrite::no};
    QVERIFY(is_done(copy({u"C:\\a"_s}, u"D:\\"_s, guide)));
    QCOMPARE(guide.take(), QStringList{u"overwrite D:\\a"_s});
}

void TestFileOperationCopy::overwriting_works_on_every_system_data()
{
    QTest::addColumn<FileCalls>("calls");
    QTest::newRow("this machine") << FileCalls::of_this_machine();
    QTest::newRow("a file system without unnamed files") << calls_without_unnamed_files();
    QTest::newRow("an old kernel") << calls_of_an_old_kernel();
}

void TestFileOperationCopy::overwriting_works_on_every_system()
{
    QFETCH(FileCalls, calls);
    const TwoDisks disks;
    disks.write(u"C:\\a"_s, "new");
    disks.write(u"D:\\a"_s, "older");
    make_link("nowhere", disks.native(u"C:\\l"_s));
    disks.write(u"D:\\l"_s, "file");
    chmod(disks.native(u"D:\\a"_s).constData(), 0444);
    ScriptedGuide guide;
    guide.overwrites = {Overwrite::yes, Overwrite::yes};
    QVERIFY(is_done(copy({u"C:\\a"_s, u"C:\\l"_s}, u"D:\\"_s, guide, calls)));
    QCOMPARE(tree_of(disks.native(u"D:\\"_s)), (QByteArrayList{"a = new", "l -> nowhere"}));
}

void TestFileOperationCopy::file_and_folder_never_replace_each_other()
{
    for (const FileAction action : {FileAction::copy, FileAction::move}) {
        for (const QString& target : {u"C:\\to"_s, u"D:\\to"_s}) {
            const TwoDisks disks;
            disks.write(u"C:\\file"_s, "file");
            disks.write(u"C:\\folder\\a"_s, "a");
            disks.write(u"C:\\toward"_s, "file");
            disks.write(target + u"\\file\\inside"_s, "inside");
            disks.write(target + u"\\folder"_s, "old file");
            disks.make_folder(u"C:\\elsewhere"_s);
            make_link(disks.native(u"C:\\elsewhere"_s), disks.native(target) + "/toward");
            const QByteArrayList before = tree_of(disks.native(target));

            ScriptedGuide guide;
            const FileOutcome outcome =
                run_file_operation(action, {u"C:\\file"_s, u"C:\\folder"_s, u"C:\\toward"_s}, target, guide);
            QVERIFY(outcome.failed && !outcome.aborted);
            QCOMPARE(guide.take(),
                     (QStringList{error_text(target + u"\\file"_s, Word::reason_folder_in_the_way) + u" ..."_s,
                                  error_text(target + u"\\folder"_s, Word::reason_file_in_the_way) + u" ..."_s,
                                  error_text(target + u"\\toward"_s, Word::reason_folder_in_the_way)}));
            QCOMPARE(tree_of(disks.native(target)), before);
            QCOMPARE(disks.read(u"C:\\folder\\a"_s), QByteArray("a"));
            QCOMPARE(disks.read(u"C:\\file"_s), QByteArray("file"));
        }
    }
}

void TestFileOperationCopy::copy_beside_the_source_gets_a_name_of_its_own()
{
    const TwoDisks disks;
    for (const QString& name : {u"a.b.mp3"_s, u"bare"_s, u".hidden"_s, u"f.d\\in"_s})
        disks.write(u"C:\\"_s + name, "x");
    const QStringList sources = {u"C:\\a.b.mp3"_s, u"C:\\bare"_s, u"C:\\.hidden"_s, u"C:\\f.d"_s};
    ScriptedGuide guide;
    for (int i = 0; i < 3; ++i)
        QVERIFY(is_done(copy(sources, u"C:\\"_s, guide)));
    QCOMPARE(guide.take(), QStringList());
    QByteArrayList expected;
    for (const char* const name : {".hidden", "Copy of .hidden", "Copy of .hidden (2)", "Copy of .hidden (3)",
                                   "Copy of a.b.mp3", "Copy of a.b (2).mp3", "Copy of a.b (3).mp3", "Copy of bare",
                                   "Copy of bare (2)", "Copy of bare (3)", "a.b.mp3", "bare"})
        expected.append(QByteArray(name) + " = x");
    for (const char* const name : {"Copy of f.d", "Copy of f.d (2)", "Copy of f.d (3)", "f.d"})
        expected << QByteArray(name) + '/' << QByteArray(name) + "/in = x";
    std::ranges::sort(expected);
    QCOMPARE(tree_of(disks.root()), expected);
}

void TestFileOperationCopy::own_folder_is_known_by_any_spelling()
{
    const TwoDisks disks;
    disks.write(u"C:\\real\\a"_s, "a");
    make_link("real", disks.native(u"C:\\link"_s));
    ScriptedGuide guide;
    QVERIFY(is_done(copy({u"C:\\real\\a"_s}, u"C:\\link"_s, guide)));
    QVERIFY(is_done(copy({u"C:\\link\\a"_s}, u"C:\\real\\"_s, guide)));
    QCOMPARE(guide.take(), QStringList());
    QCOMPARE(tree_of(disks.native(u"C:\\real"_s)), (QByteArrayList{"Copy of a (2) = a", "Copy of a = a", "a = a"}));
}

void TestFileOperationCopy::file_is_never_copied_onto_itself()
{
    for (const FileAction action : {FileAction::copy, FileAction::move}) {
        const TwoDisks disks;
        disks.write(u"C:\\from\\hard"_s, "hard");
        disks.write(u"C:\\from\\source"_s, "source");
        disks.write(u"C:\\to\\target"_s, "target");
        QCOMPARE(link(disks.native(u"C:\\from\\hard"_s).constData(), disks.native(u"C:\\to\\hard"_s).constData()), 0);
        make_link("../from/source", disks.native(u"C:\\to\\source"_s));
        make_link("../to/target", disks.native(u"C:\\from\\target"_s));
        const QByteArrayList before = tree_of(disks.root());

        const QStringList sources = {u"C:\\from\\hard"_s, u"C:\\from\\source"_s, u"C:\\from\\target"_s};
        ScriptedGuide guide;
        QVERIFY(run_file_operation(action, sources, u"C:\\to"_s, guide).failed);
        QCOMPARE(guide.take(), (QStringList{error_text(sources[0], Word::reason_same_file) + u" ..."_s,
                                            error_text(sources[1], Word::reason_same_file) + u" ..."_s,
                                            error_text(sources[2], Word::reason_same_file)}));
        QCOMPARE(tree_of(disks.root()), before);
    }
}

void TestFileOperationCopy::folder_never_goes_into_itself_data()
{
    QTest::addColumn<QString>("target");
    QTest::newRow("into itself") << u"C:\\f"_s;
    QTest::newRow("into itself, with a backslash") << u"C:\\f\\"_s;
    QTest::newRow("into a folder inside") << u"C:\\f\\sub\\deep"_s;
    QTest::newRow("through a link to itself") << u"C:\\link"_s;
    QTest::newRow("through a link that leads inside") << u"C:\\inside"_s;
    QTest::newRow("through another drive") << u"E:\\"_s;
}

void TestFileOperationCopy::folder_never_goes_into_itself()
{
    QFETCH(QString, target);
    const TwoDisks disks;
    disks.write(u"C:\\f\\sub\\deep\\a"_s, "a");
    make_link("f", disks.native(u"C:\\link"_s));
    make_link("f/sub", disks.native(u"C:\\inside"_s));
    std::vector<Drive> more = drives();
    more.push_back(more.front());
    more.back().DriveLetter = u"E"_s;
    more.back().mount_point = disks.root() + "/inside";
    set_drives(more);
    const QByteArrayList before = tree_of(disks.root());
    for (const FileAction action : {FileAction::copy, FileAction::move}) {
        ScriptedGuide guide;
        QVERIFY(run_file_operation(action, {u"C:\\f"_s}, target, guide).failed);
        QCOMPARE(guide.take(), QStringList{error_text(u"C:\\f"_s, Word::reason_into_itself)});
        QCOMPARE(tree_of(disks.root()), before);
    }
}

void TestFileOperationCopy::links_are_copied_as_links()
{
    const TwoDisks disks;
    disks.write(u"C:\\outside\\secret"_s, "secret");
    disks.make_folder(u"C:\\f"_s);
    const QByteArray folder = disks.native(u"C:\\f"_s);
    make_link("../outside", folder + "/to_folder");
    make_link("../outside/secret", folder + "/to_file");
    make_link("nowhere", folder + "/broken");
    make_link(".", folder + "/round");
    ScriptedGuide guide;
    QVERIFY(is_done(copy({u"C:\\f"_s}, u"D:\\"_s, guide)));
    QVERIFY(is_done(copy({u"C:\\f\\broken"_s}, u"D:\\"_s, guide)));
    QCOMPARE(guide.take(), QStringList());
    QCOMPARE(tree_of(disks.native(u"D:\\"_s)),
             (QByteArrayList{"broken -> nowhere", "f/", "f/broken -> nowhere", "f/round -> .",
                             "f/to_file -> ../outside/secret", "f/to_folder -> ../outside"}));
}

void TestFileOperationCopy::pipes_are_told_and_passed_over()
{
    const TwoDisks disks;
    disks.write(u"C:\\f\\a"_s, "a");
    disks.write(u"C:\\z"_s, "z");
    QCOMPARE(mkfifo(disks.native(u"C:\\f\\pipe"_s).constData(), 0600), 0);
    ScriptedGuide guide;
    QVERIFY(copy({u"C:\\f"_s, u"C:\\z"_s}, u"D:\\"_s, guide).failed);
    QCOMPARE(guide.take(), QStringList{error_text(u"C:\\f\\pipe"_s, Word::reason_special_file) + u" ..."_s});
    QCOMPARE(tree_of(disks.native(u"D:\\"_s)), (QByteArrayList{"f/", "f/a = a", "z = z"}));

    // Nor does a file take a pipe's place.
    disks.write(u"C:\\pipe"_s, "file");
    QCOMPARE(mkfifo(disks.native(u"D:\\pipe"_s).constData(), 0600), 0);
    QVERIFY(copy({u"C:\\pipe"_s}, u"D:\\"_s, guide).failed);
    QCOMPARE(guide.take(), QStringList{error_text(u"D:\\pipe"_s, Word::reason_special_file)});
    QVERIFY(S_ISFIFO(status_at(disks.native(u"D:\\pipe"_s)).st_mode));
}

void TestFileOperationCopy::names_of_every_kind_arrive()
{
    const TwoDisks disks;
    disks.make_folder(u"C:\\f"_s);
    const QByteArrayList names = {"\xFF\xFE.mp3", "caf\xC3\xA9.mp3", "caf\xE9.mp3", "a\\b.mp3",
                                  "line\nbreak",  "%41 %1 %2",       " ",           "한글.mp3"};
    QByteArrayList expected;
    for (const QByteArray& name : names) {
        write_native(disks.native(u"C:\\f"_s) + '/' + name, name);
        expected.append(name + " = " + name);
    }
    std::ranges::sort(expected);
    ScriptedGuide guide;
    QVERIFY(is_done(copy({u"C:\\f"_s}, u"D:\\"_s, guide)));
    QCOMPARE(tree_of(disks.native(u"D:\\f"_s)), expected);

    QVERIFY(is_done(
        copy({u"D:\\f\\%41 %1 %2"_s, u"D:\\f\\"_s + QChar(0xDCFF) + QChar(0xDCFE) + u".mp3"_s}, u"D:\\f"_s, guide)));
    QVERIFY(stands(disks.native(u"D:\\f"_s) + "/Copy of %41 %1 %2"));
    QVERIFY(stands(disks.native(u"D:\\f"_s) + "/Copy of \xFF\xFE.mp3"));
    QCOMPARE(guide.take(), QStringList());
}

void TestFileOperationCopy::long_name_arrives_or_is_told()
{
    const TwoDisks disks;
    const QString name(255, u'n');
    disks.write(u"C:\\"_s + name, "x");
    ScriptedGuide guide;
    QVERIFY(is_done(copy({u"C:\\"_s + name}, u"D:\\"_s, guide)));
    QCOMPARE(disks.read(u"D:\\"_s + name), QByteArray("x"));
    QVERIFY(copy({u"C:\\"_s + name}, u"C:\\"_s, guide).failed);
    QCOMPARE(guide.take(), QStringList{error_text(u"C:\\Copy of "_s + name, ENAMETOOLONG)});
    QCOMPARE(tree_of(disks.root()).size(), 1);
}

void TestFileOperationCopy::holes_stay_holes_data()
{
    QTest::addColumn<FileCalls>("calls");
    QTest::addColumn<QString>("target");
    QTest::newRow("within a disk") << FileCalls::of_this_machine() << u"C:\\to"_s;
    QTest::newRow("to another disk") << FileCalls::of_this_machine() << u"D:\\to"_s;
    QTest::newRow("by reading and writing") << calls_without_kernel_copy() << u"C:\\to"_s;
}

void TestFileOperationCopy::holes_stay_holes()
{
    QFETCH(FileCalls, calls);
    QFETCH(QString, target);
    constexpr off_t size = 5'000'000'000;
    const TwoDisks disks;
    disks.make_folder(target);
    disks.write(u"C:\\big"_s, "start");
    const QByteArray source = disks.native(u"C:\\big"_s);
    const int file = open(source.constData(), O_WRONLY | O_CLOEXEC);
    QCOMPARE(pwrite(file, "middle", 6, 3'000'000'000), 6);
    QCOMPARE(ftruncate(file, size), 0);
    close(file);

    ScriptedGuide guide;
    QElapsedTimer timer;
    timer.start();
    QVERIFY(is_done(copy({u"C:\\big"_s}, target, guide, calls)));
    QVERIFY(timer.elapsed() < 20'000);
    QCOMPARE(guide.last_progress.bytes_done, size);
    const QByteArray copied = disks.native(target) + "/big";
    QCOMPARE(status_at(copied).st_size, size);
    QVERIFY(status_at(copied).st_blocks < 10'000);
    const int result = open(copied.constData(), O_RDONLY | O_CLOEXEC);
    std::array<char, 6> read{};
    QCOMPARE(pread(result, read.data(), 5, 0), 5);
    QCOMPARE(QByteArray(read.data(), 5), QByteArray("start"));
    QCOMPARE(pread(result, read.data(), 6, 3'000'000'000), 6);
    QCOMPARE(QByteArray(read.data(), 6), QByteArray("middle"));
    close(result);
}

void TestFileOperationCopy::five_thousand_files_arrive()
{
    const TwoDisks disks;
    disks.make_folder(u"D:\\from"_s);
    disks.make_folder(u"D:\\to"_s);
    QStringList sources;
    for (int i = 0; i < 5000; ++i) {
        sources.append(u"D:\\from\\%1"_s.arg(i));
        write_native(disks.native(sources.last()), QByteArray::number(i));
    }
    ScriptedGuide guide;
    QElapsedTimer timer;
    timer.start();
    QVERIFY(is_done(copy(sources, u"D:\\to"_s, guide)));
    QVERIFY(timer.elapsed() < 60'000);
    QCOMPARE(guide.take(), QStringList());
    QCOMPARE(tree_of(disks.native(u"D:\\to"_s)), tree_of(disks.native(u"D:\\from"_s)));
    QVERIFY(guide.progress_count >= 5000);
}

void TestFileOperationCopy::nothing_to_do_asks_nothing()
{
    const TwoDisks disks;
    for (const FileAction action : {FileAction::copy, FileAction::move, FileAction::remove, FileAction::rename}) {
        ScriptedGuide guide;
        QVERIFY(is_done(run_file_operation(action, {}, u"X:\\nowhere"_s, guide)));
        QCOMPARE(guide.take(), QStringList());
    }
}

void TestFileOperationCopy::source_that_leads_nowhere_is_told_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("question");
    QTest::newRow("gone") << u"C:\\gone"_s << error_text(u"C:\\gone"_s, ENOENT);
    QTest::newRow("in a folder that is gone") << u"C:\\gone\\a"_s << error_text(u"C:\\gone\\a"_s, ENOENT);
    QTest::newRow("below a file") << u"C:\\a\\b"_s << error_text(u"C:\\a\\b"_s, ENOTDIR);
    QTest::newRow("on no drive") << u"X:\\a"_s << error_text(u"X:\\a"_s, Word::reason_no_place);
    QTest::newRow("an empty path") << QString() << error_text(QString(), Word::reason_no_place);
    QTest::newRow("no path at all") << u"MYCOMPUTER"_s << error_text(u"MYCOMPUTER"_s, Word::reason_no_place);
    QTest::newRow("a name that no file bears") << u"C:\\a/b"_s << error_text(u"C:\\a/b"_s, Word::reason_no_place);
    QTest::newRow("a drive") << u"C:"_s << error_text(u"C:"_s, Word::reason_drive);
    QTest::newRow("a drive with backslash") << u"C:\\"_s << error_text(u"C:"_s, Word::reason_drive);
}

void TestFileOperationCopy::source_that_leads_nowhere_is_told()
{
    QFETCH(QString, source);
    QFETCH(QString, question);
    for (const FileAction action : {FileAction::copy, FileAction::move, FileAction::remove}) {
        const TwoDisks disks;
        disks.write(u"C:\\a"_s, "a");
        disks.write(u"C:\\z"_s, "z");
        ScriptedGuide guide;
        QVERIFY(run_file_operation(action, {source, u"C:\\z"_s}, u"D:\\"_s, guide).failed);
        QVERIFY(guide.take().contains(question + u" ..."_s));
        QCOMPARE(disks.read(u"C:\\a"_s), QByteArray("a"));
        QCOMPARE(disks.exists(u"C:\\z"_s), action == FileAction::copy);
    }
}

void TestFileOperationCopy::target_that_is_no_folder_is_told_once()
{
    const TwoDisks disks;
    disks.write(u"C:\\a"_s, "a");
    disks.write(u"C:\\b"_s, "b");
    for (const FileAction action : {FileAction::copy, FileAction::move}) {
        ScriptedGuide guide;
        const QStringList sources = {u"C:\\a"_s, u"C:\\b"_s};
        QVERIFY(run_file_operation(action, sources, u"D:\\none"_s, guide).failed);
        QVERIFY(run_file_operation(action, sources, u"C:\\b"_s, guide).failed);
        QVERIFY(run_file_operation(action, sources, u"MYCOMPUTER"_s, guide).failed);
        QCOMPARE(guide.take(), (QStringList{error_text(u"D:\\none"_s, ENOENT), error_text(u"C:\\b"_s, ENOTDIR),
                                            error_text(u"MYCOMPUTER"_s, Word::reason_no_place)}));
        QCOMPARE(tree_of(disks.root()), (QByteArrayList{"a = a", "b = b"}));
    }
}

void TestFileOperationCopy::progress_ends_at_all_bytes()
{
    const TwoDisks disks;
    disks.write(u"C:\\f\\a"_s, content_of_size(2'000'000));
    disks.write(u"C:\\f\\taken"_s, content_of_size(1000));
    disks.write(u"C:\\b"_s, content_of_size(500));
    disks.write(u"D:\\f\\taken"_s, "old");
    ScriptedGuide guide;
    guide.overwrites = {Overwrite::no};
    qint64 done = 0;
    bool was_counting = false;
    QStringList names;
    guide.on_progress = [&](const FileProgress& progress) {
        was_counting = was_counting || progress.bytes_all == 0;
        QVERIFY(progress.bytes_all == 0 || progress.bytes_all == 2'001'500);
        QVERIFY(progress.bytes_done >= done && progress.bytes_done <= 2'001'500);
        done = progress.bytes_done;
        names.append(progress.name);
    };
    QVERIFY(is_done(copy({u"C:\\f"_s, u"C:\\b"_s}, u"D:\\"_s, guide)));
    QVERIFY(was_counting);
    QCOMPARE(done, 2'001'500);
    QVERIFY(names.contains(u"a"_s) && names.contains(u"b"_s));
}

void TestFileOperationCopy::more_is_told_to_follow_until_the_last()
{
    const TwoDisks disks;
    for (const QString& name : {u"f\\p"_s, u"f\\g\\q"_s}) {
        disks.make_folder(u"C:\\f\\g"_s);
        QCOMPARE(mkfifo(disks.native(u"C:\\"_s + name).constData(), 0600), 0);
    }
    ScriptedGuide guide;
    QVERIFY(copy({u"C:\\f"_s, u"C:\\f"_s}, u"D:\\"_s, guide).failed);
    const QStringList questions = guide.take();
    QCOMPARE(questions.size(), 4);
    for (int i = 0; i < 4; ++i)
        QCOMPARE(questions[i].endsWith(u" ..."_s), i < 3);

    guide.on_error = FileOperationGuide::OnError::cancel;
    const FileOutcome outcome = copy({u"C:\\f"_s, u"C:\\f"_s}, u"D:\\"_s, guide);
    QVERIFY(outcome.failed && outcome.aborted);
    QCOMPARE(guide.take().size(), 1);
}

QUILMO_LOGIC_TEST(TestFileOperationCopy)
#include "test_file_operation_copy.moc"
