#include "companion_run.h"
#include "rights.h"

#include <QCoreApplication>
#include <QTest>

#include <sys/stat.h>

#include <filesystem>

using namespace Qt::StringLiterals;

namespace fs = std::filesystem;

class TestCompanionCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void a_file_is_classified_data();
    void a_file_is_classified();
    void a_line_has_all_in_columns();
    void a_file_too_short_for_a_tag_spoils_nothing();
    void another_type_names_all_anew();
    void the_stored_type_counts();
    void folders_are_walked_in_order();
    void links_are_followed_only_where_named();
    void what_is_named_twice_comes_once();
    void what_cannot_be_read_does_not_stop_the_rest();
    void a_file_that_cannot_be_read_is_told();
    void nothing_is_changed();
};

void TestCompanionCheck::a_file_is_classified_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QStringList>("fields");
    QTest::addColumn<QString>("new_name");
    QTest::addColumn<QString>("reason");

    const auto row = [](const char* row_name, const QByteArray& name, const QByteArray& content, const QString& kind,
                        const QStringList& fields, const QString& new_name, const QString& reason = {}) {
        QTest::newRow(row_name) << name << content << kind << fields << new_name << reason;
    };
    const QByteArray audio = sample_audio({.frames = 2});
    row("three fields in square brackets", "[Ann][Sea][Rock].mp3", audio, u"FIF"_s, {u"Ann"_s, u"Sea"_s, u"Rock"_s},
        u"[Ann][Sea][Rock].mp3"_s);
    row("two fields in round brackets stay", "(Ann)(Sea).mp3", audio, u"FIF"_s, {u"Ann"_s, u"Sea"_s, QString()},
        u"(Ann)(Sea).mp3"_s);
    row("dashes win over the tag", "Ann-Sea.mp3", song("Bob", "Sky"), u"FIF"_s, {u"Ann"_s, u"Sea"_s, QString()},
        u"Ann-Sea.mp3"_s);
    row("a dash at the end", "abc-.mp3", audio, u"FIF"_s, {u"abc"_s, QString(), QString()}, u"abc-.mp3"_s);
    row("a tag", "a.mp3", song("Ann", "Sea", 7), u"tag"_s, {u"Ann"_s, u"Sea"_s, u"Hip_Hop"_s},
        u"[Ann][Sea][Hip_Hop].mp3"_s);
    row("four dashes and a tag", "A-B-C-D.mp3", song("Ann", "Sea"), u"tag"_s, {u"Ann"_s, u"Sea"_s, u"Rock"_s},
        u"[Ann][Sea][Rock].mp3"_s);
    row("an ending in capitals", "a.MP3", song("Ann", "Sea"), u"tag"_s, {u"Ann"_s, u"Sea"_s, u"Rock"_s},
        u"[Ann][Sea][Rock].mp3"_s);
    row("no tag", "a.mp3", audio, u"none"_s, {}, {}, u"no_tag"_s);
    row("an artist of blanks", "a.mp3", song("   ", "Sea"), u"none"_s, {}, {}, u"no_fields"_s);
    row("an artist that cleans to nothing", "a.mp3", song("???", "Sea"), u"none"_s, {}, {}, u"no_fields"_s);
    row("a file too short for a tag", "a.mp3", "TAG", u"none"_s, {}, {}, u"too_short"_s);
    row("an empty file", "a.mp3", "", u"none"_s, {}, {}, u"too_short"_s);
    row("an artist without room", "a.mp3", song(QByteArray(30, 'A'), "T23456789", 140), u"tag"_s,
        {QString(30, u'A'), u"T23456789"_s, u"Contemporary Christian"_s}, {}, u"too_long"_s);
    row("Korean text", "a.mp3", song(korean_bytes(u"가나"_s), "Sea"), u"tag"_s, {u"가나"_s, u"Sea"_s, u"Rock"_s},
        u"[가나][Sea][Rock].mp3"_s);
}

