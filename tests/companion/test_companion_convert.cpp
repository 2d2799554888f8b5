#include "companion_run.h"
#include "rights.h"

#include <QCoreApplication>
#include <QTest>

#include <sys/stat.h>

#include <filesystem>

using namespace Qt::StringLiterals;

namespace fs = std::filesystem;

namespace {

const QByteArray audio = sample_audio({.frames = 2});

/// The words of a conversion that changes what it should, with more `options`.
QByteArrayList conversion(const MusicPlace& place, const QByteArrayList& options = {})
{
    return applied(QByteArrayList{"convert"} + options, place);
}

/// What stands behind the status in the lines of a run, the folder left out.
QByteArrayList shown_lines(const Told& told, const MusicPlace& place)
{
    QByteArrayList lines = told.lines();
    for (QByteArray& line : lines)
        line.replace(place.root() + '/', "");
    return lines;
}

} // namespace

class TestCompanionConvert : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void a_file_gets_its_name_data();
    void a_file_gets_its_name();
    void a_preview_says_what_the_conversion_does();
    void why_not_data();
    void why_not();
    void tags_of_fif_names_are_rewritten_data();
    void tags_of_fif_names_are_rewritten();
    void tags_are_written_only_when_asked_for();
    void names_from_tags_leave_the_tags_alone();
    void renamed_files_get_their_tags_data();
    void renamed_files_get_their_tags();
    void a_name_in_the_wanted_shape_stays();
    void a_tag_takes_the_place_of_sound();
    void a_file_too_short_for_a_tag_gets_its_name();
    void of_two_files_with_one_new_name_the_second_stays();
    void a_name_that_another_file_leaves_is_free();
    void named_files_know_of_each_other();
    void a_target_is_never_replaced_data();
    void a_target_is_never_replaced();
    void the_read_only_mark_goes_with_a_tag();
    void a_second_run_has_nothing_to_do();
    void without_a_journal();
    void json_tells_all();
};

void TestCompanionConvert::cleanup()
{
    fs::remove_all(qgetenv("HOME").toStdString() + "/.local/state");
}

void TestCompanionConvert::a_file_gets_its_name_data()
{
    QTest::addColumn<QByteArrayList>("options");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("new_name");

    const auto row = [](const char* row_name, const QByteArrayList& options, const QByteArray& name,
                        const QByteArray& content, const QByteArray& new_name) {
        QTest::newRow(row_name) << options << name << content << new_name;
    };
    const QByteArray tagged = song("Ann", "Sea");
    row("the type of a fresh installation", {}, "a.mp3", tagged, "[Ann][Sea][Rock].mp3");
    row("type 1", {"--type", "1"}, "a.mp3", tagged, "[Ann][Sea][Rock].mp3");
    row("type 2", {"--type=2"}, "a.mp3", tagged, "[Ann][Sea].mp3");
    row("type 3", {"--type", "3"}, "a.mp3", tagged, "(Ann)(Sea)(Rock).mp3");
    row("type 4", {"--type", "4"}, "a.mp3", tagged, "(Ann)(Sea).mp3");
    row("type 5", {"--type", "5"}, "a.mp3", tagged, "Ann-Sea-Rock.mp3");
    row("type 6", {"--type", "6"}, "a.mp3", tagged, "Ann-Sea.mp3");
    row("a genre with a slash", {}, "a.mp3", song("Ann", "Sea", 81), "[Ann][Sea][Folk_Rock].mp3");
    row("a genre without a name", {}, "a.mp3", song("Ann", "Sea", 200), "[Ann][Sea].mp3");
    row("blanks go before the cleaning", {}, "a.mp3", song("? Ann", "Sea"), "[ Ann][Sea][Rock].mp3");
    row("and once more where all names are made anew", {"--type", "1"}, "a.mp3", song("? Ann", "Sea"),
        "[Ann][Sea][Rock].mp3");
    row("what stands behind a NUL", {}, "a.mp3", song(QByteArray("Ann\0rest", 8), "Sea"), "[Ann][Sea][Rock].mp3");
    row("Korean text", {}, "a.mp3", song(korean_bytes(u"가나다"_s), "Sea"), "[가나다][Sea][Rock].mp3");
    row("Western text", {}, "a.mp3", song("Bj\xf6rk", "Caf\xe9"), "[Björk][Café][Rock].mp3");
    row("a title that is cut", {}, "a.mp3", song(QByteArray(27, 'A'), QByteArray(30, 'T')),
        '[' + QByteArray(27, 'A') + "][" + QByteArray(20, 'T') + "..][Rock].mp3");
    row("a FIF name of another shape stays", {}, "(Ann)(Sea).mp3", tagged, "(Ann)(Sea).mp3");
    row("and is made anew for a type", {"--type", "1"}, "(Ann)(Sea).mp3", tagged, "[Ann][Sea].mp3");
    row("it loses what the new shape can't hold", {"--type", "5"}, "(A[n]n)(Sea-side)(Rock).mp3", tagged,
        "Ann-Seaside-Rock.mp3");
    row("a fixed artist", {"--fix-artist", "  Vari?ous "}, "[Ann][Sea].mp3", tagged, "[Various][Sea].mp3");
    row("a fixed genre", {"--fix-genre", "Hip_Hop"}, "[Ann][Sea].mp3", tagged, "[Ann][Sea][Hip_Hop].mp3");
    row("a fixed genre that no list holds", {"--fix-genre", "Nonsense"}, "a.mp3", tagged, "[Ann][Sea][Nonsense].mp3");
    row("a fixed genre of another spelling", {"--fix-genre", "Hip-Hop", "--type", "5"}, "a.mp3", tagged,
        "Ann-Sea-HipHop.mp3");
    row("fixed values for a file with a tag", {"--fix-artist", "Bob", "--fix-genre", "Pop", "--type", "3"}, "a.mp3",
        tagged, "(Bob)(Sea)(Pop).mp3");
    row("bytes that are no text stay", {"--type", "4"}, "[A\xff][B\xe9].mp3", tagged, "(A\xff)(B\xe9).mp3");
    row("a backslash stays", {"--type", "4"}, "[A\\b][C].mp3", tagged, "(A\\b)(C).mp3");
}

