#include "companion_run.h"
#include "rights.h"

#include <QCoreApplication>
#include <QTest>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

using namespace Qt::StringLiterals;

namespace fs = std::filesystem;

namespace {

const QByteArray renamed = "(Ann)(Sea)(Rock).mp3";

/// A song that a conversion renames, and one whose tag it writes, too.
void write_songs(const MusicPlace& place)
{
    place.write("a.mp3", song("Ann", "Sea"));
    place.write("[Bob][Sky].mp3", song("Old", "Older"));
}

Told convert_with_tags(const MusicPlace& place)
{
    return run_fif(applied({"convert", "--type", "3", "--tags"}, place));
}

QByteArray content_of(const QByteArray& path)
{
    std::ifstream stream(fs::path(path.toStdString()), std::ios::binary);
    return QByteArray::fromStdString({std::istreambuf_iterator<char>(stream), {}});
}

void put(const QByteArray& path, const QByteArray& content)
{
    std::ofstream(fs::path(path.toStdString()), std::ios::binary) << content.toStdString();
}

mode_t mode_of(const QByteArray& path)
{
    struct stat status = {};
    return stat(path.constData(), &status) == 0 ? status.st_mode & ALLPERMS : 0;
}

} // namespace

class TestCompanionUndo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void names_and_bytes_come_back();
    void a_second_undo_changes_nothing();
    void what_has_changed_is_refused_data();
    void what_has_changed_is_refused();
    void the_rest_of_a_refused_undo_comes_back();
    void an_old_name_that_is_taken_stays_taken();
    void a_read_only_file_is_read_only_again();
    void a_hidden_read_only_file_is_left_alone();
    void a_file_with_two_names_comes_back();
    void what_the_run_could_not_do_needs_no_undo();
    void another_file_is_no_journal_data();
    void another_file_is_no_journal();
    void a_journal_in_use_is_left_alone();
    void a_journal_is_never_replaced();
    void a_journal_that_cannot_be_written_stops_all();
    void the_journal_is_private();
    void journals_of_one_second_have_names_of_their_own();
    void many_journals_one_after_the_other();
    void a_run_of_names_is_undone_after_one_of_tags();
    void a_file_and_its_link_come_back_in_one_run();
    void json_tells_all();
};

void TestCompanionUndo::names_and_bytes_come_back()
{
    const MusicPlace place;
    write_songs(place);
    place.write("sub/c.mp3", song("Cid", "Sun"));
    const auto before = place.content();
    QCOMPARE(convert_with_tags(place).status, 0);
    QVERIFY(place.content() != before);
    const Told told = undo(place);
    QCOMPARE(told.status, 0);
    QCOMPARE(place.content(), before);
    QCOMPARE(told.lines(), (QByteArrayList{"undone  " + place.path("sub/(Cid)(Sun)(Rock).mp3") + " -> c.mp3",
                                           "undone  " + place.path(renamed) + " -> a.mp3",
                                           "undone  " + place.path("(Bob)(Sky).mp3") + " -> [Bob][Sky].mp3"}));
    QCOMPARE(told.err, "quilmo-fif: 3 undone, 0 as they were before, 0 not possible\n"_ba);
}

void TestCompanionUndo::a_second_undo_changes_nothing()
{
    const MusicPlace place;
    write_songs(place);
    const auto before = place.content();
    convert_with_tags(place);
    undo(place);
    const Told told = undo(place);
    QCOMPARE(told.status, 0);
    QCOMPARE(told.lines(),
             (QByteArrayList{"keep    " + place.path("a.mp3"), "keep    " + place.path("[Bob][Sky].mp3")}));
    QCOMPARE(place.content(), before);
}

