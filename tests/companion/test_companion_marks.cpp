#include "companion_run.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <ctime>
#include <filesystem>
#include <fstream>

using namespace Qt::StringLiterals;

namespace fs = std::filesystem;

namespace {

constexpr qsizetype tag_bytes = 128;
constexpr qsizetype cut = 48; ///< bytes of the tag before the end of a sector

const QByteArray old_name = "[Bob][Sky].mp3";
const QByteArray new_name = "(Bob)(Sky).mp3";

/// Sound and a tag whose artist and title are others than those of its name.
QByteArray content()
{
    constexpr qsizetype sector = 512;
    const QByteArray music = song("Old", "Older");
    return QByteArray(2 * sector - (music.size() - tag_bytes + cut) % sector, 'x') + music;
}

QByteArray text_of(const QByteArray& path)
{
    std::ifstream stream(fs::path(path.toStdString()), std::ios::binary);
    return QByteArray::fromStdString({std::istreambuf_iterator<char>(stream), {}});
}

/// Writes over a file, which stays the same one.
void put(const QByteArray& path, const QByteArray& content)
{
    std::ofstream stream(fs::path(path.toStdString()), std::ios::binary | std::ios::in);
    stream.write(content.constData(), content.size());
}

struct stat status_at(const QByteArray& path)
{
    struct stat status = {};
    stat(path.constData(), &status);
    return status;
}

qint64 time_at(const QByteArray& path)
{
    const struct stat status = status_at(path);
    return status.st_mtim.tv_sec * 1'000'000'000 + status.st_mtim.tv_nsec;
}

void set_time(const QByteArray& path, qint64 nanoseconds)
{
    const std::array<timespec, 2> times{
        timespec{.tv_sec = 0, .tv_nsec = UTIME_OMIT},
        timespec{.tv_sec = nanoseconds / 1'000'000'000, .tv_nsec = nanoseconds % 1'000'000'000}};
    utimensat(AT_FDCWD, path.constData(), times.data(), 0);
}

/// A time long ago that no clock of a program gives.
constexpr qint64 time_before = 1'000'000'000'123'456'789;

void convert(const MusicPlace& place)
{
    QCOMPARE(run_fif(applied({"convert", "--type", "4", "--tags"}, place)).status, 0);
}

const QByteArray none_in_doubt = "\ndoubt\t0000000000000000000\n";

/// Makes the journal that of a run that was killed amid a change, counted from 1.
void leave_in_doubt(const MusicPlace& place, int number)
{
    const QByteArray journal = text_of(place.journal());
    QVERIFY(journal.endsWith(none_in_doubt));
    put(place.journal(), journal.chopped(2) + QByteArray::number(number) + '\n');
}

} // namespace

/// By what an undo knows a file whose tag was written, and tells that another program has changed it since.
class TestCompanionMarks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void a_file_is_known_data();
    void a_file_is_known();
    void another_file_in_its_place_is_refused_data();
    void another_file_in_its_place_is_refused();
    void the_time_that_is_given_is_a_whole_even_second();
    void a_run_without_journal_gives_no_time();
    void the_run_was_killed_amid_one_file_only();
    void a_later_run_is_not_the_one_that_was_killed();
    void what_an_undo_refuses_stays_refused();
    void the_lines_of_what_is_in_doubt_may_be_many_or_cut_off();
    void a_file_of_somebody_else_has_no_time_to_know_it_by();
    void names_of_one_file_come_back_in_one_run_data();
    void names_of_one_file_come_back_in_one_run();
};

