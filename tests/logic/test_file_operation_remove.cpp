#include "file_operations.h"
#include "rights.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace {

FileOutcome remove(const QStringList& sources, ScriptedGuide& guide,
                   const FileCalls& calls = FileCalls::of_this_machine())
{
    return run_file_operation(FileAction::remove, sources, {}, guide, calls);
}

/// A system on which C:\volume is a volume of its own.
FileCalls calls_with_volume(const TestDisk& disk)
{
    FileCalls calls = FileCalls::of_this_machine();
    const QByteArray volume = disk.native(u"C:\\volume"_s);
    calls.volume_root = [volume](const QByteArray& native) {
        return native.startsWith(volume) ? volume : QByteArray("/");
    };
    return calls;
}

QByteArray user_trash()
{
    return "/.Trash-" + QByteArray::number(geteuid());
}

QByteArray content_at(const QByteArray& native)
{
    for (const QByteArray& line : tree_of(native.first(native.lastIndexOf('/')))) {
        const QByteArray beginning = native.sliced(native.lastIndexOf('/') + 1) + " = ";
        if (line.startsWith(beginning))
            return line.sliced(beginning.size());
    }
    return {};
}

} // namespace

class TestFileOperationRemove : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void trash_takes_everything();
    void note_tells_where_it_was();
    void names_of_every_kind_go_to_the_trash();
    void things_of_one_name_lie_side_by_side();
    void trash_is_made_for_the_user_alone();
    void trash_is_found_without_the_usual_variable();
    void link_goes_and_what_it_leads_to_stays();
    void volume_keeps_a_trash_of_its_own();
    void common_trash_of_a_volume_is_used_data();
    void common_trash_of_a_volume_is_used();
    void foreign_trash_is_not_used();
    void nothing_is_copied_into_a_trash();
    void unwritable_trash_asks_to_delete_data();
    void unwritable_trash_asks_to_delete();
    void no_to_deletion_keeps_everything();
    void no_to_the_trash_keeps_everything();
    void deletion_follows_no_links();
    void deletion_tells_what_it_cannot_do();
    void mounted_folder_is_told();
    void cancel_stops();
    void gone_in_the_meantime_is_told();
    void many_of_one_name_go_at_once();

private:
    QByteArray data() const { return qgetenv("HOME") + "/.local/share"; }
    QByteArray trash() const { return data() + "/Trash"; }
};

void TestFileOperationRemove::init()
{
    qputenv("XDG_DATA_HOME", data());
    std::error_code error;
    std::filesystem::remove_all((qgetenv("HOME") + "/.local").toStdString(), error);
}

void TestFileOperationRemove::trash_takes_everything()
{
    const TwoDisks disks;
    disks.write(u"C:\\a.mp3"_s, "a");
    disks.write(u"C:\\f\\b.mp3"_s, "b");
    disks.write(u"C:\\kept"_s, "kept");
    ScriptedGuide guide;
    QVERIFY(is_done(remove({u"C:\\a.mp3"_s, u"C:\\f"_s}, guide)));
    QCOMPARE(guide.take(), QStringList{u"trash C:\\a.mp3 C:\\f"_s});
    QCOMPARE(tree_of(disks.root()), QByteArrayList{"kept = kept"});
    QCOMPARE(tree_of(trash() + "/files"), (QByteArrayList{"a.mp3 = a", "f/", "f/b.mp3 = b"}));
    QCOMPARE(tree_of(trash() + "/info").size(), 2);
}

void TestFileOperationRemove::note_tells_where_it_was()
{
    const TwoDisks disks;
    disks.make_folder(u"C:\\real"_s);
    make_link("real", disks.native(u"C:\\link"_s));
    const QByteArray native = disks.native(u"C:\\link"_s) + "/50% caf\xC3\xA9\xFF\n.mp3";
    write_native(native, "x");
    const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
    ScriptedGuide guide;
    QVERIFY(is_done(remove({u"C:\\link\\50% caf\u00E9"_s + QChar(0xDCFF) + u"\n.mp3"_s}, guide)));

    const QByteArrayList notes = tree_of(trash() + "/info");
    QCOMPARE(notes.size(), 1);
    const QByteArray prefix = "50% caf\xC3\xA9\xFF\n.mp3.trashinfo = [Trash Info]\nPath=" + disks.root() +
                              "/real/50%25%20caf%C3%A9%FF%0A.mp3\nDeletionDate=";
    QVERIFY2(notes[0].startsWith(prefix), notes[0].constData());
    const QByteArray date = notes[0].sliced(prefix.size());
    const QDateTime moment = QDateTime::fromString(QString::fromLatin1(date), u"yyyy-MM-ddTHH:mm:ss\n"_s);
    QVERIFY(moment >= before && moment <= QDateTime::currentDateTime());
}

