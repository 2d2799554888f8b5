#include "test_main.h"

#include "mp3/cIDV3.h"
#include "mp3/genre_list.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QStringList all_names =
    QString(
        u"Blues|Classic Rock|Country|Dance|Disco|Funk|Grunge|Hip-Hop|"
        u"Jazz|Metal|New Age|Oldies|Other|Pop|RNB|Rap|"
        u"Reggae|Rock|Techno|Industrial|Alternative|Ska|Death Metal|Pranks|"
        u"Soundtrack|Euro-Techno|Ambient|Trip-Hop|Vocal|Jazz+Funk|Fusion|Trance|"
        u"Classical|Instrumental|Acid|House|Game|Sound Clip|Gospel|Noise|"
        u"Alt. Rock|Bass|Soul|Punk|Space|Meditative|Instrumental Pop|Instrumental Rock|"
        u"Ethnic|Gothic|Darkwave|Techno-Industrial|Electronic|Pop-Folk|Eurodance|Dream|"
        u"Southern Rock|Comedy|Cult|Gangsta|Top 40|Christian Rap|Pop/Funk|Jungle|"
        u"Native American|Cabaret|New Wave|Psychadelic|Rave|Showtunes|Trailer|Lo-Fi|"
        u"Tribal|Acid Punk|Acid Jazz|Polka|Retro|Musical|Rock & Roll|Hard Rock|"
        u"Folk|Folk/Rock|National Folk|Swing|Fast-Fusion|Bebob|Latin|Revival|"
        u"Celtic|Bluegrass|Avantgarde|Gothic Rock|Progressive Rock|Psychedelic Rock|Symphonic Rock|Slow Rock|"
        u"Big Band|Chorus|Easy Listening|Acoustic|Humour|Speech|Chanson|Opera|"
        u"Chamber Music|Sonata|Symphony|Booty Bass|Primus|Porn Groove|Satire|Slow Jam|"
        u"Club|Tango|Samba|Folklore|Ballad|Power Ballad|Rhythmic Soul|Freestyle|"
        u"Duet|Punk Rock|Drum Solo|A Cappella|Euro-House|Dance Hall|Goa|Drum & Bass|"
        u"Club-House|Hardcore|Terror|Indie|BritPop|Negerpunk|Polsk Punk|Beat|"
        u"Christian Gangsta Rap|Heavy Metal|Black Metal|Crossover|Contemporary Christian|Christian Rock|Merengue|Salsa|"
        u"Thrash Metal|Anime|JPop|Synthpop"_s)
        .split(u'|');

struct TwoSpellings
{
    i16 index;
    QString list;
    QString fif;
};

const QList<TwoSpellings> all_spellings{
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

class TestGenreList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void every_index_has_its_name();
    void every_name_has_its_index();
    void indexes_beside_the_list_have_no_name_data();
    void indexes_beside_the_list_have_no_name();
    void names_are_compared_exactly_data();
    void names_are_compared_exactly();
    void eleven_names_have_two_spellings();
    void other_texts_keep_their_spelling_data();
    void other_texts_keep_their_spelling();
};

void TestGenreList::every_index_has_its_name()
{
    QCOMPARE(all_names.size(), 148);
    for (i16 index = 0; index < 148; ++index)
        QCOMPARE(id3().GenreText(index), all_names[index]);
}

void TestGenreList::every_name_has_its_index()
{
    for (i16 index = 0; index < 148; ++index)
        QCOMPARE(id3().Genre_index(all_names[index]), index);
}

void TestGenreList::indexes_beside_the_list_have_no_name_data()
{
    QTest::addColumn<i16>("index");
    for (const i16 index : {i16{-32768}, i16{-1}, i16{148}, i16{200}, i16{255}, i16{256}, i16{32767}})
        QTest::addRow("%d", index) << index;
}

void TestGenreList::indexes_beside_the_list_have_no_name()
{
    QFETCH(const i16, index);
    QCOMPARE(id3().GenreText(index), QString());
}

void TestGenreList::names_are_compared_exactly_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<i16>("index");
    QTest::newRow("the list spelling") << u"Club-House"_s << i16{128};
    QTest::newRow("the spelling of file names") << u"Club_House"_s << i16{-1};
    QTest::newRow("capitals and all") << u"Blues"_s << i16{0};
    QTest::newRow("in small letters") << u"blues"_s << i16{-1};
    QTest::newRow("with a blank behind") << u"Blues "_s << i16{-1};
    QTest::newRow("no text") << QString() << i16{-1};
    QTest::newRow("the public list's spelling") << u"Psychedelic"_s << i16{-1};
}

void TestGenreList::names_are_compared_exactly()
{
    QFETCH(const QString, name);
    QTEST(id3().Genre_index(name), "index");
}

void TestGenreList::eleven_names_have_two_spellings()
{
    QCOMPARE(all_spellings.size(), 11);
    for (const TwoSpellings& spelling : all_spellings) {
        QCOMPARE(all_names[spelling.index], spelling.list);
        QCOMPARE(fif_genre_spelling(spelling.list), spelling.fif);
        QCOMPARE(id3_genre_spelling(spelling.fif), spelling.list);
        QCOMPARE(fif_genre_spelling(spelling.fif), spelling.fif);
        QCOMPARE(id3_genre_spelling(spelling.list), spelling.list);
    }
}

void TestGenreList::other_texts_keep_their_spelling_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("no text") << QString();
    QTest::newRow("a text that is no genre") << u"My-Own/Genre_x"_s;
    QTest::newRow("a spelling in small letters") << u"hip-hop"_s;
    QTest::newRow("a spelling within a longer text") << u"Hip-Hop & Rap"_s;
    for (const QString& name : all_names) {
        const bool has_two = std::ranges::find(all_spellings, name, &TwoSpellings::list) != all_spellings.end();
        if (!has_two)
            QTest::newRow(qPrintable(name)) << name;
    }
}

void TestGenreList::other_texts_keep_their_spelling()
{
    QFETCH(const QString, text);
    QCOMPARE(fif_genre_spelling(text), text);
    QCOMPARE(id3_genre_spelling(text), text);
}

QUILMO_LOGIC_TEST(TestGenreList)

#include "test_genre_list.moc"
