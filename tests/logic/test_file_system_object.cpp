#include "platform/FileSystemObject.h"
#include "platform/RunTimeError.h"
#include "platform/own_words.h"
#include "platform/paths.h"
#include "test_main.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QTest>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 megabyte = 1048576;

const FileSystemObject fso;

QStringList names_of(const std::vector<File>& files)
{
    QStringList names;
    for (const File& file : files)
        names.append(file.Name);
    names.sort();
    return names;
}

QStringList sorted(QStringList names)
{
    names.sort();
    return names;
}

/// The number of the error that `statement` raises, 0 for none.
int error_of(const std::function<void()>& statement)
{
    try {
        statement();
    } catch (const RunTimeError& error) {
        return error.number();
    }
    return 0;
}

bool make_link(const QByteArray& target, const QByteArray& native)
{
    return symlink(target.constData(), native.constData()) == 0;
}

bool make_socket(const QByteArray& native)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, native.constData(), sizeof address.sun_path - 1);
    const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    const bool done = bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    close(descriptor);
    return done;
}

bool make_sparse_file(const QByteArray& native, qint64 size)
{
    const int descriptor = open(native.constData(), O_WRONLY | O_CREAT | O_EXCL, 0600);
    const bool done = ftruncate(descriptor, size) == 0;
    close(descriptor);
    return done;
}

mode_t mode_of(const QByteArray& native)
{
    struct stat status
    {
    };
    stat(native.constData(), &status);
    return status.st_mode & 0777U;
}

} // namespace

class TestFileSystemObject : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void folder_path_has_no_trailing_backslash_data();
    void folder_path_has_no_trailing_backslash();
    void no_folder_data();
    void no_folder();
    void folder_that_goes_away();
    void unreadable_folder();
    void files_are_chosen_by_their_last_characters_data();
    void files_are_chosen_by_their_last_characters();
    void only_regular_files_are_listed();
    void only_folders_are_subfolders();
    void odd_names_are_listed_data();
    void odd_names_are_listed();
    void sizes_are_exact_data();
    void sizes_are_exact();
    void folder_of_many_files_is_listed_whole();
    void types_data();
    void types();
    void dates_are_in_the_short_form_data();
    void dates_are_in_the_short_form();
    void modified_time_comes_from_disk();
    void attributes_data();
    void attributes();
    void attributes_need_a_file();
    void read_only_is_set_and_cleared_data();
    void read_only_is_set_and_cleared();
    void a_folder_is_made();
    void a_folder_that_cannot_be_made_data();
    void a_folder_that_cannot_be_made();
    void a_folder_moves_with_all_that_is_in_it();
    void a_folder_that_cannot_move_data();
    void a_folder_that_cannot_move();
    void nothing_changes_without_rights();
    void computer_has_its_name();
};

void TestFileSystemObject::folder_path_has_no_trailing_backslash_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("folder_path");

    QTest::newRow("a folder") << u"C:\\Music\\Pop"_s << u"C:\\Music\\Pop"_s;
    QTest::newRow("a folder with a backslash") << u"C:\\Music\\Pop\\"_s << u"C:\\Music\\Pop"_s;
    QTest::newRow("a drive") << u"C:"_s << u"C:\\"_s;
    QTest::newRow("a drive with a backslash") << u"C:\\"_s << u"C:\\"_s;
}

void TestFileSystemObject::folder_path_has_no_trailing_backslash()
{
    QFETCH(QString, path);
    QFETCH(QString, folder_path);
    const TestDisk disk;
    disk.make_folder(u"C:\\Music\\Pop"_s);

    QVERIFY(fso.FolderExists(path));
    QVERIFY(!fso.FileExists(path));
    QCOMPARE(fso.GetFolder(path).Path(), folder_path);
}

void TestFileSystemObject::no_folder_data()
{
    QTest::addColumn<QString>("path");

    QTest::newRow("nothing there") << u"C:\\none"_s;
    QTest::newRow("a file") << u"C:\\a.mp3"_s;
    QTest::newRow("a file with a backslash") << u"C:\\a.mp3\\"_s;
    QTest::newRow("a dangling link") << u"C:\\dangling"_s;
    QTest::newRow("an unknown drive") << u"Q:\\"_s;
    QTest::newRow("the key of the tree's root") << u"MYCOMPUTER"_s;
    QTest::newRow("no path") << QString();
}

