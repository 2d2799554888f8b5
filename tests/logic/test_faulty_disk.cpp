#include "faulty_disk.h"
#include "test_main.h"

#include "platform/BinaryFile.h"
#include "platform/FileSystemObject.h"
#include "platform/RunTimeError.h"
#include "platform/file_operation/FileCalls.h"

#include <QFile>
#include <QTest>
#include <QTextStream>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

constexpr DiskFault input_output_error{.name = "input/output error", .error = EIO};
constexpr DiskFault gone{.name = "gone", .error = EIO, .lasts = true};
constexpr DiskFault comes_short{.name = "short"};

/// The names of the calls of `work` on the disk.
QByteArrayList calls_of(const TestDisk& disk, const std::function<void()>& work)
{
    QByteArrayList calls;
    watch_disk(
        {disk.root()}, [&](const QByteArray& call, const QByteArray&) { calls.append(call); }, work);
    return calls;
}

} // namespace

class TestFaultyDisk : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void calls_of_the_program_are_seen_data();
    void calls_of_the_program_are_seen();
    void calls_of_the_toolkit_are_seen();
    void calls_elsewhere_are_not_seen();
    void the_nth_call_alone_fails();
    void a_full_or_read_only_disk_can_be_read_data();
    void a_full_or_read_only_disk_can_be_read();
    void a_lasting_fault_lasts();
    void a_short_transfer_does_half();
    void a_fault_may_come_in_the_middle_of_a_transfer();
    void calls_of_other_threads_fail();
    void a_watch_may_touch_the_disk();
    void nothing_fails_after_the_work();
};

void TestFaultyDisk::calls_of_the_program_are_seen_data()
{
    using Work = std::function<void(const QByteArray& file)>;
    QTest::addColumn<QByteArray>("call");
    QTest::addColumn<Work>("work");
    const auto row = [](const char* call, const Work& work) { QTest::newRow(call) << QByteArray(call) << work; };
    row("open", [](const QByteArray& file) { ::close(::open(file.constData(), O_RDONLY | O_CLOEXEC)); });
    row("opendir", [](const QByteArray&) { Q_UNUSED(FileSystemObject().GetFolder(u"C:\\"_s).SubFolders()) });
    row("readdir", [](const QByteArray&) { Q_UNUSED(FileSystemObject().GetFolder(u"C:\\"_s).SubFolders()) });
    row("stat", [](const QByteArray&) { Q_UNUSED(FileSystemObject().FileExists(u"C:\\a.mp3"_s)) });
    row("fstat", [](const QByteArray&) { const BinaryFile file(u"C:\\a.mp3"_s, BinaryFile::Access::read); });
    row("lstat", [](const QByteArray& file) {
        struct stat status
        {
        };
        ::lstat(file.constData(), &status);
    });
    row("pread", [](const QByteArray&) {
        std::array<char, 4> bytes{};
        BinaryFile(u"C:\\a.mp3"_s, BinaryFile::Access::read).read_at(0, bytes);
    });
    row("pwrite",
        [](const QByteArray&) { BinaryFile(u"C:\\a.mp3"_s, BinaryFile::Access::write).write_at(0, std::array{'a'}); });
    row("renameat2", [](const QByteArray&) { MoveFileA(u"C:\\a.mp3"_s, u"C:\\b.mp3"_s); });
    row("rename", [](const QByteArray& file) { ::rename(file.constData(), (file + 'x').constData()); });
    row("link", [](const QByteArray& file) { QCOMPARE(::link(file.constData(), (file + 'x').constData()), 0); });
    row("symlink", [](const QByteArray& file) { QCOMPARE(::symlink("x", (file + 'x').constData()), 0); });
    row("unlink", [](const QByteArray& file) { ::unlink(file.constData()); });
    row("rmdir", [](const QByteArray& file) { ::rmdir(file.constData()); });
    row("mkdir", [](const QByteArray&) { errors_ignored([] { FileSystemObject().CreateFolder(u"C:\\f"_s); }); });
    row("chmod", [](const QByteArray& file) { ::chmod(file.constData(), S_IRUSR); });
    row("realpath", [](const QByteArray& file) { ::free(::realpath(file.constData(), nullptr)); });
    row("fsync", [](const QByteArray& file) {
        const int descriptor = ::open(file.constData(), O_RDONLY | O_CLOEXEC);
        Q_UNUSED(FileCalls::of_this_machine().sync(descriptor))
        ::close(descriptor);
    });
}

