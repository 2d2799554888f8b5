#include "tagged_files.h"
#include "test_main.h"

#include "core/mod_of_grobal_var.h"
#include "fif/mod_of_FIF.h"
#include "mp3/cIDV3.h"

#include <QCoreApplication>
#include <QTest>

#include <algorithm>
#include <memory>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QString folder = u"C:\\Music\\"_s;

} // namespace

class TestModOfFif : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestDisk> disk_;

private Q_SLOTS:
    void init();
    void cleanup() { disk_.reset(); }

    void a_name_classifies_a_file_data();
    void a_name_classifies_a_file();
    void a_fif_name_wins_without_a_look_at_the_file();
    void a_tag_classifies_a_file_data();
    void a_tag_classifies_a_file();
    void a_tag_is_looked_for_in_the_current_folder();
    void a_failure_leaves_what_the_parsers_stored();
    void every_genre_byte_classifies();
    void a_genre_goes_into_the_name_in_its_spelling();
    void damaged_tags_data();
    void damaged_tags();
    void a_short_file_ends_the_reading_of_tags_data();
    void a_short_file_ends_the_reading_of_tags();
    void the_shortest_files_with_a_tag();
    void what_is_no_file_has_no_tag_data();
    void what_is_no_file_has_no_tag();
    void odd_names_are_read_and_written_data();
    void odd_names_are_read_and_written();
    void a_tag_is_written();
    void a_file_replaced_since_it_was_read_keeps_its_own_fields();
    void the_first_and_the_last_genre_are_written();
    void a_genre_is_written_in_list_spelling();
    void a_genre_of_no_list_leaves_the_byte_data();
    void a_genre_of_no_list_leaves_the_byte();
    void a_new_tag_takes_the_place_of_the_last_audio();
    void a_tag_that_cannot_be_written_is_reported_data();
    void a_tag_that_cannot_be_written_is_reported();
    void a_read_only_file_is_written();
    void a_hidden_read_only_file_stays_as_it_is();
    void read_only_is_cleared_alone();
};

void TestModOfFif::init()
{
    disk_ = std::make_unique<TestDisk>();
    shared.current_folder = disk_->make_folder(folder);
}

void TestModOfFif::a_name_classifies_a_file_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<i16>("without_tag");
    QTest::addColumn<i16>("with_tag");
    QTest::addColumn<QStringList>("fields");
    const auto row = [](const QString& name, int without_tag, int with_tag, const QStringList& fields) {
        QTest::newRow(qPrintable(name)) << name << static_cast<i16>(without_tag) << static_cast<i16>(with_tag)
                                        << fields;
    };
    const QStringList tag = {u"Tag artist"_s, u"Tag title"_s, u"Rock"_s};
    row(u"[Artist][Title].mp3"_s, 1, 1, {u"Artist"_s, u"Title"_s, {}});
    row(u"(Artist)(Title).mp3"_s, 1, 1, {u"Artist"_s, u"Title"_s, {}});
    row(u"Artist-Title.mp3"_s, 1, 1, {u"Artist"_s, u"Title"_s, {}});
    row(u"[Artist][Title][Rock].mp3"_s, 1, 1, {u"Artist"_s, u"Title"_s, u"Rock"_s});
    row(u"(Artist)(Title)(Any genre).mp3"_s, 1, 1, {u"Artist"_s, u"Title"_s, u"Any genre"_s});
    row(u"Artist-Title-ROC.mp3"_s, 1, 1, {u"Artist"_s, u"Title"_s, u"ROC"_s});
    row(u"[A][B].xyz"_s, 1, 1, {u"A"_s, u"B"_s, {}});
    row(u"abc-.mp3"_s, 1, 1, {u"abc"_s, {}, {}});
    row(u"[a[b][c].mp3"_s, 1, 1, {u"a[b"_s, u"c"_s, {}});
    row(u"Artist-Title-Genre-More.mp3"_s, 0, 2, tag);
    row(u"Artist (live)-Title.mp3"_s, 0, 2, tag);
    row(u"(A)[B].mp3"_s, 0, 2, tag);
    row(u"-abc.mp3"_s, 0, 2, tag);
    row(u"a--b.mp3"_s, 0, 2, tag);
    row(u"a-b-.mp3"_s, 0, 2, tag);
    row(u"[a][b][c]d.mp3"_s, 0, 2, tag);
    row(u"track01.mp3"_s, 0, 2, tag);
    row(u".mp3"_s, 0, 2, tag);
    row(u"MP3"_s, 0, 2, tag);
    row(u"a"_s, 0, 2, tag);
}

