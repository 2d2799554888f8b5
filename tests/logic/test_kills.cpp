#include "disk_things.h"
#include "kills.h"

#include <QCoreApplication>
#include <QTest>

#include <algorithm>
#include <cerrno>

using namespace Qt::StringLiterals;
using Overwrite = FileOperationGuide::Overwrite;

namespace {

constexpr int rounds = 30;
constexpr int files = 6;

FileCalls calls_with_hidden_names()
{
    FileCalls calls = FileCalls::of_this_machine();
    calls.open_unnamed = [](const QByteArray&) { return -EOPNOTSUPP; };
    return calls;
}

/// A file system without unnamed files, without renames that refuse to replace or swap.
FileCalls calls_of_a_plain_file_system()
{
    FileCalls calls = calls_with_hidden_names();
    calls.rename.rename_no_replace = [](const QByteArray&, const QByteArray&) { return EINVAL; };
    calls.rename.exchange = [](const QByteArray&, const QByteArray&) { return EINVAL; };
    return calls;
}

/// A machine on which no trash takes anything.
FileCalls calls_without_trash()
{
    FileCalls calls = FileCalls::of_this_machine();
    calls.volume_root = [](const QByteArray&) { return QByteArray("/proc"); };
    return calls;
}

QByteArray name_of(int number)
{
    return "song " + QByteArray::number(number);
}

/// Files, each of a length and content of its own, in a folder with another in it.
void make_sources(const TestDisk& disk)
{
    for (int number = 0; number < files; ++number) {
        const QByteArray name = name_of(number);
        disk.write(u"C:\\from\\"_s + (number % 2 == 0 ? u"even\\"_s : QString()) + QString::fromLatin1(name),
                   name + content_of_size(qsizetype{5'000} * number));
    }
    make_link("song 1", disk.native(u"C:\\from\\link"_s));
    disk.write(u"C:\\other"_s, "other");
}

/// A thing in the report of a failing test.
QByteArray shown(const QByteArray& thing)
{
    constexpr qsizetype enough = 60;
    return thing.size() <= enough ? thing : thing.first(enough) + "... of " + QByteArray::number(thing.size());
}

/// What is under way when the stroke falls.
struct Scene
{
    FileAction action = FileAction::copy;
    QStringList sources{};
    QString target{};
    FileCalls calls{};
    QByteArrayList given_up{}; ///< what the person agrees to lose, as things_in calls it
};

/// The disks before and after a run; a note of the trash is no file of a person's.
struct Disks
{
    QByteArrayList before;
    QByteArrayList after;
    ChildRun run;
};

Disks run_scene(const Scene& scene, const Stroke& stroke)
{
    const FilesInMemory memory;
    const TwoDisks disks;
    qputenv("XDG_DATA_HOME", disks.root());
    make_sources(disks);
    if (!scene.target.isEmpty()) {
        disks.make_folder(scene.target);
        for (const int number : {1, 3})
            disks.write(scene.target + u'\\' + QString::fromLatin1(name_of(number)), "old " + name_of(number));
    }
    const QByteArrayList folders = {disks.root(), disks.native(u"D:\\"_s)};
    const auto lines = [&] {
        QByteArrayList all = trees_of(folders);
        all.removeIf([](const QByteArray& line) { return line.contains(".trashinfo = "); });
        for (QByteArray& line : all)
            line.replace(disks.root(), "C:").replace(disks.native(u"D:\\"_s), "D:");
        return all;
    };
    Disks result;
    result.before = lines();
    result.run = run_in_child(folders, stroke, [&] {
        ScriptedGuide guide;
        guide.overwrites = QList<Overwrite>(files, Overwrite::yes);
        run_file_operation(scene.action, scene.sources, scene.target, guide, scene.calls);
    });
    result.after = lines();
    return result;
}

/// What a stroke has spoilt; empty for nothing. What was moved may be at both places, what never got its real name
/// under a hidden one.
QByteArray spoilt_in(const Disks& disks, const Disks& undisturbed, const Scene& scene)
{
    const QSet<QByteArray> before = things_in(disks.before);
    const QSet<QByteArray> after = things_in(disks.after);
    const QSet<QByteArray> given_up(scene.given_up.begin(), scene.given_up.end());
    for (const QByteArray& thing : before - given_up - after)
        return "lost: " + shown(thing);
    for (const QByteArray& thing : after - before - things_in(undisturbed.after)) {
        if (!thing.endsWith('/')) // the folders that make up a trash come one by one
            return "neither old nor new: " + shown(thing);
    }
    return {};
}

} // namespace

Q_DECLARE_METATYPE(Scene)

class TestKills : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void every_file_is_whole_after_a_kill_data();
    void every_file_is_whole_after_a_kill();
};

void TestKills::every_file_is_whole_after_a_kill_data()
{
    QTest::addColumn<Scene>("scene");
    QStringList sources = {u"C:\\from\\even"_s, u"C:\\from\\link"_s};
    QByteArrayList all = {"even/", "-> song 1"};
    for (int number = 0; number < files; ++number) {
        if (number % 2 == 1)
            sources.append(u"C:\\from\\"_s + QString::fromLatin1(name_of(number)));
        all.append("= " + name_of(number) + content_of_size(qsizetype{5'000} * number));
    }
    const QByteArrayList replaced = {"= old song 1", "= old song 3"};
    struct FileSystem
    {
        const char* name;
        FileCalls calls;
    };
    const std::vector<FileSystem> systems = {
        {.name = "", .calls = FileCalls::of_this_machine()},
        {.name = ", with hidden names", .calls = calls_with_hidden_names()},
        {.name = ", on a plain file system", .calls = calls_of_a_plain_file_system()}};
    for (const FileSystem& system : systems) {
        const auto row = [&](const char* name, FileAction action, const QString& target) {
            QTest::newRow(QByteArray(name) + system.name) << Scene{.action = action,
                                                                   .sources = sources,
                                                                   .target = target,
                                                                   .calls = calls_between_disks(system.calls),
                                                                   .given_up = replaced};
        };
        row("copying", FileAction::copy, u"C:\\to"_s);
        row("moving", FileAction::move, u"C:\\to"_s);
        row("moving to another disk", FileAction::move, u"D:\\to"_s);
    }
    QTest::newRow("putting into the trash") << Scene{
        .action = FileAction::remove, .sources = sources, .calls = calls_on_one_volume(FileCalls::of_this_machine())};
    QTest::newRow("deleting for good") << Scene{
        .action = FileAction::remove, .sources = sources, .calls = calls_without_trash(), .given_up = all};
}

void TestKills::every_file_is_whole_after_a_kill()
{
    QFETCH(const Scene, scene);
    const Disks undisturbed = run_scene(scene, {});
    QVERIFY(!undisturbed.run.was_killed && undisturbed.after != undisturbed.before);
    int kills = 0;
    int in_the_middle = 0;
    int unfinished = 0;
    for (int round = 0; round < rounds; ++round) {
        const Stroke stroke = stroke_within(undisturbed.run, round);
        const Disks disks = run_scene(scene, stroke);
        const QByteArray spoilt = spoilt_in(disks, undisturbed, scene);
        QVERIFY2(spoilt.isEmpty(), (stroke.text() + ", " + spoilt).constData());
        if (!disks.run.was_killed)
            continue;
        ++kills;
        in_the_middle += disks.after != disks.before && disks.after != undisturbed.after ? 1 : 0;
        unfinished += std::ranges::any_of(disks.after, is_unfinished) ? 1 : 0;
    }
    qInfo("%d rounds, %d killed, %d of them with the work half done, %d with a hidden file left", rounds, kills,
          in_the_middle, unfinished);
    QVERIFY(in_the_middle >= rounds / 5);
    QVERIFY(unfinished == 0 || scene.action != FileAction::remove);
}

QUILMO_LOGIC_TEST(TestKills)
#include "test_kills.moc"
