#include "test_main.h"

#include "core/mod_of_grobal_var.h"
#include "fif/Check_korean.h"
#include "fif/mod_of_FIF.h"

#include <QCoreApplication>
#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

enum class Script
{
    ascii,
    hangul,
    mixed
};

/// A text that takes `bytes` bytes: one-byte characters, syllables of two bytes (with a one-byte character at the end
/// when one is left), or both in turn.
QString text_of(Script script, int bytes)
{
    QString text;
    for (int left = bytes; left > 0;) {
        const bool wide = script == Script::hangul || (script == Script::mixed && text.size() % 2 == 1);
        text += wide && left >= 2 ? u'가' : u'x';
        left -= wide && left >= 2 ? 2 : 1;
    }
    return text;
}

/// Bytes of a text of one-byte characters and Hangul.
int bytes_of(const QString& text)
{
    return static_cast<int>(text.size() + text.count(u'가'));
}

/// The characters of `title` up to the first that makes `room` - 1 bytes or more.
QString expected_cut(const QString& title, int room)
{
    for (qsizetype length = 0; length <= title.size(); ++length) {
        if (bytes_of(title.left(length)) >= room - 1)
            return title.left(length);
    }
    return title;
}

/// What one shape does with a genre or without one.
struct Budget
{
    int type;
    bool with_genre;
    int fits;      ///< of artist, title and, where the plain name holds it, genre
    int cut;       ///< of artist and, where charged, genre
    int room;      ///< before artist and charged genre are taken off
    bool charged;  ///< whether the genre counts in `cut` and `room`
    QString plain; ///< a, t and g stand for the fields
    QString shortened;
};

const Budget budgets[] = {
    {1, true, 54, 50, 52, true, u"[a][t][g].mp3"_s, u"[a][t..][g].mp3"_s},
    {2, true, 56, 52, 54, false, u"[a][t].mp3"_s, u"[a][t..].mp3"_s},
    {3, true, 54, 50, 52, true, u"(a)(t)(g).mp3"_s, u"(a)(t..)(g).mp3"_s},
    {4, true, 56, 52, 54, false, u"(a)(t).mp3"_s, u"(a)(t..).mp3"_s},
    {5, true, 58, 54, 56, true, u"a-t-g.mp3"_s, u"a-t..-g.mp3"_s},
    {6, true, 59, 55, 59, true, u"a-t.mp3"_s, u"a-t.mp3"_s},
    {1, false, 56, 52, 54, false, u"[a][t].mp3"_s, u"[a][t..].mp3"_s},
    {2, false, 56, 52, 54, false, u"[a][t].mp3"_s, u"[a][t..].mp3"_s},
    {3, false, 56, 52, 54, false, u"(a)(t).mp3"_s, u"(a)(t..).mp3"_s},
    {4, false, 56, 52, 54, false, u"(a)(t).mp3"_s, u"(a)(t..).mp3"_s},
    {5, false, 59, 55, 59, false, u"a-t.mp3"_s, u"a-t.mp3"_s},
    {6, false, 59, 55, 59, false, u"a-t.mp3"_s, u"a-t.mp3"_s},
};

bool holds_genre(const Budget& budget)
{
    return budget.plain.contains(u'g');
}

QString filled(const QString& shape, const QString& artist, const QString& title, const QString& genre)
{
    QString name;
    for (const QChar c : shape.chopped(4)) {
        if (c == u'a')
            name += artist;
        else if (c == u't')
            name += title;
        else if (c == u'g')
            name += genre;
        else
            name += c;
    }
    return name + u".mp3"_s;
}

/// A composed name, and how often a name was reported as too long meanwhile.
struct Composition
{
    QString name;
    int reports = 0;
};

Composition compose(i16 type, const QString& artist, const QString& title, const QString& genre)
{
    shared.fif_type = type;
    Composition composition;
    composition.name = Compose_fif_name(artist, title, genre, [&] { ++composition.reports; });
    return composition;
}

