#include "test_main.h"

#include "core/mod_of_grobal_var.h"
#include "fif/fif_name.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

enum Outcome
{
    accepted,
    late_failure,
    silent_failure
};

void compare_parse(const FifParse& parse, int outcome, const FifFields& fields)
{
    QCOMPARE(parse.valid, outcome == accepted);
    QCOMPARE(parse.stores, outcome != silent_failure);
    if (outcome == silent_failure)
        return;
    QCOMPARE(parse.fields.artist, fields.artist);
    QCOMPARE(parse.fields.title, fields.title);
    QCOMPARE(parse.fields.genre, fields.genre);
}

void add_parse_columns()
{
    QTest::addColumn<QString>("stem");
    QTest::addColumn<int>("outcome");
    QTest::addColumn<QString>("artist");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("genre");
}

void add_row(const char* name, const QString& stem, int outcome, const QString& artist = {}, const QString& title = {},
             const QString& genre = {})
{
    QTest::newRow(name) << stem << outcome << artist << title << genre;
}

/// The same text with round brackets for square ones and the other way round.
QString other_brackets(QString text)
{
    const QString from = u"[]()"_s;
    const QString to = u"()[]"_s;
    for (QChar& c : text) {
        if (const qsizetype place = from.indexOf(c); place >= 0)
            c = to[place];
    }
    return text;
}

} // namespace

class TestFifName : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { shared = {}; }
    void brackets_data();
    void brackets();
    void a_bracket_kind_of_neither_form_accepts_nothing();
    void dashes_data();
    void dashes();
    void grammar_holds_for_every_short_stem();
    void reading_does_not_depend_on_the_shape_for_writing();
    void stem_data();
    void stem();
    void a_field_is_cleaned_for_each_shape_data();
    void a_field_is_cleaned_for_each_shape();
    void a_file_name_loses_nine_characters_only();
    void every_other_character_stays();
    void blanks_go_before_the_cleaning();
};

void TestFifName::brackets_data()
{
    add_parse_columns();
    add_row("two groups", u"[Artist][Title]"_s, accepted, u"Artist"_s, u"Title"_s);
    add_row("three groups", u"[Artist][Title][Rock]"_s, accepted, u"Artist"_s, u"Title"_s, u"Rock"_s);
    add_row("groups of one character", u"[a][b][c]"_s, accepted, u"a"_s, u"b"_s, u"c"_s);
    add_row("an opening character inside the artist", u"[a[b][c]"_s, accepted, u"a[b"_s, u"c"_s);
    add_row("opening characters inside title and genre", u"[a][[[][[c]"_s, accepted, u"a"_s, u"[["_s, u"[c"_s);
    add_row("delimiters of other forms inside the fields", u"[a(b)-][-(c)]"_s, accepted, u"a(b)-"_s, u"-(c)"_s);
    add_row("blanks inside the fields", u"[ a ][ ]"_s, accepted, u" a "_s, u" "_s);
    add_row("Hangul", u"[가수][노래][록]"_s, accepted, u"가수"_s, u"노래"_s, u"록"_s);
    add_row("a stray byte", u"[a\xdcff][b]"_s, accepted, u"a\xdcff"_s, u"b"_s);

    add_row("an empty stem", u""_s, late_failure);
    add_row("an opening character alone", u"["_s, late_failure);
    add_row("an open artist", u"[a"_s, late_failure, u"a"_s);
    add_row("an artist alone", u"[a]"_s, late_failure, u"a"_s);
    add_row("a title just begun", u"[a]["_s, late_failure, u"a"_s);
    add_row("an open title", u"[a][b"_s, late_failure, u"a"_s, u"b"_s);
    add_row("a genre just begun", u"[a][b]["_s, late_failure, u"a"_s, u"b"_s);
    add_row("an open genre", u"[a][b][c"_s, late_failure, u"a"_s, u"b"_s, u"c"_s);
    add_row("something behind the genre", u"[a][b][c]d"_s, late_failure, u"a"_s, u"b"_s, u"c"_s);
    add_row("a fourth group", u"[a][b][c][d]"_s, late_failure, u"a"_s, u"b"_s, u"c"_s);
    add_row("a closing character too many", u"[a][b][c]]"_s, late_failure, u"a"_s, u"b"_s, u"c"_s);

    add_row("no opening character", u"a"_s, silent_failure);
    add_row("something before the artist", u"a[b]"_s, silent_failure);
    add_row("a blank before the artist", u" [a][b]"_s, silent_failure);
    add_row("something behind the artist", u"[a]b"_s, silent_failure);
    add_row("a blank between the groups", u"[a] [b]"_s, silent_failure);
    add_row("something behind the title", u"[a][b]c"_s, silent_failure);
    add_row("an empty artist", u"[]"_s, silent_failure);
    add_row("an empty artist before a title", u"[][b]"_s, silent_failure);
    add_row("an empty title", u"[a][]"_s, silent_failure);
    add_row("an empty title before a genre", u"[a][][c]"_s, silent_failure);
    add_row("an empty genre", u"[a][b][]"_s, silent_failure);
    add_row("two closing characters", u"[a]][b]"_s, silent_failure);
    add_row("a title in the other brackets", u"[A](B)"_s, silent_failure);
    add_row("an artist in the other brackets", u"(A)[B]"_s, silent_failure);
    add_row("the other brackets", u"(A)(B)"_s, silent_failure);
}

