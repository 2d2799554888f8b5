#include "companion_run.h"
#include "rights.h"

#include "companion/LookAhead.h"

#include <QCoreApplication>
#include <QTest>

#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <mutex>
#include <numeric>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int many = 350;

/// Files of all classes in folders of all sizes, an empty one and one that can't be read among them.
void write_collection(const MusicPlace& place)
{
    for (int number = 0; number < many; ++number) {
        const QByteArray text = QByteArray::number(number);
        const QByteArray folder = "folder " + QByteArray::number(number * number / 20'000) + '/';
        const QByteArray title = "Title " + QByteArray::number(number / 2); // two files want each name
        switch (number % 7) {
        case 0:
            place.write(folder + "[Ann][" + title + "].mp3", song("Old", "Older"));
            break;
        case 1:
            place.write(folder + "none " + text + ".mp3", sample_audio({.frames = 2}));
            break;
        case 2:
            place.write(folder + "short " + text + ".mp3", "short");
            break;
        case 3:
            place.write(folder + "Björk-" + title + ".mp3", song("Bj\xf6rk", title));
            break;
        case 4:
            place.write(folder + "korean " + text + ".mp3", song(korean_bytes(u"한국 가수"_s), title));
            break;
        default:
            place.write(folder + "plain " + text + ".mp3", song("Ann", title));
        }
    }
    place.write("empty/no music", "x");
    place.write("folder 3/closed/a.mp3", "x");
}

qint64 used_address_space()
{
    std::ifstream stream("/proc/self/statm");
    qint64 pages = 0;
    stream >> pages;
    return pages * sysconf(_SC_PAGESIZE);
}

/// As long as the object lives, there is address space for the stacks of so many threads and no more.
class RoomForThreads
{
public:
    explicit RoomForThreads(int threads)
    {
        constexpr std::size_t stack = std::size_t(1) << 30U;
        pthread_getattr_default_np(&attributes_);
        getrlimit(RLIMIT_AS, &limit_);
        pthread_attr_t large = {};
        pthread_attr_init(&large);
        pthread_attr_setstacksize(&large, stack);
        pthread_setattr_default_np(&large);
        pthread_attr_destroy(&large);
        rlimit narrow = limit_;
        narrow.rlim_cur = static_cast<rlim_t>(used_address_space()) + stack * static_cast<rlim_t>(threads) + stack / 2;
        setrlimit(RLIMIT_AS, &narrow);
    }
    ~RoomForThreads()
    {
        setrlimit(RLIMIT_AS, &limit_);
        pthread_setattr_default_np(&attributes_);
        pthread_attr_destroy(&attributes_);
    }
    RoomForThreads(const RoomForThreads&) = delete;
    RoomForThreads& operator=(const RoomForThreads&) = delete;

private:
    pthread_attr_t attributes_ = {};
    rlimit limit_ = {};
};

MusicFile file_number(int number)
{
    return {.folder = {}, .name = QByteArray::number(number)};
}

} // namespace

/// Whatever the number of threads, a run says and does the same.
class TestCompanionThreads : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void all_runs_are_alike_data();
    void all_runs_are_alike();
    void one_file_by_two_names_is_tagged_in_order();
    void turns_come_in_order_data();
    void turns_come_in_order();
    void looks_are_not_far_ahead_data();
    void looks_are_not_far_ahead();
    void what_cannot_start_is_done_without_data();
    void what_cannot_start_is_done_without();
    void what_a_look_raises_comes_out();
    void what_a_turn_raises_ends_the_threads();
};

