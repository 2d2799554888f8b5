#include "test_main.h"

#include "platform/BinaryFile.h"

#include <QDir>
#include <QTest>

#include <array>
#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QString path = u"C:\\a.mp3"_s;

qsizetype open_descriptors()
{
    return QDir(u"/proc/self/fd"_s).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System).size();
}

bool opens(const QString& file, BinaryFile::Access access)
{
    return BinaryFile(file, access).is_open();
}

QByteArray bytes_at(const BinaryFile& file, qint64 offset, std::size_t count)
{
    std::array<char, 64> buffer{};
    const qint64 read = file.read_at(offset, std::span(buffer).first(count));
    return {buffer.data(), read};
}

/// As long as it lives no file can be written beyond `bytes`, as on a disk that fills up in the middle of a write.
class SizeLimit
{
public:
    explicit SizeLimit(rlim_t bytes) : old_handler_(std::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{.rlim_cur = bytes, .rlim_max = before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, old_handler_);
    }
    SizeLimit(const SizeLimit&) = delete;
    SizeLimit& operator=(const SizeLimit&) = delete;

private:
    void (*old_handler_)(int);
    rlimit before_{};
};

} // namespace

class TestBinaryFile : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestDisk> disk_;

private Q_SLOTS:
    void init() { disk_ = std::make_unique<TestDisk>(); }

    void reads_at_positions_data();
    void reads_at_positions();
    void writes_in_place();
    void writes_nothing_at_a_negative_position();
    void a_write_that_stops_in_the_middle_is_undone();
    void a_write_makes_no_file_longer();
    void a_file_opened_for_reading_is_not_written();
    void opens_regular_files_only_data();
    void opens_regular_files_only();
    void opens_through_a_link();
    void never_creates_a_file();
    void a_file_that_its_owner_may_not_write_is_read_only_for_all();
    void a_file_that_is_not_open_reads_and_writes_nothing();
    void closes_what_it_opened();
    void counts_in_64_bits();
};

void TestBinaryFile::reads_at_positions_data()
{
    QTest::addColumn<qint64>("offset");
    QTest::addColumn<int>("count");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("from the beginning") << qint64{0} << 3 << QByteArray("012");
    QTest::newRow("from the middle") << qint64{4} << 3 << QByteArray("456");
    QTest::newRow("over the end") << qint64{8} << 5 << QByteArray("89");
    QTest::newRow("at the end") << qint64{10} << 5 << QByteArray();
    QTest::newRow("behind the end") << qint64{1000} << 5 << QByteArray();
    QTest::newRow("before the beginning") << qint64{-1} << 5 << QByteArray();
    QTest::newRow("no bytes") << qint64{3} << 0 << QByteArray();
}

void TestBinaryFile::reads_at_positions()
{
    QFETCH(const qint64, offset);
    QFETCH(const int, count);
    disk_->write(path, "0123456789");
    for (const auto access : {BinaryFile::Access::read, BinaryFile::Access::write}) {
        const BinaryFile file(path, access);
        QVERIFY(file.is_open());
        QCOMPARE(file.length(), 10);
        QTEST(bytes_at(file, offset, static_cast<std::size_t>(count)), "bytes");
    }
}

void TestBinaryFile::writes_in_place()
{
    disk_->write(path, "0123456789");
    QVERIFY(BinaryFile(path, BinaryFile::Access::write).write_at(7, std::array{'a', 'b'}));
    QCOMPARE(disk_->read(path), QByteArray("0123456ab9"));
}

void TestBinaryFile::writes_nothing_at_a_negative_position()
{
    disk_->write(path, "0123456789");
    QVERIFY(!BinaryFile(path, BinaryFile::Access::write).write_at(-1, std::array{'a', 'b'}));
    QCOMPARE(disk_->read(path), QByteArray("0123456789"));
}

void TestBinaryFile::a_write_that_stops_in_the_middle_is_undone()
{
    disk_->write(path, "0123456789");
    const BinaryFile file(path, BinaryFile::Access::write);
    bool written = true;
    {
        const SizeLimit limit(8);
        written = file.write_at(6, std::array{'a', 'b', 'c'});
    }
    QVERIFY(!written);
    QCOMPARE(disk_->read(path), QByteArray("0123456789"));
}

void TestBinaryFile::a_write_makes_no_file_longer()
{
    disk_->write(path, "0123456789");
    QVERIFY(!BinaryFile(path, BinaryFile::Access::write).write_at(8, std::array{'a', 'b', 'c'}));
    QCOMPARE(disk_->read(path), QByteArray("0123456789"));
}