void TestCompanionUndo::what_has_changed_is_refused_data()
{
    QTest::addColumn<bool>("with_tags");
    QTest::addColumn<QByteArray>("what");
    QTest::addColumn<QByteArray>("reason");

    for (const bool with_tags : {false, true}) {
        const char* const how = with_tags ? "name and tag" : "name";
        QTest::addRow("%s: another tag", how) << with_tags << "tag"_ba
                                              << "has changed since"_ba;
        QTest::addRow("%s: another length", how) << with_tags << "length"_ba
                                                 << "has changed since"_ba;
        QTest::addRow("%s: renamed once more", how) << with_tags << "name"_ba
                                                    << "is gone"_ba;
        QTest::addRow("%s: another file at its place", how) << with_tags << "file"_ba
                                                            << "has changed since"_ba;
        QTest::addRow("%s: a folder at its place", how) << with_tags << "folder"_ba
                                                        << "has changed since"_ba;
    }
}

void TestCompanionUndo::what_has_changed_is_refused()
{
    QFETCH(bool, with_tags);
    QFETCH(QByteArray, what);
    QFETCH(QByteArray, reason);

    const MusicPlace place;
    place.write("a.mp3", song("An?n", "Sea"));
    QByteArrayList words{"convert", "--type", "3"};
    if (with_tags)
        words.append("--tags");
    QCOMPARE(run_fif(applied(words, place)).status, 0);
    const QByteArray content = place.read(renamed);
    const fs::path path = place.path(renamed).toStdString();
    if (what == "tag")
        place.write(renamed, content.chopped(128) + tag_with_blanks("Eve", "Moon", 3));
    if (what == "length")
        place.write(renamed, content + 'x');
    if (what == "name")
        fs::rename(path, place.path("b.mp3").toStdString());
    if (what == "file" || what == "folder")
        fs::remove(path);
    if (what == "file")
        place.write(renamed, QByteArray(content.size() + 1, 'x'));
    if (what == "folder")
        fs::create_directory(path);
    const auto before = place.content();
    const Told told = undo(place);
    QCOMPARE(told.status, 1);
    QCOMPARE(told.lines(), QByteArrayList{"cannot  " + place.path(renamed) + " -> a.mp3: " + reason});
    QCOMPARE(place.content(), before);
}

void TestCompanionUndo::the_rest_of_a_refused_undo_comes_back()
{
    const MusicPlace place;
    write_songs(place);
    convert_with_tags(place);
    place.write(renamed, "another");
    const Told told = undo(place);
    QCOMPARE(told.status, 1);
    QCOMPARE(place.content().keys(), (QByteArrayList{renamed, "[Bob][Sky].mp3"}));
    QCOMPARE(place.read("[Bob][Sky].mp3"), song("Old", "Older"));
}

void TestCompanionUndo::an_old_name_that_is_taken_stays_taken()
{
    const MusicPlace place;
    write_songs(place);
    convert_with_tags(place);
    place.write("a.mp3", "another");
    fs::create_symlink("nowhere", place.path("[Bob][Sky].mp3").toStdString());
    const auto before = place.content();
    const Told told = undo(place);
    QCOMPARE(told.status, 1);
    QVERIFY(told.lines()[0].endsWith(": another file has its old name by now"));
    QVERIFY(told.lines()[1].endsWith(": another file has its old name by now"));
    QCOMPARE(place.content(), before); // not even the tag
}

void TestCompanionUndo::a_read_only_file_is_read_only_again()
{
    const MusicPlace place;
    write_songs(place);
    chmod(place.path("[Bob][Sky].mp3").constData(), 0464);
    const auto before = place.content();
    QCOMPARE(convert_with_tags(place).status, 0);
    QCOMPARE(mode_of(place.path("(Bob)(Sky).mp3")), mode_t(0664));
    QCOMPARE(undo(place).status, 0);
    QCOMPARE(mode_of(place.path("[Bob][Sky].mp3")), mode_t(0464));
    QCOMPARE(place.content(), before);
}

void TestCompanionUndo::a_hidden_read_only_file_is_left_alone()
{
    const MusicPlace place;
    place.write(".a.mp3", song("Ann", "Sea"));
    chmod(place.path(".a.mp3").constData(), 0444);
    const auto before = place.content();
    const Told told = run_fif(applied({"tag", "--artist", "Bob"}, place));
    QCOMPARE(told.status, 1);
    QVERIFY(told.lines()[0].endsWith(": its tag cannot be written: Permission denied"));
    QCOMPARE(place.content(), before);
    QCOMPARE(mode_of(place.path(".a.mp3")), mode_t(0444));
    QCOMPARE(undo(place).status, 0);
}