void TestCompanionThreads::all_runs_are_alike_data()
{
    QTest::addColumn<QByteArrayList>("words");
    QTest::addColumn<bool>("from_stdin");

    const auto row = [](const char* name, const QByteArrayList& words, bool from_stdin = false) {
        QTest::newRow(name) << words << from_stdin;
    };
    row("check", {"check"});
    row("check of named files", {"check"}, true);
    row("check as objects", {"check", "--json", "--type", "5"});
    row("a preview", {"convert", "--tags"});
    row("a conversion", {"convert", "--type", "4", "--tags", "--apply"});
    row("a conversion of named files", {"convert", "--type", "2", "--apply", "--json"}, true);
    row("a conversion without journal", {"convert", "--type", "6", "--apply", "--no-journal"});
    row("one that writes tags", {"convert", "--type", "6", "--tags", "--apply", "--no-journal"});
    row("tags", {"tag", "--album", "New", "--apply"});
    row("tags without journal", {"tag", "--album", "New", "--apply", "--no-journal"});
    row("facts", {"info"});
}

void TestCompanionThreads::all_runs_are_alike()
{
    QFETCH(QByteArrayList, words);
    QFETCH(bool, from_stdin);

    const MusicPlace place;
    write_collection(place);
    const auto before = place.content();
    QByteArray input;
    for (const QByteArray& name : before.keys())
        input += place.path(name) + '\0';
    const bool has_journal = words.contains("--apply") && !words.contains("--no-journal");
    if (has_journal)
        words += {"--journal", place.journal()};
    words.append(from_stdin ? "-0"_ba : place.root());

    std::optional<Told> first;
    QMap<QByteArray, QByteArray> after;
    for (const int helpers : {0, 1, 3}) {
        {
            const WithoutRights closed(place.path("folder 3/closed"));
            const Told told = run_fif(words, from_stdin ? input : QByteArray(), helpers);
            if (!first)
                first = told;
            QCOMPARE(told.out, first->out);
            QCOMPARE(told.err, first->err);
            QCOMPARE(told.status, first->status);
        }
        QVERIFY(first->lines().size() >= many);
        if (after.isEmpty())
            after = place.content();
        QCOMPARE(place.content(), after);
        if (has_journal) {
            QCOMPARE(undo(place).status, 0);
            QCOMPARE(place.content(), before);
            unlink(place.journal().constData());
        } else {
            for (const QByteArray& name : after.keys())
                unlink(place.path(name).constData());
            write_collection(place);
        }
    }
    QCOMPARE(after != before, words.contains("--apply"));
}

/// The second look must see what the first change left.
void TestCompanionThreads::one_file_by_two_names_is_tagged_in_order()
{
    for (int round = 0; round < 20; ++round) {
        const MusicPlace place;
        place.write("[Ann][Sea].mp3", song("Bob", "Sky", 17));
        QVERIFY(link(place.path("[Ann][Sea].mp3").constData(), place.path("[Bob][Sky].mp3").constData()) == 0);
        const Told told = run_fif({"convert", "--tags", "--apply", "--no-journal", place.root()}, {}, 3);
        QCOMPARE(told.status, 0);
        QVERIFY(told.lines()[0].startsWith("tagged"));
        QVERIFY(told.lines()[1].startsWith("tagged"));
        QVERIFY(place.read("[Ann][Sea].mp3").endsWith(tag_with_blanks("Bob", "Sky", 17)));
    }
}

void TestCompanionThreads::turns_come_in_order_data()
{
    QTest::addColumn<int>("helpers");
    for (const int helpers : {0, 1, 2, 7})
        QTest::addRow("%d helpers", helpers) << helpers;
}

void TestCompanionThreads::turns_come_in_order()
{
    QFETCH(int, helpers);

    constexpr int files = 5000;
    const std::thread::id here = std::this_thread::get_id();
    std::vector<int> order;
    bool is_here = true;
    const auto turn = [&](int number) {
        return [&, number] {
            order.push_back(number);
            is_here = is_here && std::this_thread::get_id() == here;
        };
    };
    LookAhead looks([&](const MusicFile& file) { return turn(file.name.toInt()); }, LookAhead::Reach::far, helpers);
    for (int number = 0; number < files; ++number) {
        if (number % 10 == 3)
            looks.add_turn(turn(number));
        else
            looks.add(file_number(number));
    }
    looks.finish();
    std::vector<int> expected(files);
    std::iota(expected.begin(), expected.end(), 0);
    QVERIFY(order == expected);
    QVERIFY(is_here);
}