void TestFileSystemObject::no_folder()
{
    QFETCH(QString, path);
    const TestDisk disk;
    disk.write(u"C:\\a.mp3"_s, "a");
    QVERIFY(make_link("nowhere", disk.native(u"C:\\dangling"_s)));

    QVERIFY(!fso.FolderExists(path));
    QCOMPARE(error_of([&] { fso.GetFolder(path); }), 76);
}

void TestFileSystemObject::folder_that_goes_away()
{
    const TestDisk disk;
    disk.make_folder(u"C:\\gone"_s);
    const Folder folder = fso.GetFolder(u"C:\\gone"_s);
    QVERIFY(QDir().rmdir(QFile::decodeName(disk.native(u"C:\\gone"_s))));

    QCOMPARE(error_of([&] { folder.Files(); }), 76);
    QCOMPARE(error_of([&] { folder.SubFolders(); }), 76);
    disk.write(u"C:\\gone"_s, "now a file");
    QCOMPARE(error_of([&] { folder.Files(); }), 76);
}

void TestFileSystemObject::unreadable_folder()
{
    const TestDisk disk;
    disk.make_folder(u"C:\\closed"_s);
    const QByteArray native = disk.native(u"C:\\closed"_s);
    const Folder folder = fso.GetFolder(u"C:\\closed"_s);
    QCOMPARE(chmod(native.constData(), 0), 0);

    // Root can read every folder, so it becomes somebody else for a moment.
    const uid_t user = geteuid();
    constexpr uid_t nobody = 65534;
    if (user == 0 && seteuid(nobody) != 0)
        QSKIP("root can read every folder and can't be anybody else here");
    const int files_error = error_of([&] { folder.Files(); });
    const int folders_error = error_of([&] { folder.SubFolders(); });
    QCOMPARE(seteuid(user), 0);
    QCOMPARE(chmod(native.constData(), 0700), 0);
    QCOMPARE(files_error, 75);
    QCOMPARE(folders_error, 75);
}

void TestFileSystemObject::files_are_chosen_by_their_last_characters_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QStringList>("names");

    QTest::newRow("MP3 takes every case and needs no dot")
        << u"MP3"_s << QStringList{u"MP3"_s, u"foomp3"_s, u"song.MP3"_s, u"song.Mp3"_s, u"song.mp3"_s};
    QTest::newRow("no suffix takes all") << QString() << QStringList{u"MP3"_s,       u"foomp3"_s,       u"mp"_s,
                                                                     u"song.MP3"_s,  u"song.Mp3"_s,     u"song.mp3"_s,
                                                                     u"song.mp3x"_s, u"song.mp\uFF13"_s};
}

void TestFileSystemObject::files_are_chosen_by_their_last_characters()
{
    QFETCH(QString, suffix);
    QFETCH(QStringList, names);
    const TestDisk disk;
    for (const QString& name : {u"song.mp3"_s, u"song.MP3"_s, u"song.Mp3"_s, u"foomp3"_s, u"MP3"_s, u"song.mp3x"_s,
                                u"mp"_s, u"song.mp\uFF13"_s})
        disk.write(u"C:\\"_s + name, "a");

    QCOMPARE(names_of(fso.GetFolder(u"C:\\"_s).Files(suffix)), sorted(names));
}