void TestFileOperationRemove::names_of_every_kind_go_to_the_trash()
{
    const TwoDisks disks;
    const QByteArrayList names = {
        "\xFF.mp3", "a\\b", ".hidden", " ", "한글.mp3", QByteArray("\xEA\xB0\x80").repeated(85), QByteArray(255, 'n')};
    QStringList sources;
    for (const QByteArray& name : names)
        write_native(disks.root() + '/' + name, name);
    sources << u"C:\\"_s + QChar(0xDCFF) + u".mp3"_s << u"C:\\a\uF05Cb"_s << u"C:\\.hidden"_s << u"C:\\ "_s
            << u"C:\\한글.mp3"_s << u"C:\\"_s + QString(85, u'가') << u"C:\\"_s + QString(255, u'n');
    ScriptedGuide guide;
    QVERIFY(is_done(remove(sources, guide)));
    QCOMPARE(guide.take().size(), 1);
    QCOMPARE(tree_of(disks.root()), QByteArrayList());
    QCOMPARE(tree_of(trash() + "/files").size(), names.size());
    // A name that is too long for its note is cut, at a letter's end; the note knows it whole.
    QCOMPARE(content_at(trash() + "/files/" + QByteArray(220, 'n')), QByteArray(255, 'n'));
    QVERIFY(stands(trash() + "/files/" + QByteArray("\xEA\xB0\x80").repeated(73)));
    QVERIFY(content_at(trash() + "/info/" + QByteArray(220, 'n') + ".trashinfo").contains(QByteArray(255, 'n')));
}

void TestFileOperationRemove::things_of_one_name_lie_side_by_side()
{
    const TwoDisks disks;
    for (const char* const content : {"1", "2", "3"}) {
        disks.write(u"C:\\a.mp3"_s, content);
        ScriptedGuide guide;
        QVERIFY(is_done(remove({u"C:\\a.mp3"_s}, guide)));
    }
    // Whatever lies there without a note is not touched either.
    write_native(trash() + "/files/a.mp3.4", "stray");
    disks.write(u"C:\\a.mp3"_s, "4");
    ScriptedGuide guide;
    QVERIFY(is_done(remove({u"C:\\a.mp3"_s}, guide)));
    QCOMPARE(tree_of(trash() + "/files"),
             (QByteArrayList{"a.mp3 = 1", "a.mp3.2 = 2", "a.mp3.3 = 3", "a.mp3.4 = stray", "a.mp3.5 = 4"}));
    QCOMPARE(tree_of(trash() + "/info").size(), 4);
}

void TestFileOperationRemove::trash_is_made_for_the_user_alone()
{
    const TwoDisks disks;
    disks.write(u"C:\\a"_s, "a");
    QVERIFY(!stands(qgetenv("HOME") + "/.local"));
    ScriptedGuide guide;
    QVERIFY(is_done(remove({u"C:\\a"_s}, guide)));
    for (const QByteArray& folder : {trash(), trash() + "/files", trash() + "/info", data()})
        QCOMPARE(status_at(folder).st_mode & 07777, 0700U);

    // The volume of the user's home needs no second one.
    disks.write(u"C:\\b"_s, "b");
    FileCalls calls = FileCalls::of_this_machine();
    calls.volume_root = [root = disks.root()](const QByteArray&) { return root; };
    QVERIFY(is_done(remove({u"C:\\b"_s}, guide, calls)));
    QCOMPARE(tree_of(disks.root()), QByteArrayList());
}

void TestFileOperationRemove::trash_is_found_without_the_usual_variable()
{
    for (const char* const value : {"", "not/absolute"}) {
        init();
        qputenv("XDG_DATA_HOME", value);
        const TwoDisks disks;
        disks.write(u"C:\\a"_s, "a");
        ScriptedGuide guide;
        QVERIFY(is_done(remove({u"C:\\a"_s}, guide)));
        QCOMPARE(tree_of(trash() + "/files"), QByteArrayList{"a = a"});
    }
}