void TestCompanionThreads::looks_are_not_far_ahead_data()
{
    QTest::addColumn<bool>("far");
    QTest::addColumn<int>("most");
    QTest::newRow("far, within bounds") << true << 4000;
    QTest::newRow("not at all") << false << 1;
}

void TestCompanionThreads::looks_are_not_far_ahead()
{
    QFETCH(bool, far);
    QFETCH(int, most);

    std::atomic<int> looked = 0;
    int turned = 0;
    int furthest = 0;
    LookAhead looks(
        [&](const MusicFile&) {
            ++looked;
            return [&] { furthest = std::max(furthest, looked - turned++); };
        },
        far ? LookAhead::Reach::far : LookAhead::Reach::not_at_all, 3);
    for (int number = 0; number < 20'000; ++number)
        looks.add(file_number(number));
    looks.finish();
    QCOMPARE(turned, 20'000);
    QVERIFY2(furthest >= 1 && furthest <= most, QByteArray::number(furthest).constData());
    QVERIFY(!far || furthest > 1);
}

void TestCompanionThreads::what_cannot_start_is_done_without_data()
{
    QTest::addColumn<int>("startable");
    QTest::newRow("no thread") << 0;
    QTest::newRow("one thread of three") << 1;
}

void TestCompanionThreads::what_cannot_start_is_done_without()
{
    QFETCH(int, startable);

    constexpr int files = 20'000;
    std::mutex lock; // of the following
    std::set<std::thread::id> lookers;
    std::vector<int> order;
    {
        const RoomForThreads room(startable);
        const auto look = [&](const MusicFile& file) -> LookAhead::Turn {
            const std::lock_guard guard(lock);
            lookers.insert(std::this_thread::get_id());
            return [&, number = file.name.toInt()] { order.push_back(number); };
        };
        LookAhead looks(look, LookAhead::Reach::far, 3);
        for (int number = 0; number < files; ++number)
            looks.add(file_number(number));
        looks.finish();
    }
    QVERIFY(std::ssize(lookers) <= 1 + startable);
    std::vector<int> expected(files);
    std::iota(expected.begin(), expected.end(), 0);
    QVERIFY(order == expected);

    const MusicPlace place;
    write_collection(place);
    const Told all = run_fif({"check", place.root()}, {}, 3);
    const RoomForThreads room(startable);
    const Told told = run_fif({"check", place.root()}, {}, 3);
    QCOMPARE(told.out, all.out);
    QCOMPARE(told.status, all.status);
}

void TestCompanionThreads::what_a_look_raises_comes_out()
{
    for (const int helpers : {0, 3}) {
        int turned = 0;
        LookAhead looks(
            [&](const MusicFile& file) -> LookAhead::Turn {
                if (file.name == "1000")
                    throw std::runtime_error("look");
                return [&] { ++turned; };
            },
            LookAhead::Reach::far, helpers);
        const auto look_at_all = [&] {
            for (int number = 0; number < 3000; ++number)
                looks.add(file_number(number));
            looks.finish();
        };
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, look_at_all());
        QVERIFY(turned <= 1000);
    }
}

void TestCompanionThreads::what_a_turn_raises_ends_the_threads()
{
    const auto raise = [] {
        LookAhead looks([](const MusicFile&) { return [] { throw std::runtime_error("turn"); }; },
                        LookAhead::Reach::far, 3);
        for (int number = 0; number < 30'000; ++number)
            looks.add(file_number(number));
    };
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, raise());
}

QUILMO_LOGIC_TEST(TestCompanionThreads)
#include "test_companion_threads.moc"