void TestFileSystemObject::only_regular_files_are_listed()
{
    const TestDisk disk;
    disk.write(u"C:\\real.mp3"_s, "a");
    disk.write(u"C:\\elsewhere\\target"_s, "12345");
    disk.make_folder(u"C:\\folder.mp3"_s);
    QVERIFY(make_link("elsewhere/target", disk.native(u"C:\\link.mp3"_s)));
    QVERIFY(make_link("elsewhere", disk.native(u"C:\\link to folder.mp3"_s)));
    QVERIFY(make_link("nowhere", disk.native(u"C:\\dangling.mp3"_s)));
    QVERIFY(make_link("circle.mp3", disk.native(u"C:\\circle.mp3"_s)));
    QVERIFY(make_link("/dev/null", disk.native(u"C:\\link to device.mp3"_s)));
    QCOMPARE(mkfifo(disk.native(u"C:\\pipe.mp3"_s).constData(), 0600), 0);
    QVERIFY(make_socket(disk.native(u"C:\\socket.mp3"_s)));

    const std::vector<File> files = fso.GetFolder(u"C:\\"_s).Files(u"MP3"_s);
    QCOMPARE(names_of(files), sorted({u"real.mp3"_s, u"link.mp3"_s}));
    QCOMPARE(std::ranges::find(files, u"link.mp3"_s, &File::Name)->Size, 5);
    for (const QString& name : {u"folder.mp3"_s, u"link to folder.mp3"_s, u"dangling.mp3"_s, u"circle.mp3"_s,
                                u"link to device.mp3"_s, u"pipe.mp3"_s, u"socket.mp3"_s})
        QVERIFY2(!fso.FileExists(u"C:\\"_s + name), qPrintable(name));
    QVERIFY(fso.FileExists(u"C:\\link.mp3"_s));
}

void TestFileSystemObject::only_folders_are_subfolders()
{
    const TestDisk disk;
    disk.write(u"C:\\file"_s, "a");
    disk.make_folder(u"C:\\plain"_s);
    disk.make_folder(u"C:\\.hidden"_s);
    disk.make_folder(u"C:\\folder.mp3"_s);
    QVERIFY(make_link("plain", disk.native(u"C:\\link"_s)));
    QVERIFY(make_link("plain", disk.native(u"C:\\link.mp3"_s)));
    QVERIFY(make_link("file", disk.native(u"C:\\link to file"_s)));
    QVERIFY(make_link("nowhere", disk.native(u"C:\\dangling"_s)));
    QCOMPARE(mkfifo(disk.native(u"C:\\pipe"_s).constData(), 0600), 0);

    QCOMPARE(sorted(fso.GetFolder(u"C:\\"_s).SubFolders()),
             sorted({u"plain"_s, u".hidden"_s, u"folder.mp3"_s, u"link"_s, u"link.mp3"_s}));
}

void TestFileSystemObject::odd_names_are_listed_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("name");

    QTest::newRow("not UTF-8") << QByteArray("\xB0\xA1\xFF.mp3") << u"\xDCB0\xDCA1\xDCFF.mp3"_s;
    QTest::newRow("a line break") << QByteArray("a\nb.mp3") << u"a\nb.mp3"_s;
    QTest::newRow("a backslash") << QByteArray("a\\b.mp3") << u"a\uF05Cb.mp3"_s;
    QTest::newRow("a leading full stop") << QByteArray(".mp3") << u".mp3"_s;
    QTest::newRow("three full stops") << QByteArray("...mp3") << u"...mp3"_s;
    QTest::newRow("a blank at the front") << QByteArray(" .mp3") << u" .mp3"_s;
    QTest::newRow("255 bytes") << QByteArray(251, 'x') + ".mp3" << QString(QString(251, u'x') + u".mp3"_s);
}

void TestFileSystemObject::odd_names_are_listed()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, name);
    const TestDisk disk;
    QVERIFY(make_sparse_file(disk.root() + '/' + bytes, 3));
    QCOMPARE(mkdir((disk.root() + "/folder").constData(), 0700), 0);
    QCOMPARE(mkdir((disk.root() + "/folder/" + bytes).constData(), 0700), 0);

    QCOMPARE(names_of(fso.GetFolder(u"C:\\"_s).Files(u"MP3"_s)), QStringList{name});
    QVERIFY(fso.FileExists(u"C:\\"_s + name));
    QCOMPARE(fso.GetFolder(u"C:\\folder"_s).SubFolders(), QStringList{name});
    QVERIFY(fso.FolderExists(u"C:\\folder\\"_s + name + u'\\'));
}