void TestFileOperationRemove::link_goes_and_what_it_leads_to_stays()
{
    const TwoDisks disks;
    disks.write(u"C:\\f\\a"_s, "a");
    make_link("f", disks.native(u"C:\\link"_s));
    make_link("nowhere", disks.native(u"C:\\broken"_s));
    ScriptedGuide guide;
    QVERIFY(is_done(remove({u"C:\\link"_s, u"C:\\broken"_s}, guide)));
    QCOMPARE(tree_of(disks.root()), (QByteArrayList{"f/", "f/a = a"}));
    QCOMPARE(tree_of(trash() + "/files"), (QByteArrayList{"broken -> nowhere", "link -> f"}));
}

void TestFileOperationRemove::volume_keeps_a_trash_of_its_own()
{
    const TwoDisks disks;
    disks.write(u"C:\\volume\\f g\\a"_s, "a");
    disks.write(u"C:\\b"_s, "b");
    ScriptedGuide guide;
    QVERIFY(is_done(remove({u"C:\\volume\\f g\\a"_s, u"C:\\b"_s}, guide, calls_with_volume(disks))));
    QCOMPARE(guide.take().size(), 1);
    const QByteArray own = disks.native(u"C:\\volume"_s) + user_trash();
    QCOMPARE(status_at(own).st_mode & 07777, 0700U);
    QCOMPARE(tree_of(own + "/files"), QByteArrayList{"a = a"});
    QVERIFY(content_at(own + "/info/a.trashinfo").contains("\nPath=f%20g/a\n"));
    QCOMPARE(tree_of(trash() + "/files"), QByteArrayList{"b = b"});
}

void TestFileOperationRemove::common_trash_of_a_volume_is_used_data()
{
    QTest::addColumn<uint>("mode");
    QTest::addColumn<bool>("is_link");
    QTest::addColumn<bool>("is_used");
    QTest::newRow("as an administrator makes it") << 01777U << false << true;
    QTest::newRow("others could delete there") << 0777U << false << false;
    QTest::newRow("a link") << 01777U << true << false;
}

void TestFileOperationRemove::common_trash_of_a_volume_is_used()
{
    QFETCH(uint, mode);
    QFETCH(bool, is_link);
    QFETCH(bool, is_used);
    const TwoDisks disks;
    disks.write(u"C:\\volume\\a"_s, "a");
    const QByteArray common = disks.native(u"C:\\volume\\.Trash"_s);
    const QByteArray folder = is_link ? disks.native(u"C:\\elsewhere"_s) : common;
    QCOMPARE(mkdir(folder.constData(), 0777), 0);
    QCOMPARE(chmod(folder.constData(), mode), 0);
    if (is_link)
        make_link("../elsewhere", common);
    ScriptedGuide guide;
    QVERIFY(is_done(remove({u"C:\\volume\\a"_s}, guide, calls_with_volume(disks))));
    const QByteArray in_common = common + '/' + QByteArray::number(geteuid());
    const QByteArray used = is_used ? in_common : disks.native(u"C:\\volume"_s) + user_trash();
    QCOMPARE(tree_of(used + "/files"), QByteArrayList{"a = a"});
    QCOMPARE(status_at(used).st_mode & 07777, 0700U);
    QCOMPARE(stands(in_common), is_used);
}

void TestFileOperationRemove::foreign_trash_is_not_used()
{
    const TwoDisks disks;
    disks.write(u"C:\\volume\\a"_s, "a");
    disks.make_folder(u"C:\\elsewhere"_s);
    make_link("../elsewhere", disks.native(u"C:\\volume"_s) + user_trash());
    ScriptedGuide guide;
    guide.deletes = false;
    QVERIFY(remove({u"C:\\volume\\a"_s}, guide, calls_with_volume(disks)).aborted);
    QCOMPARE(guide.take(), (QStringList{u"trash C:\\volume\\a"_s, u"delete C:\\volume\\a"_s}));
    QCOMPARE(tree_of(disks.native(u"C:\\elsewhere"_s)), QByteArrayList());
    QCOMPARE(disks.read(u"C:\\volume\\a"_s), QByteArray("a"));
}

void TestFileOperationRemove::nothing_is_copied_into_a_trash()
{
    const TwoDisks disks;
    if (!disks.are_two())
        QSKIP("there is one file system alone");
    disks.write(u"D:\\a"_s, "a");
    // The system takes both disks for one volume, until it is asked to rename.
    FileCalls calls = FileCalls::of_this_machine();
    calls.volume_root = [](const QByteArray&) { return QByteArray("/proc"); };
    ScriptedGuide guide;
    guide.deletes = false;
    QVERIFY(remove({u"D:\\a"_s}, guide, calls).aborted);
    QCOMPARE(guide.take(), (QStringList{u"trash D:\\a"_s, u"delete D:\\a"_s}));
    QCOMPARE(tree_of(trash()), (QByteArrayList{"files/", "info/"}));
    QCOMPARE(disks.read(u"D:\\a"_s), QByteArray("a"));
}