void TestCompanionMarks::a_file_is_known_data()
{
    QTest::addColumn<QByteArray>("block");
    QTest::addColumn<QByteArray>("time");
    QTest::addColumn<bool>("killed");
    QTest::addColumn<bool>("is_known");
    QTest::addColumn<bool>("gets_time");

    const auto row = [](const char* name, const QByteArray& block, const QByteArray& time, bool killed, bool is_known,
                        bool gets_time) { QTest::newRow(name) << block << time << killed << is_known << gets_time; };
    row("as the run left it", "after", "after", false, true, true);
    row("written, but not its time", "after", "before", false, true, true);
    row("its time, but not written", "before", "after", false, true, true);
    row("renamed alone", "before", "before", false, true, true);
    row("cut off at the end of a sector", "cut", "after", false, true, true);
    row("taken back up to the end of a sector", "taken back", "before", false, true, true);
    row("changed by another program", "after", "other", false, false, false);
    row("taken back by another program", "before", "other", false, false, false);
    row("cut off by another program", "cut", "other", false, false, false);
    row("the artist put back by another program", "artist", "other", false, false, false);
    row("the artist put back by one that keeps times", "artist", "after", false, false, false);
    row("the title put back by one that keeps times", "title", "after", false, false, false);
    row("taken back by hand, with its old name", "back", "other", false, true, false);
    row("killed before its time was given", "after", "other", true, true, false);
    row("killed in the middle of a write", "cut", "other", true, true, false);
    row("killed in the middle of an undo", "taken back", "other", true, true, false);
    row("killed after an undo had written", "before", "other", true, true, false);
    row("killed, and the artist put back", "artist", "other", true, false, false);
    row("killed, and the title put back", "title", "other", true, false, false);
}

void TestCompanionMarks::a_file_is_known()
{
    QFETCH(QByteArray, block);
    QFETCH(QByteArray, time);
    QFETCH(bool, killed);
    QFETCH(bool, is_known);
    QFETCH(bool, gets_time);

    const MusicPlace place;
    place.write(old_name, content());
    set_time(place.path(old_name), time_before);
    convert(place);
    if (killed)
        leave_in_doubt(place, 1);
    QByteArray path = place.path(new_name);
    const qint64 time_after = time_at(path);
    const QByteArray before = content().right(tag_bytes);
    const QByteArray after = place.read(new_name).right(tag_bytes);
    QMap<QByteArray, QByteArray> blocks{{"before", before}, {"after", after}};
    blocks["cut"] = after.first(cut) + before.sliced(cut);
    blocks["taken back"] = before.first(cut) + after.sliced(cut);
    blocks["title"] = after.first(3) + before.sliced(3, 30) + after.sliced(33);
    blocks["artist"] = after.first(33) + before.sliced(33, 30) + after.sliced(63);
    for (auto one = blocks.begin(); one != blocks.end(); ++one)
        QCOMPARE(blocks.keys(one.value()).size(), 1);
    if (block == "back")
        fs::rename(path.toStdString(), place.path(old_name).toStdString());
    blocks["back"] = before;
    path = place.path(block == "back" ? old_name : new_name);
    put(path, content().chopped(tag_bytes) + blocks[block]);
    if (time != "other")
        set_time(path, time == "after" ? time_after : time_before);
    const qint64 time_then = time_at(path);
    const auto content_then = place.content();

    const Told told = undo(place);
    QCOMPARE(told.status, is_known ? 0 : 1);
    if (is_known)
        QCOMPARE(place.content(), (QMap<QByteArray, QByteArray>{{old_name, content()}}));
    else
        QCOMPARE(place.content(), content_then);
    const qint64 time_now = time_at(place.path(is_known ? old_name : new_name));
    if (gets_time)
        QCOMPARE(time_now, time_before);
    else // what another program may have changed is not hidden
        QVERIFY(time_now >= time_then);
}

void TestCompanionMarks::another_file_in_its_place_is_refused_data()
{
    QTest::addColumn<QByteArray>("what");
    QTest::addColumn<bool>("killed");
    QTest::newRow("other sound, written into it") << "sound"_ba << false;
    QTest::newRow("another file of its size with its tag") << "file"_ba << false;
    QTest::newRow("another file of its size with its tag, after a kill") << "file"_ba << true;
    QTest::newRow("another file of its size with its old tag") << "old"_ba << false;
}

void TestCompanionMarks::another_file_in_its_place_is_refused()
{
    QFETCH(QByteArray, what);
    QFETCH(bool, killed);

    const MusicPlace place;
    place.write(old_name, content());
    convert(place);
    if (killed)
        leave_in_doubt(place, 1);
    const QByteArray tag = (what == "old" ? content() : place.read(new_name)).right(tag_bytes);
    const QByteArray other = QByteArray(content().size() - tag_bytes, 'y') + tag;
    if (what == "sound") {
        put(place.path(new_name), other);
    } else {
        place.write("other", other);
        fs::rename(place.path("other").toStdString(), place.path(new_name).toStdString());
    }
    const auto before = place.content();
    const qint64 time = time_at(place.path(new_name));
    const Told told = undo(place);
    QCOMPARE(told.status, 1);
    QVERIFY(told.lines()[0].endsWith(": has changed since"));
    QCOMPARE(place.content(), before);
    QCOMPARE(time_at(place.path(new_name)), time);
}