void TestFaultyDisk::calls_of_the_program_are_seen()
{
    using Work = std::function<void(const QByteArray& file)>;
    QFETCH(QByteArray, call);
    QFETCH(Work, work);
    const TestDisk disk;
    disk.write(u"C:\\a.mp3"_s, "a file of some length");
    const QByteArrayList calls = calls_of(disk, [&] { work(disk.native(u"C:\\a.mp3"_s)); });
    QVERIFY2(calls.contains(call), calls.join(' ').constData());
}

void TestFaultyDisk::calls_of_the_toolkit_are_seen()
{
    const TestDisk disk;
    const QString path = QFile::decodeName(disk.root()) + u"/a.txt"_s;
    const QByteArrayList calls = calls_of(disk, [&] {
        QFile file(path);
        QVERIFY(file.open(QFile::WriteOnly));
        file.write("x");
        file.close();
        QFile::rename(path, path + u'x');
    });
    QVERIFY2(calls.contains("open") && calls.contains("write"), calls.join(' ').constData());
    QVERIFY2(std::ranges::any_of(calls, [](const QByteArray& call) { return call.startsWith("rename"); }),
             calls.join(' ').constData());
}

void TestFaultyDisk::calls_elsewhere_are_not_seen()
{
    const TestDisk disk;
    const QTemporaryDir other;
    QCOMPARE(calls_of(disk, [&] { QVERIFY(QFile(other.path() + u"/a"_s).open(QFile::WriteOnly)); }), QByteArrayList());
    // Neither what merely begins with the same letters.
    const QByteArray neighbour = disk.root() + "x";
    QCOMPARE(calls_of(disk, [&] { QVERIFY(::access(neighbour.constData(), F_OK) != 0); }), QByteArrayList());
}

void TestFaultyDisk::the_nth_call_alone_fails()
{
    const TestDisk disk;
    disk.write(u"C:\\a.mp3"_s, "a");
    for (int nth = 1; nth <= 4; ++nth) {
        QList<int> errors;
        const QByteArray failed = with_fault({disk.root()}, nth, input_output_error, [&] {
            for (int i = 0; i < 3; ++i)
                errors.append(::access(disk.native(u"C:\\a.mp3"_s).constData(), F_OK) == 0 ? 0 : errno);
        });
        QList<int> expected = {0, 0, 0};
        if (nth <= 3)
            expected[nth - 1] = EIO;
        QCOMPARE(errors, expected);
        QCOMPARE(failed, nth <= 3 ? "access " + disk.native(u"C:\\a.mp3"_s) : QByteArray());
    }
}

void TestFaultyDisk::a_full_or_read_only_disk_can_be_read_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("full") << ENOSPC;
    QTest::newRow("read-only") << EROFS;
}

void TestFaultyDisk::a_full_or_read_only_disk_can_be_read()
{
    QFETCH(const int, error);
    const TestDisk disk;
    disk.write(u"C:\\a.mp3"_s, "a");
    const QByteArray native = disk.native(u"C:\\a.mp3"_s);
    const auto error_of = [](int result) { return result < 0 ? errno : 0; };
    QList<int> errors;
    with_fault({disk.root()}, 1, {.name = "row", .error = error, .lasts = true}, [&] {
        std::array<char, 1> byte{};
        const int file = ::open(native.constData(), O_RDONLY | O_CLOEXEC);
        errors = {error_of(file),
                  error_of(::access(native.constData(), R_OK)),
                  error_of(static_cast<int>(::pread(file, byte.data(), byte.size(), 0))),
                  error_of(::open(native.constData(), O_RDWR | O_CLOEXEC)),
                  error_of(::open((native + 'x').constData(), O_RDONLY | O_CREAT | O_CLOEXEC, S_IRUSR)),
                  error_of(static_cast<int>(::pwrite(file, "b", 1, 0))),
                  error_of(::rename(native.constData(), (native + 'x').constData()))};
        ::close(file);
    });
    QCOMPARE(errors, (QList<int>{0, 0, 0, error, error, error, error}));
}