void TestCompanionConvert::a_file_gets_its_name()
{
    QFETCH(QByteArrayList, options);
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, new_name);

    const MusicPlace place;
    place.write(name, content);
    const Told told = run_fif(conversion(place, options));
    QCOMPARE(told.status, 0);
    QCOMPARE(place.content(), (QMap<QByteArray, QByteArray>{{new_name, content}}));
}

void TestCompanionConvert::a_preview_says_what_the_conversion_does()
{
    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    place.write("[Bob][Sky].mp3", song("Old", "Sky"));
    place.write("sub/c.mp3", audio);
    const auto before = place.content();
    const Told preview = run_fif({"convert", "--tags", place.root()});
    QCOMPARE(preview.status, 1);
    QCOMPARE(shown_lines(preview, place),
             (QByteArrayList{"tag      [Bob][Sky].mp3: artist \"Old\" -> \"Bob\"",
                             "rename   a.mp3 -> [Ann][Sea][Rock].mp3", "cannot   sub/c.mp3: no tag"}));
    QCOMPARE(preview.err, "quilmo-fif: 3 files: 2 to change, 0 kept, 1 not possible; --apply changes them\n"_ba);
    QCOMPARE(place.content(), before);
    const Told done = run_fif(conversion(place, {"--tags"}));
    QCOMPARE(done.status, 1);
    QCOMPARE(shown_lines(done, place),
             (QByteArrayList{"cannot   sub/c.mp3: no tag", "tagged   [Bob][Sky].mp3: artist \"Old\" -> \"Bob\"",
                             "renamed  a.mp3 -> [Ann][Sea][Rock].mp3"}));
    QCOMPARE(done.err,
             "quilmo-fif: journal: " + place.journal() + "\nquilmo-fif: 3 files: 2 changed, 0 kept, 1 not possible\n");
}