void TestModOfFif::a_name_classifies_a_file()
{
    QFETCH(const QString, name);
    QFETCH(const i16, without_tag);
    QFETCH(const i16, with_tag);
    for (i16 type = 1; type <= 6; ++type) {
        shared.fif_type = type;
        disk_->write(folder + name, sample_audio({.frames = 2}));
        QCOMPARE(Check_file_for_fif(name), without_tag);
        disk_->write(folder + name, tagged("Tag artist", "Tag title"));
        set_results(u"stale"_s);
        QCOMPARE(Check_file_for_fif(name), with_tag);
        QTEST(results(), "fields");
    }
}

void TestModOfFif::a_fif_name_wins_without_a_look_at_the_file()
{
    disk_->write(folder + u"first.mp3"_s, tagged("A", "T"));
    QCOMPARE(Check_file_for_fif(u"first.mp3"_s), i16{2});
    disk_->write(folder + u"[x][y].mp3"_s, tagged("B", "U"));
    QCOMPARE(Check_file_for_fif(u"[x][y].mp3"_s), i16{1});
    QCOMPARE(id3().FileName(), folder + u"first.mp3"_s);
    QCOMPARE(Check_file_for_fif(u"[no such][file].mp3"_s), i16{1});
}

void TestModOfFif::a_tag_classifies_a_file_data()
{
    QTest::addColumn<i16>("type");
    QTest::addColumn<QByteArray>("artist");
    QTest::addColumn<QByteArray>("title");
    QTest::addColumn<i16>("result");
    QTest::addColumn<QString>("fif_artist");
    QTest::addColumn<QString>("fif_title");
    const auto row = [](const char* name, int type, const QByteArray& artist, const QByteArray& title, int result,
                        const QString& fif_artist = {}, const QString& fif_title = {}) {
        QTest::newRow(name) << static_cast<i16>(type) << artist << title << static_cast<i16>(result) << fif_artist
                            << fif_title;
    };
    row("plain text", 1, "Artist", "Title", 2, u"Artist"_s, u"Title"_s);
    row("blanks at both ends go", 1, "  Artist ", " Title  ", 2, u"Artist"_s, u"Title"_s);
    row("brackets stay under a type that has others", 1, "Foo (live)", "a-b", 2, u"Foo (live)"_s, u"a-b"_s);
    row("round brackets go under type 3", 3, "Foo (live)", "[x]", 2, u"Foo live"_s, u"[x]"_s);
    row("brackets and dashes go under type 5", 5, "Foo (live)", "a-[b]", 2, u"Foo live"_s, u"ab"_s);
    row("forbidden characters go", 1, "AC/DC", "What?", 2, u"ACDC"_s, u"What"_s);
    row("blanks go before the cleaning", 1, " ? A", "T ?", 2, u" A"_s, u"T "_s);
    row("text behind a NUL goes", 1, QByteArray("Artist \0junk", 12), QByteArray("\x20Title\0\0x", 9), 2, u"Artist"_s,
        u"Title"_s);
    row("an artist of blanks", 1, "     ", "Title", 0);
    row("a title of blanks", 1, "Artist", "  ", 0);
    row("an artist of NULs", 1, "", "Title", 0);
    row("an artist behind a NUL", 1, QByteArray("\0Artist", 7), "Title", 0);
    row("an artist that the cleaning empties", 1, "?:*", "Title", 0);
    row("a title that the cleaning empties", 5, "Artist", "[-]", 0);
    row("Hangul", 1, korean_bytes(u"가수"_s), korean_bytes(u"노래"_s), 2, u"가수"_s, u"노래"_s);
    row("Western letters", 1, western_bytes(u"Björk"_s), western_bytes(u"Café"_s), 2, u"Björk"_s, u"Café"_s);
}

