#include "platform/FileSystemObject.h"
#include "platform/rename_file.h"
#include "test_main.h"

#include <QCoreApplication>
#include <QFile>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace {

/// Calls of which some fail with the given errors, as on a file system that lacks them; 0 leaves a call as it is.
RenameCalls calls_failing_with(int rename_error, int link_error)
{
    RenameCalls calls = RenameCalls::of_this_machine();
    if (rename_error != 0)
        calls.rename_no_replace = [rename_error](const QByteArray&, const QByteArray&) { return rename_error; };
    if (link_error != 0)
        calls.link = [link_error](const QByteArray&, const QByteArray&) { return link_error; };
    return calls;
}

/// The ways that a file system can go: with all calls, without the renaming one, without both.
void add_file_systems()
{
    QTest::addColumn<int>("rename_error");
    QTest::addColumn<int>("link_error");

    QTest::newRow("a file system with everything") << 0 << 0;
    QTest::newRow("one that does not know the flag") << EINVAL << 0;
    QTest::newRow("a kernel without the call") << ENOSYS << 0;
    QTest::newRow("one without links") << EINVAL << EPERM;
    QTest::newRow("one that does not support links") << ENOSYS << EOPNOTSUPP;
}

bool make_link(const QByteArray& target, const QByteArray& native)
{
    return symlink(target.constData(), native.constData()) == 0;
}

} // namespace

class TestMoveFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void file_gets_its_new_name_data() { add_file_systems(); }
    void file_gets_its_new_name();
    void nothing_is_replaced_data() { add_file_systems(); }
    void nothing_is_replaced();
    void folder_gets_its_new_name_data() { add_file_systems(); }
    void folder_gets_its_new_name();
    void second_name_of_a_file_is_kept_data() { add_file_systems(); }
    void second_name_of_a_file_is_kept();
    void other_errors_are_final_data();
    void other_errors_are_final();
    void entry_by_another_path_is_no_other_file();
    void paths_without_a_place_fail_data();
    void paths_without_a_place_fail();
    void names_of_every_kind_move_data();
    void names_of_every_kind_move();
    void other_file_system_fails();
};

void TestMoveFile::file_gets_its_new_name()
{
    QFETCH(int, rename_error);
    QFETCH(int, link_error);
    const TestDisk disk;
    disk.write(u"C:\\a.mp3"_s, "a");
    disk.make_folder(u"C:\\sub"_s);

    QCOMPARE(rename_without_replacing(disk.native(u"C:\\a.mp3"_s), disk.native(u"C:\\sub\\b.mp3"_s),
                                      calls_failing_with(rename_error, link_error)),
             0);
    QVERIFY(!disk.exists(u"C:\\a.mp3"_s));
    QCOMPARE(disk.read(u"C:\\sub\\b.mp3"_s), QByteArray("a"));
}

void TestMoveFile::nothing_is_replaced()
{
    QFETCH(int, rename_error);
    QFETCH(int, link_error);
    const RenameCalls calls = calls_failing_with(rename_error, link_error);
    const TestDisk disk;
    disk.write(u"C:\\a.mp3"_s, "a");
    disk.write(u"C:\\file.mp3"_s, "b");
    disk.make_folder(u"C:\\folder.mp3"_s);
    QVERIFY(make_link("/there/is/nothing", disk.native(u"C:\\dangling.mp3"_s)));

    for (const QString& taken : {u"C:\\file.mp3"_s, u"C:\\folder.mp3"_s, u"C:\\dangling.mp3"_s}) {
        QCOMPARE(rename_without_replacing(disk.native(u"C:\\a.mp3"_s), disk.native(taken), calls), EEXIST);
        QVERIFY(!MoveFileA(u"C:\\a.mp3"_s, taken));
    }
    QCOMPARE(disk.read(u"C:\\a.mp3"_s), QByteArray("a"));
    QCOMPARE(disk.read(u"C:\\file.mp3"_s), QByteArray("b"));
    QCOMPARE(QFile::symLinkTarget(QFile::decodeName(disk.native(u"C:\\dangling.mp3"_s))), u"/there/is/nothing"_s);
}

void TestMoveFile::folder_gets_its_new_name()
{
    QFETCH(int, rename_error);
    QFETCH(int, link_error);
    const TestDisk disk;
    disk.write(u"C:\\old\\a.mp3"_s, "a");

    QCOMPARE(rename_without_replacing(disk.native(u"C:\\old"_s), disk.native(u"C:\\new"_s),
                                      calls_failing_with(rename_error, link_error)),
             0);
    QVERIFY(!disk.exists(u"C:\\old"_s));
    QCOMPARE(disk.read(u"C:\\new\\a.mp3"_s), QByteArray("a"));
}

void TestMoveFile::second_name_of_a_file_is_kept()
{
    QFETCH(int, rename_error);
    QFETCH(int, link_error);
    const TestDisk disk;
    disk.write(u"C:\\a.mp3"_s, "a");
    const QByteArray first = disk.native(u"C:\\a.mp3"_s);
    const QByteArray second = disk.native(u"C:\\b.mp3"_s);
    QCOMPARE(link(first.constData(), second.constData()), 0);

    QCOMPARE(rename_without_replacing(first, second, calls_failing_with(rename_error, link_error)), EEXIST);
    QVERIFY(disk.exists(u"C:\\a.mp3"_s));
    QVERIFY(disk.exists(u"C:\\b.mp3"_s));
}