void TestCompanionMarks::the_time_that_is_given_is_a_whole_even_second()
{
    const MusicPlace place;
    place.write(old_name, content());
    set_time(place.path(old_name), time_before);
    const qint64 begin = std::time(nullptr);
    convert(place);
    const qint64 time = time_at(place.path(new_name));
    QCOMPARE(time % 2'000'000'000, 0);
    QVERIFY(time / 1'000'000'000 > begin);
    QVERIFY(time / 1'000'000'000 <= std::time(nullptr) + 2);
}

void TestCompanionMarks::a_run_without_journal_gives_no_time()
{
    for (const QByteArrayList& words :
         {QByteArrayList{"convert", "--type", "4", "--tags"}, {"tag", "--year", "2001"}}) {
        const MusicPlace place;
        place.write(old_name, content());
        set_time(place.path(old_name), time_before);
        const qint64 begin = std::time(nullptr);
        QCOMPARE(run_fif(words + QByteArrayList{"--apply", "--no-journal", place.root()}).status, 0);
        const qint64 time = time_at(place.path(place.exists(new_name) ? new_name : old_name));
        QVERIFY(time / 1'000'000'000 >= begin && time / 1'000'000'000 <= std::time(nullptr));
    }
}

/// The last one that it began.
void TestCompanionMarks::the_run_was_killed_amid_one_file_only()
{
    const MusicPlace place;
    const QByteArrayList names{"[A][1].mp3", "[A][2].mp3", "[A][3].mp3"};
    for (const QByteArray& name : names)
        place.write(name, content());
    convert(place);
    leave_in_doubt(place, 2);
    // The third was not begun, the second not given its time, and the first changed by another program.
    fs::rename(place.path("(A)(3).mp3").toStdString(), place.path("[A][3].mp3").toStdString());
    const auto time = time_at(place.path("(A)(2).mp3"));
    place.write("[A][3].mp3", content());
    const QByteArrayList fields = text_of(place.journal()).split('\n')[3].split('\t');
    set_time(place.path("[A][3].mp3"), fields[1].toLongLong());
    set_time(place.path("(A)(2).mp3"), time + 1);
    set_time(place.path("(A)(1).mp3"), time + 1);
    const Told told = undo(place);
    QCOMPARE(
        told.lines(),
        (QByteArrayList{"keep    " + place.path("[A][3].mp3"), "undone  " + place.path("(A)(2).mp3") + " -> [A][2].mp3",
                        "cannot  " + place.path("(A)(1).mp3") + " -> [A][1].mp3: has changed since"}));
}

void TestCompanionMarks::a_later_run_is_not_the_one_that_was_killed()
{
    const MusicPlace place;
    place.write(old_name, content());
    convert(place);
    leave_in_doubt(place, 1);
    // The same tag, with the time that a run gives.
    set_time(place.path(new_name), time_at(place.path(new_name)) + 2'000'000'000);
    QCOMPARE(undo(place).status, 1);
    QVERIFY(place.exists(new_name));
}

void TestCompanionMarks::what_an_undo_refuses_stays_refused()
{
    const MusicPlace place;
    const QByteArrayList names{"[A][1].mp3", "[A][2].mp3", "[A][3].mp3"};
    for (const QByteArray& name : names)
        place.write(name, content());
    convert(place);
    for (const char* const name : {"(A)(2).mp3", "(A)(3).mp3"})
        set_time(place.path(name), time_at(place.path(name)) + 1);
    const QByteArray journal = text_of(place.journal());
    for ([[maybe_unused]] const int run : {1, 2, 3}) {
        const Told told = undo(place);
        QCOMPARE(told.status, 1);
        QCOMPARE(told.out.count(": has changed since"), 2);
        QCOMPARE(place.content().keys(), (QByteArrayList{"(A)(2).mp3", "(A)(3).mp3", "[A][1].mp3"}));
        QCOMPARE(text_of(place.journal()), journal);
    }
}

void TestCompanionMarks::the_lines_of_what_is_in_doubt_may_be_many_or_cut_off()
{
    const MusicPlace place;
    const QByteArrayList names{"[A][1].mp3", "[A][2].mp3", "[A][3].mp3"};
    for (const QByteArray& name : names)
        place.write(name, content());
    convert(place);
    for (const char* const name : {"(A)(1).mp3", "(A)(2).mp3", "(A)(3).mp3"})
        set_time(place.path(name), time_at(place.path(name)) + 1);
    leave_in_doubt(place, 1);
    put(place.journal(), text_of(place.journal()) + "doubt\t0000000000000000003\ndoubt\t00");
    QCOMPARE(undo(place).status, 1);
    QCOMPARE(place.content().keys(), (QByteArrayList{"(A)(2).mp3", "[A][1].mp3", "[A][3].mp3"}));
    put(place.journal(), text_of(place.journal()) + "x");
    QVERIFY(undo(place).err.contains("damaged"));
}

void TestCompanionMarks::a_file_of_somebody_else_has_no_time_to_know_it_by()
{
    if (geteuid() != 0)
        QSKIP("only an administrator makes files of somebody else");
    const MusicPlace place;
    place.write(old_name, content());
    chmod(place.root().constData(), 0777);
    chmod(place.path(old_name).constData(), 0666);
    constexpr uid_t somebody = 65534;
    const auto run = [&](const QByteArrayList& words) {
        QProcess process;
        process.setChildProcessModifier([] {
            if (setresuid(somebody, somebody, somebody) != 0)
                _exit(1);
        });
        QStringList arguments;
        for (const QByteArray& word : words)
            arguments.append(QString::fromUtf8(word));
        process.start(QStringLiteral(QUILMO_FIF), arguments);
        return process.waitForFinished() ? process.exitCode() : -1;
    };
    QCOMPARE(run(applied({"convert", "--type", "4", "--tags"}, place)), 0);
    QVERIFY(place.exists(new_name));
    const QByteArrayList fields = text_of(place.journal()).split('\n')[1].split('\t');
    QCOMPARE(fields[9], "-"_ba);
    const qint64 time = time_at(place.path(new_name));
    QCOMPARE(run({"undo", place.journal()}), 0);
    QCOMPARE(place.content(), (QMap<QByteArray, QByteArray>{{old_name, content()}}));
    QVERIFY(time_at(place.path(old_name)) >= time);
}

void TestCompanionMarks::names_of_one_file_come_back_in_one_run_data()
{
    QTest::addColumn<QByteArrayList>("names");

    QTest::newRow("tagged, then renamed") << QByteArrayList{"[Bob][Sky].mp3", "song.mp3"};
    QTest::newRow("renamed, then tagged") << QByteArrayList{"a.mp3", "[Bob][Sky].mp3"};
    QTest::newRow("two tags") << QByteArrayList{"[Ann][Sea].mp3", "[Bob][Sky].mp3"};
    QTest::newRow("three tags and a name") << QByteArrayList{"[A][1].mp3", "[B][2].mp3", "[C][3].mp3", "song.mp3"};
}

void TestCompanionMarks::names_of_one_file_come_back_in_one_run()
{
    QFETCH(QByteArrayList, names);

    const MusicPlace place;
    place.write(names.first(), content());
    for (const QByteArray& name : names.sliced(1))
        fs::create_hard_link(place.path(names.first()).toStdString(), place.path(name).toStdString());
    const auto before = place.content();
    for (const QByteArrayList& how : {QByteArrayList{}, {"--type", "4"}}) {
        run_fif(applied(QByteArrayList{"convert", "--tags"} + how, place));
        QVERIFY(place.content() != before);
        const Told told = undo(place);
        QCOMPARE(told.status, 0);
        QCOMPARE(told.lines().size(), names.size());
        QCOMPARE(place.content(), before);
        fs::remove(place.journal().toStdString());
    }
}

QUILMO_LOGIC_TEST(TestCompanionMarks)
#include "test_companion_marks.moc"