void TestModOfFif::a_tag_classifies_a_file()
{
    QFETCH(const i16, type);
    QFETCH(const QByteArray, artist);
    QFETCH(const QByteArray, title);
    QFETCH(const QString, fif_artist);
    QFETCH(const QString, fif_title);
    shared.fif_type = type;
    disk_->write(folder + u"x.mp3"_s, tagged(artist, title));
    const i16 result = Check_file_for_fif(u"x.mp3"_s);
    QTEST(result, "result");
    if (result == 2)
        QCOMPARE(results(), QStringList({fif_artist, fif_title, u"Rock"_s}));
}

void TestModOfFif::a_tag_is_looked_for_in_the_current_folder()
{
    disk_->write(u"C:\\Other\\x.mp3"_s, tagged("A", "T"));
    QCOMPARE(Check_file_for_fif(u"x.mp3"_s), i16{0});
    shared.current_folder = u"C:\\Other\\"_s;
    QCOMPARE(Check_file_for_fif(u"x.mp3"_s), i16{2});
    shared.current_folder = u"C:\\Gone\\"_s;
    QCOMPARE(Check_file_for_fif(u"x.mp3"_s), i16{0});
    shared.current_folder.clear();
    QCOMPARE(Check_file_for_fif(u"x.mp3"_s), i16{0});
}

void TestModOfFif::a_failure_leaves_what_the_parsers_stored()
{
    set_results(u"stale"_s);
    QCOMPARE(Check_file_for_fif(u"-a.mp3"_s), i16{0});
    QCOMPARE(results(), QStringList({u"stale"_s, u"stale"_s, u"stale"_s}));
    QCOMPARE(Check_file_for_fif(u"[a][b.mp3"_s), i16{0});
    QCOMPARE(results(), QStringList({u"a"_s, u"b"_s, {}}));
    QCOMPARE(Check_file_for_fif(u"a-b-c-d.mp3"_s), i16{0});
    QCOMPARE(results(), QStringList({u"a"_s, u"bd"_s, u"c"_s}));
    disk_->write(folder + u"-b.mp3"_s, tagged("Artist", ""));
    QCOMPARE(Check_file_for_fif(u"-b.mp3"_s), i16{0});
    QCOMPARE(results(), QStringList({u"a"_s, u"bd"_s, u"c"_s}));
}

void TestModOfFif::every_genre_byte_classifies()
{
    for (int genre = 0; genre <= 255; ++genre) {
        disk_->write(folder + u"x.mp3"_s, tagged("A", "T", static_cast<unsigned char>(genre)));
        QCOMPARE(Check_file_for_fif(u"x.mp3"_s), i16{2});
        QCOMPARE(shared.fif_genre.isEmpty(), genre >= 148);
        QVERIFY(!shared.fif_genre.contains(u'-') && !shared.fif_genre.contains(u'/'));
    }
}

void TestModOfFif::a_genre_goes_into_the_name_in_its_spelling()
{
    for (const Spelling& spelling : spellings) {
        disk_->write(folder + u"x.mp3"_s, tagged("A", "T", spelling.index));
        QCOMPARE(Check_file_for_fif(u"x.mp3"_s), i16{2});
        QCOMPARE(shared.fif_genre, spelling.fif);
    }
    disk_->write(folder + u"x.mp3"_s, tagged("A", "T", 78));
    Check_file_for_fif(u"x.mp3"_s);
    QCOMPARE(shared.fif_genre, u"Rock & Roll"_s);
}

