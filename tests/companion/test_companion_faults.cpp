#include "companion_run.h"
#include "faulty_disk.h"

#include <QCoreApplication>
#include <QScopeGuard>
#include <QTest>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>

namespace {

constexpr qsizetype tag_bytes = 128;
constexpr int more_calls_than_a_run_makes = 300;

/// The end of a sector lies in the middle of the tags, where a transfer of half their bytes stops.
void write_songs(const MusicPlace& place)
{
    constexpr qsizetype sector = 512;
    const auto padding = [&](const QByteArray& content) {
        return QByteArray(2 * sector - (content.size() - tag_bytes / 2) % sector, 'x');
    };
    const QByteArray first = song("Ann", "Sea?");
    const QByteArray second = song("Old", "Older");
    place.write("a.mp3", padding(first) + first);
    place.write("sub/[Bob][Sky][Jazz].mp3", padding(second) + second);
}

QByteArrayList conversion(const MusicPlace& place)
{
    return applied({"convert", "--type", "4", "--tags"}, place);
}

/// All faults, also those that come in the middle of a transfer: on a disk that is full, and on one that is gone, where
/// a tag that was half written can't be put back.
QList<DiskFault> all_faults()
{
    QList<DiskFault> faults(disk_faults().begin(), disk_faults().end());
    faults.append({.name = "full in the middle", .error = ENOSPC, .halves_first = true});
    faults.append({.name = "gone in the middle", .error = EIO, .lasts = true, .halves_first = true});
    return faults;
}

/// Whether a run said what the system says of a fault.
bool tells(const Told& told, const DiskFault& fault)
{
    return (told.out + told.err).contains(std::strerror(fault.error));
}

/// Whether each file holds what one held before or after.
bool are_whole(const QMap<QByteArray, QByteArray>& content, const QMap<QByteArray, QByteArray>& before,
               const QMap<QByteArray, QByteArray>& after)
{
    const QByteArrayList known = before.values() + after.values();
    return std::ranges::all_of(content, [&](const QByteArray& file) { return known.contains(file); });
}

/// What lies on a disk that fails.
QByteArrayList disk_of(const MusicPlace& place, bool with_journal)
{
    return with_journal ? folders_of(place) : QByteArrayList{place.root()};
}

/// Writes other sound into a file, as another program does; its tag stays.
void change_sound(const MusicPlace& place, const QByteArray& name)
{
    std::fstream stream(place.path(name).toStdString(), std::ios::binary | std::ios::in | std::ios::out);
    stream.put('y');
}

QByteArray changed_song()
{
    return song("Old", "Older").replace(0, 1, "y");
}

/// A fault in the report of a failing test.
QByteArray text_of(const DiskFault& fault, int nth, const QByteArray& call)
{
    return QByteArray(fault.name) + ", call " + QByteArray::number(nth) + ": " + call;
}

} // namespace

/// Each call of the disk fails once, in each of the ways in which it can.
class TestCompanionFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void a_conversion_can_be_undone_data();
    void a_conversion_can_be_undone();
    void an_undo_can_be_run_again_data() { a_conversion_can_be_undone_data(); }
    void an_undo_can_be_run_again();
    void a_preview_and_a_check_change_nothing();
    void the_journal_is_on_the_disk_before_the_first_change();
    void the_name_of_a_journal_is_taken_meanwhile();
    void what_changes_meanwhile_gets_no_tag();
    void what_changes_meanwhile_gets_no_tag_back();
};

void TestCompanionFaults::a_conversion_can_be_undone_data()
{
    QTest::addColumn<bool>("with_journal");
    QTest::newRow("music and journal on one disk") << true;
    QTest::newRow("the journal on another disk") << false;
}

