#include "test_main.h"

#include "core/mod_of_grobal_var.h"
#include "fif/DetailFields.h"
#include "fif/mod_of_FIF.h"
#include "mp3/cIDV3.h"
#include "platform/text.h"
#include "sample_files.h"

#include <QCoreApplication>
#include <QTest>

#include <algorithm>
#include <memory>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QString folder = u"C:\\Music\\"_s;

/// A combo box that is nothing but its entries, kept in order.
class PlainGenreBox : public GenreBox
{
public:
    void Clear() override
    {
        entries_.clear();
        selected_ = -1;
    }
    void AddItem(const QString& text) override
    {
        const auto place = std::ranges::upper_bound(
            entries_, text, [](const QString& a, const QString& b) { return compare_texts(a, b) < 0; });
        entries_.insert(place, text);
    }
    int ListIndex() const override { return selected_; }
    void set_ListIndex(int position) override
    {
        if (position >= -1 && position < static_cast<int>(entries_.size()))
            selected_ = position;
    }
    QString Text() const override { return selected_ < 0 ? QString() : entries_[static_cast<std::size_t>(selected_)]; }

private:
    std::vector<QString> entries_;
    int selected_ = -1;
};

/// The six fields without a window: text boxes keep what stands before a NUL.
class PlainFields : public DetailFields
{
public:
    PlainFields()
    {
        id3().init_FillComboGenre(genre_box);
        shared.detail_fields = this;
    }
    ~PlainFields() override { shared.detail_fields = nullptr; }
    PlainFields(const PlainFields&) = delete;
    PlainFields& operator=(const PlainFields&) = delete;

    void set_txtFilename(const QString& text) override { file_name = text_box_text(text); }
    void set_txtArtist(const QString& text) override { artist = text_box_text(text); }
    void set_txtTitle(const QString& text) override { title = text_box_text(text); }
    void set_txtGenre(const QString& text) override
    {
        genre = text_box_text(text);
        genres_set.append(text);
    }
    QString txtGenre() const override { return genre; }
    void set_Label_filesize(const QString& text) override { size = text; }
    GenreBox& cboGenre() override { return genre_box; }

    /// Artist, title and genre.
    QStringList texts() const { return {artist, title, genre}; }
    /// Selects an entry by its text, as a person would.
    void choose(const QString& text) { id3().FillComboGenre_FIF(genre_box, text); }

    QString file_name = u"old name"_s;
    QString artist = u"old artist"_s;
    QString title = u"old title"_s;
    QString genre = u"old genre"_s;
    QString size = u"old size"_s;
    QStringList genres_set;
    PlainGenreBox genre_box;
};

SampleTag tag_of(const QByteArray& artist, const QByteArray& title, unsigned char genre = 17, char padding = '\0')
{
    return {.title = title,
            .artist = artist,
            .album = "Album",
            .year = "1999",
            .comment = "Comment",
            .genre = genre,
            .padding = padding};
}

/// A file of audio with a tag at its end.
QByteArray tagged(const SampleTag& tag)
{
    return sample_audio({.frames = 2}) + sample_tag(tag);
}

QByteArray tagged(const QByteArray& artist, const QByteArray& title, unsigned char genre = 17)
{
    return tagged(tag_of(artist, title, genre));
}

QStringList results()
{
    return {shared.fif_artist, shared.fif_title, shared.fif_genre};
}

void set_results(const QString& text)
{
    shared.fif_artist = text;
    shared.fif_title = text;
    shared.fif_genre = text;
}

void select(const QString& name)
{
    shared.selected_mp3_name = name;
    shared.selected_mp3_full = shared.current_folder + name;
    shared.selected_mp3_path = shared.selected_mp3_full;
}

struct Spelling
{
    unsigned char index;
    QString list;
    QString fif;
};