void TestModOfFif::damaged_tags_data()
{
    QTest::addColumn<QByteArray>("block");
    QTest::addColumn<i16>("result");
    QTest::addColumn<QStringList>("fields");
    const QStringList none;
    QTest::newRow("a tag full of NULs") << "TAG" + QByteArray(125, '\0') << i16{0} << none;
    QTest::newRow("a tag full of blanks") << "TAG" + QByteArray(125, ' ') << i16{0} << none;
    const QString high = QString(30, u'ÿ');
    QTest::newRow("a tag full of 0xFF") << "TAG" + QByteArray(125, '\xff') << i16{2}
                                        << QStringList({high, high, QString()});
    QTest::newRow("a block full of NULs") << QByteArray(128, '\0') << i16{0} << none;
    QTest::newRow("a tag in small letters")
        << "tag" + sample_tag(tag_of("A", "T")).mid(3) << i16{2} << QStringList({u"A"_s, u"T"_s, u"Rock"_s});
    const QByteArray half = korean_bytes(QString(15, u'가')).prepend('x').left(30);
    const QString whole = u"x"_s + QString(14, u'가');
    QTest::newRow("fields that end in half a character")
        << sample_tag(tag_of(half, half)) << i16{2} << QStringList({whole, whole, u"Rock"_s});
}

void TestModOfFif::damaged_tags()
{
    QFETCH(const QByteArray, block);
    QFETCH(const QStringList, fields);
    disk_->write(folder + u"x.mp3"_s, sample_audio({.frames = 2}) + block);
    const i16 result = Check_file_for_fif(u"x.mp3"_s);
    QTEST(result, "result");
    if (result == 2)
        QCOMPARE(results(), fields);
}

void TestModOfFif::a_short_file_ends_the_reading_of_tags_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("an empty file") << 0;
    QTest::newRow("one byte") << 1;
    QTest::newRow("127 bytes") << 127;
}

void TestModOfFif::a_short_file_ends_the_reading_of_tags()
{
    QFETCH(const int, size);
    NotedMessages messages;
    disk_->write(folder + u"good.mp3"_s, tagged("A", "T"));
    disk_->write(folder + u"short.mp3"_s, sample_tag(tag_of("A", "T")).right(size));
    QCOMPARE(Check_file_for_fif(u"good.mp3"_s), i16{2});
    QCOMPARE(Check_file_for_fif(u"short.mp3"_s), i16{0});
    QCOMPARE(Check_file_for_fif(u"good.mp3"_s), i16{0});
    QCOMPARE(Check_file_for_fif(u"[A][T].mp3"_s), i16{1});

    const QByteArray before = disk_->read(folder + u"good.mp3"_s);
    QString genre = u"Pop"_s;
    Write_fif_tag(folder + u"good.mp3"_s, u"B"_s, u"U"_s, genre);
    QCOMPARE(messages.take(), QStringList(u"Error! Can not Write ID3 Tag"_s));
    QCOMPARE(disk_->read(folder + u"good.mp3"_s), before);
}

void TestModOfFif::the_shortest_files_with_a_tag()
{
    const QByteArray tag = sample_tag(tag_of("A", "T"));
    disk_->write(folder + u"128.mp3"_s, tag);
    disk_->write(folder + u"129.mp3"_s, "x" + tag);
    QCOMPARE(Check_file_for_fif(u"128.mp3"_s), i16{2});
    QCOMPARE(Check_file_for_fif(u"129.mp3"_s), i16{2});
    disk_->write(folder + u"128.mp3"_s, QByteArray(128, 'x'));
    QCOMPARE(Check_file_for_fif(u"128.mp3"_s), i16{0});
    QCOMPARE(Check_file_for_fif(u"129.mp3"_s), i16{2});
}