void TestFileOperationRemove::unwritable_trash_asks_to_delete_data()
{
    QTest::addColumn<QByteArray>("locked");
    QTest::newRow("no data folder can be made") << QByteArray();
    QTest::newRow("the notes can't be written") << QByteArray("/info");
    QTest::newRow("the files can't be put there") << QByteArray("/files");
}

void TestFileOperationRemove::unwritable_trash_asks_to_delete()
{
    QFETCH(QByteArray, locked);
    const TwoDisks disks;
    disks.make_folder(u"C:\\volume"_s);
    disks.write(u"C:\\f\\a"_s, "a");
    disks.write(u"C:\\f\\g\\b"_s, "b");
    disks.write(u"C:\\c"_s, "c");
    const QByteArray folder = locked.isEmpty() ? qgetenv("HOME") : trash() + locked;
    if (!locked.isEmpty())
        std::filesystem::create_directories(folder.toStdString());
    // The root of the volume takes no trash either.
    FileCalls calls = FileCalls::of_this_machine();
    const QByteArray root = disks.native(u"C:\\volume"_s);
    calls.volume_root = [root](const QByteArray&) { return root; };
    chmod(root.constData(), 0555);
    chmod(folder.constData(), 0555);
    const BoundByRights bound;
    ScriptedGuide guide;
    QVERIFY(is_done(remove({u"C:\\f"_s, u"C:\\c"_s}, guide, calls)));
    chmod(folder.constData(), 0700);
    QCOMPARE(guide.take(), (QStringList{u"trash C:\\f C:\\c"_s, u"delete C:\\f C:\\c"_s}));
    QCOMPARE(tree_of(disks.root()), QByteArrayList{"volume/"});
}

void TestFileOperationRemove::no_to_deletion_keeps_everything()
{
    const TwoDisks disks;
    disks.write(u"C:\\volume\\a"_s, "a");
    disks.write(u"C:\\b"_s, "b");
    write_native(disks.native(u"C:\\volume"_s) + user_trash(), "in the way");
    ScriptedGuide guide;
    guide.deletes = false;
    const FileOutcome outcome = remove({u"C:\\volume\\a"_s, u"C:\\b"_s}, guide, calls_with_volume(disks));
    QVERIFY(outcome.aborted && !outcome.failed);
    QCOMPARE(guide.take(), (QStringList{u"trash C:\\volume\\a C:\\b"_s, u"delete C:\\volume\\a"_s}));
    QCOMPARE(disks.read(u"C:\\volume\\a"_s), QByteArray("a"));
    QCOMPARE(tree_of(trash() + "/files"), QByteArrayList{"b = b"});
}

void TestFileOperationRemove::no_to_the_trash_keeps_everything()
{
    const TwoDisks disks;
    disks.write(u"C:\\a"_s, "a");
    ScriptedGuide guide;
    guide.trashes = false;
    const FileOutcome outcome = remove({u"C:\\a"_s}, guide);
    QVERIFY(outcome.aborted && !outcome.failed);
    QCOMPARE(guide.take(), QStringList{u"trash C:\\a"_s});
    QCOMPARE(disks.read(u"C:\\a"_s), QByteArray("a"));
    QVERIFY(!stands(trash()));
}

void TestFileOperationRemove::deletion_follows_no_links()
{
    const TwoDisks disks;
    disks.write(u"C:\\outside\\a"_s, "a");
    disks.write(u"C:\\volume\\f\\g\\b"_s, "b");
    write_native(disks.native(u"C:\\volume"_s) + user_trash(), "in the way");
    const QByteArray folder = disks.native(u"C:\\volume\\f"_s);
    make_link("../../outside", folder + "/to_folder");
    make_link("../../../outside/a", folder + "/g/to_file");
    make_link("nowhere", folder + "/broken");
    write_native(folder + "/\xFF", "x");
    make_link("../outside", disks.native(u"C:\\volume\\link"_s));
    QCOMPARE(mkfifo((folder + "/pipe").constData(), 0600), 0);
    ScriptedGuide guide;
    QVERIFY(is_done(remove({u"C:\\volume\\f"_s, u"C:\\volume\\link"_s}, guide, calls_with_volume(disks))));
    QCOMPARE(guide.take().size(), 2);
    QCOMPARE(tree_of(disks.root()),
             (QByteArrayList{"outside/", "outside/a = a", "volume/", "volume" + user_trash() + " = in the way"}));
}

