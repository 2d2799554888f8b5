#include "faulty_disk.h"
#include "file_operations.h"
#include "test_main.h"

#include "platform/file_operation/FileOperation.h"
#include "platform/settings.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>

#include <filesystem>
#include <set>

// What the program makes on the disk is for nobody but the user, from its very first moment on. The tests run with a
// umask that forbids nothing, and look at the disk before each call of the system.

using namespace Qt::StringLiterals;

namespace {

const QByteArray secret = "what only the user may read";

/// Rights of others to what stands at a path, a link itself.
mode_t rights_of_others(const QByteArray& native)
{
    return status_at(native).st_mode & (S_IRWXG | S_IRWXO);
}

/// All below a folder on disk.
QByteArrayList entries_below(const QByteArray& native)
{
    QByteArrayList entries;
    std::error_code error;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(native.toStdString(), error))
        entries.append(QByteArray::fromStdString(entry.path().string()));
    return entries;
}

/// What stood below a folder at the beginning, to tell what came later.
class Newcomers
{
public:
    explicit Newcomers(QByteArray native) : folder_(std::move(native))
    {
        for (const QByteArray& entry : entries_below(folder_))
            known_.insert(status_at(entry).st_ino);
    }

    QByteArrayList now() const
    {
        QByteArrayList entries = entries_below(folder_);
        entries.removeIf([this](const QByteArray& entry) { return known_.contains(status_at(entry).st_ino); });
        return entries;
    }

private:
    QByteArray folder_;
    std::set<ino_t> known_;
};

/// Runs `work` and calls `look` before each call of the system that touches `folders`, and in the end; gives how many
/// looks there were.
int look_all_along(const QByteArrayList& folders, const std::function<void(const QByteArray& call)>& look,
                   const std::function<void()>& work)
{
    int looks = 0;
    watch_disk(
        folders,
        [&](const QByteArray& call, const QByteArray& /*native*/) {
            ++looks;
            look(call);
        },
        work);
    look("the end");
    return looks;
}

/// Notes an entry that others have rights to, with the moment.
void note_open_entries(const QByteArrayList& entries, const QByteArray& call, QByteArrayList& found)
{
    for (const QByteArray& entry : entries) {
        if (const mode_t rights = rights_of_others(entry); rights != 0)
            found.append(entry + " has " + QByteArray::number(rights, 8) + " before " + call);
    }
}

FileCalls without_unnamed_files(bool wanted)
{
    FileCalls calls = FileCalls::of_this_machine();
    if (wanted)
        calls.open_unnamed = [](const QByteArray& /*folder*/) { return -EOPNOTSUPP; };
    return calls;
}

} // namespace

class TestPrivacy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void settings_are_never_open_to_others_data();
    void settings_are_never_open_to_others();
    void settings_that_were_open_are_closed_before_they_are_written();
    void reading_settings_makes_nothing();
    void the_umask_of_the_run_stays();
    void trash_is_never_open_to_others_data();
    void trash_is_never_open_to_others();
    void copies_are_open_to_others_as_their_sources_are_and_not_before_data();
    void copies_are_open_to_others_as_their_sources_are_and_not_before();

private:
    mode_t mask_before_ = 0;
    std::unique_ptr<QTemporaryDir> config_;
    QByteArray config_folder_;
};

void TestPrivacy::init()
{
    config_ = std::make_unique<QTemporaryDir>();
    config_folder_ = QFile::encodeName(config_->path());
    mask_before_ = umask(0);
}

void TestPrivacy::cleanup()
{
    umask(mask_before_);
}

void TestPrivacy::settings_are_never_open_to_others_data()
{
    QTest::addColumn<QByteArray>("folder");
    QTest::newRow("in a folder that is there") << QByteArray("");
    QTest::newRow("in a folder that has to be made") << QByteArray("/.config");
    QTest::newRow("in a folder of a folder that has to be made") << QByteArray("/home/.config");
}

void TestPrivacy::settings_are_never_open_to_others()
{
    QFETCH(const QByteArray, folder);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, QFile::decodeName(config_folder_ + folder));
    QByteArrayList found;
    const auto look = [&](const QByteArray& call) { note_open_entries(entries_below(config_folder_), call, found); };
    const int looks = look_all_along({config_folder_}, look, [&] {
        SaveSetting(u"Quilmo"_s, u"location_burn"_s, u"location"_s, QString::fromUtf8(secret));
        SaveSetting(u"Quilmo"_s, u"fif_type"_s, u"location"_s, u"2"_s);
    });
    QVERIFY(looks > 5);
    QCOMPARE(found, QByteArrayList());
    const QByteArray store = config_folder_ + folder + "/Quilmo.ini";
    QCOMPARE(status_at(store).st_mode & 07777, 0600);
    QFile file(QFile::decodeName(store));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains(secret));
}