void TestBinaryFile::a_file_opened_for_reading_is_not_written()
{
    disk_->write(path, "0123456789");
    QVERIFY(!BinaryFile(path, BinaryFile::Access::read).write_at(0, std::array{'a'}));
    QCOMPARE(disk_->read(path), QByteArray("0123456789"));
}

void TestBinaryFile::opens_regular_files_only_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::newRow("a file") << QByteArray("file");
    QTest::newRow("a pipe, without waiting for its other end") << QByteArray("pipe");
    QTest::newRow("a folder") << QByteArray("folder");
    QTest::newRow("a dangling link") << QByteArray("dangling");
    QTest::newRow("a link to a device") << QByteArray("device");
    QTest::newRow("nothing") << QByteArray("nothing");
}

void TestBinaryFile::opens_regular_files_only()
{
    QFETCH(const QByteArray, kind);
    const QByteArray native = disk_->native(path);
    if (kind == "file")
        disk_->write(path, "x");
    if (kind == "pipe")
        QCOMPARE(::mkfifo(native.constData(), 0600), 0);
    if (kind == "folder")
        QCOMPARE(::mkdir(native.constData(), 0700), 0);
    if (kind == "dangling")
        QCOMPARE(::symlink("nowhere", native.constData()), 0);
    if (kind == "device")
        QCOMPARE(::symlink("/dev/zero", native.constData()), 0);
    QCOMPARE(opens(path, BinaryFile::Access::read), kind == "file");
    QCOMPARE(opens(path, BinaryFile::Access::write), kind == "file");
}

void TestBinaryFile::opens_through_a_link()
{
    disk_->write(path, "0123456789");
    QCOMPARE(::symlink("a.mp3", disk_->native(u"C:\\link.mp3"_s).constData()), 0);
    const BinaryFile file(u"C:\\link.mp3"_s, BinaryFile::Access::read);
    QVERIFY(file.is_open());
    QCOMPARE(file.length(), 10);
}

void TestBinaryFile::never_creates_a_file()
{
    QVERIFY(!opens(path, BinaryFile::Access::write));
    QVERIFY(!disk_->exists(path));
    QVERIFY(!opens(QString(), BinaryFile::Access::write));
    QVERIFY(!opens(u"Z:\\a.mp3"_s, BinaryFile::Access::read));
}

void TestBinaryFile::a_file_that_its_owner_may_not_write_is_read_only_for_all()
{
    disk_->write(path, "0123456789");
    QCOMPARE(::chmod(disk_->native(path).constData(), 0466), 0);
    QVERIFY(opens(path, BinaryFile::Access::read));
    QVERIFY(!opens(path, BinaryFile::Access::write));
}

void TestBinaryFile::a_file_that_is_not_open_reads_and_writes_nothing()
{
    const BinaryFile file(path, BinaryFile::Access::write);
    QCOMPARE(file.length(), 0);
    QCOMPARE(bytes_at(file, 0, 5), QByteArray());
    QVERIFY(!file.write_at(0, std::array{'a'}));
}

void TestBinaryFile::closes_what_it_opened()
{
    disk_->write(path, "0123456789");
    QCOMPARE(::mkfifo(disk_->native(u"C:\\pipe.mp3"_s).constData(), 0600), 0);
    const qsizetype before = open_descriptors();
    {
        const BinaryFile file(path, BinaryFile::Access::read);
        QCOMPARE(open_descriptors(), before + 1);
    }
    QVERIFY(!opens(u"C:\\pipe.mp3"_s, BinaryFile::Access::read));
    QCOMPARE(open_descriptors(), before);
}

void TestBinaryFile::counts_in_64_bits()
{
    disk_->write(path, {});
    const qint64 length = 5'000'000'000;
    QCOMPARE(::truncate(disk_->native(path).constData(), length), 0);
    {
        const BinaryFile file(path, BinaryFile::Access::write);
        QCOMPARE(file.length(), length);
        QVERIFY(file.write_at(length - 3, std::array{'e', 'n', 'd'}));
    }
    const BinaryFile file(path, BinaryFile::Access::read);
    QCOMPARE(file.length(), length);
    QCOMPARE(bytes_at(file, length - 5, 10), QByteArray("\0\0end", 5));
    QCOMPARE(bytes_at(file, length % (qint64{1} << 32) - 3, 3), QByteArray(3, '\0'));
}

QUILMO_LOGIC_TEST(TestBinaryFile)

#include "test_binary_file.moc"
