#include "faulty_disk.h"
#include "sample_files.h"
#include "test_main.h"

#include "core/mod_of_grobal_var.h"
#include "fif/mod_of_FIF.h"
#include "mp3/cIDV3.h"

#include <QCoreApplication>
#include <QTest>

#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <iterator>

using namespace Qt::StringLiterals;

namespace {

constexpr int tag_bytes = 128;
const QString path = u"C:\\Music\\a.mp3"_s;

/// The disk takes half of a tag and then, once, nothing.
constexpr DiskFault full_in_the_middle{
    .name = "disk full in the middle of a transfer", .error = ENOSPC, .halves_first = true};
/// The disk takes half of a tag and then nothing, not even what stood there.
constexpr DiskFault gone_in_the_middle{
    .name = "disk gone in the middle of a transfer", .error = EIO, .lasts = true, .halves_first = true};

/// What is done with a file's tag.
struct TagWork
{
    bool is_read_only = false;
    bool is_tagged = true;
    std::function<void()> prepare{};         ///< while the disk still works
    std::function<bool()> work{};            ///< gives whether it says that it was done
    std::function<void(QByteArray&)> edit{}; ///< what its doing makes of the 128 bytes
};

void load()
{
    id3().set_FileName(path);
}

/// Sets what the program sets, and leaves the rest of a tag as it was.
void load_and_set()
{
    load();
    id3().set_Artist(u"New artist"_s);
    id3().set_Title(u"New title"_s);
    id3().set_Genre(7);
}

void set_in(QByteArray& block)
{
    block.replace(0, 63,
                  "TAG" + QByteArray("New title").leftJustified(30) + QByteArray("New artist").leftJustified(30));
    block.back() = 7;
}

/// Into a file without a tag, where nothing is kept.
void set_in_nothing(QByteArray& block)
{
    block.fill(' ');
    set_in(block);
}

/// The program's whole way of writing a tag; a failure is told in the one message.
bool write_fif_tag()
{
    NotedMessages messages;
    QString genre = u"Hip_Hop"_s;
    Write_fif_tag(path, u"New artist"_s, u"New title"_s, genre);
    const QStringList told = messages.take();
    if (!told.isEmpty() && told != QStringList{u"Error! Can not Write ID3 Tag"_s})
        qFatal("another message: %s", qPrintable(told.join(u'|')));
    return told.isEmpty();
}

int open_files()
{
    return static_cast<int>(std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}));
}

} // namespace

class TestFaultsTag : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void a_tag_is_the_old_or_the_new_one_data();
    void a_tag_is_the_old_or_the_new_one();
    void a_read_only_file_that_fails_to_load_is_made_writable();
    void a_failed_transfer_leaves_file_number_1_open_data();
    void a_failed_transfer_leaves_file_number_1_open();
    void a_disk_gone_in_the_middle_of_a_tag_spoils_nothing_else();
    void a_frame_that_was_read_counts_when_what_is_behind_it_cannot_be_read();

private:
    struct Outcome
    {
        QByteArray failed_call;
        QByteArray content;
        QByteArray old_block;
        QByteArray new_block;
        bool says_done = false;
    };
    static Outcome run(const TagWork& work, int nth, const DiskFault& fault);
};

Q_DECLARE_METATYPE(TagWork)

TestFaultsTag::Outcome TestFaultsTag::run(const TagWork& work, int nth, const DiskFault& fault)
{
    const TestDisk disk;
    Outcome outcome;
    outcome.old_block = work.is_tagged ? sample_tag({.title = "Old title",
                                                     .artist = "Old artist",
                                                     .album = "Kept \xFF album",
                                                     .year = "1999",
                                                     .comment = QByteArray("kept\0 too", 9),
                                                     .genre = 17})
                                       : sample_audio().right(tag_bytes);
    outcome.new_block = outcome.old_block;
    if (work.edit)
        work.edit(outcome.new_block);
    disk.write(path, sample_audio() + outcome.old_block);
    if (work.is_read_only)
        ::chmod(disk.native(path).constData(), S_IRUSR);
    if (work.prepare)
        work.prepare();
    outcome.failed_call = with_fault({disk.root()}, nth, fault, [&] { outcome.says_done = work.work(); });
    outcome.content = disk.read(path);
    return outcome;
}

void TestFaultsTag::a_tag_is_the_old_or_the_new_one_data()
{
    QTest::addColumn<TagWork>("work");
    const auto row = [](const char* name, const TagWork& work) { QTest::newRow(name) << work; };
    row("loading", {.work = [] { return id3().load_and_has_tag(path); }});
    row("asking for a tag", {.prepare = load, .work = [] { return id3().HasTag(); }});
    row("writing a tag", {.prepare = load_and_set, .work = [] { return id3().WriteTag(); }, .edit = set_in});
    row("writing a tag over audio",
        {.is_tagged = false, .prepare = load_and_set, .work = [] { return id3().WriteTag(); }, .edit = set_in_nothing});
    row("clearing a tag", {.prepare = load,
                           .work = [] { return id3().ClearTag(); },
                           .edit = [](QByteArray& block) { block.replace(0, 127, QByteArray(127, '\0')); }});
    row("tagging a file", {.work = write_fif_tag, .edit = set_in});
    row("tagging a read-only file", {.is_read_only = true, .work = write_fif_tag, .edit = set_in});
    row("making a file writable", {.is_read_only = true, .work = [] {
                                       Clear_read_only(path);
                                       return true;
                                   }});
}