void TestCompanionCheck::a_file_is_classified()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, content);
    QFETCH(QString, kind);
    QFETCH(QStringList, fields);
    QFETCH(QString, new_name);
    QFETCH(QString, reason);

    const MusicPlace place;
    place.write(name, content);
    const Told told = run_fif({"check", "--json", place.root()});
    QCOMPARE(told.status, 0);
    QCOMPARE(told.objects().size(), 1);
    const QJsonObject object = told.objects().first();
    QCOMPARE(object["path"_L1].toString(), QString::fromUtf8(place.path(name)));
    QCOMPARE(object["class"_L1].toString(), kind);
    QCOMPARE(object["bytes"_L1].toInt(), name.size());
    QCOMPARE(object.contains("artist"_L1), kind != u"none");
    if (!fields.isEmpty()) {
        QCOMPARE(
            (QStringList{object["artist"_L1].toString(), object["title"_L1].toString(), object["genre"_L1].toString()}),
            fields);
    }
    QCOMPARE(object["new_name"_L1].toString(), new_name);
    QCOMPARE(object["reason"_L1].toString(), reason);
}

void TestCompanionCheck::a_line_has_all_in_columns()
{
    const MusicPlace place;
    place.write("[Ann][Sea].mp3", sample_audio());
    place.write("a.mp3", song("Ann", "Sea"));
    place.write("b.mp3", sample_audio());
    const Told told = run_fif({"check", place.root()});
    const QByteArray blanks(64, ' ');
    QCOMPARE(told.lines(), (QByteArrayList{"FIF    14  Ann                   Sea                                     " +
                                               place.path("[Ann][Sea].mp3"),
                                           "tag     5  Ann                   Sea                       Rock          " +
                                               place.path("a.mp3") + " -> [Ann][Sea][Rock].mp3",
                                           "none    5" + blanks + place.path("b.mp3") + ": no tag"}));
    QCOMPARE(told.err, QByteArray());
}

void TestCompanionCheck::a_file_too_short_for_a_tag_spoils_nothing()
{
    const MusicPlace place;
    place.write("a.mp3", "short");
    place.write("b.mp3", song("Ann", "Sea"));
    const Told told = run_fif({"check", "--json", place.root()});
    QCOMPARE(told.objects()[0]["class"_L1].toString(), u"none"_s);
    QCOMPARE(told.objects()[1]["class"_L1].toString(), u"tag"_s);
}

void TestCompanionCheck::another_type_names_all_anew()
{
    const MusicPlace place;
    place.write("[Ann][Sea][Rock].mp3", sample_audio());
    place.write("a.mp3", song("Bob", "Sky"));
    const Told told = run_fif({"check", "--json", "--type", "6", place.root()});
    QCOMPARE(told.objects()[0]["new_name"_L1].toString(), u"Ann-Sea.mp3"_s);
    QCOMPARE(told.objects()[1]["new_name"_L1].toString(), u"Bob-Sky.mp3"_s);
}

void TestCompanionCheck::the_stored_type_counts()
{
    const QByteArray store = qgetenv("XDG_CONFIG_HOME") + "/Quilmo.ini";
    const auto set_type = [&](const QByteArray& type) {
        fs::create_directories(qgetenv("XDG_CONFIG_HOME").toStdString());
        QFile file(QFile::decodeName(store));
        QVERIFY(file.open(QFile::WriteOnly | QFile::Truncate));
        file.write("[fif_type]\nlocation=" + type + '\n');
    };
    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    set_type("4");
    QCOMPARE(run_fif({"check", "--json", place.root()}).objects()[0]["new_name"_L1].toString(), u"(Ann)(Sea).mp3"_s);
    set_type("19"); // the toolkit takes a file of the same size and time for the same one
    QCOMPARE(run_fif({"check", "--json", place.root()}).objects()[0]["reason"_L1].toString(), u"unknown_type"_s);
    set_type("none");
    const Told told = run_fif({"check", place.root()});
    QCOMPARE(told.status, 1);
    QCOMPARE(told.err, "quilmo-fif: " + store + ": the settings cannot be used: Type mismatch\n");
    QCOMPARE(run_fif({"check", "--type", "1", place.root()}).status, 0); // needs no settings
    fs::remove(store.toStdString());
}

void TestCompanionCheck::folders_are_walked_in_order()
{
    const MusicPlace place;
    for (const char* const name : {"b/z.mp3", "b/a.mp3", "b.mp3", "a/1/x.mp3", "a/y.mp3", "B.Mp3", "c.txt", "a/.h.mp3"})
        place.write(name, "x");
    const Told told = run_fif({"check", "--json", place.root() + '/'});
    QStringList names;
    for (const QJsonObject& object : told.objects())
        names.append(object["path"_L1].toString().sliced(place.root().size() + 1));
    QCOMPARE(names, (QStringList{u"B.Mp3"_s, u"b.mp3"_s, u"a/.h.mp3"_s, u"a/y.mp3"_s, u"a/1/x.mp3"_s, u"b/a.mp3"_s,
                                 u"b/z.mp3"_s}));
}