void TestCompanionUndo::a_file_with_two_names_comes_back()
{
    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    fs::create_hard_link(place.path("a.mp3").toStdString(), place.path("b.mp3").toStdString());
    const auto before = place.content();
    const Told told = run_fif(applied({"tag", "--artist", "Bob"}, place));
    QCOMPARE(told.status, 0);
    QVERIFY(told.lines()[0].startsWith("tagged") && told.lines()[1].startsWith("tagged"));
    QVERIFY(place.content() != before);
    QCOMPARE(undo(place).status, 0);
    QCOMPARE(place.content(), before);
}

void TestCompanionUndo::what_the_run_could_not_do_needs_no_undo()
{
    const MusicPlace place;
    place.write("closed/a.mp3", song("Ann", "Sea"));
    place.write("open/b.mp3", song("Bob", "Sky"));
    const auto before = place.content();
    chmod(place.path("closed").constData(), 0500);
    Told told;
    {
        const BoundByRights bound;
        told = convert_with_tags(place);
    }
    chmod(place.path("closed").constData(), 0700);
    QCOMPARE(told.status, 1);
    QVERIFY(told.lines()[0].startsWith("failed"));
    QVERIFY(told.lines()[0].endsWith(": cannot be renamed: Permission denied"));
    QVERIFY(told.lines()[1].startsWith("renamed"));
    QCOMPARE(undo(place).status, 0);
    QCOMPARE(place.content(), before);
}

void TestCompanionUndo::another_file_is_no_journal_data()
{
    QTest::addColumn<QByteArray>("damage");
    QTest::addColumn<QByteArray>("error");

    const QByteArray cannot = "the journal cannot be read: ";
    QTest::newRow("none") << "missing"_ba << cannot + "No such file or directory";
    QTest::newRow("a folder") << "folder"_ba
                              << "no journal of quilmo-fif"_ba;
    QTest::newRow("an empty file") << "empty"_ba
                                   << "not whole: the run that wrote it changed no file"_ba;
    QTest::newRow("another file") << "other"_ba
                                  << "no journal of quilmo-fif"_ba;
    QTest::newRow("the head alone") << "head"_ba
                                    << "not whole: the run that wrote it changed no file"_ba;
    QTest::newRow("a part") << "part"_ba
                            << "not whole: the run that wrote it changed no file"_ba;
    QTest::newRow("a part of a line") << "cut"_ba
                                      << "not whole: the run that wrote it changed no file"_ba;
    const QByteArray damaged = "damaged: it is not as the run wrote it";
    QTest::newRow("a changed byte") << "byte"_ba << damaged;
    QTest::newRow("a line too few") << "line"_ba << damaged;
    QTest::newRow("another program's line behind it") << "behind"_ba << damaged;
    QTest::newRow("another program's line in a part") << "within"_ba << damaged;
    QTest::newRow("of another version") << "version"_ba
                                        << "the journal of another version of quilmo-fif, which alone can undo it"_ba;
}