/// The edges of one budget for fields of one script, artist and genre together taking `charged` bytes.
void check_edges(const Budget& budget, Script script, int genre_bytes, int artist_bytes)
{
    const QString artist = text_of(script, artist_bytes);
    const QString genre = text_of(script, genre_bytes);
    const int in_name = artist_bytes + (holds_genre(budget) ? genre_bytes : 0);
    const int charged = artist_bytes + (budget.charged ? genre_bytes : 0);

    for (int title_bytes = 1; title_bytes <= 70; ++title_bytes) {
        const QString title = text_of(script, title_bytes);
        const Composition composition = compose(static_cast<i16>(budget.type), artist, title, genre);
        if (in_name + title_bytes <= budget.fits) {
            QCOMPARE(composition.name, filled(budget.plain, artist, title, genre));
            QCOMPARE(composition.reports, 0);
        } else if (charged <= budget.cut) {
            const QString cut = expected_cut(title, budget.room - charged);
            QCOMPARE(composition.name, filled(budget.shortened, artist, cut, genre));
            QCOMPARE(composition.reports, 0);
        } else {
            QCOMPARE(composition.name, QString());
            QCOMPARE(composition.reports, 1);
        }
        QVERIFY(Byte_count(composition.name) <= 64);
    }
}

QString random_text(QRandomGenerator& random, int longest)
{
    static const QString alphabet =
        u"aB1 .,'&!~_-[]()\\/:*?\"<>|가나다힣한글éßñ中日本Ω\u00a0\x0001\xdcff"_s + u"\U0001F3B5"_s;
    QString text;
    const int length = random.bounded(longest + 1);
    while (text.size() < length) {
        const qsizetype place = random.bounded(static_cast<int>(alphabet.size()));
        // The last two units are a pair: both or none.
        text += place < alphabet.size() - 2 ? QString(alphabet[place]) : alphabet.right(2);
    }
    return text;
}

FifParse parse_name(const QString& name)
{
    const QString stem = stem_of(name);
    for (const FifParse& parse :
         {parse_brackets(stem, square_brackets), parse_brackets(stem, round_brackets), parse_dashes(stem)}) {
        if (parse.valid)
            return parse;
    }
    return {};
}

} // namespace

class TestCompose : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { shared = {}; }
    void names_data();
    void names();
    void every_budget_holds_at_its_edges_data();
    void every_budget_holds_at_its_edges();
    void cut_title_data();
    void cut_title();
    void a_name_that_fits_is_not_reported();
    void an_unknown_shape_has_no_names();
    void random_names_keep_the_format();
};

