#include "companion_run.h"

#include <QCoreApplication>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QByteArray audio = sample_audio({.frames = 2});

QByteArrayList tagging(const MusicPlace& place, const QByteArrayList& options)
{
    return applied(QByteArrayList{"tag"} + options, place);
}

} // namespace

/// The commands tag and info.
class TestCompanionTag : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fields_are_set_data();
    void fields_are_set();
    void a_file_without_a_tag_gets_one_over_its_end();
    void a_file_that_is_too_short_stays();
    void what_is_so_already_is_kept();
    void a_preview_shows_old_and_new();

    void info_tells_the_facts();
    void info_tells_what_is_missing();
    void info_of_one_file_says_nothing_of_another();
    void info_as_json();
};

void TestCompanionTag::fields_are_set_data()
{
    QTest::addColumn<QByteArrayList>("options");
    QTest::addColumn<int>("place_in_tag");
    QTest::addColumn<QByteArray>("bytes");

    const auto filled = [](const QByteArray& text) { return text.leftJustified(30, ' '); };
    const auto row = [](const char* name, const QByteArrayList& options, int place_in_tag, const QByteArray& bytes) {
        QTest::newRow(name) << options << place_in_tag << bytes;
    };
    row("the title", {"--title", "New"}, 3, filled("New"));
    row("the artist", {"--artist", "New"}, 33, filled("New"));
    row("the album", {"--album", "New"}, 63, filled("New"));
    row("the year", {"--year", "2001"}, 93, "2001");
    row("a year that is cut", {"--year", "20011"}, 93, "2001");
    row("the comment", {"--comment", "New"}, 97, filled("New"));
    row("an empty text", {"--comment", ""}, 97, filled(""));
    row("a genre as tags spell it", {"--genre", "Hip-Hop"}, 127, "\x07");
    row("a genre as names spell it", {"--genre", "Hip_Hop"}, 127, "\x07");
    row("a genre by its number", {"--genre", "200"}, 127, "\xc8");
    row("a text that is cut", {"--title", QByteArray(31, 'T')}, 3, QByteArray(30, 'T'));
    row("Korean text", {"--title", "가나다"}, 3, filled(korean_bytes(u"가나다"_s)));
    row("Western text", {"--artist", "Björk"}, 33, filled("Bj\xf6rk"));
    row("what would not do in a name", {"--artist", "A/C? [x]"}, 33, filled("A/C? [x]"));
}

/// All other bytes stay.
void TestCompanionTag::fields_are_set()
{
    QFETCH(QByteArrayList, options);
    QFETCH(int, place_in_tag);
    QFETCH(QByteArray, bytes);

    const MusicPlace place;
    const QByteArray odd_field = QByteArray("odd\0\xff junk", 10);
    const QByteArray before = audio + sample_tag({.title = odd_field, .artist = "Ann", .album = odd_field});
    place.write("a.mp3", before);
    QCOMPARE(run_fif(tagging(place, options)).status, 0);
    QByteArray expected = before;
    expected.replace(audio.size() + place_in_tag, bytes.size(), bytes);
    QCOMPARE(place.read("a.mp3"), expected);
    QCOMPARE(undo(place).status, 0);
    QCOMPARE(place.read("a.mp3"), before);
}

void TestCompanionTag::a_file_without_a_tag_gets_one_over_its_end()
{
    const MusicPlace place;
    place.write("a.mp3", audio);
    const Told told = run_fif(tagging(place, {"--title", "Sea"}));
    QCOMPARE(told.status, 0);
    QVERIFY(told.out.contains("a tag over the last 128 bytes: title \"Sea\", genre \"Other\""));
    QCOMPARE(place.read("a.mp3"), audio.chopped(128) + sample_tag({.title = "Sea", .genre = 12, .padding = ' '}));
}