void TestFaultyDisk::a_lasting_fault_lasts()
{
    const TestDisk disk;
    disk.write(u"C:\\a.mp3"_s, "a");
    QList<bool> there;
    with_fault({disk.root()}, 2, gone, [&] {
        for (int i = 0; i < 4; ++i)
            there.append(FileSystemObject().FileExists(u"C:\\a.mp3"_s));
    });
    QCOMPARE(there, (QList<bool>{true, false, false, false}));
}

void TestFaultyDisk::a_short_transfer_does_half()
{
    const TestDisk disk;
    disk.write(u"C:\\a.mp3"_s, "0123456789");
    const QByteArray native = disk.native(u"C:\\a.mp3"_s);
    std::array<char, 10> bytes{};
    QList<ssize_t> counts;
    with_fault({disk.root()}, 2, comes_short, [&] {
        const int file = ::open(native.constData(), O_RDWR | O_CLOEXEC);
        counts.append(::pread(file, bytes.data(), bytes.size(), 0));
        counts.append(::pwrite(file, "abcdefghij", 10, 0));
        counts.append(::pread(file, bytes.data(), bytes.size(), 0));
        ::close(file);
    });
    QCOMPARE(counts, (QList<ssize_t>{10, 5, 10}));
    QCOMPARE(disk.read(u"C:\\a.mp3"_s), QByteArray("abcde56789"));
}

void TestFaultyDisk::a_fault_may_come_in_the_middle_of_a_transfer()
{
    for (const bool lasts : {false, true}) {
        const TestDisk disk;
        disk.write(u"C:\\a.mp3"_s, "0123456789");
        QList<ssize_t> counts;
        with_fault({disk.root()}, 2, {.name = "half", .error = EIO, .lasts = lasts, .halves_first = true}, [&] {
            const int file = ::open(disk.native(u"C:\\a.mp3"_s).constData(), O_RDWR | O_CLOEXEC);
            for (int i = 0; i < 3; ++i)
                counts.append(::pwrite(file, "abcdefghij", 10, 0));
            ::close(file);
        });
        QCOMPARE(counts, (QList<ssize_t>{5, -1, lasts ? -1 : 10}));
    }
}

void TestFaultyDisk::calls_of_other_threads_fail()
{
    const TestDisk disk;
    disk.write(u"C:\\a.mp3"_s, "a");
    bool is_there = true;
    with_fault({disk.root()}, 1, input_output_error,
               [&] { std::thread([&] { is_there = FileSystemObject().FileExists(u"C:\\a.mp3"_s); }).join(); });
    QVERIFY(!is_there);
}

void TestFaultyDisk::a_watch_may_touch_the_disk()
{
    const TestDisk disk;
    disk.write(u"C:\\a.mp3"_s, "a");
    int seen = 0;
    watch_disk(
        {disk.root()},
        [&](const QByteArray&, const QByteArray& native) {
            ++seen;
            ::unlink(native.constData());
        },
        [&] { QVERIFY(!FileSystemObject().FileExists(u"C:\\a.mp3"_s)); });
    QCOMPARE(seen, 1);
}

void TestFaultyDisk::nothing_fails_after_the_work()
{
    const TestDisk disk;
    disk.write(u"C:\\a.mp3"_s, "a");
    QVERIFY(!with_fault({disk.root()}, 1, gone, [] { FileSystemObject().FileExists(u"C:\\a.mp3"_s); }).isEmpty());
    QVERIFY(FileSystemObject().FileExists(u"C:\\a.mp3"_s));
}

QUILMO_LOGIC_TEST(TestFaultyDisk)
#include "test_faulty_disk.moc"
