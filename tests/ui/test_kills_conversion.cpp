#include "kills.h"
#include "sample_files.h"
#include "test_main.h"
#include "ui_convert.h"

#include "convert/BatchConversion.h"
#include "core/mod_of_grobal_var.h"
#include "selection/final_list.h"

#include <QCoreApplication>
#include <QTest>

#include <filesystem>
#include <map>

using namespace Qt::StringLiterals;

namespace {

constexpr int rounds = 200;
constexpr int files = 10;
const QString folder = u"C:\\Music\\"_s;

/// By their names on the disk, the contents of all files.
using Files = std::map<std::string, QByteArray>;

/// A sound that no other file has.
QByteArray sound(int number)
{
    return sample_audio({.frames = 2}) + "sound " + QByteArray::number(number);
}

QString old_name(int number)
{
    const QString text = QString::number(number);
    return number % 2 == 0 ? u"[Artist "_s + text + u"][Title].mp3"_s : u"track "_s + text + u".mp3"_s;
}

/// Lists files of which every second has a FIF name and another tag, and the others are to be renamed.
void make_listed_files(const TestDisk& disk)
{
    shared.current_folder = folder;
    for (int number = 0; number < files; ++number) {
        const QByteArray tag = sample_tag({.title = "Old title",
                                           .artist = "Name " + QByteArray::number(number),
                                           .album = "Album",
                                           .comment = QByteArray::number(number),
                                           .genre = 17});
        const QString name = old_name(number);
        disk.write(folder + name, sound(number) + tag);
        add_to_final_list(name, folder, folder + name, 1000, {}, {});
        set_convert_mark(name, 1);
    }
}

Files files_on(const TestDisk& disk)
{
    Files found;
    for (const auto& entry : std::filesystem::directory_iterator(disk.native(u"C:\\Music"_s).toStdString())) {
        const std::string name = entry.path().filename().string();
        found[name] = disk.read(folder + QString::fromStdString(name));
    }
    return found;
}

struct Conversion
{
    Files before;
    Files after;
    ChildRun run;
};

Conversion convert(const Stroke& stroke)
{
    const TestDisk disk;
    const NotedMessages messages;
    make_listed_files(disk);
    Conversion result;
    result.before = files_on(disk);
    result.run = run_in_child({disk.root()}, stroke, [] {
        NotedTransport transport;
        BatchConversion(transport).Change_FIF([] {});
    });
    result.after = files_on(disk);
    return result;
}

} // namespace

class TestKillsConversion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void every_file_is_whole_after_a_kill();
};

void TestKillsConversion::every_file_is_whole_after_a_kill()
{
    const Conversion undisturbed = convert({});
    QVERIFY(!undisturbed.run.was_killed);
    QCOMPARE(undisturbed.after.size(), std::size_t{files});
    int renamed = 0;
    int tagged = 0;
    for (const auto& [name, content] : undisturbed.after) {
        renamed += undisturbed.before.contains(name) ? 0 : 1;
        tagged += undisturbed.before.contains(name) && undisturbed.before.at(name) != content ? 1 : 0;
    }
    QCOMPARE(renamed, files / 2);
    QCOMPARE(tagged, files / 2);

    int kills = 0;
    int in_the_middle = 0;
    for (int round = 0; round < rounds; ++round) {
        const Stroke stroke = stroke_within(undisturbed.run, round);
        const Conversion struck = convert(stroke);
        // Each file is at its old or its new place, and as it was before or as it is in the end.
        QVERIFY2(struck.after.size() == std::size_t{files}, stroke.text().constData());
        for (const auto& [name, content] : struck.after) {
            const auto old = struck.before.find(name);
            const auto made = undisturbed.after.find(name);
            QVERIFY2((old != struck.before.end() && content == old->second) ||
                         (made != undisturbed.after.end() && content == made->second),
                     (stroke.text() + ": " + QByteArray::fromStdString(name)).constData());
        }
        kills += struck.run.was_killed ? 1 : 0;
        in_the_middle += struck.run.was_killed && struck.after != struck.before && struck.after != undisturbed.after;
    }
    qInfo("%d rounds, %d killed, %d of them with the work half done", rounds, kills, in_the_middle);
    QVERIFY(in_the_middle >= rounds / 5);
}

QUILMO_LOGIC_TEST(TestKillsConversion)
#include "test_kills_conversion.moc"
