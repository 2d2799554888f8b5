#include "companion_run.h"
#include "kills.h"

#include <QCoreApplication>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int rounds = 60;

/// Songs of which a conversion renames some, tags some and does both to the others; one is read-only.
void write_songs(const MusicPlace& place)
{
    for (const QByteArray number : {"1", "2", "3", "4"}) {
        place.write("a/song " + number + ".mp3", song("Artist " + number, "Title?" + number));
        place.write("b/[Artist][" + number + "].mp3", song("Old", "Older " + number));
    }
    chmod(place.path("b/[Artist][1].mp3").constData(), 0444);
}

/// Songs with two names each, of which a conversion tags the first and renames the second.
void write_songs_with_two_names(const MusicPlace& place)
{
    for (const QByteArray number : {"1", "2", "3"}) {
        const QByteArray first = "b/[Artist][" + number + "].mp3";
        place.write(first, song("Old", "Older " + number));
        const QByteArray second = place.path("b/song " + number + ".mp3");
        QVERIFY(link(place.path(first).constData(), second.constData()) == 0);
    }
}

void write_songs(const MusicPlace& place, bool have_two_names)
{
    if (have_two_names)
        write_songs_with_two_names(place);
    else
        write_songs(place);
}

QByteArrayList conversion(const MusicPlace& place, bool have_two_names)
{
    return applied(have_two_names ? QByteArrayList{"convert", "--tags"}
                                  : QByteArrayList{"convert", "--type", "4", "--tags"},
                   place);
}

/// Whether each file is there, as it was before or as it is to be after.
bool is_between(const MusicPlace& place, const QMap<QByteArray, QByteArray>& before,
                const QMap<QByteArray, QByteArray>& after)
{
    const auto content = place.content();
    if (content.size() != before.size())
        return false;
    for (auto file = content.begin(); file != content.end(); ++file) {
        const QByteArray sound = file.value().chopped(128);
        const bool was_there = before.contains(file.key()) && before[file.key()].chopped(128) == sound;
        const bool will_be_there = after.contains(file.key()) && after[file.key()].chopped(128) == sound;
        if (!was_there && !will_be_there)
            return false;
    }
    return true;
}

} // namespace

/// Runs that are killed, as by kill -9, and taken back.
class TestCompanionKills : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void a_killed_conversion_can_be_undone_data();
    void a_killed_conversion_can_be_undone();
    void a_killed_undo_can_be_run_again();
};

void TestCompanionKills::a_killed_conversion_can_be_undone_data()
{
    QTest::addColumn<bool>("have_two_names");
    QTest::newRow("files with one name each") << false;
    QTest::newRow("files with two names each") << true;
}

void TestCompanionKills::a_killed_conversion_can_be_undone()
{
    QFETCH(bool, have_two_names);

    ChildRun whole;
    QMap<QByteArray, QByteArray> after;
    {
        const MusicPlace place;
        write_songs(place, have_two_names);
        whole = run_in_child(folders_of(place), {}, [&] { run_fif(conversion(place, have_two_names)); });
        QVERIFY(!whole.was_killed && whole.calls > 0);
        after = place.content();
    }
    int undone = 0;
    for (int round = 0; round < rounds; ++round) {
        const MusicPlace place;
        write_songs(place, have_two_names);
        const auto before = place.content();
        const Stroke stroke = stroke_within(whole, round);
        run_in_child(folders_of(place), stroke, [&] { run_fif(conversion(place, have_two_names)); });
        QVERIFY2(is_between(place, before, after), stroke.text().constData());
        const bool has_changed = place.content() != before;
        const Told told = undo(place);
        QVERIFY2(place.content() == before, stroke.text().constData());
        QVERIFY2(told.status == 0 || !has_changed, stroke.text().constData());
        undone += has_changed ? 1 : 0;
        if (have_two_names)
            continue;
        struct stat status = {};
        QVERIFY(stat(place.path("b/[Artist][1].mp3").constData(), &status) == 0);
        QVERIFY2((status.st_mode & ALLPERMS) == 0444, stroke.text().constData());
    }
    QVERIFY(undone > 0);
}

void TestCompanionKills::a_killed_undo_can_be_run_again()
{
    ChildRun whole;
    for (int round = -1; round < rounds; ++round) {
        const MusicPlace place;
        write_songs(place, false);
        const auto before = place.content();
        QCOMPARE(run_fif(conversion(place, false)).status, 0);
        const auto after = place.content();
        const Stroke stroke = round < 0 ? Stroke() : stroke_within(whole, round);
        const ChildRun run = run_in_child(folders_of(place), stroke, [&] { undo(place); });
        if (round < 0)
            whole = run;
        QVERIFY2(is_between(place, before, after), stroke.text().constData());
        QVERIFY2(undo(place).status == 0, stroke.text().constData());
        QVERIFY2(place.content() == before, stroke.text().constData());
    }
}

QUILMO_LOGIC_TEST(TestCompanionKills)
#include "test_companion_kills.moc"
