#include "convert/moved_file.h"
#include "core/mod_of_grobal_var.h"
#include "frame/QuilmoMain.h"
#include "platform/FileSystemObject.h"
#include "platform/controls/SHFileOperation.h"
#include "platform/controls/message_window.h"
#include "race_files.h"
#include "race_round.h"
#include "rights.h"
#include "ui_race_user.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QScopeGuard>
#include <QTest>

#include <unistd.h>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

// A second process renames, swaps, deletes, cuts and writes while the program does its work. Whatever comes: nothing
// crashes, hangs or replaces what nobody gave up. QUILMO_RACE_SECONDS sets how long all races last together,
// QUILMO_RACE_SEED where their chance begins.

namespace {

constexpr int all_shares = 8;           ///< of the time, for the races together
constexpr qint64 longest_round = 1500;  ///< milliseconds
constexpr qint64 longest_wait = 30'000; ///< for what a race must come to
constexpr int patience = 120;           ///< seconds without a step after which the program hangs

const QString music = u"C:\\Music"_s;
const QString copies = u"C:\\Copies"_s;
const QString other_disk = u"D:\\Music"_s;

int from_environment(const char* name, int usual)
{
    bool is_number = false;
    const int number = qEnvironmentVariableIntValue(name, &is_number);
    return is_number ? number : usual;
}

int seconds_of_all()
{
    return from_environment("QUILMO_RACE_SECONDS", 4);
}

/// The names that files have at first, and those that their tags give.
QStringList race_names(int files)
{
    QStringList names;
    for (int number = 0; number < files; ++number)
        names.append(plain_race_name(number));
    for (int number = 0; number < files; ++number)
        names.append(fif_race_name(number));
    return names;
}

} // namespace

class TestRaces : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void renames_replace_nothing();
    void copies_are_whole_and_replace_only_what_was_given_up();
    void moves_lose_nothing();
    void what_is_deleted_lies_in_the_trash();
    void the_player_opens_whatever_comes();
    void no_tag_goes_into_a_file_that_took_the_name();
    void the_main_window_works_on();

private:
    using Step = std::function<void(RaceRound&)>;
    using Least = QMap<QString, int>; ///< how often something must have been counted

    void race(const RaceRound::Field& field, const Least& least, const Step& step,
              const std::function<void(RaceRound&)>& at_end = {}, int shares = 1);
    void transfer(FileAction action, RaceRound& round);
    bool has_all(const Least& least) const;
    void tally(const char* what, int number = 1) { counts_[QLatin1StringView(what)] += number; }

    QMap<QString, int> counts_;
    unsigned seed_ = 1;
};

void TestRaces::initTestCase()
{
    seed_ = static_cast<unsigned>(from_environment("QUILMO_RACE_SEED", 1));
    set_fatal_error_handler(
        [this](const RunTimeError& error) { ++counts_[u"run-time error %1"_s.arg(error.number())]; });
}

bool TestRaces::has_all(const Least& least) const
{
    return std::ranges::all_of(least.keys(), [&](const QString& what) { return counts_[what] >= least[what]; });
}

/// Races in rounds, each with a new seed and new files, until the time of this race is over; on a busy machine also
/// longer, until what it must come to has been counted.
void TestRaces::race(const RaceRound::Field& field, const Least& least, const Step& step,
                     const std::function<void(RaceRound&)>& at_end, int shares)
{
    counts_.clear();
    QElapsedTimer time;
    time.start();
    const qint64 time_of_race = 1000LL * shares * seconds_of_all() / all_shares;
    std::optional<int> descriptors; // after the first round, that has opened what the program keeps
    do {
        ++seed_;
        RaceRound round(field, seed_);
        set_file_prompts(&round.person);
        const auto prompts = qScopeGuard([] { set_file_prompts(nullptr); });
        {
            const BoundByRights bound;
            QElapsedTimer time_of_round;
            time_of_round.start();
            while (time_of_round.elapsed() < std::min(longest_round, time_of_race / 2)) {
                alarm(patience);
                shared.file_number_1_open = 0; // a file that was cut below the length of a tag must not end the race
                step(round);
            }
            if (at_end)
                at_end(round);
        }
        const QStringList faults = round.end();
        QVERIFY2(faults.isEmpty(), qPrintable(u"seed %1: "_s.arg(seed_) + faults.join(u"\n"_s)));
        for (const auto& [act, number] : round.racer().done())
            counts_[u"racer "_s + QLatin1Char(act)] += number;
        tally("overwritten", round.person.overwritten);
        tally("errors", round.person.errors);
        if (!descriptors)
            descriptors = open_descriptors();
        QCOMPARE(open_descriptors(), *descriptors);
    } while (time.elapsed() < time_of_race || (!has_all(least) && time.elapsed() < longest_wait));
    alarm(0);
    qInfo() << counts_;
    QVERIFY(has_all(least));
    for (auto each = counts_.cbegin(); each != counts_.cend(); ++each)
        QVERIFY2(!each.key().startsWith(u"run-time error"_s), qPrintable(each.key()));
}

void TestRaces::renames_replace_nothing()
{
    QStringList names = race_names(4);
    names.append({u"TRACK 0.mp3"_s, u"Folder"_s});
    race({.acts = "xxxxxxxxmmmpbbf", .folders = {music, copies}, .names = names, .free_names = 6},
         {{u"renamed"_s, 51}, {u"renamed by operation"_s, 6}, {u"racer x"_s, 51}}, [this](RaceRound& round) {
             const QString old_path = round.place();
             const QString new_path = round.place();
             if (round.below(8) != 0) {
                 tally("renamed", MoveFileA(old_path, new_path) ? 1 : 0);
                 return;
             }
             SHFILEOPSTRUCT operation = {.wFunc = FO_RENAME, .pFrom = old_path, .pTo = new_path};
             tally("renamed by operation", SHFileOperation(operation) == 0 ? 1 : 0);
         });
}