void TestPrivacy::settings_that_were_open_are_closed_before_they_are_written()
{
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, config_->path());
    const QByteArray store = config_folder_ + "/Quilmo.ini";
    write_native(store, "[fif_type]\nlocation=2\n");
    QCOMPARE(chmod(store.constData(), 0666), 0);
    const Newcomers newcomers(config_folder_);
    QByteArrayList found;
    const auto look = [&](const QByteArray& call) { note_open_entries(newcomers.now(), call, found); };
    QVERIFY(look_all_along({config_folder_}, look, [] {
                SaveSetting(u"Quilmo"_s, u"location_burn"_s, u"location"_s, QString::fromUtf8(secret));
            }) > 5);
    QCOMPARE(found, QByteArrayList());
    QCOMPARE(status_at(store).st_mode & 07777, 0600);
    QCOMPARE(GetSetting(u"Quilmo"_s, u"fif_type"_s, u"location"_s, {}), u"2"_s);
    QCOMPARE(GetSetting(u"Quilmo"_s, u"location_burn"_s, u"location"_s, {}), QString::fromUtf8(secret));
}

void TestPrivacy::reading_settings_makes_nothing()
{
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, config_->path());
    QByteArrayList found;
    look_all_along(
        {config_folder_}, [&](const QByteArray& /*call*/) { found += entries_below(config_folder_); },
        [] { GetSetting(u"Quilmo"_s, u"fif_type"_s, u"location"_s, {}); });
    QCOMPARE(found, QByteArrayList());
}

void TestPrivacy::the_umask_of_the_run_stays()
{
    umask(027);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, config_->path());
    SaveSetting(u"Quilmo"_s, u"fif_type"_s, u"location"_s, u"2"_s);
    QCOMPARE(umask(0), mode_t(027));
}

void TestPrivacy::trash_is_never_open_to_others_data()
{
    QTest::addColumn<bool>("on_the_home_volume");
    QTest::addColumn<bool>("is_folder");
    QTest::newRow("a file into the trash of the home") << true << false;
    QTest::newRow("a folder into the trash of the home") << true << true;
    QTest::newRow("a file into the trash of its volume") << false << false;
    QTest::newRow("a folder into the trash of its volume") << false << true;
}

void TestPrivacy::trash_is_never_open_to_others()
{
    QFETCH(const bool, on_the_home_volume);
    QFETCH(const bool, is_folder);
    const TestDisk disk;
    disk.write(is_folder ? u"C:\\Old\\a.mp3"_s : u"C:\\Old"_s, secret);
    QCOMPARE(chmod(disk.native(u"C:\\Old"_s).constData(), 0777), 0);
    const QByteArray data = config_folder_ + "/local/share";
    qputenv("XDG_DATA_HOME", data);
    FileCalls calls = FileCalls::of_this_machine();
    if (!on_the_home_volume)
        calls.volume_root = [root = disk.root()](const QByteArray& native) {
            return native.startsWith(root) ? root : QByteArray("/");
        };

    const QByteArrayList folders = {disk.root(), config_folder_};
    const std::vector<Newcomers> newcomers = {Newcomers(disk.root()), Newcomers(config_folder_)};
    QByteArrayList found;
    const auto look = [&](const QByteArray& call) {
        for (const Newcomers& entries : newcomers)
            note_open_entries(entries.now(), call, found);
    };
    ScriptedGuide guide;
    FileOutcome outcome;
    const int looks = look_all_along(
        folders, look, [&] { outcome = run_file_operation(FileAction::remove, {u"C:\\Old"_s}, {}, guide, calls); });
    QVERIFY(looks > 5);
    QVERIFY(is_done(outcome));
    // The name of what was thrown away stands in the folder and its note; its own rights are as they were.
    found.removeIf([&](const QByteArray& line) { return line.contains("/files/Old"); });
    QCOMPARE(found, QByteArrayList());

    const QByteArray user = QByteArray::number(geteuid());
    const QByteArray trash = on_the_home_volume ? data + "/Trash" : disk.root() + "/.Trash-" + user;
    for (const char* const name : {"", "/files", "/info"})
        QCOMPARE(status_at(trash + name).st_mode & 07777, 0700);
    QCOMPARE(status_at(trash + "/info/Old.trashinfo").st_mode & 07777, 0600);
    QVERIFY(stands(trash + "/files/Old"));
}