void TestCompanionConvert::why_not_data()
{
    QTest::addColumn<QByteArrayList>("options");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("reason");

    const auto row = [](const char* row_name, const QByteArrayList& options, const QByteArray& name,
                        const QByteArray& content,
                        const QByteArray& reason) { QTest::newRow(row_name) << options << name << content << reason; };
    row("no tag", {}, "a.mp3", audio, "no tag");
    row("no tag, in spite of a fixed artist", {"--fix-artist", "Ann"}, "a.mp3", audio, "no tag");
    row("no title in the tag", {}, "a.mp3", song("Ann", ""), "no artist or no title in its tag");
    row("nothing is left of the artist", {}, "a.mp3", song("?*", "Sea"), "no artist or no title in its tag");
    row("a name without a title", {"--type", "1"}, "abc-.mp3", audio, "no artist or no title");
    row("too short", {}, "a.mp3", "TAG", "too short for a tag: a tag takes 128 bytes");
    row("too long", {}, "a.mp3", song(QByteArray(30, 'A'), "T23456789", 140),
        "too long: the artist leaves no room for the title");
    row("too long by a fixed artist", {"--fix-artist", QByteArray(53, 'A')}, "[Ann][Seas].mp3", audio,
        "too long: the artist leaves no room for the title");
    row("a tag for a file that is too short", {"--tags"}, "[Ann][Sea].mp3", "TAG",
        "too short for a tag: a tag takes 128 bytes");
}

void TestCompanionConvert::why_not()
{
    QFETCH(QByteArrayList, options);
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, reason);

    const MusicPlace place;
    place.write(name, content);
    const auto before = place.content();
    const Told told = run_fif(conversion(place, options));
    QCOMPARE(told.status, 1);
    QCOMPARE(shown_lines(told, place), QByteArrayList{"cannot   " + name + ": " + reason});
    QCOMPARE(place.content(), before);
    QVERIFY(!fs::exists(place.journal().toStdString())); // nothing to note
}

void TestCompanionConvert::tags_of_fif_names_are_rewritten_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("genre");

    QTest::newRow("three fields in square brackets") << "[New][Song][Hip_Hop].mp3"_ba << 7;
    QTest::newRow("two fields keep the tag's genre") << "[New][Song].mp3"_ba << 200;
    QTest::newRow("round brackets") << "(New)(Song)(Blues).mp3"_ba << 0;
    QTest::newRow("dashes") << "New-Song-Jazz.mp3"_ba << 8;
    QTest::newRow("an unknown genre keeps the tag's") << "[New][Song][Nonsense].mp3"_ba << 200;
}

void TestCompanionConvert::tags_of_fif_names_are_rewritten()
{
    QFETCH(QByteArray, name);
    QFETCH(int, genre);

    const MusicPlace place;
    place.write(name, song("Old", "Old title", 200));
    QCOMPARE(run_fif(conversion(place, {"--tags"})).status, 0);
    const QByteArray tag = tag_with_blanks("New", "Song", static_cast<unsigned char>(genre));
    QCOMPARE(place.content(), (QMap<QByteArray, QByteArray>{{name, audio + tag}}));
}

void TestCompanionConvert::tags_are_written_only_when_asked_for()
{
    const MusicPlace place;
    const QByteArray content = song("Old", "Older");
    place.write("[New][Song].mp3", content);
    QCOMPARE(run_fif(conversion(place)).status, 0);
    QCOMPARE(place.read("[New][Song].mp3"), content);
    QCOMPARE(run_fif(conversion(place, {"--type", "4"})).status, 0);
    QCOMPARE(place.read("(New)(Song).mp3"), content);
}

void TestCompanionConvert::names_from_tags_leave_the_tags_alone()
{
    const MusicPlace place;
    const QByteArray content = song("An?n", "Sea");
    place.write("a.mp3", content);
    QCOMPARE(run_fif(conversion(place, {"--tags"})).status, 0);
    QCOMPARE(place.content(), (QMap<QByteArray, QByteArray>{{"[Ann][Sea][Rock].mp3", content}}));
}

