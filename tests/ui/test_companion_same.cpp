#include "companion_run.h"
#include "odd_names.h"
#include "ui_convert.h"

#include "convert/BatchConversion.h"
#include "convert/FIF_Auto_Convert.h"
#include "core/mod_of_grobal_var.h"
#include "core/user_settings.h"
#include "platform/controls/TextBox.h"
#include "platform/controls/UsrButton.h"
#include "platform/file_names.h"
#include "selection/final_list.h"

#include <QApplication>
#include <QCheckBox>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString drive = u"C:\\"_s;

/// A file by its name on the disk and what it holds.
struct Music
{
    QByteArray name;
    QByteArray content;
};

using Files = QMap<QByteArray, QByteArray>;

QByteArray with_tag(const SampleTag& tag)
{
    return sample_audio({.frames = 2}) + sample_tag(tag);
}

/// Names and tags of all kinds that the conversions tell apart, in files long enough for a tag. Each has a title of its
/// own, so that no two files want one name.
QList<Music> all_music()
{
    QList<Music> music;
    const auto add = [&](const QByteArray& name, const QByteArray& content) {
        music.append({QByteArray(name).replace('#', QByteArray::number(music.size())), content});
    };
    const auto tagged = [&music] { return song("Old", QByteArray::number(music.size()) + "Older", 200); };
    for (const QByteArray name : {"[Ann][#Sea][Rock]",
                                  "[Ann][#Sea]",
                                  "(Ann)(#Sea)(Hip_Hop)",
                                  "(Ann)(#Sea)",
                                  "Ann-#Sea-Jazz",
                                  "Ann-#Sea",
                                  "abc#-",
                                  "-abc#",
                                  "a--b#",
                                  "a-b#-",
                                  "A-B-C-D#",
                                  "[a[b][#c]",
                                  "(A)[B#]",
                                  "[a][b][c]d#",
                                  "Foo (live)-Bar#",
                                  "[ Ann ][ #Sea ][ Pop ]",
                                  "[Ann][#Sea][Nonsense]",
                                  "(A[n]n)(#Sea-side)",
                                  "[A?n][#*]",
                                  "plain#"}) {
        add(name + ".mp3", tagged());
        add(name + ".MP3", sample_audio({.frames = 2}));
    }
    for (const int bytes : {22, 23, 24, 25, 48, 49, 50, 51, 53, 54}) {
        add('[' + QByteArray(bytes, 'A') + "][#" + QByteArray(40, 'T') + " x][Pop].mp3", tagged());
        add(QByteArray(bytes, 'A') + "-#" + QByteArray(54, 'T') + " x.mp3", tagged());
    }
    for (const QByteArray artist : {"Ann", "? Ann", " Ann ", "A-n[n](x)", "???", "", "Bj\xf6rk", "\xb0\xa1\xb3\xaa"}) {
        for (const unsigned char genre : {17, 7, 81, 140, 200}) {
            const QByteArray title = QByteArray::number(music.size()).leftJustified(30, 'T');
            add("song #.mp3", with_tag({.title = title, .artist = artist, .genre = genre}));
        }
        const QByteArray title = QByteArray::number(music.size()) + QByteArray("Sea\0rest", 8);
        add("song #.mp3", with_tag({.title = title, .artist = artist, .padding = ' '}));
    }
    for (const OddName& odd : odd_names) {
        const QByteArray name = odd.bytes.left(200) + QByteArray::number(music.size()) + ".mp3";
        music.append({name, tagged()});
    }
    return music;
}

/// Files too short for a tag. In one run of the windows they spoil the tags of others.
const QList<Music> short_music{{"[Ann][Sea].mp3", "short"}, {"Ann-Sea-Rock.mp3", ""}, {"plain.mp3", "short"}};

Files files_on(const TestDisk& disk)
{
    Files files;
    const Folder folder = shared.fso.GetFolder(drive);
    for (const File& file : folder.Files())
        files.insert(name_to_bytes(file.Name), disk.read(drive + file.Name));
    return files;
}

/// What the companion makes of files.
Files converted_by_companion(const QList<Music>& music, const QByteArrayList& options)
{
    const MusicPlace place;
    for (const Music& file : music)
        place.write(file.name, file.content);
    run_fif(applied(QByteArrayList{"convert", "--tags"} + options, place));
    return place.content();
}

/// Puts the files on a drive that the windows show.
void prepare(const TestDisk& disk, const QList<Music>& music, i16 type)
{
    for (const Music& file : music)
        disk.write(drive + name_from_bytes(file.name), file.content);
    shared.fif_type = type;
    shared.current_folder = drive;
}