void TestPrivacy::copies_are_open_to_others_as_their_sources_are_and_not_before_data()
{
    QTest::addColumn<FileAction>("action");
    QTest::addColumn<bool>("by_hidden_names");
    QTest::addColumn<bool>("replaces");
    QTest::addColumn<int>("file_rights");
    QTest::addColumn<int>("folder_rights");

    for (const bool by_hidden_names : {false, true}) {
        const char* const way = by_hidden_names ? "by hidden names" : "by files without names";
        for (const bool replaces : {false, true}) {
            const char* const place = replaces ? "over one that all may read" : "to a free place";
            QTest::addRow("copy %s, %s, of what is the user's", way, place)
                << FileAction::copy << by_hidden_names << replaces << 0600 << 0700;
            QTest::addRow("copy %s, %s, of what a group may read", way, place)
                << FileAction::copy << by_hidden_names << replaces << 0640 << 0750;
            QTest::addRow("copy %s, %s, of what all may write", way, place)
                << FileAction::copy << by_hidden_names << replaces << 0666 << 0777;
            QTest::addRow("move %s, %s, of what is the user's", way, place)
                << FileAction::move << by_hidden_names << replaces << 0600 << 0700;
            QTest::addRow("move %s, %s, of what a group may read", way, place)
                << FileAction::move << by_hidden_names << replaces << 0640 << 0750;
        }
    }
}

void TestPrivacy::copies_are_open_to_others_as_their_sources_are_and_not_before()
{
    QFETCH(const FileAction, action);
    QFETCH(const bool, by_hidden_names);
    QFETCH(const bool, replaces);
    QFETCH(const int, file_rights);
    QFETCH(const int, folder_rights);
    const TwoDisks disks;
    if (action == FileAction::move && !disks.are_two())
        QSKIP("there is no second file system here");
    disks.write(u"C:\\Album\\a.mp3"_s, secret);
    QCOMPARE(chmod(disks.native(u"C:\\Album\\a.mp3"_s).constData(), static_cast<mode_t>(file_rights)), 0);
    QCOMPARE(chmod(disks.native(u"C:\\Album"_s).constData(), static_cast<mode_t>(folder_rights)), 0);
    const QString target = action == FileAction::move ? u"D:\\To"_s : u"C:\\To"_s;
    disks.make_folder(target);
    if (replaces) {
        disks.write(target + u"\\Album\\a.mp3"_s, "old");
        QCOMPARE(chmod(disks.native(target + u"\\Album\\a.mp3"_s).constData(), 0666), 0);
    }

    const QByteArray target_native = disks.native(target);
    const Newcomers newcomers(target_native);
    QByteArrayList found;
    const auto look = [&](const QByteArray& call) {
        for (const QByteArray& entry : newcomers.now()) {
            const struct stat status = status_at(entry);
            const int given = S_ISDIR(status.st_mode) ? folder_rights : file_rights;
            const int rights = static_cast<int>(status.st_mode & 07777);
            const bool is_final = rights == given;
            const bool is_closed = rights == (S_ISDIR(status.st_mode) ? 0700 : 0600);
            if (!is_final && !is_closed)
                found.append(entry + " has " + QByteArray::number(rights, 8) + " before " + call);
        }
    };
    ScriptedGuide guide;
    guide.overwrites = {FileOperationGuide::Overwrite::yes};
    FileOutcome outcome;
    const int looks = look_all_along({target_native}, look, [&] {
        outcome = run_file_operation(action, {u"C:\\Album"_s}, target, guide, without_unnamed_files(by_hidden_names));
    });
    QVERIFY(looks > 5);
    QVERIFY(is_done(outcome));
    QCOMPARE(found, QByteArrayList());
    QCOMPARE(disks.read(target + u"\\Album\\a.mp3"_s), secret);
    QCOMPARE(status_at(disks.native(target + u"\\Album\\a.mp3"_s)).st_mode & 07777, static_cast<mode_t>(file_rights));
    if (!replaces)
        QCOMPARE(status_at(disks.native(target + u"\\Album"_s)).st_mode & 07777, static_cast<mode_t>(folder_rights));
}

QUILMO_LOGIC_TEST(TestPrivacy)
#include "test_privacy.moc"