void TestCompose::names_data()
{
    QTest::addColumn<i16>("type");
    QTest::addColumn<QString>("artist");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("genre");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("reports");
    const auto row = [](const char* row_name, int type, const QString& artist, const QString& title,
                        const QString& genre, const QString& name, int reports = 0) {
        QTest::newRow(row_name) << static_cast<i16>(type) << artist << title << genre << name << reports;
    };
    const auto x = [](int count) { return QString(count, u'x'); };
    const auto ga = [](int count) { return QString(count, u'가'); };

    row("type 1 with genre", 1, u"A"_s, u"T"_s, u"Rock"_s, u"[A][T][Rock].mp3"_s);
    row("type 2 leaves the genre out", 2, u"A"_s, u"T"_s, u"Rock"_s, u"[A][T].mp3"_s);
    row("type 3 with genre", 3, u"A"_s, u"T"_s, u"Rock"_s, u"(A)(T)(Rock).mp3"_s);
    row("type 4 leaves the genre out", 4, u"A"_s, u"T"_s, u"Rock"_s, u"(A)(T).mp3"_s);
    row("type 5 with genre", 5, u"A"_s, u"T"_s, u"Rock"_s, u"A-T-Rock.mp3"_s);
    row("type 6 leaves the genre out", 6, u"A"_s, u"T"_s, u"Rock"_s, u"A-T.mp3"_s);
    row("type 1 without genre", 1, u"A"_s, u"T"_s, {}, u"[A][T].mp3"_s);
    row("type 3 without genre", 3, u"A"_s, u"T"_s, {}, u"(A)(T).mp3"_s);
    row("type 5 without genre", 5, u"A"_s, u"T"_s, {}, u"A-T.mp3"_s);
    row("no artist: no name and no report", 1, {}, u"T"_s, u"Rock"_s, {});
    row("no title: no name and no report", 1, u"A"_s, {}, u"Rock"_s, {});
    row("no artist and an endless title: no report", 1, {}, x(90), {}, {});

    row("54 bytes of fields make 64", 1, u"A"_s, x(52), u"G"_s, u"[A]["_s + x(52) + u"][G].mp3"_s);
    row("55 bytes cut the title to 49", 1, u"A"_s, x(53), u"G"_s, u"[A]["_s + x(49) + u"..][G].mp3"_s);
    row("a title of syllables reaches the room exactly", 2, u"AB"_s, ga(40), {}, u"[AB]["_s + ga(26) + u"..].mp3"_s);
    row("a title of syllables stays one below the room", 2, u"A"_s, ga(40), {}, u"[A]["_s + ga(26) + u"..].mp3"_s);
    row("type 6 charges a genre that it leaves out", 6, x(50), x(20), x(10), {}, 1);
    row("the same without genre has its title cut", 6, x(50), x(20), {}, x(50) + u"-"_s + x(8) + u".mp3"_s);
    row("the same in syllables takes nine bytes", 6, x(50), u"x"_s + ga(10), {}, x(50) + u"-x"_s + ga(4) + u".mp3"_s);
    row("type 5 without genre takes 59 bytes", 5, x(20), x(39), {}, x(20) + u"-"_s + x(39) + u".mp3"_s);
    row("type 5 without genre cuts without full stops", 5, x(20), x(40), {}, x(20) + u"-"_s + x(38) + u".mp3"_s);
    row("type 5 with genre cuts with full stops", 5, x(20), x(40), u"G"_s, x(20) + u"-"_s + x(34) + u"..-G.mp3"_s);
    row("53 bytes of artist and 3 of title fit type 1", 1, x(53), x(3), {}, u"["_s + x(53) + u"][xxx].mp3"_s);
    row("53 bytes of artist and 4 of title don't", 1, x(53), x(4), {}, {}, 1);
    row("50 bytes of artist and genre leave one character", 1, x(40), x(5), x(10),
        u"["_s + x(40) + u"][x..]["_s + x(10) + u"].mp3"_s);
    row("50 bytes of artist and genre leave one syllable", 1, x(40), ga(5), x(10),
        u"["_s + x(40) + u"][가..]["_s + x(10) + u"].mp3"_s);
    row("51 bytes of artist and genre leave none", 1, x(41), x(5), x(10), {}, 1);
    row("types 2 and 4 don't charge the genre", 4, x(52), x(9), x(30), u"("_s + x(52) + u")(x..).mp3"_s);
    row("a character that the code page lacks counts one", 2, u"A"_s, QString(55, u'é'), {},
        u"[A]["_s + QString(55, u'é') + u"].mp3"_s);
}

void TestCompose::names()
{
    QFETCH(const i16, type);
    QFETCH(const QString, artist);
    QFETCH(const QString, title);
    QFETCH(const QString, genre);
    const Composition composition = compose(type, artist, title, genre);
    QTEST(composition.name, "name");
    QTEST(composition.reports, "reports");
}

void TestCompose::every_budget_holds_at_its_edges_data()
{
    QTest::addColumn<int>("budget");
    QTest::addColumn<int>("script");
    for (int budget = 0; budget < static_cast<int>(std::size(budgets)); ++budget) {
        for (const auto& [script, script_name] :
             {std::pair(Script::ascii, "ASCII"), std::pair(Script::hangul, "Hangul"), std::pair(Script::mixed, "both")})
            QTest::addRow("type %d %s genre in %s", budgets[budget].type,
                          budgets[budget].with_genre ? "with" : "without", script_name)
                << budget << static_cast<int>(script);
    }
}

void TestCompose::every_budget_holds_at_its_edges()
{
    QFETCH(const int, budget);
    QFETCH(const int, script);
    const Budget& row = budgets[budget];
    for (const int genre_bytes : row.with_genre ? std::vector{1, 2, 9} : std::vector{0}) {
        const int edge = row.cut - (row.charged ? genre_bytes : 0);
        for (const int artist_bytes : {1, 2, 19, edge - 1, edge, edge + 1, edge + 2, 70})
            check_edges(row, static_cast<Script>(script), genre_bytes, artist_bytes);
    }
}