/// Brings some of what stands in a folder to another one.
void TestRaces::transfer(FileAction action, RaceRound& round)
{
    FileCalls calls = FileCalls::of_this_machine();
    calls.sync = [](int /*file*/) { return 0; }; // as often as can be
    if (round.below(2) == 0)
        calls.open_unnamed = [](const QByteArray& /*folder*/) { return -EOPNOTSUPP; };
    const QString from = round.folder();
    QStringList sources;
    for (int number = 0; number < 3; ++number)
        sources.append(from + u'\\' + round.name());
    const int before = round.person.errors;
    run_file_operation(action, sources, round.folder(), round.person, calls);
    tally("brought", static_cast<int>(sources.size()) - (round.person.errors - before));
}

void TestRaces::copies_are_whole_and_replace_only_what_was_given_up()
{
    race({.acts = "xxxxxxmmmmppbbbbndtsssssslfir",
          .folders = {music, copies, other_disk},
          .names = race_names(6),
          .free_names = 6},
         {{u"brought"_s, 21}, {u"overwritten"_s, 1}, {u"racer s"_s, 11}},
         [this](RaceRound& round) { transfer(FileAction::copy, round); });
}

void TestRaces::moves_lose_nothing()
{
    race({.acts = "xxxxxxmmmmppbbbbndtssslfir",
          .folders = {music, copies, other_disk},
          .names = race_names(6),
          .free_names = 6},
         {{u"brought"_s, 21}, {u"overwritten"_s, 1}}, [this](RaceRound& round) { transfer(FileAction::move, round); });
}

void TestRaces::what_is_deleted_lies_in_the_trash()
{
    race({.acts = "xxxxmmppbbbbnnnnlfi", .folders = {music, copies}, .names = race_names(8), .free_names = 8},
         {{u"deleted"_s, 6}}, [this](RaceRound& round) {
             const int before = round.person.errors;
             run_file_operation(FileAction::remove, {round.place(), round.place()}, {}, round.person);
             tally("deleted", 2 - (round.person.errors - before));
         });
}

void TestRaces::the_player_opens_whatever_comes()
{
    std::optional<MediaPlayer> player;
    race(
        {.acts = "xxmmpbntslfir", .folders = {music}, .names = race_names(6), .free_names = 6},
        {{u"opened"_s, 11}, {u"playable"_s, 1}},
        [&](RaceRound& round) {
            if (!player)
                player.emplace();
            switch (round.below(5)) {
            case 0:
                player->set_CurrentPosition(static_cast<double>(round.below(3)));
                break;
            case 1:
                player->Stop();
                break;
            case 2:
                player->set_FileName({});
                break;
            default:
                player->Open(round.place());
                tally("opened");
                break;
            }
            QTest::qWait(static_cast<int>(round.below(4)));
            tally("playable", player->SelectionEnd() > 0 ? 1 : 0);
        },
        [&](RaceRound& /*round*/) { player.reset(); });
}

/// The racer takes files of the program away for a moment and its own ones to the names that these are to get, but
/// never puts anything in the place of a file that the program has just moved. So no tag may come into a file of the
/// racer's.
void TestRaces::no_tag_goes_into_a_file_that_took_the_name()
{
    race(
        {.acts = "nacccccccc", .folders = {music}, .names = race_names(4), .free_names = 4},
        {{u"moved"_s, 21}, {u"not moved"_s, 1}, {u"racer c"_s, 21}},
        [this](RaceRound& round) {
            const int number = static_cast<int>(round.below(4));
            const QString old_path = music + u'\\' + plain_race_name(number);
            const QString new_path = music + u'\\' + fif_race_name(number);
            const bool is_moved = MoveFileA(old_path, new_path);
            QString genre = u"Jazz"_s;
            tag_moved_file(is_moved, new_path, u"Told"_s, u"Typed"_s, genre);
            tally(is_moved ? "moved" : "not moved");
            while (is_moved && !MoveFileA(new_path, old_path)) {
            }
        },
        [](RaceRound& round) { round.tags_of_racer_stay = true; });
}

void TestRaces::the_main_window_works_on()
{
    QStringList names = race_names(8);
    names.append({u"Folder"_s, u"Other folder"_s, u"Copy of track 1.mp3"_s});
    std::unique_ptr<QuilmoMain> window;
    std::unique_ptr<RaceUser> user;
    race(
        {.acts = "xxxxxxmmmmmmppppbbbbbbntdsssslffiirrw",
         .folders = {music, copies, other_disk},
         .names = names,
         .free_names = 11},
        {{u"acts"_s, 11}},
        [&](RaceRound& round) {
            if (!window) {
                window = std::make_unique<QuilmoMain>();
                window->show();
                user = std::make_unique<RaceUser>(*window, round);
            }
            tally("acts");
            ++counts_[user->act()];
        },
        [&](RaceRound& /*round*/) {
            window->close();
            user.reset();
            window.reset();
        },
        2);
}

int main(int argc, char** argv)
{
    int status = 0;
    if (was_racer(argc, argv, status))
        return status;
    // QtTest ends a function after five minutes by itself; the alarm of the races is there for hangs.
    qputenv("QTEST_FUNCTION_TIMEOUT", QByteArray::number(1000LL * (seconds_of_all() + 300)));
    const TestHome home;
    const QApplication application(argc, argv);
    TestRaces test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_races.moc"