void TestCompanionUndo::another_file_is_no_journal()
{
    QFETCH(QByteArray, damage);
    QFETCH(QByteArray, error);

    const MusicPlace place;
    write_songs(place);
    convert_with_tags(place);
    const auto before = place.content();
    const QByteArray journal = content_of(place.journal());
    const qsizetype head = journal.indexOf('\n') + 1;
    fs::remove(place.journal().toStdString());
    if (damage == "folder")
        fs::create_directory(place.journal().toStdString());
    if (damage == "empty")
        put(place.journal(), {});
    if (damage == "other")
        put(place.journal(), QByteArray("x").repeated(1000));
    if (damage == "head")
        put(place.journal(), journal.first(head));
    if (damage == "part")
        put(place.journal(), journal.first(journal.indexOf("end\t") + 20));
    if (damage == "cut")
        put(place.journal(), journal.first(head + 30));
    if (damage == "byte")
        put(place.journal(), QByteArray(journal).replace("a.mp3", "b.mp3"));
    if (damage == "line")
        put(place.journal(), QByteArray(journal).remove(head, journal.indexOf('\n', head) + 1 - head));
    if (damage == "behind")
        put(place.journal(), journal + "renamed  a.mp3\n");
    if (damage == "within")
        put(place.journal(), journal.first(journal.indexOf("end\t")) + "renamed  a.mp3\n");
    if (damage == "version")
        put(place.journal(), QByteArray(journal).replace(head - 2, 1, "1"));
    const Told told = undo(place);
    QCOMPARE(told.status, 1);
    QCOMPARE(told.err, "quilmo-fif: " + place.journal() + ": " + error + '\n');
    QCOMPARE(told.out, QByteArray());
    QCOMPARE(place.content(), before);
}

void TestCompanionUndo::a_journal_in_use_is_left_alone()
{
    const MusicPlace place;
    write_songs(place);
    convert_with_tags(place);
    const auto before = place.content();
    const int other = open(place.journal().constData(), O_RDONLY | O_CLOEXEC);
    QVERIFY(flock(other, LOCK_EX) == 0);
    const Told told = undo(place);
    QCOMPARE(told.status, 1);
    QVERIFY(told.err.endsWith(": another program works with this journal\n"));
    QCOMPARE(place.content(), before);
    close(other);
    QCOMPARE(undo(place).status, 0);
}

void TestCompanionUndo::a_journal_is_never_replaced()
{
    const MusicPlace place;
    write_songs(place);
    put(place.journal(), "precious");
    const auto before = place.content();
    const Told told = convert_with_tags(place);
    QCOMPARE(told.status, 1);
    QCOMPARE(told.err, "quilmo-fif: " + place.journal() + ": the journal cannot be made: File exists\n");
    QCOMPARE(content_of(place.journal()), "precious"_ba);
    QCOMPARE(place.content(), before);
}

void TestCompanionUndo::a_journal_that_cannot_be_written_stops_all()
{
    const MusicPlace place;
    write_songs(place);
    const auto before = place.content();
    const Told told = run_fif({"convert", "--apply", "--journal", place.path("no/such/folder"), place.root()});
    QCOMPARE(told.status, 1);
    QVERIFY(told.err.endsWith("the journal cannot be made: No such file or directory\n"));
    QCOMPARE(place.content(), before);
}

void TestCompanionUndo::the_journal_is_private()
{
    const mode_t mask = umask(0);
    const MusicPlace place;
    write_songs(place);
    QCOMPARE(run_fif({"convert", "--apply", place.root()}).status, 0);
    umask(mask);
    const QByteArray state = qgetenv("HOME") + "/.local/state";
    const QByteArray folder = state + "/quilmo";
    QCOMPARE(mode_of(folder), mode_t(0700));
    const fs::directory_iterator journal(folder.toStdString());
    QCOMPARE(mode_of(QByteArray::fromStdString(journal->path().string())), mode_t(0600));
    fs::remove_all(state.toStdString());
}

void TestCompanionUndo::journals_of_one_second_have_names_of_their_own()
{
    const MusicPlace place;
    const QByteArray state = place.path("state");
    qputenv("XDG_STATE_HOME", state);
    for (const char* const artist : {"A", "B", "C", "D"})
        QCOMPARE(run_fif({"convert", "--fix-artist", artist, "--apply", place.root()}).status, 0);
    QVERIFY(!place.exists("state")); // no file yet, so nothing to note
    place.write("a.mp3", song("Ann", "Sea"));
    QByteArrayList journals;
    for (const char* const artist : {"A", "B", "C", "D"}) {
        const Told told = run_fif({"convert", "--fix-artist", artist, "--apply", place.root()});
        const QByteArray first_line = told.err.first(told.err.indexOf('\n'));
        journals.append(first_line.sliced(QByteArray("quilmo-fif: journal: ").size()));
    }
    qunsetenv("XDG_STATE_HOME");
    QCOMPARE(QSet<QByteArray>(journals.begin(), journals.end()).size(), 4);
    for (qsizetype index = journals.size(); index > 0; --index) {
        QVERIFY(journals[index - 1].startsWith(state + "/quilmo/journal-"));
        QCOMPARE(run_fif({"undo", journals[index - 1]}).status, 0);
    }
    QVERIFY(place.exists("a.mp3"));
}