void TestCompanionCheck::links_are_followed_only_where_named()
{
    const MusicPlace place;
    place.write("real/a.mp3", song("Ann", "Sea"));
    fs::create_directory_symlink("real", place.path("folder").toStdString());
    fs::create_symlink("real/a.mp3", place.path("file.mp3").toStdString());
    QCOMPARE(run_fif({"check", place.root()}).lines().size(), 1);
    QCOMPARE(run_fif({"check", place.path("folder")}).lines().size(), 1);
    const Told told = run_fif({"check", "--json", place.path("file.mp3")});
    QCOMPARE(told.objects()[0]["class"_L1].toString(), u"tag"_s);
}

void TestCompanionCheck::what_is_named_twice_comes_once()
{
    const MusicPlace place;
    place.write("sub/a.mp3", "x");
    place.write("b.mp3", "x");
    const QByteArray file = place.path("b.mp3");
    const QByteArray sub = place.path("sub");
    QCOMPARE(run_fif({"check", file, file}).lines().size(), 1);
    QCOMPARE(run_fif({"check", file, place.root()}).lines().size(), 2);
    QCOMPARE(run_fif({"check", place.root(), file, sub + "/../b.mp3", sub}).lines().size(), 2);
    QCOMPARE(run_fif({"check", sub, place.root()}).lines().size(), 2);
}

void TestCompanionCheck::what_cannot_be_read_does_not_stop_the_rest()
{
    const MusicPlace place;
    place.write("closed/a.mp3", "x");
    place.write("open/b.mp3", "x");
    place.write("c.txt", "x");
    QVERIFY(mkfifo(place.path("pipe.mp3").constData(), 0600) == 0);
    const WithoutRights closed(place.path("closed"));
    const Told told = run_fif({"check", place.path("missing"), place.path("c.txt"), place.path("pipe.mp3"),
                               place.path("missing.mp3"), place.root()});
    QCOMPARE(told.status, 1);
    QCOMPARE(told.lines().size(), 1);
    QVERIFY(told.out.contains("open/b.mp3"));
    const QByteArray start = "quilmo-fif: " + place.root();
    QCOMPARE(told.err.split('\n'), (QByteArrayList{start + "/missing: No such file or directory",
                                                   start + "/c.txt: no MP3 file: its name does not end in mp3",
                                                   start + "/pipe.mp3: neither a file nor a folder",
                                                   start + "/missing.mp3: No such file or directory",
                                                   start + "/closed: Permission denied", QByteArray()}));
    const Told json = run_fif({"check", "--json", place.path("missing")});
    QCOMPARE(json.status, 1);
    QCOMPARE(json.err, QByteArray());
    QCOMPARE(json.objects()[0]["reason"_L1].toString(), u"unreadable"_s);
}

void TestCompanionCheck::a_file_that_cannot_be_read_is_told()
{
    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    place.write("[Bob][Sky].mp3", "x");
    const WithoutRights closed(place.path("a.mp3"));
    const WithoutRights fif(place.path("[Bob][Sky].mp3"));
    const Told told = run_fif({"check", place.root()});
    QCOMPARE(told.status, 1);
    QVERIFY(told.lines()[0].startsWith("FIF")); // its name says all
    QVERIFY(told.lines()[1].startsWith("error"));
    QVERIFY(told.lines()[1].endsWith("a.mp3: cannot be read: Permission denied"));
}

void TestCompanionCheck::nothing_is_changed()
{
    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    place.write("[Bob][Sky].mp3", song("Old", "Older"));
    const auto before = place.content();
    run_fif({"check", place.root()});
    run_fif({"info", place.root()});
    run_fif({"convert", "--tags", "--type", "5", place.root()});
    run_fif({"tag", "--artist", "New", place.root()});
    QCOMPARE(place.content(), before);
    QVERIFY(!fs::exists(qgetenv("HOME").toStdString() + "/.local/state"));
}

QUILMO_LOGIC_TEST(TestCompanionCheck)
#include "test_companion_check.moc"