void TestFileOperationRemove::deletion_tells_what_it_cannot_do()
{
    const TwoDisks disks;
    disks.write(u"C:\\volume\\f\\locked\\a"_s, "a");
    disks.write(u"C:\\volume\\f\\b"_s, "b");
    disks.write(u"C:\\volume\\c"_s, "c");
    write_native(disks.native(u"C:\\volume"_s) + user_trash(), "in the way");
    chmod(disks.native(u"C:\\volume\\f\\locked"_s).constData(), 0555);
    const BoundByRights bound;
    ScriptedGuide guide;
    const FileOutcome outcome = remove({u"C:\\volume\\f"_s, u"C:\\volume\\c"_s}, guide, calls_with_volume(disks));
    QVERIFY(outcome.failed && !outcome.aborted);
    const QStringList questions = guide.take();
    QCOMPARE(questions.size(), 3);
    QCOMPARE(questions[2], error_text(u"C:\\volume\\f\\locked\\a"_s, EACCES) + u" ..."_s);
    QVERIFY(disks.exists(u"C:\\volume\\f\\locked\\a"_s));
    QVERIFY(!disks.exists(u"C:\\volume\\f\\b"_s));
    QVERIFY(!disks.exists(u"C:\\volume\\c"_s));
    chmod(disks.native(u"C:\\volume\\f\\locked"_s).constData(), 0755);
}

void TestFileOperationRemove::mounted_folder_is_told()
{
    const TwoDisks disks;
    disks.write(u"C:\\mounted\\a"_s, "a");
    const QByteArray folder = disks.native(u"C:\\mounted"_s);
    FileCalls calls = FileCalls::of_this_machine();
    calls.volume_root = [folder](const QByteArray&) { return folder; };
    ScriptedGuide guide;
    QVERIFY(remove({u"C:\\mounted"_s}, guide, calls).failed);
    QCOMPARE(guide.take(), (QStringList{u"trash C:\\mounted"_s, error_text(u"C:\\mounted"_s, EBUSY)}));
    QCOMPARE(disks.read(u"C:\\mounted\\a"_s), QByteArray("a"));

    // The machine's own word for what is mounted where.
    const FileCalls machine = FileCalls::of_this_machine();
    QCOMPARE(machine.volume_root("/proc"), QByteArray("/proc"));
    QCOMPARE(machine.volume_root("/proc/self/status"), QByteArray("/proc"));
    QCOMPARE(machine.volume_root("/proc/none"), QByteArray());
    QCOMPARE(machine.volume_root("/no/such/folder"), QByteArray());
}

void TestFileOperationRemove::cancel_stops()
{
    const TwoDisks disks;
    for (const QString& name : {u"a"_s, u"b"_s, u"c"_s})
        disks.write(u"C:\\"_s + name, "x");
    ScriptedGuide guide;
    guide.on_progress = [&guide](const FileProgress& progress) { guide.cancelled = progress.name == u"b"; };
    const FileOutcome outcome = remove({u"C:\\a"_s, u"C:\\b"_s, u"C:\\c"_s}, guide);
    QVERIFY(outcome.aborted && !outcome.failed);
    QCOMPARE(tree_of(disks.root()), (QByteArrayList{"b = x", "c = x"}));
}

void TestFileOperationRemove::gone_in_the_meantime_is_told()
{
    const TwoDisks disks;
    disks.write(u"C:\\f\\a"_s, "a");
    ScriptedGuide guide;
    QVERIFY(remove({u"C:\\f"_s, u"C:\\f\\a"_s}, guide).failed);
    QCOMPARE(guide.take().value(1), error_text(u"C:\\f\\a"_s, ENOENT));
}

void TestFileOperationRemove::many_of_one_name_go_at_once()
{
    const TwoDisks disks;
    QStringList sources;
    for (int i = 1; i <= 100; ++i) {
        sources.append(u"C:\\%1\\a"_s.arg(i));
        disks.write(sources.last(), QByteArray::number(i));
    }
    ScriptedGuide guide;
    QVERIFY(is_done(remove(sources, guide)));
    QCOMPARE(tree_of(trash() + "/files").size(), 100);
    QCOMPARE(content_at(trash() + "/files/a"), QByteArray("1"));
    QCOMPARE(content_at(trash() + "/files/a.100"), QByteArray("100"));
    QVERIFY(content_at(trash() + "/info/a.100.trashinfo").contains("/100/a\n"));
}

QUILMO_LOGIC_TEST(TestFileOperationRemove)
#include "test_file_operation_remove.moc"
