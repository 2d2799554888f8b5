#include "companion_run.h"
#include "faulty_disk.h"

#include <QCoreApplication>
#include <QTest>

#include <algorithm>
#include <cerrno>

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
    place.write("sub/[Bob][Sky].mp3", padding(second) + second);
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
    void a_conversion_can_be_undone();
    void an_undo_can_be_run_again();
    void a_preview_and_a_check_change_nothing();
    void the_journal_is_on_the_disk_before_the_first_change();
};

void TestCompanionFaults::a_conversion_can_be_undone()
{
    QMap<QByteArray, QByteArray> after;
    for (const DiskFault& fault : all_faults()) {
        QByteArray call = "first";
        for (int nth = 1; !call.isEmpty(); ++nth) {
            const MusicPlace place;
            write_songs(place);
            const auto before = place.content();
            Told told;
            call = with_fault(folders_of(place), nth, fault, [&] { told = run_fif(conversion(place)); });
            const QByteArray where = text_of(fault, nth, call);
            if (after.isEmpty()) { // the way it goes without a fault
                const MusicPlace whole;
                write_songs(whole);
                QCOMPARE(run_fif(conversion(whole)).status, 0);
                after = whole.content();
            }
            const auto content = place.content();
            QVERIFY2(content.size() == before.size(), where.constData());
            QVERIFY2(told.status == 1 || content == after, where.constData());
            if (content != before)
                QVERIFY2(undo(place).status == 0, where.constData());
            QVERIFY2(place.content() == before, where.constData());
            QVERIFY2(nth < more_calls_than_a_run_makes, where.constData());
        }
    }
}

void TestCompanionFaults::an_undo_can_be_run_again()
{
    for (const DiskFault& fault : all_faults()) {
        QByteArray call = "first";
        for (int nth = 1; !call.isEmpty(); ++nth) {
            const MusicPlace place;
            write_songs(place);
            const auto before = place.content();
            QCOMPARE(run_fif(conversion(place)).status, 0);
            Told told;
            call = with_fault(folders_of(place), nth, fault, [&] { told = undo(place); });
            const QByteArray where = text_of(fault, nth, call);
            QVERIFY2(told.status == 1 || place.content() == before, where.constData());
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
    // Only that all was made is added when it was.
    const qsizetype written_again = calls.indexOf("write " + place.journal(), synced);
    QVERIFY(std::find_if(calls.begin() + written_again, calls.end(), is_change) == calls.end());
    QCOMPARE(calls.lastIndexOf("write " + place.journal()), written_again);
}

QUILMO_LOGIC_TEST(TestCompanionFaults)
#include "test_companion_faults.moc"
