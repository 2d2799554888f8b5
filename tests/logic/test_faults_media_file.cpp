#include "faulty_disk.h"
#include "test_main.h"

#include "platform/media_player/MediaFile.h"

#include <QTest>

#include <array>

using namespace Qt::StringLiterals;

namespace {

const QString path = u"C:\\song.mp3"_s;

QByteArray all_that_comes(const std::atomic<bool>& cancelled)
{
    MediaFile file(path, cancelled);
    std::array<char, 1000> part{};
    QByteArray content;
    for (qint64 count = 1; count > 0; content.append(part.data(), count))
        count = file.read(part);
    return content;
}

} // namespace

/// The player's reading of a file on a disk that fails.
class TestFaultsMediaFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void what_comes_is_the_beginning_of_the_file();
};

void TestFaultsMediaFile::what_comes_is_the_beginning_of_the_file()
{
    const TestDisk disk;
    QByteArray content;
    for (int number = 0; number < 30'000; ++number)
        content += QByteArray::number(number);
    disk.write(path, content);
    const std::atomic<bool> cancelled = false;
    for (const DiskFault& fault : disk_faults()) {
        QByteArray failed_call = "none yet";
        for (int nth = 1; !failed_call.isEmpty(); ++nth) {
            QByteArray came;
            failed_call = with_fault({disk.native(u"C:\\"_s)}, nth, fault, [&] { came = all_that_comes(cancelled); });
            QVERIFY2(failed_call.isEmpty() ? came == content : content.startsWith(came), failed_call.constData());
        }
    }
}

QUILMO_LOGIC_TEST(TestFaultsMediaFile)
#include "test_faults_media_file.moc"