void TestMoveFile::other_errors_are_final_data()
{
    QTest::addColumn<int>("rename_error");
    QTest::addColumn<int>("link_error");
    QTest::addColumn<int>("error");

    QTest::newRow("another file system") << EXDEV << 0 << EXDEV;
    QTest::newRow("a read-only file system") << EROFS << 0 << EROFS;
    QTest::newRow("a full disk while linking") << EINVAL << ENOSPC << ENOSPC;
    QTest::newRow("a device that fails while linking") << ENOSYS << EIO << EIO;
}

void TestMoveFile::other_errors_are_final()
{
    QFETCH(int, rename_error);
    QFETCH(int, link_error);
    QFETCH(int, error);
    const TestDisk disk;
    disk.write(u"C:\\a.mp3"_s, "a");

    QCOMPARE(rename_without_replacing(disk.native(u"C:\\a.mp3"_s), disk.native(u"C:\\b.mp3"_s),
                                      calls_failing_with(rename_error, link_error)),
             error);
    QCOMPARE(disk.read(u"C:\\a.mp3"_s), QByteArray("a"));
    QVERIFY(!disk.exists(u"C:\\b.mp3"_s));
}

void TestMoveFile::entry_by_another_path_is_no_other_file()
{
    const TestDisk disk;
    disk.write(u"C:\\folder\\a.mp3"_s, "a");
    QVERIFY(make_link("folder", disk.native(u"C:\\way"_s)));

    // As on a file system that ignores case, both paths are one entry, and the rename loses nothing.
    QVERIFY(MoveFileA(u"C:\\folder\\a.mp3"_s, u"C:\\way\\a.mp3"_s));
    QCOMPARE(disk.read(u"C:\\folder\\a.mp3"_s), QByteArray("a"));
}

void TestMoveFile::paths_without_a_place_fail_data()
{
    QTest::addColumn<QString>("old_path");
    QTest::addColumn<QString>("new_path");

    QTest::newRow("a file that is not there") << u"C:\\none.mp3"_s << u"C:\\b.mp3"_s;
    QTest::newRow("a folder that is not there") << u"C:\\a.mp3"_s << u"C:\\none\\b.mp3"_s;
    QTest::newRow("an unknown drive to move to") << u"C:\\a.mp3"_s << u"Q:\\b.mp3"_s;
    QTest::newRow("an unknown drive to move from") << u"Q:\\a.mp3"_s << u"C:\\b.mp3"_s;
    QTest::newRow("a slash in the new name") << u"C:\\a.mp3"_s << u"C:\\AC/DC.mp3"_s;
    QTest::newRow("the folder above") << u"C:\\a.mp3"_s << u"C:\\sub\\..\\b.mp3"_s;
    QTest::newRow("no new path") << u"C:\\a.mp3"_s << QString();
    QTest::newRow("a new name of 256 bytes") << u"C:\\a.mp3"_s << u"C:\\"_s + QString(256, u'x');
}

void TestMoveFile::paths_without_a_place_fail()
{
    QFETCH(QString, old_path);
    QFETCH(QString, new_path);
    const TestDisk disk;
    disk.write(u"C:\\a.mp3"_s, "a");
    disk.make_folder(u"C:\\sub"_s);

    QVERIFY(!MoveFileA(old_path, new_path));
    QCOMPARE(disk.read(u"C:\\a.mp3"_s), QByteArray("a"));
    QVERIFY(!disk.exists(u"C:\\b.mp3"_s));
}

void TestMoveFile::names_of_every_kind_move_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("not UTF-8") << u"Caf\xDCE9.mp3"_s;
    QTest::newRow("a line break") << u"a\nb.mp3"_s;
    QTest::newRow("a backslash") << u"a\uF05Cb.mp3"_s;
    QTest::newRow("a leading full stop") << u".mp3"_s;
    QTest::newRow("255 bytes") << QString(QString(251, u'x') + u".mp3"_s);
    QTest::newRow("a leading dash") << u"-rf.mp3"_s;
}

void TestMoveFile::names_of_every_kind_move()
{
    QFETCH(QString, name);
    const TestDisk disk;
    disk.write(u"C:\\a.mp3"_s, "a");

    QVERIFY(MoveFileA(u"C:\\a.mp3"_s, u"C:\\"_s + name));
    QCOMPARE(FileSystemObject().GetFolder(u"C:\\"_s).Files().front().Name, name);
    QVERIFY(MoveFileA(u"C:\\"_s + name, u"C:\\b.mp3"_s));
    QCOMPARE(disk.read(u"C:\\b.mp3"_s), QByteArray("a"));
}

void TestMoveFile::other_file_system_fails()
{
    const TestDisk disk;
    disk.write(u"C:\\a.mp3"_s, "a");
    struct stat here
    {
    };
    struct stat there
    {
    };
    if (stat(disk.root().constData(), &here) != 0 || stat("/dev/shm", &there) != 0 || here.st_dev == there.st_dev)
        QSKIP("there is no second file system to write to");
    const QByteArray target = "/dev/shm/quilmo-test-" + QByteArray::number(getpid()) + ".mp3";

    QCOMPARE(rename_without_replacing(disk.native(u"C:\\a.mp3"_s), target), EXDEV);
    QCOMPARE(disk.read(u"C:\\a.mp3"_s), QByteArray("a"));
    QVERIFY(!QFile::exists(QFile::decodeName(target)));
}

QUILMO_LOGIC_TEST(TestMoveFile)
#include "test_move_file.moc"
