#include "test_main.h"

#include "mp3/cIDV3.h"
#include "mp3/genre_list.h"
#include "platform/text.h"
#include "sample_files.h"

#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// A combo box that keeps its entries in order, without a window.
class SortedBox : public GenreBox
{
public:
    void Clear() override
    {
        entries.clear();
        position_ = -1;
    }
    void AddItem(const QString& text) override
    {
        if (refused == text)
            throw RunTimeError(RunTimeError::overflow);
        const auto before = [](const QString& a, const QString& b) { return compare_texts(a, b) < 0; };
        entries.insert(std::ranges::upper_bound(entries, text, before), text);
    }
    int ListIndex() const override { return position_; }
    void set_ListIndex(int position) override
    {
        if (position >= 0 && position < entries.size())
            position_ = position;
    }
    QString Text() const override { return entries.value(position_); }

    QStringList entries;
    QString refused = u"none"_s; ///< a text that the box fails to take

private:
    int position_ = -1;
};

SortedBox filled_box()
{
    SortedBox box;
    id3().init_FillComboGenre(box);
    return box;
}

} // namespace

class TestGenreCombo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void filling_gives_149_entries_and_selects_none();
    void filling_twice_leaves_149_entries();
    void a_text_that_the_box_refuses_is_left_out();
    void every_index_selects_its_entry();
    void an_index_without_a_name_selects_the_empty_entry_data();
    void an_index_without_a_name_selects_the_empty_entry();
    void a_text_selects_its_entry_data();
    void a_text_selects_its_entry();
    void a_box_without_entries_is_left_alone();
    void a_genre_byte_without_a_name_survives_a_write_from_the_empty_entry();
};

void TestGenreCombo::filling_gives_149_entries_and_selects_none()
{
    const SortedBox box = filled_box();
    QCOMPARE(box.entries.size(), 149);
    QCOMPARE(box.ListIndex(), -1);
    QCOMPARE(box.entries.front(), QString());
    QCOMPARE(box.entries[1], u"A Cappella"_s);
    QCOMPARE(box.entries.back(), u"Vocal"_s);
    for (int index = 0; index < 148; ++index)
        QCOMPARE(box.entries.count(fif_genre_spelling(genre_name(index))), 1);
    for (const QString& entry : box.entries)
        QVERIFY(!entry.contains(u'-') && !entry.contains(u'/'));
}

void TestGenreCombo::filling_twice_leaves_149_entries()
{
    SortedBox box = filled_box();
    box.set_ListIndex(5);
    id3().init_FillComboGenre(box);
    QCOMPARE(box.entries.size(), 149);
    QCOMPARE(box.ListIndex(), -1);
}

void TestGenreCombo::a_text_that_the_box_refuses_is_left_out()
{
    SortedBox box;
    box.refused = u"Rock"_s;
    id3().init_FillComboGenre(box);
    QCOMPARE(box.entries.size(), 148);
    QVERIFY(!box.entries.contains(u"Rock"_s));
    QVERIFY(box.entries.contains(u"Techno"_s));
    QCOMPARE(id3().FillComboGenre_FIF(box, u"Vocal"_s), u"Vocal"_s);
    QCOMPARE(id3().FillComboGenre_FIF(box, u"Rock"_s), QString());
    QCOMPARE(box.ListIndex(), 0);
}

void TestGenreCombo::every_index_selects_its_entry()
{
    SortedBox box = filled_box();
    for (i16 index = 0; index < 148; ++index) {
        id3().FillComboGenre(box, index);
        QCOMPARE(box.Text(), fif_genre_spelling(genre_name(index)));
    }
    id3().FillComboGenre(box, 128);
    QCOMPARE(box.Text(), u"Club_House"_s);
}

void TestGenreCombo::an_index_without_a_name_selects_the_empty_entry_data()
{
    QTest::addColumn<i16>("index");
    for (const i16 index : {i16{-1}, i16{148}, i16{200}, i16{255}})
        QTest::addRow("%d", index) << index;
}

void TestGenreCombo::an_index_without_a_name_selects_the_empty_entry()
{
    QFETCH(const i16, index);
    SortedBox box = filled_box();
    box.set_ListIndex(7);
    id3().FillComboGenre(box, index);
    QCOMPARE(box.ListIndex(), 0);
    QCOMPARE(box.Text(), QString());
}

void TestGenreCombo::a_text_selects_its_entry_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("selected");
    QTest::newRow("a name") << u"Rock"_s << u"Rock"_s;
    QTest::newRow("a name in list spelling") << u"Pop/Funk"_s << u"Pop_Funk"_s;
    QTest::newRow("a name in the box's spelling") << u"Pop_Funk"_s << u"Pop_Funk"_s;
    QTest::newRow("a name in small letters") << u"rock"_s << QString();
    QTest::newRow("a text that is no genre") << u"Bossa"_s << QString();
    QTest::newRow("the beginning of a name") << u"Roc"_s << QString();
    QTest::newRow("no text") << QString() << QString();
}

void TestGenreCombo::a_text_selects_its_entry()
{
    QFETCH(const QString, text);
    QFETCH(const QString, selected);
    SortedBox box = filled_box();
    box.set_ListIndex(7);
    QCOMPARE(id3().FillComboGenre_FIF(box, text), selected);
    QCOMPARE(box.Text(), selected);
    QVERIFY(!selected.isEmpty() || box.ListIndex() == 0);
}

void TestGenreCombo::a_box_without_entries_is_left_alone()
{
    SortedBox box;
    id3().FillComboGenre(box, 17);
    QCOMPARE(box.ListIndex(), -1);
    QCOMPARE(id3().FillComboGenre_FIF(box, u"Rock"_s), QString());
    QCOMPARE(box.ListIndex(), -1);
}

void TestGenreCombo::a_genre_byte_without_a_name_survives_a_write_from_the_empty_entry()
{
    const TestDisk disk;
    const QString path = u"C:\\a.mp3"_s;
    disk.write(path, sample_tag({.title = "T", .artist = "A", .album = {}, .year = {}, .comment = {}, .genre = 200}));
    SortedBox box = filled_box();
    id3().set_FileName(path);
    id3().FillComboGenre(box, id3().Genre());
    QCOMPARE(box.ListIndex(), 0);
    QCOMPARE(int{id3().Genre_index(box.Text())}, -1);
    QVERIFY(id3().WriteTag());
    QCOMPARE(disk.read(path).back(), '\xC8');
}

QUILMO_LOGIC_TEST(TestGenreCombo)

#include "test_genre_combo.moc"