void TestFileSystemObject::sizes_are_exact_data()
{
    QTest::addColumn<qint64>("size");

    QTest::newRow("an empty file") << qint64(0);
    QTest::newRow("1 byte") << qint64(1);
    QTest::newRow("300 MB") << 300 * megabyte;
    QTest::newRow("5 GB") << 5120 * megabyte + 1;
}

void TestFileSystemObject::sizes_are_exact()
{
    QFETCH(qint64, size);
    const TestDisk disk;
    QVERIFY(make_sparse_file(disk.native(u"C:\\a.mp3"_s), size));

    QCOMPARE(fso.GetFolder(u"C:\\"_s).Files(u"MP3"_s).front().Size, size);
}

void TestFileSystemObject::folder_of_many_files_is_listed_whole()
{
    const TestDisk disk;
    for (int number = 0; number < 1200; ++number)
        QVERIFY(make_sparse_file(disk.root() + '/' + QByteArray::number(number) + ".mp3", number));

    const std::vector<File> files = fso.GetFolder(u"C:\\"_s).Files(u"MP3"_s);
    QCOMPARE(files.size(), std::size_t(1200));
    for (const File& file : files)
        QCOMPARE(QString::number(file.Size) + u".mp3"_s, file.Name);
}

void TestFileSystemObject::types_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("type");

    QTest::newRow("small letters") << u"a.mp3"_s << own_word(Word::type_mp3);
    QTest::newRow("capitals") << u"a.MP3"_s << own_word(Word::type_mp3);
    QTest::newRow("no full stop") << u"amp3"_s << own_word(Word::type_file);
    QTest::newRow("another ending") << u"a.mp3x"_s << own_word(Word::type_file);
}

void TestFileSystemObject::types()
{
    QFETCH(QString, name);
    QFETCH(QString, type);

    QVERIFY(!type.isEmpty());
    QCOMPARE((File{.Name = name}).Type(), type);
}

void TestFileSystemObject::dates_are_in_the_short_form_data()
{
    QTest::addColumn<qint64>("seconds");

    QTest::newRow("a day in summer") << qint64(1500000000);
    QTest::newRow("a day in winter") << qint64(1700000059);
    QTest::newRow("the beginning of time") << qint64(0);
    QTest::newRow("before the beginning of time") << qint64(-86400);
    QTest::newRow("beyond 32 bits") << qint64(5000000000);
}

void TestFileSystemObject::dates_are_in_the_short_form()
{
    QFETCH(qint64, seconds);

    QCOMPARE((File{.Name = {}, .Size = 0, .modified_seconds = seconds}).DateLastModified(),
             QLocale::system().toString(QDateTime::fromSecsSinceEpoch(seconds), QLocale::ShortFormat));
}

void TestFileSystemObject::modified_time_comes_from_disk()
{
    const TestDisk disk;
    disk.write(u"C:\\a.mp3"_s, "a");
    QFile file(QFile::decodeName(disk.native(u"C:\\a.mp3"_s)));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::fromSecsSinceEpoch(1234567890), QFileDevice::FileModificationTime));

    QCOMPARE(fso.GetFolder(u"C:\\"_s).Files().front().modified_seconds, 1234567890);
}

void TestFileSystemObject::attributes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("attributes");

    QTest::newRow("a plain file") << u"a.mp3"_s << 0644 << 32;
    QTest::newRow("a file that nobody may write") << u"a.mp3"_s << 0444 << 33;
    QTest::newRow("a file that only others may write") << u"a.mp3"_s << 0466 << 33;
    QTest::newRow("a hidden file") << u".mp3"_s << 0644 << 34;
    QTest::newRow("a hidden file that nobody may write") << u".a.mp3"_s << 0400 << 35;
}

void TestFileSystemObject::attributes()
{
    QFETCH(QString, name);
    QFETCH(int, mode);
    QFETCH(int, attributes);
    const TestDisk disk;
    disk.write(u"C:\\.sub\\"_s + name, "a");
    QCOMPARE(chmod(disk.native(u"C:\\.sub\\"_s + name).constData(), static_cast<mode_t>(mode)), 0);

    QCOMPARE(fso.Attributes(u"C:\\.sub\\"_s + name), attributes);
}