void TestFifName::brackets()
{
    QFETCH(const QString, stem);
    QFETCH(const int, outcome);
    QFETCH(const QString, artist);
    QFETCH(const QString, title);
    QFETCH(const QString, genre);
    compare_parse(parse_brackets(stem, square_brackets), outcome, {artist, title, genre});
    compare_parse(parse_brackets(other_brackets(stem), round_brackets), outcome,
                  {other_brackets(artist), other_brackets(title), other_brackets(genre)});
}

void TestFifName::a_bracket_kind_of_neither_form_accepts_nothing()
{
    for (const i16 kind : std::initializer_list<i16>{-1, 0, 3}) {
        for (const QString& stem : {u"[a][b]"_s, u"(a)(b)"_s, u""_s})
            compare_parse(parse_brackets(stem, kind), silent_failure, {});
    }
}

void TestFifName::dashes_data()
{
    add_parse_columns();
    add_row("two fields", u"Artist-Title"_s, accepted, u"Artist"_s, u"Title"_s);
    add_row("three fields", u"Artist-Title-Rock"_s, accepted, u"Artist"_s, u"Title"_s, u"Rock"_s);
    add_row("fields of one character", u"a-b-c"_s, accepted, u"a"_s, u"b"_s, u"c"_s);
    add_row("a dash that ends the stem behind the artist", u"abc-"_s, accepted, u"abc"_s);
    add_row("blanks round the dash", u"a - b"_s, accepted, u"a "_s, u" b"_s);
    add_row("Hangul", u"가수-노래"_s, accepted, u"가수"_s, u"노래"_s);

    add_row("an empty stem", u""_s, late_failure);
    add_row("no dash", u"abc def"_s, late_failure, u"abc def"_s);
    add_row("three dashes", u"Artist-Title-Genre-More"_s, late_failure, u"Artist"_s, u"TitleMore"_s, u"Genre"_s);
    add_row("four dashes", u"a-b-c-d-e"_s, late_failure, u"a"_s, u"bde"_s, u"c"_s);
    add_row("an empty genre before a third dash", u"a-b--c"_s, late_failure, u"a"_s, u"bc"_s);

    add_row("a dash alone", u"-"_s, silent_failure);
    add_row("a leading dash", u"-abc"_s, silent_failure);
    add_row("a leading dash before two fields", u"-a-b"_s, silent_failure);
    add_row("an empty title", u"a--b"_s, silent_failure);
    add_row("two dashes at the end", u"a--"_s, silent_failure);
    add_row("an empty genre", u"a-b-"_s, silent_failure);
    add_row("a dash behind the genre", u"a-b-c-"_s, silent_failure);
    add_row("an opening square bracket in the artist", u"a[-b"_s, silent_failure);
    add_row("a closing square bracket in the artist", u"a]-b"_s, silent_failure);
    add_row("a round bracket in the artist", u"Artist (live)-Title"_s, silent_failure);
    add_row("a closing round bracket in the artist", u"a)-b"_s, silent_failure);
    add_row("an opening square bracket in the title", u"a-b["_s, silent_failure);
    add_row("a closing square bracket in the title", u"a-b]"_s, silent_failure);
    add_row("an opening round bracket in the title", u"a-(b"_s, silent_failure);
    add_row("a closing round bracket in the genre", u"a-b-c)"_s, silent_failure);
    add_row("a bracket behind the third dash", u"a-b-c-d("_s, silent_failure);
}

void TestFifName::dashes()
{
    QFETCH(const QString, stem);
    QFETCH(const int, outcome);
    QFETCH(const QString, artist);
    QFETCH(const QString, title);
    QFETCH(const QString, genre);
    compare_parse(parse_dashes(stem), outcome, {artist, title, genre});
}

void TestFifName::grammar_holds_for_every_short_stem()
{
    const QRegularExpression square(uR"(\A\[[^\]]+\]\[[^\]]+\](\[[^\]]+\])?\z)"_s);
    const QRegularExpression round(uR"(\A\([^)]+\)\([^)]+\)(\([^)]+\))?\z)"_s);
    const QRegularExpression dash(uR"(\A[^-\[\]()]+-([^-\[\]()]+(-[^-\[\]()]+)?)?\z)"_s);
    const QString alphabet = u"a[]()-"_s;
    QStringList stems = {QString()};
    for (qsizetype next = 0; next < stems.size(); ++next) {
        const QString stem = stems[next];
        if (parse_brackets(stem, square_brackets).valid != square.match(stem).hasMatch() ||
            parse_brackets(stem, round_brackets).valid != round.match(stem).hasMatch() ||
            parse_dashes(stem).valid != dash.match(stem).hasMatch())
            QFAIL(qPrintable(u"wrong answer for "_s + stem));
        if (stem.size() < 6) {
            for (const QChar c : alphabet)
                stems.append(stem + c);
        }
    }
}

