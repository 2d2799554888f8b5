#include "companion_run.h"

#include <QCoreApplication>
#include <QTest>

namespace {

constexpr int more_than_are_looked_at_at_once = 70;

/// Enough files in a folder that comes first for a run to have begun with changes before it comes to the next.
void write_beginning(const MusicPlace& place)
{
    for (int number = 0; number < more_than_are_looked_at_at_once; ++number)
        place.write("a/[Ann][Sea " + QByteArray::number(number) + "].mp3", song("Old", "Older"));
}

} // namespace

/// What a run itself has left on the disk is none of the music that it was told to do.
class TestCompanionTraces : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void its_journal_is_no_music_data();
    void its_journal_is_no_music();
    void a_file_that_has_its_new_name_is_not_done_again_data();
    void a_file_that_has_its_new_name_is_not_done_again();
};

void TestCompanionTraces::its_journal_is_no_music_data()
{
    QTest::addColumn<QByteArrayList>("words");
    QTest::addColumn<QByteArray>("journal");

    const QByteArrayList conversion{"convert", "--type", "6", "--tags"};
    QTest::newRow("a FIF name in a conversion") << conversion << QByteArray("b/[Own][Journal].mp3");
    QTest::newRow("another name in a conversion") << conversion << QByteArray("b/journal.mp3");
    QTest::newRow("tags") << QByteArrayList{"tag", "--year", "2001"} << QByteArray("b/journal.mp3");
}

void TestCompanionTraces::its_journal_is_no_music()
{
    QFETCH(QByteArrayList, words);
    QFETCH(QByteArray, journal);

    const MusicPlace place;
    write_beginning(place);
    place.write("b/[Bob][Sky].mp3", song("Old", "Older"));
    place.write("c/" + journal.sliced(2), song("Cid", "Sun")); // another file of that name
    const auto before = place.content();
    const QByteArray path = place.path(journal);
    const Told told = run_fif(words + QByteArrayList{"--apply", "--journal", path, place.root()}, {}, 0);
    QCOMPARE(told.status, 0);
    QCOMPARE(told.lines().size(), before.size());
    QVERIFY(!told.out.contains(path));
    QVERIFY(told.out.contains(place.path("c/" + journal.sliced(2))));
    QVERIFY(place.read(journal).startsWith("quilmo-fif journal "));
    QCOMPARE(run_fif({"undo", path}).status, 0);
    auto after = place.content();
    after.remove(journal);
    QCOMPARE(after, before);
}

void TestCompanionTraces::a_file_that_has_its_new_name_is_not_done_again_data()
{
    QTest::addColumn<QByteArrayList>("again");

    QTest::newRow("named twice") << QByteArrayList{"b/x.mp3"};
    QTest::newRow("named twice in two ways") << QByteArrayList{"b/../b/x.mp3"};
    QTest::newRow("named by its new name") << QByteArrayList{"b/Bob-Sky.mp3"};
    QTest::newRow("its folder") << QByteArrayList{"b"};
    QTest::newRow("all of it") << QByteArrayList{"b/x.mp3", "b/Bob-Sky.mp3", "b"};
}

void TestCompanionTraces::a_file_that_has_its_new_name_is_not_done_again()
{
    QFETCH(QByteArrayList, again);

    const MusicPlace place;
    write_beginning(place);
    place.write("b/x.mp3", song("Bob", "Sky"));
    QByteArrayList words{"convert",      "--type", "6", "--tags", "--apply", "--no-journal", place.path("b/x.mp3"),
                         place.path("a")};
    for (const QByteArray& name : again)
        words.append(place.path(name));
    const Told told = run_fif(words, {}, 0);
    QCOMPARE(told.err, QByteArray("quilmo-fif: 71 files: 71 changed, 0 kept, 0 not possible\n"));
    QCOMPARE(told.status, 0);
    QCOMPARE(told.lines().size(), more_than_are_looked_at_at_once + 1);
    QVERIFY(place.exists("b/Bob-Sky.mp3"));
}

QUILMO_LOGIC_TEST(TestCompanionTraces)
#include "test_companion_traces.moc"