void TestModOfFif::what_is_no_file_has_no_tag_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("a folder") << u"folder"_s;
    QTest::newRow("a dangling link") << u"dangling"_s;
    QTest::newRow("a link to itself") << u"loop"_s;
    QTest::newRow("a pipe") << u"pipe"_s;
    QTest::newRow("a missing file") << u"missing"_s;
}

void TestModOfFif::what_is_no_file_has_no_tag()
{
    QFETCH(const QString, kind);
    NotedMessages messages;
    const QByteArray native = disk_->native(folder + u"x.mp3"_s);
    if (kind == u"folder"_s)
        disk_->make_folder(folder + u"x.mp3"_s);
    else if (kind == u"dangling"_s)
        QCOMPARE(symlink("no such file", native.constData()), 0);
    else if (kind == u"loop"_s)
        QCOMPARE(symlink("x.mp3", native.constData()), 0);
    else if (kind == u"pipe"_s)
        QCOMPARE(mkfifo(native.constData(), 0600), 0);

    QCOMPARE(Check_file_for_fif(u"x.mp3"_s), i16{0});
    QString genre;
    Write_fif_tag(folder + u"x.mp3"_s, u"A"_s, u"T"_s, genre);
    QCOMPARE(messages.take(), QStringList(u"Error! Can not Write ID3 Tag"_s));
    disk_->write(folder + u"good.mp3"_s, tagged("A", "T"));
    QCOMPARE(Check_file_for_fif(u"good.mp3"_s), i16{2});
}

void TestModOfFif::odd_names_are_read_and_written_data()
{
    QTest::addColumn<QByteArray>("name_on_disk");
    QTest::addColumn<QString>("name");
    QTest::newRow("255 bytes") << QByteArray(251, 'x') + ".mp3" << QString(251, u'x') + u".mp3"_s;
    QTest::newRow("255 bytes of Hangul") << QByteArray("\xEA\xB0\x80").repeated(83) + "ab.mp3"
                                         << QString(83, u'가') + u"ab.mp3"_s;
    QTest::newRow("not UTF-8") << QByteArray("Caf\xE9.mp3") << u"Caf\xdce9.mp3"_s;
    QTest::newRow("a line break") << QByteArray("a\nb.mp3") << u"a\nb.mp3"_s;
    QTest::newRow("a backslash") << QByteArray("a\\b.mp3")
                                 << u"a\xf05c"
                                    "b.mp3"_s;
    QTest::newRow("a leading full stop") << QByteArray(".a.mp3") << u".a.mp3"_s;
}

void TestModOfFif::odd_names_are_read_and_written()
{
    QFETCH(const QByteArray, name_on_disk);
    QFETCH(const QString, name);
    NotedMessages messages;
    disk_->write(folder + name, tagged("A", "T"));
    struct stat status = {};
    QCOMPARE(stat((disk_->native(folder) + '/' + name_on_disk).constData(), &status), 0);
    QCOMPARE(Check_file_for_fif(name), i16{2});
    QString genre = u"Pop"_s;
    Write_fif_tag(folder + name, u"B"_s, u"U"_s, genre);
    QCOMPARE(Check_file_for_fif(name), i16{2});
    QCOMPARE(results(), QStringList({u"B"_s, u"U"_s, u"Pop"_s}));
    QCOMPARE(messages.take(), QStringList());
}

void TestModOfFif::a_tag_is_written()
{
    NotedMessages messages;
    const QByteArray audio = sample_audio({.frames = 2});
    SampleTag tag = tag_of("Old artist", "Old title", 12, ' ');
    disk_->write(folder + u"x.mp3"_s, audio + sample_tag(tag));
    QString genre = u"Pop"_s;
    Write_fif_tag(folder + u"x.mp3"_s, u"가수"_s, u"New title"_s, genre);
    tag.artist = korean_bytes(u"가수"_s);
    tag.title = "New title";
    tag.genre = 13;
    QCOMPARE(disk_->read(folder + u"x.mp3"_s), audio + sample_tag(tag));
    QCOMPARE(genre, u"Pop"_s);
    Write_fif_tag(folder + u"x.mp3"_s, u"가수"_s, u"New title"_s, genre);
    QCOMPARE(disk_->read(folder + u"x.mp3"_s), audio + sample_tag(tag));
    QCOMPARE(messages.take(), QStringList());
}