void TestCompanionFaults::a_conversion_can_be_undone()
{
    QFETCH(bool, with_journal);

    QMap<QByteArray, QByteArray> after;
    for (const DiskFault& fault : all_faults()) {
        QByteArray call = "first";
        for (int nth = 1; !call.isEmpty(); ++nth) {
            const MusicPlace place;
            write_songs(place);
            const auto before = place.content();
            Told told;
            call = with_fault(disk_of(place, with_journal), nth, fault, [&] { told = run_fif(conversion(place)); });
            const QByteArray where = text_of(fault, nth, call);
            if (after.isEmpty()) { // the way it goes without a fault
                const MusicPlace whole;
                write_songs(whole);
                QCOMPARE(run_fif(conversion(whole)).status, 0);
                after = whole.content();
            }
            const auto content = place.content();
            QVERIFY2(content.size() == before.size(), where.constData());
            QVERIFY2(fault.lasts || are_whole(content, before, after), where.constData());
            QVERIFY2(told.status == 1 || content == after, where.constData());
            QVERIFY2(told.status == 0 || tells(told, fault), where.constData());
            if (content != before)
                QVERIFY2(undo(place).status == 0, where.constData());
            QVERIFY2(place.content() == before, where.constData());
            QVERIFY2(nth < more_calls_than_a_run_makes, where.constData());
        }
    }
}

void TestCompanionFaults::an_undo_can_be_run_again()
{
    QFETCH(bool, with_journal);

    for (const DiskFault& fault : all_faults()) {
        QByteArray call = "first";
        for (int nth = 1; !call.isEmpty(); ++nth) {
            const MusicPlace place;
            write_songs(place);
            const auto before = place.content();
            QCOMPARE(run_fif(conversion(place)).status, 0);
            Told told;
            call = with_fault(disk_of(place, with_journal), nth, fault, [&] { told = undo(place); });
            const QByteArray where = text_of(fault, nth, call);
            QVERIFY2(told.status == 1 || place.content() == before, where.constData());
            QVERIFY2(told.status == 0 || tells(told, fault), where.constData());
            QVERIFY2(undo(place).status == 0, where.constData());
            QVERIFY2(place.content() == before, where.constData());
            QVERIFY2(nth < more_calls_than_a_run_makes, where.constData());
        }
    }
}

void TestCompanionFaults::a_preview_and_a_check_change_nothing()
{
    const MusicPlace place;
    write_songs(place);
    const auto before = place.content();
    for (const QByteArrayList& words : {QByteArrayList{"convert", "--type", "4", "--tags", place.root()},
                                        {"check", place.root()},
                                        {"info", place.root()},
                                        {"tag", "--year", "2001", place.root()}}) {
        for (const DiskFault& fault : disk_faults()) {
            QByteArray call = "first";
            for (int nth = 1; !call.isEmpty() && nth < more_calls_than_a_run_makes; ++nth)
                call = with_fault({place.root()}, nth, fault, [&] { run_fif(words); });
            QVERIFY(call.isEmpty());
            QCOMPARE(place.content(), before);
        }
    }
}

void TestCompanionFaults::the_journal_is_on_the_disk_before_the_first_change()
{
    const MusicPlace place;
    write_songs(place);
    QByteArrayList calls;
    const QByteArray folder = place.journal().first(place.journal().lastIndexOf('/'));
    watch_disk(
        {folder}, [&](const QByteArray& call, const QByteArray& native) { calls.append(call + ' ' + native); },
        [&] { run_fif(conversion(place)); });
    const auto is_change = [&](const QByteArray& call) {
        return (call.startsWith("rename") || call.startsWith("pwrite") || call.startsWith("chmod") ||
                call.startsWith("futimens")) &&
               call.contains(place.root() + '/');
    };
    const auto first_change = std::ranges::find_if(calls, is_change) - calls.begin();
    QVERIFY(first_change < calls.size());
    const qsizetype synced = calls.indexOf("fsync " + place.journal());
    const qsizetype folder_synced = calls.indexOf("fsync " + folder);
    const qsizetype written = calls.indexOf("write " + place.journal());
    QVERIFY(written >= 0 && written < synced);
    QVERIFY(synced < folder_synced);
    QVERIFY(folder_synced < first_change);
    QVERIFY(calls.lastIndexOf("write " + place.journal()) < synced);
    // What is being made is noted, and at the end that nothing is.
    const QByteArray note = "pwrite " + place.journal();
    const auto is_tag = [&](const QByteArray& call) { return call.startsWith("pwrite " + place.root() + '/'); };
    QVERIFY(calls.indexOf(note) > synced);
    QVERIFY(calls.indexOf(note) < std::ranges::find_if(calls, is_tag) - calls.begin());
    QVERIFY(std::find_if(calls.begin() + calls.lastIndexOf(note), calls.end(), is_change) == calls.end());
}

