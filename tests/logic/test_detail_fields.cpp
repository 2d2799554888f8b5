#include "tagged_files.h"
#include "test_main.h"

#include "core/mod_of_grobal_var.h"
#include "fif/DetailFields.h"
#include "fif/mod_of_FIF.h"
#include "mp3/cIDV3.h"
#include "platform/text.h"

#include <QCoreApplication>
#include <QTest>

#include <algorithm>
#include <memory>
#include <vector>

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

void select(const QString& name)
{
    shared.selected_mp3_name = name;
    shared.selected_mp3_full = shared.current_folder + name;
    shared.selected_mp3_path = shared.selected_mp3_full;
}

} // namespace

class TestDetailFields : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestDisk> disk_;

private Q_SLOTS:
    void init();
    void cleanup() { disk_.reset(); }

    void show_mode_tells_where_the_fields_go();
    void parsing_without_a_window_shows_nothing();
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

void TestDetailFields::init()
{
    disk_ = std::make_unique<TestDisk>();
    shared.current_folder = disk_->make_folder(folder);
}

void TestDetailFields::show_mode_tells_where_the_fields_go()
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

void TestDetailFields::parsing_without_a_window_shows_nothing()
{
    set_results(u"stale"_s);
    QCOMPARE(Parse_fif_brackets(u"[a][t]"_s, 1, 1), i16{1});
    QCOMPARE(results(), QStringList({u"stale"_s, u"stale"_s, u"stale"_s}));
}

void TestDetailFields::a_name_is_shown()
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

void TestDetailFields::a_name_without_tag_leaves_the_combo()
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

void TestDetailFields::a_name_that_is_not_fif_shows_empty_fields()
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

void TestDetailFields::a_name_whose_genre_is_none_selects_the_empty_entry()
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

void TestDetailFields::a_tag_is_shown_data()
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

void TestDetailFields::a_tag_is_shown()
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

void TestDetailFields::a_tag_genre_is_rewritten_in_its_spelling()
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

void TestDetailFields::a_tag_genre_without_name_selects_the_empty_entry()
{
    disk_->write(folder + u"x.mp3"_s, tagged("A", "T", 200));
    select(u"x.mp3"_s);
    PlainFields fields;
    fields.choose(u"Jazz"_s);
    Show_tag_info();
    QCOMPARE(fields.texts(), QStringList({u"A"_s, u"T"_s, {}}));
    QCOMPARE(fields.genre_box.ListIndex(), 0);
}

void TestDetailFields::a_file_without_tag_shows_its_size()
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

void TestDetailFields::the_selected_file_is_shown_by_its_classification()
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

void TestDetailFields::nothing_is_shown_without_a_window()
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

QUILMO_LOGIC_TEST(TestDetailFields)
#include "test_detail_fields.moc"