void TestModOfFif::a_file_replaced_since_it_was_read_keeps_its_own_fields()
{
    disk_->write(folder + u"x.mp3"_s, tagged("Old artist", "Old title", 17));
    QCOMPARE(Check_file_for_fif(u"x.mp3"_s), i16{2});
    const QByteArray audio = sample_audio({.frames = 3});
    SampleTag tag = {
        .title = "Other", .artist = "Other", .album = "Other", .year = "2001", .comment = "Other", .genre = 99};
    disk_->write(folder + u"x.mp3"_s, audio + sample_tag(tag));
    QString genre;
    Write_fif_tag(folder + u"x.mp3"_s, QString(30, u'a'), QString(30, u't'), genre);
    tag.artist = QByteArray(30, 'a');
    tag.title = QByteArray(30, 't');
    QCOMPARE(disk_->read(folder + u"x.mp3"_s), audio + sample_tag(tag));
}

void TestModOfFif::the_first_and_the_last_genre_are_written()
{
    disk_->write(folder + u"x.mp3"_s, tagged("A", "T", 12));
    QString genre = u"Blues"_s;
    Write_fif_tag(folder + u"x.mp3"_s, u"A"_s, u"T"_s, genre);
    QCOMPARE(disk_->read(folder + u"x.mp3"_s).back(), '\0');
    genre = u"Synthpop"_s;
    Write_fif_tag(folder + u"x.mp3"_s, u"A"_s, u"T"_s, genre);
    QCOMPARE(disk_->read(folder + u"x.mp3"_s).back(), '\x93');
}

void TestModOfFif::a_genre_is_written_in_list_spelling()
{
    for (const Spelling& spelling : spellings) {
        disk_->write(folder + u"x.mp3"_s, tagged("A", "T", 12));
        QString genre = spelling.fif;
        Write_fif_tag(folder + u"x.mp3"_s, u"A"_s, u"T"_s, genre);
        QCOMPARE(genre, spelling.list);
        QCOMPARE(disk_->read(folder + u"x.mp3"_s).back(), static_cast<char>(spelling.index));
    }
}

void TestModOfFif::a_genre_of_no_list_leaves_the_byte_data()
{
    QTest::addColumn<QString>("genre");
    QTest::newRow("an empty genre") << u""_s;
    QTest::newRow("a genre of no list") << u"Schlager"_s;
    QTest::newRow("a genre in other case") << u"rock"_s;
    QTest::newRow("a genre with blanks") << u" Rock"_s;
}

void TestModOfFif::a_genre_of_no_list_leaves_the_byte()
{
    QFETCH(const QString, genre);
    disk_->write(folder + u"x.mp3"_s, tagged("A", "T", 200));
    QString spelled = genre;
    Write_fif_tag(folder + u"x.mp3"_s, u"B"_s, u"U"_s, spelled);
    QCOMPARE(spelled, genre);
    QCOMPARE(disk_->read(folder + u"x.mp3"_s).back(), static_cast<char>(200));
    QCOMPARE(Check_file_for_fif(u"x.mp3"_s), i16{2});
    QCOMPARE(shared.fif_artist, u"B"_s);
}