void TestFileSystemObject::attributes_need_a_file()
{
    const TestDisk disk;
    disk.make_folder(u"C:\\folder"_s);
    for (const QString& path : {u"C:\\none"_s, u"C:\\folder"_s, u"Q:\\a"_s}) {
        QCOMPARE(error_of([&] { fso.Attributes(path); }), 53);
        QCOMPARE(error_of([&] { fso.set_Attributes(path, FileSystemObject::archive); }), 53);
    }
}

void TestFileSystemObject::read_only_is_set_and_cleared_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("attributes");
    QTest::addColumn<int>("new_mode");

    QTest::newRow("clearing lets the owner write and nobody else") << 0444 << 32 << 0644;
    QTest::newRow("clearing what is clear changes nothing") << 0664 << 32 << 0664;
    QTest::newRow("setting takes every right to write") << 0666 << 33 << 0444;
    QTest::newRow("setting keeps the right to start") << 0755 << 1 << 0555;
}

void TestFileSystemObject::read_only_is_set_and_cleared()
{
    QFETCH(int, mode);
    QFETCH(int, attributes);
    QFETCH(int, new_mode);
    const TestDisk disk;
    disk.write(u"C:\\a.mp3"_s, "a");
    const QByteArray native = disk.native(u"C:\\a.mp3"_s);
    QCOMPARE(chmod(native.constData(), static_cast<mode_t>(mode)), 0);

    fso.set_Attributes(u"C:\\a.mp3"_s, attributes);
    QCOMPARE(mode_of(native), static_cast<mode_t>(new_mode));
}

void TestFileSystemObject::a_folder_is_made()
{
    const TestDisk disk;
    const QString odd_name = u"C:\\Pop\\name \uF05C \xDCE4"_s;
    fso.CreateFolder(u"C:\\Pop"_s);
    fso.CreateFolder(u"C:\\Pop\\new folder\\"_s);
    fso.CreateFolder(odd_name);

    for (const QString& path : {u"C:\\Pop"_s, u"C:\\Pop\\new folder"_s, odd_name})
        QVERIFY2(fso.FolderExists(path), qPrintable(path));
}

void TestFileSystemObject::a_folder_that_cannot_be_made_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("error");

    QTest::newRow("a folder stands there") << u"C:\\folder"_s << 58;
    QTest::newRow("a drive stands there") << u"C:\\"_s << 58;
    QTest::newRow("a file stands there") << u"C:\\a.mp3"_s << 58;
    QTest::newRow("a dangling link stands there") << u"C:\\dangling"_s << 58;
    QTest::newRow("no folder above") << u"C:\\none\\new"_s << 76;
    QTest::newRow("a file above") << u"C:\\a.mp3\\new"_s << 76;
    QTest::newRow("an unknown drive") << u"Q:\\new"_s << 76;
    QTest::newRow("a name that no folder can bear") << u"C:\\.."_s << 76;
    QTest::newRow("the key of the tree's root") << u"MYCOMPUTER\\new"_s << 76;
    QTest::newRow("a name too long") << QString(u"C:\\"_s + QString(256, u'x')) << 75;
}

void TestFileSystemObject::a_folder_that_cannot_be_made()
{
    QFETCH(QString, path);
    QFETCH(int, error);
    const TestDisk disk;
    disk.make_folder(u"C:\\folder\\inside"_s);
    disk.write(u"C:\\a.mp3"_s, "a");
    QVERIFY(make_link("nowhere", disk.native(u"C:\\dangling"_s)));

    QCOMPARE(error_of([&] { fso.CreateFolder(path); }), error);
    QVERIFY(disk.exists(u"C:\\folder\\inside"_s));
    QCOMPARE(disk.read(u"C:\\a.mp3"_s), QByteArray("a"));
    QVERIFY(!disk.exists(u"C:\\nowhere"_s));
}