void TestFaultsTag::a_tag_is_the_old_or_the_new_one()
{
    QFETCH(const TagWork, work);
    QList<DiskFault> faults(disk_faults().begin(), disk_faults().end());
    faults.append(full_in_the_middle);
    const int open_before = open_files();
    for (const DiskFault& fault : std::as_const(faults)) {
        bool has_failed = true;
        for (int nth = 1; has_failed; ++nth) {
            const Outcome outcome = run(work, nth, fault);
            has_failed = !outcome.failed_call.isEmpty();
            const QByteArray where =
                QByteArray(fault.name) + ", call " + QByteArray::number(nth) + ": " + outcome.failed_call;
            QVERIFY2(outcome.content.chopped(tag_bytes) == sample_audio(), where.constData());
            const QByteArray block = outcome.content.right(tag_bytes);
            QVERIFY2(block == outcome.old_block || block == outcome.new_block, where.constData());
            if (work.edit)
                QVERIFY2(outcome.says_done == (block == outcome.new_block), where.constData());
            // Interrupted and short transfers are finished.
            if (!has_failed || fault.is_short() || fault.error == EINTR)
                QVERIFY2(outcome.says_done, where.constData());
            QVERIFY2(open_files() == open_before, where.constData());
            QVERIFY2(nth < 100, where.constData());
        }
    }
}

void TestFaultsTag::a_read_only_file_that_fails_to_load_is_made_writable()
{
    const TestDisk disk;
    const QByteArray content = sample_audio() + sample_tag({.title = "Old title"});
    disk.write(path, content);
    const QByteArray native = disk.native(path);
    ::chmod(native.constData(), S_IRUSR);
    bool is_written = true;
    const QByteArray failed_call = with_fault({disk.root()}, 1, {.name = "input/output error", .error = EIO},
                                              [&] { is_written = write_fif_tag(); });
    QVERIFY2(failed_call.startsWith("open"), failed_call.constData());
    QVERIFY(!is_written); // its other fields are unknown
    QCOMPARE(disk.read(path), content);
    struct stat status = {};
    QCOMPARE(::stat(native.constData(), &status), 0);
    QVERIFY((status.st_mode & S_IWUSR) != 0);
}

void TestFaultsTag::a_failed_transfer_leaves_file_number_1_open_data()
{
    QTest::addColumn<TagWork>("work");
    QTest::newRow("asking for a tag") << TagWork{.prepare = load, .work = [] { return id3().HasTag(); }};
    QTest::newRow("writing a tag") << TagWork{.prepare = load, .work = [] { return id3().WriteTag(); }};
    QTest::newRow("clearing a tag") << TagWork{.prepare = load, .work = [] { return id3().ClearTag(); }};
}

void TestFaultsTag::a_failed_transfer_leaves_file_number_1_open()
{
    QFETCH(TagWork, work);
    constexpr DiskFault input_output_error{.name = "input/output error", .error = EIO};
    work.work = [call = work.work] {
        const bool is_done = call();
        // From then on no tag is reached, however well the disk works; a file that doesn't open leaves it free.
        return is_done || (shared.file_number_1_open == 1 && !call());
    };
    QByteArrayList failed_calls;
    for (int nth = 1; failed_calls.isEmpty() || !failed_calls.last().isEmpty(); ++nth) {
        const Outcome outcome = run(work, nth, input_output_error);
        failed_calls.append(outcome.failed_call.split(' ').first());
        QVERIFY2(outcome.says_done != (failed_calls.last() == "open" || failed_calls.last().startsWith("fstat")),
                 outcome.failed_call.constData());
    }
    QVERIFY(failed_calls.contains("open") && failed_calls.contains("pread"));
}

void TestFaultsTag::a_disk_gone_in_the_middle_of_a_tag_spoils_nothing_else()
{
    const TagWork work{.prepare = load_and_set, .work = [] { return id3().WriteTag(); }, .edit = set_in};
    QByteArrayList mixed_after;
    bool has_failed = true;
    for (int nth = 1; has_failed; ++nth) {
        const Outcome outcome = run(work, nth, gone_in_the_middle);
        has_failed = !outcome.failed_call.isEmpty();
        QCOMPARE(outcome.content.chopped(tag_bytes), sample_audio());
        QCOMPARE(outcome.says_done, !has_failed);
        const QByteArray block = outcome.content.right(tag_bytes);
        if (block != outcome.old_block && block != outcome.new_block) {
            mixed_after.append(outcome.failed_call.split(' ').first());
            QCOMPARE(block, outcome.new_block.first(tag_bytes / 2) + outcome.old_block.last(tag_bytes / 2));
        }
    }
    QCOMPARE(mixed_after, QByteArrayList{"pwrite"});
}

/// The frame stands in the first bytes that are read, and the number that is looked for behind it does not.
void TestFaultsTag::a_frame_that_was_read_counts_when_what_is_behind_it_cannot_be_read()
{
    const TestDisk disk;
    QByteArray content(6000, 'x');
    content.replace(491, 4, QByteArray::fromHex("fffb9064"));
    disk.write(path, content);
    constexpr DiskFault denied{.name = "denied", .error = EIO};
    int reads = 0;
    for (int nth = 1; reads < 3; ++nth) {
        shared.file_number_1_open = 0;
        const QByteArray call = with_fault({disk.root()}, nth, denied, [] { id3().load_and_has_tag(path); });
        QVERIFY2(!call.isEmpty(), "tag, first bytes and what is behind them are read");
        reads += call.startsWith("pread") ? 1 : 0;
    }
    QCOMPARE(int{id3().Kbits()}, 128);
}

QUILMO_LOGIC_TEST(TestFaultsTag)
#include "test_faults_tag.moc"