const Spelling spellings[] = {
    {128, u"Club-House"_s, u"Club_House"_s},
    {124, u"Euro-House"_s, u"Euro_House"_s},
    {25, u"Euro-Techno"_s, u"Euro_Techno"_s},
    {84, u"Fast-Fusion"_s, u"Fast_Fusion"_s},
    {81, u"Folk/Rock"_s, u"Folk_Rock"_s},
    {7, u"Hip-Hop"_s, u"Hip_Hop"_s},
    {71, u"Lo-Fi"_s, u"Lo_Fi"_s},
    {62, u"Pop/Funk"_s, u"Pop_Funk"_s},
    {51, u"Techno-Industrial"_s, u"Techno_Industrial"_s},
    {27, u"Trip-Hop"_s, u"Trip_Hop"_s},
    {53, u"Pop-Folk"_s, u"Pop_Folk"_s},
};

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

    void show_mode_tells_where_the_fields_go();
    void parsing_without_a_window_shows_nothing();

    void a_tag_is_written();
    void a_genre_is_written_in_list_spelling();
    void a_genre_of_no_list_leaves_the_byte_data();
    void a_genre_of_no_list_leaves_the_byte();
    void a_new_tag_takes_the_place_of_the_last_audio();
    void a_tag_that_cannot_be_written_is_reported_data();
    void a_tag_that_cannot_be_written_is_reported();
    void a_read_only_file_is_written();
    void a_hidden_read_only_file_stays_as_it_is();
    void read_only_is_cleared_alone();

    void a_name_is_shown();
    void a_name_without_tag_leaves_the_combo();
    void a_name_that_is_not_fif_shows_empty_fields();
    void a_name_whose_genre_is_none_selects_the_empty_entry();
    void a_tag_is_shown_data();
    void a_tag_is_shown();
    void a_tag_genre_is_rewritten_in_its_spelling();
    void a_tag_genre_without_name_selects_the_empty_entry();
    void a_file_without_tag_shows_its_size();
    void the_selected_file_is_shown_by_its_classification();
    void nothing_is_shown_without_a_window();
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

void TestModOfFif::show_mode_tells_where_the_fields_go()
{
    PlainFields fields;
    select(u"가나 (1).mp3"_s);
    set_results(u"stale"_s);
    const QStringList stale = results();
    const QStringList old_fields = fields.texts();

    QCOMPARE(Parse_fif_brackets(u"[a][t][g]"_s, 1, 2), i16{1});
    QCOMPARE(Parse_fif_dashes(u"a-t-g"_s, -1), i16{1});
    QCOMPARE(results(), stale);
    QCOMPARE(fields.texts(), old_fields);

    QCOMPARE(Parse_fif_brackets(u"(a)(t)(g)"_s, 2, 1), i16{1});
    QCOMPARE(results(), stale);
    QCOMPARE(fields.texts(), QStringList({u"a"_s, u"t"_s, u"g"_s}));
    QCOMPARE(fields.file_name, u"가나 (1).mp3"_s);
    QCOMPARE(fields.size, u"12 byte"_s);
    QCOMPARE(Parse_fif_dashes(u"no dash"_s, 1), i16{0});
    QCOMPARE(fields.texts(), QStringList({u"no dash"_s, {}, {}}));
    QCOMPARE(Parse_fif_dashes(u"-silent"_s, 1), i16{0});
    QCOMPARE(fields.texts(), QStringList({u"no dash"_s, {}, {}}));

    QCOMPARE(Parse_fif_brackets(u"[a2][t2][g2]"_s, 1, 0), i16{1});
    QCOMPARE(results(), QStringList({u"a2"_s, u"t2"_s, u"g2"_s}));
    QCOMPARE(Parse_fif_brackets(u"[a3"_s, 1, 0), i16{0});
    QCOMPARE(results(), QStringList({u"a3"_s, {}, {}}));
    QCOMPARE(Parse_fif_brackets(u"silent"_s, 1, 0), i16{0});
    QCOMPARE(results(), QStringList({u"a3"_s, {}, {}}));
    QCOMPARE(fields.texts(), QStringList({u"no dash"_s, {}, {}}));
}