void TestFileSystemObject::a_folder_moves_with_all_that_is_in_it()
{
    const TestDisk disk;
    disk.write(u"C:\\Pop\\Old\\a.mp3"_s, "a");
    disk.make_folder(u"C:\\Rock"_s);

    fso.MoveFolder(u"C:\\Pop"_s, u"C:\\pop"_s);
    QCOMPARE(disk.read(u"C:\\pop\\Old\\a.mp3"_s), QByteArray("a"));
    QVERIFY(!disk.exists(u"C:\\Pop"_s));
    fso.MoveFolder(u"C:\\pop\\Old"_s, u"C:\\Rock\\New"_s);
    QCOMPARE(disk.read(u"C:\\Rock\\New\\a.mp3"_s), QByteArray("a"));
    QVERIFY(disk.exists(u"C:\\pop"_s));
    QVERIFY(!disk.exists(u"C:\\pop\\Old"_s));
}

void TestFileSystemObject::a_folder_that_cannot_move_data()
{
    QTest::addColumn<QString>("old_path");
    QTest::addColumn<QString>("new_path");
    QTest::addColumn<int>("error");

    QTest::newRow("an empty folder stands there") << u"C:\\Pop"_s << u"C:\\empty"_s << 58;
    QTest::newRow("a file stands there") << u"C:\\Pop"_s << u"C:\\b.mp3"_s << 58;
    QTest::newRow("a dangling link stands there") << u"C:\\Pop"_s << u"C:\\dangling"_s << 58;
    QTest::newRow("a backslash behind a folder names that folder") << u"C:\\Pop"_s << u"C:\\empty\\"_s << 58;
    QTest::newRow("no such folder") << u"C:\\none"_s << u"C:\\new"_s << 76;
    QTest::newRow("a file is no folder") << u"C:\\b.mp3"_s << u"C:\\new"_s << 76;
    QTest::newRow("no folder above the new path") << u"C:\\Pop"_s << u"C:\\none\\new"_s << 76;
    QTest::newRow("an unknown drive") << u"C:\\Pop"_s << u"Q:\\new"_s << 76;
    QTest::newRow("below the key of the tree's root") << u"C:"_s << u"MYCOMPUTER\\new"_s << 76;
    QTest::newRow("into itself") << u"C:\\Pop"_s << u"C:\\Pop\\new"_s << 75;
}

void TestFileSystemObject::a_folder_that_cannot_move()
{
    QFETCH(QString, old_path);
    QFETCH(QString, new_path);
    QFETCH(int, error);
    const TestDisk disk;
    disk.write(u"C:\\Pop\\a.mp3"_s, "a");
    disk.write(u"C:\\b.mp3"_s, "b");
    disk.make_folder(u"C:\\empty"_s);
    QVERIFY(make_link("nowhere", disk.native(u"C:\\dangling"_s)));

    QCOMPARE(error_of([&] { fso.MoveFolder(old_path, new_path); }), error);
    QCOMPARE(disk.read(u"C:\\Pop\\a.mp3"_s), QByteArray("a"));
    QCOMPARE(disk.read(u"C:\\b.mp3"_s), QByteArray("b"));
    QVERIFY(disk.exists(u"C:\\empty"_s));
    QVERIFY(!disk.exists(u"C:\\nowhere"_s));
}

void TestFileSystemObject::nothing_changes_without_rights()
{
    const TestDisk disk;
    disk.make_folder(u"C:\\Pop"_s);
    QCOMPARE(chmod(disk.root().constData(), 0555), 0);

    // Root may write everywhere, so it becomes somebody else for a moment.
    const uid_t user = geteuid();
    constexpr uid_t nobody = 65534;
    if (user == 0 && seteuid(nobody) != 0)
        QSKIP("root may write everywhere and can't be anybody else here");
    const int create_error = error_of([&] { fso.CreateFolder(u"C:\\new"_s); });
    const int move_error = error_of([&] { fso.MoveFolder(u"C:\\Pop"_s, u"C:\\new"_s); });
    QCOMPARE(seteuid(user), 0);
    QCOMPARE(chmod(disk.root().constData(), 0700), 0);
    QCOMPARE(create_error, 70);
    QCOMPARE(move_error, 70);
    QVERIFY(!disk.exists(u"C:\\new"_s));
}

void TestFileSystemObject::computer_has_its_name()
{
    QVERIFY(!GetComputerNameA().isEmpty());
}

QUILMO_LOGIC_TEST(TestFileSystemObject)
#include "test_file_system_object.moc"