void TestCompanionConvert::renamed_files_get_their_tags_data()
{
    QTest::addColumn<QByteArrayList>("options");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("new_name");
    QTest::addColumn<QByteArray>("tag");

    QTest::newRow("from the tag, cleaned") << QByteArrayList{"--type", "1"} << "a.mp3"_ba << song("An?n", " Sea", 7)
                                           << "[Ann][Sea][Hip_Hop].mp3"_ba << tag_with_blanks("Ann", "Sea", 7);
    QTest::newRow("from the name") << QByteArrayList{"--type", "6"} << "[Ann][Sea][Blues].mp3"_ba
                                   << song("Old", "Older", 200) << "Ann-Sea.mp3"_ba << tag_with_blanks("Ann", "Sea", 0);
    QTest::newRow("fixed values") << QByteArrayList{"--fix-artist", "Bob", "--fix-genre", "Folk_Rock"} << "a.mp3"_ba
                                  << song("Ann", "Sea") << "[Bob][Sea][Folk_Rock].mp3"_ba
                                  << tag_with_blanks("Bob", "Sea", 81);
    QTest::newRow("the whole title of a name that is cut")
        << QByteArrayList{"--type", "1"} << "a.mp3"_ba << song(QByteArray(27, 'A'), QByteArray(30, 'T'))
        << '[' + QByteArray(27, 'A') + "][" + QByteArray(20, 'T') + "..][Rock].mp3"
        << tag_with_blanks(QByteArray(27, 'A'), QByteArray(30, 'T'), 17);
}

void TestCompanionConvert::renamed_files_get_their_tags()
{
    QFETCH(QByteArrayList, options);
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, new_name);
    QFETCH(QByteArray, tag);

    const MusicPlace place;
    place.write(name, content);
    QCOMPARE(run_fif(conversion(place, options + QByteArrayList{"--tags"})).status, 0);
    QCOMPARE(place.content(), (QMap<QByteArray, QByteArray>{{new_name, content.chopped(128) + tag}}));
}

void TestCompanionConvert::a_name_in_the_wanted_shape_stays()
{
    const MusicPlace place;
    place.write("[Ann][Sea].mp3", song("Old", "Older"));
    const auto before = place.content();
    const Told told = run_fif(conversion(place, {"--type", "1", "--tags"}));
    QCOMPARE(told.status, 0);
    QCOMPARE(shown_lines(told, place), QByteArrayList{"keep     [Ann][Sea].mp3"});
    QCOMPARE(place.content(), before);
}

void TestCompanionConvert::a_tag_takes_the_place_of_sound()
{
    const MusicPlace place;
    place.write("[Ann][Sea].mp3", audio);
    const Told told = run_fif(conversion(place, {"--tags"}));
    QCOMPARE(shown_lines(told, place), QByteArrayList{"tagged   [Ann][Sea].mp3: a tag over the last 128 bytes: title "
                                                      "\"Sea\", artist \"Ann\", genre \"Other\""});
    const SampleTag tag{.title = "Sea", .artist = "Ann", .genre = 12, .padding = ' '};
    QCOMPARE(place.read("[Ann][Sea].mp3"), audio.chopped(128) + sample_tag(tag));
}

void TestCompanionConvert::a_file_too_short_for_a_tag_gets_its_name()
{
    const MusicPlace place;
    place.write("[Ann][Sea].mp3", "short");
    const QByteArray rest = "[Ann][Sea].mp3 -> (Ann)(Sea).mp3; no tag: too short for a tag: a tag takes 128 bytes";
    const Told preview = run_fif({"convert", "--type", "4", "--tags", place.root()});
    QCOMPARE(preview.status, 1);
    QCOMPARE(shown_lines(preview, place), QByteArrayList{"rename   " + rest});
    const Told told = run_fif(conversion(place, {"--type", "4", "--tags"}));
    QCOMPARE(told.status, 1);
    QCOMPARE(shown_lines(told, place), QByteArrayList{"renamed  " + rest});
    QCOMPARE(place.content(), (QMap<QByteArray, QByteArray>{{"(Ann)(Sea).mp3", "short"}}));
}

void TestCompanionConvert::of_two_files_with_one_new_name_the_second_stays()
{
    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    place.write("b.mp3", song("Ann", "Sea", 17) + song("Ann", "Sea"));
    place.write("other/c.mp3", song("Ann", "Sea"));
    const QByteArray refused =
        "cannot   b.mp3 -> [Ann][Sea][Rock].mp3: two files want this name, and another one gets it";
    QCOMPARE(shown_lines(run_fif({"convert", place.root()}), place),
             (QByteArrayList{"rename   a.mp3 -> [Ann][Sea][Rock].mp3", refused,
                             "rename   other/c.mp3 -> [Ann][Sea][Rock].mp3"}));
    const Told told = run_fif(conversion(place));
    QCOMPARE(told.status, 1);
    QCOMPARE(told.lines().size(), 3);
    QVERIFY(shown_lines(told, place).contains(refused));
    QCOMPARE(place.content().keys(), (QByteArrayList{"[Ann][Sea][Rock].mp3", "b.mp3", "other/[Ann][Sea][Rock].mp3"}));
    QCOMPARE(place.read("[Ann][Sea][Rock].mp3"), song("Ann", "Sea"));
}