void TestCompanionUndo::many_journals_one_after_the_other()
{
    const MusicPlace place;
    write_songs(place);
    const auto before = place.content();
    QCOMPARE(convert_with_tags(place).status, 0);
    const auto between = place.content();
    const QByteArray second = place.path("second.journal");
    QCOMPARE(run_fif({"convert", "--type", "6", "--tags", "--apply", "--journal", second, place.root()}).status, 0);
    // The first one can't be undone before the second.
    QCOMPARE(undo(place).status, 1);
    QCOMPARE(run_fif({"undo", second}).status, 0);
    fs::remove(second.toStdString());
    QCOMPARE(place.content(), between);
    QCOMPARE(undo(place).status, 0);
    QCOMPARE(place.content(), before);
}

void TestCompanionUndo::a_run_of_names_is_undone_after_one_of_tags()
{
    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    const auto before = place.content();
    const auto time = fs::last_write_time(place.path("a.mp3").toStdString());
    QCOMPARE(run_fif(applied({"convert", "--type", "3"}, place)).status, 0);
    const QByteArray second = place.path("second.journal");
    QCOMPARE(run_fif({"tag", "--genre", "Jazz", "--apply", "--journal", second, place.root()}).status, 0);
    QCOMPARE(run_fif({"undo", second}).status, 0);
    fs::remove(second.toStdString());
    const Told told = undo(place);
    QCOMPARE(told.err, "quilmo-fif: 1 undone, 0 as they were before, 0 not possible\n"_ba);
    QCOMPARE(place.content(), before);
    QCOMPARE(fs::last_write_time(place.path("a.mp3").toStdString()), time);
}

void TestCompanionUndo::a_file_and_its_link_come_back_in_one_run()
{
    const MusicPlace place;
    const QByteArray file = place.path("[C][D][Pop].mp3");
    const QByteArray link = place.path("[E][F][Pop].mp3");
    place.write("[C][D][Pop].mp3", song("C", "D"));
    QCOMPARE(symlink("[C][D][Pop].mp3", link.constData()), 0);
    QCOMPARE(run_fif({"convert", "--type", "5", "--apply", "--journal", place.journal(), link, file}).status, 0);
    QVERIFY(place.exists("C-D-Pop.mp3"));
    QCOMPARE(undo(place).status, 0);
    QCOMPARE(place.content().keys(), (QByteArrayList{"[C][D][Pop].mp3", "[E][F][Pop].mp3"}));
}

void TestCompanionUndo::json_tells_all()
{
    const MusicPlace place;
    write_songs(place);
    convert_with_tags(place);
    place.write(renamed, "another");
    const Told told = run_fif({"undo", "--json", place.journal()});
    QCOMPARE(told.err, QByteArray());
    const QList<QJsonObject> objects = told.objects();
    QCOMPARE(objects[objects.size() - 1]["status"_L1].toString(), u"cannot"_s);
    QCOMPARE(objects[objects.size() - 1]["reason"_L1].toString(), u"changed"_s);
    QCOMPARE(objects[0]["status"_L1].toString(), u"undone"_s);
    QCOMPARE(objects[0]["path"_L1].toString(), QString::fromUtf8(place.path("(Bob)(Sky).mp3")));
    QCOMPARE(objects[0]["old_name"_L1].toString(), u"[Bob][Sky].mp3"_s);
}

QUILMO_LOGIC_TEST(TestCompanionUndo)
#include "test_companion_undo.moc"
