#include "faulty_disk.h"
#include "file_operations.h"
#include "platform/FileSystemObject.h"

#include <QCoreApplication>
#include <QTest>

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// What another program does to the files at one moment.
struct Event
{
    QString from;
    QString to;
    unsigned flags = RENAME_NOREPLACE;
};

const QByteArray given_up = "the file that the person gives up";
const QString source = u"C:\\a\\song.mp3"_s;
const QString beside_source = u"C:\\a\\SONG.mp3"_s;

/// A person who gives up the file that stood at the target at first, and no other.
class FirmGuide : public ScriptedGuide
{
public:
    Overwrite ask_overwrite(const FileFacts& /*source*/, const FileFacts& target) override
    {
        return target.size == given_up.size() ? Overwrite::yes : Overwrite::no;
    }
};

} // namespace

/// Another program acts between two calls of the system, at each place where it can.
class TestRaceWindows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void what_is_swapped_in_is_kept_data();
    void what_is_swapped_in_is_kept();
};

void TestRaceWindows::what_is_swapped_in_is_kept_data()
{
    QTest::addColumn<std::optional<FileAction>>("action");
    QTest::addColumn<QString>("target");
    QTest::addColumn<Event>("event");

    struct Work
    {
        const char* name;
        std::optional<FileAction> action; ///< none is MoveFileA
        QString target;
    };
    const Work works[] = {{"copy", FileAction::copy, u"C:\\b\\song.mp3"_s},
                          {"copy to another disk", FileAction::copy, u"D:\\b\\song.mp3"_s},
                          {"move", FileAction::move, u"C:\\b\\song.mp3"_s},
                          {"move to another disk", FileAction::move, u"D:\\b\\song.mp3"_s},
                          {"rename", FileAction::rename, u"C:\\b\\song.mp3"_s},
                          {"MoveFileA", std::nullopt, u"C:\\b\\song.mp3"_s},
                          {"MoveFileA to a name of other case", std::nullopt, beside_source}};
    for (const Work& work : works) {
        const QString beside_target = work.target.first(5) + u"other.mp3"_s;
        const auto row = [&](const char* name, const Event& event) {
            QTest::addRow("%s: %s", work.name, name) << work.action << work.target << event;
        };
        row("another file comes to the target", {.from = work.target, .to = beside_target, .flags = RENAME_EXCHANGE});
        row("another file comes to the source", {.from = source, .to = beside_source, .flags = RENAME_EXCHANGE});
        row("source and target are swapped", {.from = source, .to = work.target, .flags = RENAME_EXCHANGE});
        row("the target goes away", {.from = work.target, .to = work.target + u".away"_s});
        row("the source goes away", {.from = source, .to = source + u".away"_s});
    }
}

void TestRaceWindows::what_is_swapped_in_is_kept()
{
    QFETCH(const std::optional<FileAction>, action);
    QFETCH(const QString, target);
    QFETCH(const Event, event);
    FileCalls unsynced = FileCalls::of_this_machine();
    unsynced.sync = [](int /*file*/) { return 0; }; // the disk need not be waited for
    for (int nth = 1;; ++nth) {
        const TwoDisks disks;
        disks.write(source, "the source");
        disks.write(target.first(5) + u"other.mp3"_s, "another one");
        disks.write(beside_source, "one of other case");
        if (target != beside_source)
            disks.write(target, given_up);
        FirmGuide guide;
        int calls = 0;
        watch_disk(
            {disks.root(), disks.native(u"D:\\"_s)},
            [&](const QByteArray& /*call*/, const QByteArray& /*native*/) {
                if (++calls == nth)
                    renameat2(AT_FDCWD, disks.native(event.from).constData(), AT_FDCWD,
                              disks.native(event.to).constData(), event.flags);
            },
            [&] {
                if (action)
                    run_file_operation(*action, {source}, *action == FileAction::rename ? target : target.first(4),
                                       guide, unsynced);
                else
                    MoveFileA(source, target);
            });
        if (calls < nth)
            return;
        const QByteArray all =
            (tree_of(disks.root()) + tree_of(disks.native(u"D:\\"_s))).join('\n').replace(disks.root(), "");
        for (const char* const content : {"the source", "another one", "one of other case"})
            QVERIFY2(all.contains(content), "call " + QByteArray::number(nth) + ":\n" + all);
        QVERIFY2(!all.contains(".quilmo-"), "call " + QByteArray::number(nth) + ":\n" + all);
    }
}

QUILMO_LOGIC_TEST(TestRaceWindows)

#include "test_race_windows.moc"