void TestCompanionConvert::a_name_that_another_file_leaves_is_free()
{
    // A title that is cut behind a blank makes a name that no file keeps.
    const QByteArray words(54, 'T');
    const QByteArray left = "Ann-" + words + " .mp3";
    const QByteArray taker = "[Ann][" + words + " more].mp3";
    const QByteArray leaver_content = song("1", "1");
    const QByteArray taker_content = song("2", "2");
    const MusicPlace place;
    place.write(left, leaver_content);
    place.write(taker, taker_content);
    const QMap<QByteArray, QByteArray> after{{"Ann-" + words + ".mp3", leaver_content}, {left, taker_content}};
    const auto before = place.content();
    QCOMPARE(run_fif({"convert", "--type", "6", place.root()}).status, 0);
    QCOMPARE(run_fif(conversion(place, {"--type", "6"})).status, 0);
    QCOMPARE(place.content(), after);
    QCOMPARE(undo(place).status, 0);
    QCOMPARE(place.content(), before);

    const QByteArrayList other_order{place.path(taker), place.path(left)};
    const Told told = run_fif(QByteArrayList{"convert", "--type", "6"} + other_order);
    QCOMPARE(told.status, 1);
    QVERIFY(shown_lines(told, place)[0].endsWith("exists: another file has this name"));
    QCOMPARE(run_fif(QByteArrayList{"convert", "--type", "6", "--apply", "--no-journal", place.path(left)} +
                     QByteArrayList{place.path(taker)})
                 .status,
             0);
    QCOMPARE(place.content(), after);
}

void TestCompanionConvert::named_files_know_of_each_other()
{
    const MusicPlace place;
    place.write("x/a.mp3", song("Ann", "Sea"));
    place.write("x/b.mp3", song("Ann", "Sea"));
    place.write("y/c.mp3", song("Ann", "Sea"));
    const QByteArrayList files{place.path("x/a.mp3"), place.path("y/c.mp3"), place.path("x/b.mp3")};
    const Told told = run_fif({"convert", "-0"}, files.join('\0') + '\0');
    QCOMPARE(shown_lines(told, place).last(),
             "cannot   x/b.mp3 -> [Ann][Sea][Rock].mp3: two files want this name, and another one gets it"_ba);
    const Told mixed = run_fif({"convert", place.path("x/b.mp3"), place.root()});
    QVERIFY(
        shown_lines(mixed, place)
            .contains("cannot   x/a.mp3 -> [Ann][Sea][Rock].mp3: two files want this name, and another one gets it"));
}

void TestCompanionConvert::a_target_is_never_replaced_data()
{
    QTest::addColumn<QByteArrayList>("options");
    QTest::addColumn<QString>("what");

    for (const char* const what : {"file", "folder", "dangling link"}) {
        QTest::addRow("a %s, at the names of tags", what) << QByteArrayList() << QString::fromLatin1(what);
        QTest::addRow("a %s, at all names", what)
            << QByteArrayList{"--type", "1", "--tags"} << QString::fromLatin1(what);
    }
}

void TestCompanionConvert::a_target_is_never_replaced()
{
    QFETCH(QByteArrayList, options);
    QFETCH(QString, what);

    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    const fs::path target = place.path("[Ann][Sea][Rock].mp3").toStdString();
    if (what == u"file")
        place.write("[Ann][Sea][Rock].mp3", song("Ann", "Sea", 3));
    else if (what == u"folder")
        fs::create_directory(target);
    else
        fs::create_symlink("nowhere", target);
    const auto before = place.content();
    for (const QByteArrayList& words :
         {conversion(place, options),
          QByteArrayList{"convert", "--apply", "--no-journal"} + options + QByteArrayList{place.path("a.mp3")}}) {
        const Told told = run_fif(words);
        QCOMPARE(told.status, 1);
        QVERIFY(shown_lines(told, place)
                    .contains("cannot   a.mp3 -> [Ann][Sea][Rock].mp3: exists: another file has this name"));
        QCOMPARE(place.content(), before);
        QVERIFY(fs::exists(fs::symlink_status(target)));
    }
}

