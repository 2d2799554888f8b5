#include "convert/moved_file.h"
#include "core/mod_of_grobal_var.h"
#include "faulty_disk.h"
#include "tagged_files.h"
#include "test_main.h"
#include "ui_convert.h"

#include <QApplication>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString old_path = u"C:\\Music\\a.mp3"_s;
const QString new_path = u"C:\\Music\\[Ann][Sea][Rock].mp3"_s;
const QString no_tag_written = u"Error! Can not Write ID3 Tag"_s;

} // namespace

/// What follows the test for an existing target: by then another program may have put a file there.
class TestMovedFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void a_moved_file_gets_its_tag();
    void a_target_that_appeared_stays();
    void a_file_that_went_away_is_told();
    void a_failed_move_touches_no_file();

private:
    static void move_and_tag()
    {
        QString genre = u"Hip_Hop"_s;
        tag_moved_file(MoveFileA(old_path, new_path), new_path, u"Ann"_s, u"Sea"_s, genre);
    }
};

void TestMovedFile::a_moved_file_gets_its_tag()
{
    const TestDisk disk;
    NotedMessages messages;
    disk.write(old_path, tagged("Old", "Older"));
    move_and_tag();
    QCOMPARE(tag_in(disk.read(new_path)), (TagTexts{"Ann", "Sea", 7}));
    QVERIFY(!disk.exists(old_path));
    QCOMPARE(messages.take(), QStringList());
}

void TestMovedFile::a_target_that_appeared_stays()
{
    const TestDisk disk;
    NotedMessages messages;
    const QByteArray before = tagged("Old", "Older");
    const QByteArray other = tagged("Another", "Program");
    disk.write(old_path, before);
    disk.write(new_path, other);
    move_and_tag();
    QCOMPARE(disk.read(old_path), before);
    QCOMPARE(disk.read(new_path), other);
    QCOMPARE(messages.take(), QStringList{no_tag_written});
}

void TestMovedFile::a_file_that_went_away_is_told()
{
    const TestDisk disk;
    NotedMessages messages;
    disk.make_folder(u"C:\\Music"_s);
    move_and_tag();
    QVERIFY(!disk.exists(new_path));
    QCOMPARE(messages.take(), QStringList{no_tag_written});
}

void TestMovedFile::a_failed_move_touches_no_file()
{
    const TestDisk disk;
    NotedMessages messages;
    QString genre = u"Rock"_s;
    int calls = 0;
    watch_disk(
        {disk.root()}, [&](const QByteArray& /*call*/, const QByteArray& /*native*/) { ++calls; },
        [&] { tag_moved_file(false, new_path, u"Ann"_s, u"Sea"_s, genre); });
    QCOMPARE(calls, 0);
    QCOMPARE(messages.take(), QStringList{no_tag_written});
    watch_disk(
        {disk.root()}, [&](const QByteArray& /*call*/, const QByteArray& /*native*/) { ++calls; },
        [&] { tag_moved_file(true, new_path, u"Ann"_s, u"Sea"_s, genre); });
    QVERIFY(calls > 0);
}

QUILMO_UI_TEST(TestMovedFile)

#include "test_moved_file.moc"