void TestModOfFif::parsing_without_a_window_shows_nothing()
{
    set_results(u"stale"_s);
    QCOMPARE(Parse_fif_brackets(u"[a][t]"_s, 1, 1), i16{1});
    QCOMPARE(results(), QStringList({u"stale"_s, u"stale"_s, u"stale"_s}));
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

void TestModOfFif::a_name_is_shown()
{
    const QString name = u"(가수)(Title)(Hip_Hop).mp3"_s;
    disk_->write(folder + name, tagged("Tag artist", "Tag title", 17));
    select(name);
    set_results(u"stale"_s);
    PlainFields fields;
    QCOMPARE(Show_fif_info(name), i16{1});
    QCOMPARE(fields.file_name, name);
    QCOMPARE(fields.texts(), QStringList({u"가수"_s, u"Title"_s, u"Hip_Hop"_s}));
    QCOMPARE(fields.size, u"26 byte"_s);
    QCOMPARE(fields.genre_box.Text(), u"Hip_Hop"_s);
    QCOMPARE(results(), QStringList({u"stale"_s, u"stale"_s, u"stale"_s}));
    QCOMPARE(id3().FileName(), folder + name);
}

void TestModOfFif::a_name_without_tag_leaves_the_combo()
{
    for (const bool exists : {true, false}) {
        const QString name = exists ? u"Artist-Title-Pop.mp3"_s : u"Artist-Title-Rap.mp3"_s;
        if (exists)
            disk_->write(folder + name, sample_audio());
        select(name);
        PlainFields fields;
        fields.choose(u"Jazz"_s);
        QCOMPARE(Show_fif_info(name), i16{1});
        QCOMPARE(fields.texts(), QStringList({u"Artist"_s, u"Title"_s, exists ? u"Pop"_s : u"Rap"_s}));
        QCOMPARE(fields.genre_box.Text(), u"Jazz"_s);
    }
}

void TestModOfFif::a_name_that_is_not_fif_shows_empty_fields()
{
    const QString name = u"-a.mp3"_s;
    disk_->write(folder + name, tagged("A", "T"));
    select(name);
    PlainFields fields;
    fields.choose(u"Jazz"_s);
    QCOMPARE(Show_fif_info(name), i16{0});
    QCOMPARE(fields.texts(), QStringList({{}, {}, {}}));
    QCOMPARE(fields.file_name, u"old name"_s);
    QCOMPARE(fields.size, u"old size"_s);
    QCOMPARE(fields.genre_box.ListIndex(), 0);
}

void TestModOfFif::a_name_whose_genre_is_none_selects_the_empty_entry()
{
    for (const QString& name : {u"[A][T][Schlager].mp3"_s, u"[A][T].mp3"_s}) {
        disk_->write(folder + name, tagged("A", "T", 17));
        select(name);
        PlainFields fields;
        fields.choose(u"Jazz"_s);
        QCOMPARE(Show_fif_info(name), i16{1});
        QCOMPARE(fields.genre_box.ListIndex(), 0);
        QCOMPARE(fields.genre_box.Text(), QString());
    }
}

void TestModOfFif::a_tag_is_shown_data()
{
    QTest::addColumn<i16>("type");
    QTest::addColumn<QByteArray>("artist");
    QTest::addColumn<QByteArray>("title");
    QTest::addColumn<QString>("shown_artist");
    QTest::addColumn<QString>("shown_title");
    const auto row = [](const char* name, int type, const QByteArray& artist, const QByteArray& title,
                        const QString& shown_artist, const QString& shown_title) {
        QTest::newRow(name) << static_cast<i16>(type) << artist << title << shown_artist << shown_title;
    };
    row("plain text", 1, "Artist", "Title", u"Artist"_s, u"Title"_s);
    row("cleaned for type 1", 1, "Foo (live)", "[a]-b?", u"Foo (live)"_s, u"a-b"_s);
    row("cleaned for type 4", 4, "Foo (live)", "[a]-b?", u"Foo live"_s, u"[a]-b"_s);
    row("cleaned for type 6", 6, "Foo (live)", "[a]-b?", u"Foo live"_s, u"ab"_s);
    row("leading blanks stay", 1, "  Artist", " ", u"  Artist"_s, u" "_s);
    row("blanks before a NUL stay", 1, QByteArray("Artist  \0x", 10), QByteArray("T?\0?", 4), u"Artist  "_s, u"T"_s);
    row("Hangul", 2, korean_bytes(u"가수"_s), korean_bytes(u"노래"_s), u"가수"_s, u"노래"_s);
}

void TestModOfFif::a_tag_is_shown()
{
    QFETCH(const i16, type);
    QFETCH(const QByteArray, artist);
    QFETCH(const QByteArray, title);
    QFETCH(const QString, shown_artist);
    QFETCH(const QString, shown_title);
    shared.fif_type = type;
    disk_->write(folder + u"노래.mp3"_s, tagged(artist, title));
    select(u"노래.mp3"_s);
    PlainFields fields;
    Show_tag_info();
    QCOMPARE(fields.texts(), QStringList({shown_artist, shown_title, u"Rock"_s}));
    QCOMPARE(fields.genre_box.Text(), u"Rock"_s);
    QCOMPARE(fields.size, u"8 byte"_s);
    QCOMPARE(fields.file_name, u"old name"_s);
}

void TestModOfFif::a_tag_genre_is_rewritten_in_its_spelling()
{
    select(u"x.mp3"_s);
    for (const Spelling& spelling : spellings) {
        disk_->write(folder + u"x.mp3"_s, tagged("A", "T", spelling.index));
        PlainFields fields;
        Show_tag_info();
        QCOMPARE(fields.genres_set, QStringList({{}, spelling.list, spelling.fif}));
        QCOMPARE(fields.genre_box.Text(), spelling.fif);
    }
}

void TestModOfFif::a_tag_genre_without_name_selects_the_empty_entry()
{
    disk_->write(folder + u"x.mp3"_s, tagged("A", "T", 200));
    select(u"x.mp3"_s);
    PlainFields fields;
    fields.choose(u"Jazz"_s);
    Show_tag_info();
    QCOMPARE(fields.texts(), QStringList({u"A"_s, u"T"_s, {}}));
    QCOMPARE(fields.genre_box.ListIndex(), 0);
}

void TestModOfFif::a_file_without_tag_shows_its_size()
{
    for (const bool exists : {true, false}) {
        const QString name = exists ? u"가나.mp3"_s : u"가다.mp3"_s;
        if (exists)
            disk_->write(folder + name, sample_audio());
        select(name);
        PlainFields fields;
        fields.choose(u"Jazz"_s);
        Show_tag_info();
        QCOMPARE(fields.texts(), QStringList({{}, {}, {}}));
        QCOMPARE(fields.size, u"8 byte"_s);
        QCOMPARE(fields.genre_box.Text(), u"Jazz"_s);
    }
}

void TestModOfFif::the_selected_file_is_shown_by_its_classification()
{
    PlainFields fields;
    disk_->write(folder + u"[A][T][Pop].mp3"_s, tagged("Tag artist", "Tag title"));
    select(u"[A][T][Pop].mp3"_s);
    show_selected_file();
    QCOMPARE(fields.texts(), QStringList({u"A"_s, u"T"_s, u"Pop"_s}));
    QCOMPARE(fields.genre_box.Text(), u"Pop"_s);

    disk_->write(folder + u"x.mp3"_s, tagged("Tag artist", "Tag title"));
    select(u"x.mp3"_s);
    show_selected_file();
    QCOMPARE(fields.texts(), QStringList({u"Tag artist"_s, u"Tag title"_s, u"Rock"_s}));
    QCOMPARE(fields.genre_box.Text(), u"Rock"_s);

    disk_->write(folder + u"untagged.mp3"_s, sample_audio());
    select(u"untagged.mp3"_s);
    show_selected_file();
    QCOMPARE(fields.texts(), QStringList({{}, {}, {}}));
    QCOMPARE(fields.size, u"12 byte"_s);
    QCOMPARE(fields.genre_box.Text(), u"Rock"_s);
}

void TestModOfFif::nothing_is_shown_without_a_window()
{
    disk_->write(folder + u"x.mp3"_s, tagged("A", "T"));
    select(u"x.mp3"_s);
    Show_tag_info();
    QCOMPARE(id3().FileName(), folder + u"x.mp3"_s);
    disk_->write(folder + u"[A][T].mp3"_s, tagged("A", "T"));
    select(u"[A][T].mp3"_s);
    QCOMPARE(Show_fif_info(u"[A][T].mp3"_s), i16{1});
    QCOMPARE(id3().FileName(), folder + u"[A][T].mp3"_s);
}

QUILMO_LOGIC_TEST(TestModOfFif)
#include "test_mod_of_fif.moc"
