#include "file_operations.h"
#include "rights.h"

#include <QCoreApplication>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

using namespace Qt::StringLiterals;
using Overwrite = FileOperationGuide::Overwrite;

namespace {

constexpr qint64 long_ago = 1'000'000'000'123'456'789;

FileOutcome move(const QStringList& sources, const QString& target, ScriptedGuide& guide,
                 const FileCalls& calls = FileCalls::of_this_machine())
{
    return run_file_operation(FileAction::move, sources, target, guide, calls);
}

FileOutcome rename(const QString& source, const QString& target, ScriptedGuide& guide)
{
    return run_file_operation(FileAction::rename, {source}, target, guide);
}

} // namespace

class TestFileOperationMove : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everything_arrives_and_leaves_data();
    void everything_arrives_and_leaves();
    void move_on_one_disk_keeps_the_very_file();
    void folders_of_one_name_become_one_data();
    void folders_of_one_name_become_one();
    void move_to_where_it_is_does_nothing();
    void time_and_rights_cross_disks();
    void pipes_stay_where_they_are();
    void source_changed_after_its_copy_stays();
    void copy_changed_before_the_end_keeps_the_source();
    void file_that_comes_meanwhile_keeps_its_folder();
    void unsynced_copy_keeps_the_source_data();
    void unsynced_copy_keeps_the_source();
    void cancel_leaves_each_source_whole_on_one_side();
    void source_that_cannot_be_deleted_is_told();
    void renames_data();
    void renames();
    void rename_never_replaces();
    void rename_that_fails_is_told_data();
    void rename_that_fails_is_told();
};

void TestFileOperationMove::everything_arrives_and_leaves_data()
{
    QTest::addColumn<QString>("target");
    QTest::newRow("on one disk") << u"C:\\to"_s;
    QTest::newRow("to another disk") << u"D:\\to"_s;
}