/// What pressing the button of the final list's dialog makes of them.
Files converted_by_batch(const QList<Music>& music, i16 type)
{
    const TestDisk disk;
    const NotedMessages messages;
    NotedTransport player;
    prepare(disk, music, type);
    write_settings(); // where the companion finds the type
    for (const Music& file : music) {
        const QString name = name_from_bytes(file.name);
        add_to_final_list(name, drive, drive + name, 1, {}, {});
        set_convert_mark(name, 1);
    }
    BatchConversion(player).Change_FIF([] {});
    return files_on(disk);
}

/// What the dialog for selected rows makes of them.
Files converted_by_auto(const QList<Music>& music, i16 type, const FixedFields& fixed)
{
    const TestDisk disk;
    const NotedMessages messages;
    NotedTransport player;
    prepare(disk, music, type);
    ListView main_list;
    main_list.set_MultiSelect(true);
    for (const Music& file : music) {
        const QString name = name_from_bytes(file.name);
        main_list.set_Selected(main_list.Add(name, name), true);
    }
    const FIF_Auto_Convert form(player, {.lvListView = main_list, .small_icons = {}, .refresh_all = [] {}}, nullptr);
    const auto fix = [&form](const char* check, const char* box, const std::optional<QString>& text) {
        form.findChild<QCheckBox*>(QLatin1StringView(check))->setChecked(text.has_value());
        form.findChild<TextBox*>(QLatin1StringView(box))->set_Text(text.value_or(QString()));
    };
    fix("Check_Artist", "txtArtist", fixed.artist);
    fix("Check_Genre", "txtGenre", fixed.genre);
    for (const char* const button : {"freeview", "autoconvert"})
        Q_EMIT form.findChild<UsrButton*>(QLatin1StringView(button))->Click();
    return files_on(disk);
}

/// The first file that the two ways make different things of, for the report of a failing test.
QByteArray difference(const Files& files, const Files& expected)
{
    for (const QByteArray& name : files.keys() + expected.keys()) {
        if (files.value(name) != expected.value(name))
            return name + (expected.contains(name) ? files.contains(name) ? " holds something else" : " is missing"
                                                   : " is too much");
    }
    return {};
}

/// The files all at once, and the short ones each in a run of its own.
QList<QList<Music>> runs()
{
    QList<QList<Music>> runs{all_music()};
    for (const Music& file : short_music)
        runs.append({file});
    return runs;
}

} // namespace

/// The companion does with each file what the dialogs do with it in a run of its own.
class TestCompanionSame : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void as_the_batch_conversion_data();
    void as_the_batch_conversion();
    void as_the_auto_conversion_data();
    void as_the_auto_conversion();
};

void TestCompanionSame::as_the_batch_conversion_data()
{
    QTest::addColumn<int>("type");
    for (int type = 1; type <= 6; ++type)
        QTest::addRow("type %d", type) << type;
}

void TestCompanionSame::as_the_batch_conversion()
{
    QFETCH(int, type);

    for (const QList<Music>& music : runs()) {
        const Files expected = converted_by_batch(music, static_cast<i16>(type));
        const Files files = converted_by_companion(music, {});
        QVERIFY2(files == expected, difference(files, expected).constData());
    }
}

void TestCompanionSame::as_the_auto_conversion_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArrayList>("options");

    for (int type = 1; type <= 6; ++type) {
        QTest::addRow("type %d", type) << type << QByteArrayList();
        QTest::addRow("type %d, fixed artist and genre", type)
            << type << QByteArrayList{"--fix-artist", " Var?ious (x) ", "--fix-genre", "Folk/Rock"};
        QTest::addRow("type %d, fixed artist that is long", type)
            << type << QByteArrayList{"--fix-artist", QByteArray(45, 'V')};
        QTest::addRow("type %d, fixed genre", type) << type << QByteArrayList{"--fix-genre", "Club_House"};
    }
}

void TestCompanionSame::as_the_auto_conversion()
{
    QFETCH(int, type);
    QFETCH(QByteArrayList, options);

    FixedFields fixed;
    for (qsizetype place = 0; place < options.size(); place += 2)
        (options[place] == "--fix-artist" ? fixed.artist : fixed.genre) = QString::fromUtf8(options[place + 1]);
    for (const QList<Music>& music : runs()) {
        const Files expected = converted_by_auto(music, static_cast<i16>(type), fixed);
        const Files files = converted_by_companion(music, QByteArrayList{"--type", QByteArray::number(type)} + options);
        QCOMPARE(files.size(), music.size());
        QVERIFY2(files == expected, difference(files, expected).constData());
    }
}

QUILMO_UI_TEST(TestCompanionSame)
#include "test_companion_same.moc"