/// By another run of the same second.
void TestCompanionFaults::the_name_of_a_journal_is_taken_meanwhile()
{
    const MusicPlace place;
    write_songs(place);
    qputenv("XDG_STATE_HOME", place.path("state"));
    const auto clean = qScopeGuard([] { qunsetenv("XDG_STATE_HOME"); });
    QByteArrayList taken;
    const auto take = [&](const QByteArray& call, const QByteArray& native) {
        if (call != "open" || !native.contains("/quilmo/journal-") || taken.size() == 3)
            return;
        taken.append(native);
        place.write(native.sliced(place.root().size() + 1), "precious");
    };
    Told told;
    watch_disk({place.root()}, take, [&] { told = run_fif({"convert", "--type", "4", "--apply", place.root()}); });
    QCOMPARE(told.status, 0);
    QCOMPARE(taken, (QByteArrayList{taken[0], taken[0] + "-2", taken[0] + "-3"}));
    QVERIFY(told.err.startsWith("quilmo-fif: journal: " + taken[0] + "-4\n"));
    for (const QByteArray& path : taken)
        QCOMPARE(place.read(path.sliced(place.root().size() + 1)), QByteArray("precious"));
    QCOMPARE(run_fif({"undo", taken[0] + "-4"}).status, 0);
}

void TestCompanionFaults::what_changes_meanwhile_gets_no_tag()
{
    const MusicPlace place;
    place.write("[Bob][Sky].mp3", song("Old", "Older"));
    const auto change_once_noted = [&](const QByteArray& call, const QByteArray&) {
        if (call == "fsync")
            change_sound(place, "[Bob][Sky].mp3");
    };
    Told told;
    watch_disk({place.journal()}, change_once_noted, [&] { told = run_fif(conversion(place)); });
    QCOMPARE(told.status, 1);
    QVERIFY(told.out.contains(": renamed, but its tag is left alone: it has changed meanwhile\n"));
    QCOMPARE(place.content(), (QMap<QByteArray, QByteArray>{{"(Bob)(Sky).mp3", changed_song()}}));
    QCOMPARE(undo(place).status, 1);
    QCOMPARE(place.content(), (QMap<QByteArray, QByteArray>{{"(Bob)(Sky).mp3", changed_song()}}));
}

void TestCompanionFaults::what_changes_meanwhile_gets_no_tag_back()
{
    const MusicPlace place;
    place.write("[Bob][Sky].mp3", song("Old", "Older"));
    QCOMPARE(run_fif(conversion(place)).status, 0);
    const QByteArray tag = place.read("(Bob)(Sky).mp3").right(tag_bytes);
    const auto change_once_seen = [&](const QByteArray& call, const QByteArray&) {
        if (call == "renameat2")
            change_sound(place, "(Bob)(Sky).mp3");
    };
    Told told;
    watch_disk({place.root()}, change_once_seen, [&] { told = undo(place); });
    QCOMPARE(told.status, 1);
    QVERIFY(told.out.endsWith(": its name is back, but its tag is left alone: it has changed meanwhile\n"));
    QCOMPARE(place.content(),
             (QMap<QByteArray, QByteArray>{{"[Bob][Sky].mp3", changed_song().chopped(tag_bytes) + tag}}));
}

QUILMO_LOGIC_TEST(TestCompanionFaults)
#include "test_companion_faults.moc"