void TestCompanionTag::a_file_that_is_too_short_stays()
{
    const MusicPlace place;
    place.write("a.mp3", "short");
    place.write("b.mp3", song("Ann", "Sea"));
    const Told told = run_fif(tagging(place, {"--title", "Sky"}));
    QCOMPARE(told.status, 1);
    QVERIFY(told.lines()[0].endsWith("a.mp3: too short for a tag: a tag takes 128 bytes"));
    QVERIFY(told.lines()[1].startsWith("tagged"));
    QCOMPARE(place.read("a.mp3"), "short"_ba);
}

void TestCompanionTag::what_is_so_already_is_kept()
{
    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    QCOMPARE(run_fif(tagging(place, {"--artist", "Ann"})).status, 0);
    const Told told = run_fif({"tag", "--artist", "Ann", "--apply", "--no-journal", place.root()});
    QVERIFY(told.out.startsWith("keep"));
}

void TestCompanionTag::a_preview_shows_old_and_new()
{
    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    const auto before = place.content();
    const Told told = run_fif({"tag", "--artist", "Bob\n\"x\"", "--genre", "Folk_Rock", place.root()});
    QCOMPARE(told.status, 0);
    QCOMPARE(told.lines(), QByteArrayList{"tag      " + place.path("a.mp3") +
                                          ": artist \"Ann\" -> \"Bob\\n\"x\"\", genre \"Rock\" -> \"Folk/Rock\""});
    QCOMPARE(place.content(), before);
}

void TestCompanionTag::info_tells_the_facts()
{
    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    const Told told = run_fif({"info", place.root()});
    const QByteArray tag_line = "  Tag: title \"Sea\", artist \"Ann\", album \"Album\", year \"1999\", "
                                "comment \"Comment\", genre \"Rock\"";
    QCOMPARE(told.status, 0);
    QCOMPARE(told.lines(),
             (QByteArrayList{place.path("a.mp3"), "  Size: 963 bytes", "  Length: 0 seconds", "  MPEG 1.0 layer 3",
                             "  128kbit, 2 frames", "  44100hz Joint Stereo", "  Private: No", "  CRCs: No",
                             "  Copyrighted: No", "  Original: Yes", "  Emphasis: None", tag_line, ""}));
}

void TestCompanionTag::info_tells_what_is_missing()
{
    const MusicPlace place;
    place.write("a.mp3", QByteArray(300, 'x'));
    const Told told = run_fif({"info", place.path("a.mp3"), place.path("b.mp3")});
    QCOMPARE(told.status, 1);
    QCOMPARE(told.lines(), (QByteArrayList{place.path("a.mp3"), "  Size: 300 bytes",
                                           "  no MPEG-1 Layer III frame near its beginning", "  No tag", ""}));
    QCOMPARE(told.err, "quilmo-fif: " + place.path("b.mp3") + ": No such file or directory\n");
}

void TestCompanionTag::info_of_one_file_says_nothing_of_another()
{
    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    place.write("b.mp3", QByteArray(300, 'x'));
    const Told told = run_fif({"info", "--json", place.root()});
    QVERIFY(!told.objects()[0]["info"_L1].toString().isEmpty());
    QCOMPARE(told.objects()[1].keys(), (QStringList{u"file_bytes"_s, u"path"_s}));
}

void TestCompanionTag::info_as_json()
{
    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    const QJsonObject object = run_fif({"info", "--json", place.root()}).objects()[0];
    QCOMPARE(object["file_bytes"_L1].toInt(), 963);
    QCOMPARE(object["kbits"_L1].toInt(), 128);
    QCOMPARE(object["hz"_L1].toInt(), 44100);
    QCOMPARE(object["mode"_L1].toString(), u"Joint Stereo"_s);
    QCOMPARE(object["tag"_L1]["artist"_L1].toString(), u"Ann"_s);
    QCOMPARE(object["info"_L1].toString().split(u"\r\n"_s).size(), 10);
}

QUILMO_LOGIC_TEST(TestCompanionTag)
#include "test_companion_tag.moc"