void TestModOfFif::a_new_tag_takes_the_place_of_the_last_audio()
{
    const QByteArray audio = sample_audio({.frames = 2});
    disk_->write(folder + u"x.mp3"_s, audio);
    QString genre = u"Unknown"_s;
    Write_fif_tag(folder + u"x.mp3"_s, u"A"_s, u"T"_s, genre);
    const QByteArray tag =
        sample_tag({.title = "T", .artist = "A", .album = {}, .year = {}, .comment = {}, .genre = 12, .padding = ' '});
    QCOMPARE(disk_->read(folder + u"x.mp3"_s), audio.chopped(128) + tag);
}

void TestModOfFif::a_tag_that_cannot_be_written_is_reported_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("a missing file") << -1;
    QTest::newRow("an empty file") << 0;
    QTest::newRow("a file of 127 bytes") << 127;
}

void TestModOfFif::a_tag_that_cannot_be_written_is_reported()
{
    QFETCH(const int, size);
    NotedMessages messages;
    if (size >= 0)
        disk_->write(folder + u"x.mp3"_s, QByteArray(size, 'x'));
    QString genre = u"Hip_Hop"_s;
    Write_fif_tag(folder + u"x.mp3"_s, u"A"_s, u"T"_s, genre);
    QCOMPARE(messages.take(), QStringList(u"Error! Can not Write ID3 Tag"_s));
    QCOMPARE(genre, u"Hip-Hop"_s);
    QCOMPARE(disk_->exists(folder + u"x.mp3"_s), size >= 0);
    QCOMPARE(disk_->read(folder + u"x.mp3"_s), QByteArray(std::max(size, 0), 'x'));
}

void TestModOfFif::a_read_only_file_is_written()
{
    NotedMessages messages;
    disk_->write(folder + u"x.mp3"_s, tagged("A", "T"));
    shared.fso.set_Attributes(folder + u"x.mp3"_s, 33);
    QString genre;
    Write_fif_tag(folder + u"x.mp3"_s, u"B"_s, u"U"_s, genre);
    QCOMPARE(messages.take(), QStringList());
    QCOMPARE(shared.fso.Attributes(folder + u"x.mp3"_s), 32);
    QCOMPARE(Check_file_for_fif(u"x.mp3"_s), i16{2});
    QCOMPARE(shared.fif_artist, u"B"_s);
}

void TestModOfFif::a_hidden_read_only_file_stays_as_it_is()
{
    NotedMessages messages;
    const QByteArray content = tagged("A", "T");
    disk_->write(folder + u".x.mp3"_s, content);
    shared.fso.set_Attributes(folder + u".x.mp3"_s, 35);
    QString genre;
    Write_fif_tag(folder + u".x.mp3"_s, u"B"_s, u"U"_s, genre);
    QCOMPARE(messages.take(), QStringList(u"Error! Can not Write ID3 Tag"_s));
    QCOMPARE(shared.fso.Attributes(folder + u".x.mp3"_s), 35);
    QCOMPARE(disk_->read(folder + u".x.mp3"_s), content);
}

void TestModOfFif::read_only_is_cleared_alone()
{
    disk_->write(folder + u"plain.mp3"_s, "x");
    Clear_read_only(folder + u"plain.mp3"_s);
    QCOMPARE(shared.fso.Attributes(folder + u"plain.mp3"_s), 32);
    disk_->write(folder + u"locked.mp3"_s, "x");
    shared.fso.set_Attributes(folder + u"locked.mp3"_s, 33);
    Clear_read_only(folder + u"locked.mp3"_s);
    QCOMPARE(shared.fso.Attributes(folder + u"locked.mp3"_s), 32);
    disk_->write(folder + u".hidden.mp3"_s, "x");
    Clear_read_only(folder + u".hidden.mp3"_s);
    QCOMPARE(shared.fso.Attributes(folder + u".hidden.mp3"_s), 34);
    Clear_read_only(folder + u"missing.mp3"_s);
    Clear_read_only(QString());
    QVERIFY(!disk_->exists(folder + u"missing.mp3"_s));
}

QUILMO_LOGIC_TEST(TestModOfFif)
#include "test_mod_of_fif.moc"