void TestFifName::reading_does_not_depend_on_the_shape_for_writing()
{
    for (i16 type = 0; type <= 7; ++type) {
        shared.fif_type = type;
        compare_parse(parse_brackets(u"[Artist][Title]", square_brackets), accepted, {u"Artist"_s, u"Title"_s, {}});
        compare_parse(parse_brackets(u"(Artist)(Title)", round_brackets), accepted, {u"Artist"_s, u"Title"_s, {}});
        compare_parse(parse_dashes(u"Artist-Title"), accepted, {u"Artist"_s, u"Title"_s, {}});
    }
}

void TestFifName::stem_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("stem");
    QTest::newRow("the extension goes") << u"abc.mp3"_s << u"abc"_s;
    QTest::newRow("any four characters go") << u"[A][B].xyz"_s << u"[A][B]"_s;
    QTest::newRow("four characters without a full stop go") << u"songmp3"_s << u"son"_s;
    QTest::newRow("an extension alone") << u".mp3"_s << u""_s;
    QTest::newRow("three characters") << u"MP3"_s << u""_s;
    QTest::newRow("one character") << u"a"_s << u""_s;
    QTest::newRow("an empty name") << u""_s << u""_s;
}

void TestFifName::stem()
{
    QFETCH(const QString, name);
    QTEST(stem_of(name), "stem");
}

void TestFifName::a_field_is_cleaned_for_each_shape_data()
{
    QTest::addColumn<i16>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("cleaned");
    const QString all = uR"(a\b/c:d*e?f"g<h>i|j[k]l(m)n-o)"_s;
    QTest::newRow("type 1 keeps round brackets and dash") << i16{1} << all << u"abcdefghijkl(m)n-o"_s;
    QTest::newRow("type 2 keeps round brackets and dash") << i16{2} << all << u"abcdefghijkl(m)n-o"_s;
    QTest::newRow("type 3 keeps square brackets and dash") << i16{3} << all << u"abcdefghij[k]lmn-o"_s;
    QTest::newRow("type 4 keeps square brackets and dash") << i16{4} << all << u"abcdefghij[k]lmn-o"_s;
    QTest::newRow("type 5 keeps no delimiter") << i16{5} << all << u"abcdefghijklmno"_s;
    QTest::newRow("type 6 keeps no delimiter") << i16{6} << all << u"abcdefghijklmno"_s;
    QTest::newRow("an unknown type keeps no delimiter") << i16{0} << all << u"abcdefghijklmno"_s;
    QTest::newRow("a remark in brackets stays under type 1") << i16{1} << u"Foo (live)"_s << u"Foo (live)"_s;
    QTest::newRow("a remark loses its brackets under type 3") << i16{3} << u"Foo (live)"_s << u"Foo live"_s;
    QTest::newRow("a field of forbidden characters is emptied") << i16{1} << u"?"_s << u""_s;
    QTest::newRow("an empty field stays empty") << i16{1} << u""_s << u""_s;
    QTest::newRow("blanks stay") << i16{5} << u" - a "_s << u"  a "_s;
}

void TestFifName::a_field_is_cleaned_for_each_shape()
{
    QFETCH(const i16, type);
    QFETCH(const QString, text);
    shared.fif_type = type;
    QTEST(Clean_fif_field(text), "cleaned");
}

void TestFifName::a_file_name_loses_nine_characters_only()
{
    for (i16 type = 0; type <= 7; ++type) {
        shared.fif_type = type;
        QCOMPARE(Clean_file_name(uR"( a\b/c:d*e?f"g<h>i|j[k]l(m)n-o.mp3 )"_s), u" abcdefghij[k]l(m)n-o.mp3 "_s);
    }
}

void TestFifName::every_other_character_stays()
{
    const QString forbidden = uR"(\/:*?"<>|)"_s;
    const QString delimiters = u"[]()-"_s;
    for (i16 type = 1; type <= 6; ++type) {
        shared.fif_type = type;
        for (int code = 0; code <= 0xffff; ++code) {
            const QString text(QChar(static_cast<char16_t>(code)));
            const bool stays = !forbidden.contains(text) && !delimiters.contains(text);
            if (stays && (Clean_fif_field(text) != text || Clean_file_name(text) != text))
                QFAIL(qPrintable(u"character %1 is lost under type %2"_s.arg(code).arg(type)));
        }
    }
}

void TestFifName::blanks_go_before_the_cleaning()
{
    shared.fif_type = 1;
    QCOMPARE(trimmed_and_cleaned(u"  a b  "_s), u"a b"_s);
    QCOMPARE(trimmed_and_cleaned(u" ? a ? "_s), u" a "_s);
    QCOMPARE(trimmed_and_cleaned(u"\ta\u00a0"_s), u"\ta\u00a0"_s);
    QCOMPARE(trimmed_and_cleaned(u"   "_s), u""_s);
}

QUILMO_LOGIC_TEST(TestFifName)
#include "test_fif_name.moc"