void TestCompanionConvert::the_read_only_mark_goes_with_a_tag()
{
    const MusicPlace place;
    place.write("[Ann][Sea].mp3", song("Old", "Older"));
    place.write(".[Ann][Sea].mp3", song("Ann", "Sea"));
    const QByteArray path = place.path("[Ann][Sea].mp3");
    QVERIFY(chmod(path.constData(), 0444) == 0);
    QCOMPARE(run_fif(conversion(place)).status, 0); // the other file, by its tag
    const Told told = run_fif({"convert", "--tags", "--apply", "--no-journal", path});
    QCOMPARE(told.status, 0);
    QCOMPARE(place.read("[Ann][Sea].mp3"), audio + tag_with_blanks("Ann", "Sea", 17));
    struct stat status = {};
    QVERIFY(stat(path.constData(), &status) == 0);
    QCOMPARE(status.st_mode & 0777, mode_t(0644));
}

void TestCompanionConvert::a_second_run_has_nothing_to_do()
{
    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    place.write("[Bob][Sky].mp3", song("Old", "Older"));
    QCOMPARE(run_fif(conversion(place, {"--tags"})).status, 0);
    const auto after = place.content();
    const QByteArray journal = place.journal() + "2";
    // The file that got its name from its tag has a FIF name by now, and its tag is filled with blanks.
    QCOMPARE(run_fif({"convert", "--tags", "--apply", "--no-journal", place.root()}).lines().size(), 2);
    const Told told = run_fif({"convert", "--tags", "--apply", "--journal", journal, place.root()});
    QCOMPARE(told.status, 0);
    QVERIFY(!fs::exists(journal.toStdString()));
    QCOMPARE(told.err, "quilmo-fif: 2 files: 0 changed, 2 kept, 0 not possible\n"_ba);
    QCOMPARE(place.content().keys(), after.keys());
}

void TestCompanionConvert::without_a_journal()
{
    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    place.write("b.mp3", audio);
    place.write("c.mp3", song("Cid", "Sun"));
    const Told told = run_fif({"convert", "--type", "2", "--tags", "--apply", "--no-journal", place.root()});
    QCOMPARE(shown_lines(told, place).size(), 3);
    QVERIFY(shown_lines(told, place)[1].startsWith("cannot")); // in the order of the names
    QCOMPARE(place.content().keys(), (QByteArrayList{"[Ann][Sea].mp3", "[Cid][Sun].mp3", "b.mp3"}));
    QVERIFY(!told.err.contains("journal"));
    QVERIFY(!fs::exists(qgetenv("HOME").toStdString() + "/.local/state"));
}

void TestCompanionConvert::json_tells_all()
{
    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    place.write("b.mp3", song("Ann", "Sea"));
    place.write("[Bob][Sky].mp3", song("Old", "Sky"));
    const QByteArrayList words{"convert", "--json", "--type", "2", "--tags", place.root()};
    const QList<QJsonObject> objects = run_fif(words).objects();
    QCOMPARE(objects.size(), 3);
    QCOMPARE(objects[0]["status"_L1].toString(), u"keep"_s);
    QCOMPARE(objects[1]["status"_L1].toString(), u"rename"_s);
    QCOMPARE(objects[1]["path"_L1].toString(), QString::fromUtf8(place.path("a.mp3")));
    QCOMPARE(objects[1]["new_name"_L1].toString(), u"[Ann][Sea].mp3"_s);
    QCOMPARE(objects[1]["tag_before"_L1]["album"_L1].toString(), u"Album"_s);
    QCOMPARE(objects[1]["tag_after"_L1]["artist"_L1].toString(), u"Ann"_s);
    QCOMPARE(objects[2]["status"_L1].toString(), u"cannot"_s);
    QCOMPARE(objects[2]["reason"_L1].toString(), u"wanted_twice"_s);
    QVERIFY(!objects[2]["message"_L1].toString().isEmpty());
    QCOMPARE(run_fif(words).err, QByteArray());
}

QUILMO_LOGIC_TEST(TestCompanionConvert)
#include "test_companion_convert.moc"