void TestFileOperationMove::everything_arrives_and_leaves()
{
    QFETCH(QString, target);
    const TwoDisks disks;
    disks.write(u"C:\\from\\a.mp3"_s, content_of_size(100'000));
    disks.write(u"C:\\from\\f\\g\\b.mp3"_s, "b");
    disks.make_folder(u"C:\\from\\f\\empty"_s);
    disks.write(u"C:\\outside\\x"_s, "x");
    disks.make_folder(target);
    const QByteArray from = disks.native(u"C:\\from"_s);
    make_link("../../outside", from + "/f/link");
    make_link("nowhere", from + "/broken");
    write_native(from + "/f/\xFF.mp3", "bytes");
    const QByteArrayList before = tree_of(from);

    ScriptedGuide guide;
    QVERIFY(is_done(move({u"C:\\from\\a.mp3"_s, u"C:\\from\\f"_s, u"C:\\from\\broken"_s}, target, guide)));
    QCOMPARE(guide.take(), QStringList());
    QCOMPARE(tree_of(disks.native(target)), before);
    QCOMPARE(tree_of(from), QByteArrayList());
    QCOMPARE(disks.read(u"C:\\outside\\x"_s), QByteArray("x"));
}

void TestFileOperationMove::move_on_one_disk_keeps_the_very_file()
{
    const TwoDisks disks;
    disks.write(u"C:\\a"_s, "new");
    disks.write(u"C:\\f\\b"_s, "b");
    disks.write(u"C:\\to\\a"_s, "old");
    QCOMPARE(mkfifo(disks.native(u"C:\\f\\pipe"_s).constData(), 0600), 0);
    const ino_t file = status_at(disks.native(u"C:\\a"_s)).st_ino;
    const ino_t folder = status_at(disks.native(u"C:\\f"_s)).st_ino;
    ScriptedGuide guide;
    guide.overwrites = {Overwrite::yes};
    QVERIFY(is_done(move({u"C:\\a"_s, u"C:\\f"_s}, u"C:\\to"_s, guide)));
    QCOMPARE(guide.take(), QStringList{u"overwrite C:\\to\\a"_s});
    QCOMPARE(status_at(disks.native(u"C:\\to\\a"_s)).st_ino, file);
    QCOMPARE(status_at(disks.native(u"C:\\to\\f"_s)).st_ino, folder);
    QCOMPARE(tree_of(disks.root()), (QByteArrayList{"to/", "to/a = new", "to/f/", "to/f/b = b", "to/f/pipe ?"}));
}

void TestFileOperationMove::folders_of_one_name_become_one_data()
{
    everything_arrives_and_leaves_data();
}

void TestFileOperationMove::folders_of_one_name_become_one()
{
    QFETCH(QString, target);
    const TwoDisks disks;
    for (const QString& name : {u"a"_s, u"kept"_s, u"sub\\b"_s, u"sub\\only\\c"_s})
        disks.write(u"C:\\album\\"_s + name, "new");
    for (const QString& name : {u"a"_s, u"kept"_s, u"sub\\b"_s, u"sub\\d"_s})
        disks.write(target + u"\\album\\"_s + name, "old");

    ScriptedGuide guide;
    guide.overwrites = {Overwrite::yes, Overwrite::yes, Overwrite::yes};
    guide.on_overwrite = [&guide](const FileFacts& source, const FileFacts&) {
        guide.overwrites.first() = source.path.endsWith(u"kept") ? Overwrite::no : Overwrite::yes;
    };
    QVERIFY(is_done(move({u"C:\\album"_s}, target, guide)));
    QCOMPARE(guide.take().size(), 3);
    QCOMPARE(tree_of(disks.native(target)),
             (QByteArrayList{"album/", "album/a = new", "album/kept = old", "album/sub/", "album/sub/b = new",
                             "album/sub/d = old", "album/sub/only/", "album/sub/only/c = new"}));
    QCOMPARE(tree_of(disks.native(u"C:\\album"_s)), QByteArrayList{"kept = new"});
}

void TestFileOperationMove::move_to_where_it_is_does_nothing()
{
    const TwoDisks disks;
    disks.write(u"C:\\f\\a"_s, "a");
    disks.write(u"C:\\f\\g\\b"_s, "b");
    make_link("f", disks.native(u"C:\\link"_s));
    const QByteArrayList before = tree_of(disks.root());
    ScriptedGuide guide;
    QVERIFY(is_done(move({u"C:\\f\\a"_s, u"C:\\f\\g"_s}, u"C:\\f"_s, guide)));
    QVERIFY(is_done(move({u"C:\\f\\a"_s, u"C:\\f\\g\\"_s}, u"C:\\link"_s, guide)));
    QVERIFY(is_done(move({u"C:\\link\\a"_s}, u"C:\\f\\"_s, guide)));
    QCOMPARE(guide.take(), QStringList());
    QCOMPARE(tree_of(disks.root()), before);
    QVERIFY(move({u"C:\\f\\gone"_s}, u"C:\\f"_s, guide).failed);
    QCOMPARE(guide.take(), QStringList{error_text(u"C:\\f\\gone"_s, ENOENT)});
}

void TestFileOperationMove::time_and_rights_cross_disks()
{
    const TwoDisks disks;
    disks.write(u"C:\\f\\a"_s, "a");
    chmod(disks.native(u"C:\\f\\a"_s).constData(), 0440);
    chmod(disks.native(u"C:\\f"_s).constData(), 0750);
    set_modified(disks.native(u"C:\\f\\a"_s), long_ago);
    set_modified(disks.native(u"C:\\f"_s), long_ago);
    ScriptedGuide guide;
    QVERIFY(is_done(move({u"C:\\f"_s}, u"D:\\"_s, guide)));
    QCOMPARE(modified_at(disks.native(u"D:\\f\\a"_s)), long_ago);
    QCOMPARE(modified_at(disks.native(u"D:\\f"_s)), long_ago);
    QCOMPARE(status_at(disks.native(u"D:\\f\\a"_s)).st_mode & 07777, 0440U);
    QCOMPARE(status_at(disks.native(u"D:\\f"_s)).st_mode & 07777, 0750U);
}

void TestFileOperationMove::pipes_stay_where_they_are()
{
    const TwoDisks disks;
    if (!disks.are_two())
        QSKIP("there is one file system alone");
    disks.write(u"C:\\f\\a"_s, "a");
    QCOMPARE(mkfifo(disks.native(u"C:\\f\\pipe"_s).constData(), 0600), 0);
    ScriptedGuide guide;
    QVERIFY(move({u"C:\\f"_s}, u"D:\\"_s, guide).failed);
    QVERIFY(guide.take().first().startsWith(error_text(u"C:\\f\\pipe"_s, Word::reason_special_file)));
    QCOMPARE(tree_of(disks.native(u"D:\\f"_s)), QByteArrayList{"a = a"});
    QCOMPARE(tree_of(disks.root()), (QByteArrayList{"f/", "f/pipe ?"}));
}

void TestFileOperationMove::source_changed_after_its_copy_stays()
{
    const TwoDisks disks;
    if (!disks.are_two())
        QSKIP("there is one file system alone");
    disks.write(u"C:\\a"_s, "old");
    disks.write(u"C:\\b"_s, "b");
    ScriptedGuide guide;
    guide.on_progress = [&disks](const FileProgress& progress) {
        if (progress.name == u"b" && disks.exists(u"D:\\a"_s))
            disks.write(u"C:\\a"_s, "changed");
    };
    QVERIFY(move({u"C:\\a"_s, u"C:\\b"_s}, u"D:\\"_s, guide).failed);
    QCOMPARE(guide.take(), QStringList{error_text(u"C:\\a"_s, Word::reason_changed_later) + u" ..."_s});
    QCOMPARE(tree_of(disks.root()), QByteArrayList{"a = changed"});
    QCOMPARE(tree_of(disks.native(u"D:\\"_s)), (QByteArrayList{"a = old", "b = b"}));
}

void TestFileOperationMove::copy_changed_before_the_end_keeps_the_source()
{
    for (const bool removes : {true, false}) {
        const TwoDisks disks;
        if (!disks.are_two())
            QSKIP("there is one file system alone");
        disks.write(u"C:\\a"_s, "a");
        disks.write(u"C:\\b"_s, "b");
        ScriptedGuide guide;
        guide.on_progress = [&](const FileProgress& progress) {
            if (progress.name != u"b" || !disks.exists(u"D:\\a"_s))
                return;
            if (removes)
                unlink(disks.native(u"D:\\a"_s).constData());
            else
                disks.write(u"D:\\a"_s, "longer");
        };
        QVERIFY(move({u"C:\\a"_s, u"C:\\b"_s}, u"D:\\"_s, guide).failed);
        QCOMPARE(guide.take(), QStringList{error_text(u"C:\\a"_s, Word::reason_changed_later) + u" ..."_s});
        QCOMPARE(tree_of(disks.root()), QByteArrayList{"a = a"});
    }
}

void TestFileOperationMove::file_that_comes_meanwhile_keeps_its_folder()
{
    const TwoDisks disks;
    if (!disks.are_two())
        QSKIP("there is one file system alone");
    disks.write(u"C:\\f\\a"_s, "a");
    ScriptedGuide guide;
    guide.on_progress = [&disks](const FileProgress& progress) {
        if (progress.bytes_done > 0)
            disks.write(u"C:\\f\\late"_s, "late");
    };
    QVERIFY(is_done(move({u"C:\\f"_s}, u"D:\\"_s, guide)));
    QCOMPARE(tree_of(disks.root()), (QByteArrayList{"f/", "f/late = late"}));
    QCOMPARE(tree_of(disks.native(u"D:\\"_s)), (QByteArrayList{"f/", "f/a = a"}));
}

void TestFileOperationMove::unsynced_copy_keeps_the_source_data()
{
    QTest::addColumn<bool>("fails_for_folders");
    QTest::newRow("the file could not be written to the disk") << false;
    QTest::newRow("the folder could not be written to the disk") << true;
}

void TestFileOperationMove::unsynced_copy_keeps_the_source()
{
    QFETCH(bool, fails_for_folders);
    const TwoDisks disks;
    if (!disks.are_two())
        QSKIP("there is one file system alone");
    disks.write(u"C:\\f\\a"_s, "a");
    disks.write(u"C:\\b"_s, "b");
    const QByteArrayList before = tree_of(disks.root());
    FileCalls calls = FileCalls::of_this_machine();
    calls.sync = [fails_for_folders](int file) {
        struct stat status
        {
        };
        fstat(file, &status);
        return S_ISDIR(status.st_mode) == fails_for_folders ? EIO : 0;
    };
    ScriptedGuide guide;
    QVERIFY(move({u"C:\\f"_s, u"C:\\b"_s}, u"D:\\"_s, guide, calls).failed);
    QVERIFY(guide.take().first().contains(reason(EIO)));
    if (!fails_for_folders) {
        // A folder is nothing that could be lost; what it holds is.
        QCOMPARE(tree_of(disks.native(u"D:\\"_s)), QByteArrayList{"f/"});
    }
    QCOMPARE(tree_of(disks.root()), before);
}

void TestFileOperationMove::cancel_leaves_each_source_whole_on_one_side()
{
    const TwoDisks disks;
    if (!disks.are_two())
        QSKIP("there is one file system alone");
    disks.write(u"C:\\a"_s, "a");
    disks.write(u"C:\\f\\b"_s, content_of_size(100'000));
    disks.write(u"C:\\f\\c"_s, content_of_size(100'000));
    disks.write(u"C:\\z"_s, "z");
    ScriptedGuide guide;
    guide.on_progress = [&guide](const FileProgress& progress) { guide.cancelled = progress.bytes_done > 100'001; };
    const FileOutcome outcome = move({u"C:\\a"_s, u"C:\\f"_s, u"C:\\z"_s}, u"D:\\"_s, guide);
    QVERIFY(outcome.aborted && !outcome.failed);
    QCOMPARE(guide.take(), QStringList());
    QCOMPARE(tree_of(disks.root()).size(), 4);
    QVERIFY(!disks.exists(u"C:\\a"_s));
    QCOMPARE(disks.read(u"C:\\f\\b"_s), content_of_size(100'000));
    QCOMPARE(disks.read(u"C:\\f\\c"_s), content_of_size(100'000));
    QCOMPARE(disks.read(u"D:\\a"_s), QByteArray("a"));
    QVERIFY(!disks.exists(u"D:\\z"_s));
    for (const QByteArray& line : tree_of(disks.native(u"D:\\f"_s)))
        QCOMPARE(line.sliced(4), content_of_size(100'000));
}

void TestFileOperationMove::source_that_cannot_be_deleted_is_told()
{
    const TwoDisks disks;
    if (!disks.are_two())
        QSKIP("there is one file system alone");
    disks.write(u"C:\\f\\a"_s, "a");
    disks.write(u"C:\\b"_s, "b");
    chmod(disks.native(u"C:\\f"_s).constData(), 0555);
    const BoundByRights bound;
    ScriptedGuide guide;
    QVERIFY(move({u"C:\\f\\a"_s, u"C:\\b"_s}, u"D:\\"_s, guide).failed);
    QCOMPARE(guide.take(), QStringList{error_text(u"C:\\f\\a"_s, EACCES) + u" ..."_s});
    QCOMPARE(tree_of(disks.root()), (QByteArrayList{"f/", "f/a = a"}));
    QCOMPARE(tree_of(disks.native(u"D:\\"_s)), (QByteArrayList{"a = a", "b = b"}));
}

void TestFileOperationMove::renames_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("target");
    QTest::newRow("a file") << u"C:\\a.mp3"_s << u"C:\\b.mp3"_s;
    QTest::newRow("a file, by case alone") << u"C:\\a.mp3"_s << u"C:\\A.mp3"_s;
    QTest::newRow("a folder") << u"C:\\f"_s << u"C:\\g"_s;
    QTest::newRow("a folder, by case alone") << u"C:\\f"_s << u"C:\\F"_s;
    QTest::newRow("a broken link") << u"C:\\link"_s << u"C:\\other"_s;
    QTest::newRow("to a name that is not UTF-8") << u"C:\\a.mp3"_s << u"C:\\"_s + QChar(0xDCFF);
    QTest::newRow("a file, to the name it has") << u"C:\\a.mp3"_s << u"C:\\a.mp3"_s;
    QTest::newRow("a folder, to the name it has") << u"C:\\f"_s << u"C:\\f"_s;
}

void TestFileOperationMove::renames()
{
    QFETCH(QString, source);
    QFETCH(QString, target);
    const TwoDisks disks;
    disks.write(u"C:\\a.mp3"_s, "a");
    disks.write(u"C:\\f\\b"_s, "b");
    make_link("nowhere", disks.native(u"C:\\link"_s));
    const ino_t inode = status_at(disks.native(source)).st_ino;
    ScriptedGuide guide;
    QVERIFY(is_done(rename(source, target, guide)));
    QCOMPARE(guide.take(), QStringList());
    QCOMPARE(status_at(disks.native(target)).st_ino, inode);
    QCOMPARE(tree_of(disks.root()).size(), 4);
}

void TestFileOperationMove::rename_never_replaces()
{
    const TwoDisks disks;
    disks.write(u"C:\\a"_s, "a");
    disks.write(u"C:\\file"_s, "file");
    disks.make_folder(u"C:\\folder"_s);
    make_link("nowhere", disks.native(u"C:\\link"_s));
    const QByteArrayList before = tree_of(disks.root());
    for (const QString& target : {u"C:\\file"_s, u"C:\\folder"_s, u"C:\\link"_s, u"C:\\"_s}) {
        ScriptedGuide guide;
        const FileOutcome outcome = rename(u"C:\\a"_s, target, guide);
        QVERIFY(outcome.failed && !outcome.aborted);
        QCOMPARE(guide.take(), QStringList{error_text(u"C:\\a"_s, EEXIST)});
        QCOMPARE(tree_of(disks.root()), before);
    }
}

void TestFileOperationMove::rename_that_fails_is_told_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("question");
    QTest::newRow("nothing there") << u"C:\\gone"_s << u"C:\\b"_s << error_text(u"C:\\gone"_s, ENOENT);
    QTest::newRow("a drive") << u"C:"_s << u"C:\\b"_s << error_text(u"C:"_s, Word::reason_drive);
    QTest::newRow("no drive") << u"X:\\a"_s << u"C:\\b"_s << error_text(u"X:\\a"_s, Word::reason_no_place);
    QTest::newRow("a name that no file bears")
        << u"C:\\a"_s << u"C:\\b/c"_s << error_text(u"C:\\b/c"_s, Word::reason_no_place);
    QTest::newRow("a name too long") << u"C:\\a"_s << u"C:\\"_s + QString(256, u'n')
                                     << error_text(u"C:\\a"_s, ENAMETOOLONG);
    QTest::newRow("into another drive's folder") << u"C:\\a"_s << u"D:\\a"_s << error_text(u"C:\\a"_s, EXDEV);
}

void TestFileOperationMove::rename_that_fails_is_told()
{
    QFETCH(QString, source);
    QFETCH(QString, target);
    QFETCH(QString, question);
    const TwoDisks disks;
    if (target.startsWith(u'D') && !disks.are_two())
        QSKIP("there is one file system alone");
    disks.write(u"C:\\a"_s, "a");
    ScriptedGuide guide;
    QVERIFY(rename(source, target, guide).failed);
    QCOMPARE(guide.take(), QStringList{question});
    QCOMPARE(tree_of(disks.root()), QByteArrayList{"a = a"});
}

QUILMO_LOGIC_TEST(TestFileOperationMove)
#include "test_file_operation_move.moc"