void TestCompose::cut_title_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("room");
    QTest::addColumn<QString>("cut");
    QTest::newRow("one-byte characters stop at one byte less") << u"abcdef"_s << 5 << u"abcd"_s;
    QTest::newRow("syllables stop at one byte less") << u"가나다라"_s << 5 << u"가나"_s;
    QTest::newRow("syllables fill an even room") << u"가나다라"_s << 4 << u"가나"_s;
    QTest::newRow("a syllable may reach the room exactly") << u"ab가나"_s << 4 << u"ab가"_s;
    QTest::newRow("a syllable is never split") << u"a가나다"_s << 5 << u"a가나"_s;
    QTest::newRow("a room of two takes one character") << u"abc"_s << 2 << u"a"_s;
    QTest::newRow("a room of two takes one syllable") << u"가나"_s << 2 << u"가"_s;
    QTest::newRow("a room of one takes nothing") << u"abc"_s << 1 << u""_s;
    QTest::newRow("no room takes nothing") << u"abc"_s << 0 << u""_s;
    QTest::newRow("less than no room takes nothing") << u"abc"_s << -3 << u""_s;
    QTest::newRow("a short title stays whole") << u"abc"_s << 20 << u"abc"_s;
    QTest::newRow("an empty title stays empty") << u""_s << 20 << u""_s;
    QTest::newRow("a surrogate pair stays whole") << u"a\U0001F3B5xyz"_s << 4 << u"a\U0001F3B5"_s;
    QTest::newRow("a surrogate pair cut in half goes") << u"ab\U0001F3B5xyz"_s << 4 << u"ab"_s;
    QTest::newRow("a stray byte stays") << u"ab\xdcffxyz"_s << 4 << u"ab\xdcff"_s;
}

void TestCompose::cut_title()
{
    QFETCH(const QString, title);
    QFETCH(const int, room);
    QTEST(::cut_title(title, room), "cut");
}

void TestCompose::a_name_that_fits_is_not_reported()
{
    QCOMPARE(compose_name(1, u"A"_s, u"T"_s, {}).failure, ComposeFailure::none);
    QCOMPARE(compose_name(1, {}, u"T"_s, {}).failure, ComposeFailure::empty_field);
    QCOMPARE(compose_name(1, u"A"_s, {}, {}).failure, ComposeFailure::empty_field);
    QCOMPARE(compose_name(1, QString(60, u'A'), u"T"_s, {}).failure, ComposeFailure::too_long);
}

void TestCompose::an_unknown_shape_has_no_names()
{
    for (const i16 type : std::initializer_list<i16>{-1, 0, 7, 100}) {
        for (const QString& genre : {QString(), u"Rock"_s}) {
            const Composition composition = compose(type, u"A"_s, QString(90, u'T'), genre);
            QCOMPARE(composition.name, QString());
            QCOMPARE(composition.reports, 0);
            QCOMPARE(compose_name(type, u"A"_s, u"T"_s, genre).failure, ComposeFailure::unknown_shape);
        }
    }
}

void TestCompose::random_names_keep_the_format()
{
    constexpr quint32 seed = 20011;
    QRandomGenerator random(seed);
    int made = 0;
    int cut = 0;
    for (int round = 0; round < 20000; ++round) {
        const auto type = static_cast<i16>(1 + round % 6);
        shared.fif_type = type;
        const QString artist = trimmed_and_cleaned(random_text(random, 40));
        const QString title = trimmed_and_cleaned(random_text(random, 60));
        const QString genre = trimmed_and_cleaned(random_text(random, 12));
        const ComposedName composed = compose_name(type, artist, title, genre);
        if (composed.name.isEmpty())
            continue;
        ++made;
        QVERIFY(Byte_count(composed.name) <= 64);
        QCOMPARE(Clean_file_name(composed.name), composed.name);
        const FifParse parse = parse_name(composed.name);
        QVERIFY(parse.valid);
        QCOMPARE(parse.fields.artist, artist);
        QCOMPARE(parse.fields.genre, type % 2 == 1 ? genre : QString());
        if (parse.fields.title != title) {
            ++cut;
            const bool dots = type < 5 || (type == 5 && !genre.isEmpty());
            QVERIFY(!dots || parse.fields.title.endsWith(u".."_s));
            QVERIFY(title.startsWith(dots ? parse.fields.title.chopped(2) : parse.fields.title));
        }
    }
    QVERIFY(made > 10000);
    QVERIFY(cut > 1000);
}

QUILMO_LOGIC_TEST(TestCompose)
#include "test_compose.moc"
