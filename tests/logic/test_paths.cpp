#include "fixed_drive.h"
#include "platform/paths.h"
#include "test_main.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// A device that is mounted as a whole, whatever it is: it stands for a disc that came after the start.
QByteArray any_mounted_device()
{
    QFile table(u"/proc/self/mountinfo"_s);
    if (!table.open(QIODevice::ReadOnly))
        return {};
    for (const QByteArray& line : table.readAll().split('\n')) {
        const QList<QByteArray> words = line.split(' ');
        const qsizetype type = words.indexOf("-") + 1;
        if (type > 4 && words.size() > type + 1 && words[3] == "/" && words[type + 1].startsWith("/dev/")) {
            const QString real = QFileInfo(QFile::decodeName(words[type + 1])).canonicalFilePath();
            return real.isEmpty() ? words[type + 1] : QFile::encodeName(real);
        }
    }
    return {};
}

} // namespace

class TestPaths : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void native_of_program_data();
    void native_of_program();
    void program_of_native_data();
    void program_of_native();
    void late_medium_is_found();
};

void TestPaths::initTestCase()
{
    Drive empty = fixed_drive(u"E"_s, {});
    empty.Type = DriveType::cd;
    empty.device = "/dev/there-is-no-such-drive";
    set_drives({fixed_drive(u"C"_s, "/"), fixed_drive(u"D"_s, "/media/stick"), empty, fixed_drive(u"F"_s, {}),
                fixed_drive(u"H"_s, "/home/ann"), fixed_drive(u"M"_s, "/home/ann/Music")});
}

void TestPaths::native_of_program_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("native");

    QTest::newRow("a letter is the root") << u"C:"_s << QByteArray("/");
    QTest::newRow("a letter and a backslash too") << u"C:\\"_s << QByteArray("/");
    QTest::newRow("another drive's root") << u"D:\\"_s << QByteArray("/media/stick");
    QTest::newRow("a file below the root") << u"C:\\a.mp3"_s << QByteArray("/a.mp3");
    QTest::newRow("a file in folders") << u"M:\\Pop\\2001\\a b.mp3"_s << QByteArray("/home/ann/Music/Pop/2001/a b.mp3");
    QTest::newRow("a trailing backslash") << u"H:\\Music\\"_s << QByteArray("/home/ann/Music");
    QTest::newRow("a stray byte in a folder") << u"C:\\\xDCE9\\a"_s << QByteArray("/\xE9/a");
    QTest::newRow("a backslash in a name") << u"C:\\a\uF05Cb"_s << QByteArray("/a\\b");
    QTest::newRow("no path") << QString() << QByteArray();
    QTest::newRow("a letter alone") << u"C"_s << QByteArray();
    QTest::newRow("a small letter") << u"c:\\a"_s << QByteArray();
    QTest::newRow("an unknown letter") << u"Q:\\a"_s << QByteArray();
    QTest::newRow("the key of the tree's root") << u"MYCOMPUTER\\"_s << QByteArray();
    QTest::newRow("no backslash behind the colon") << u"C:a"_s << QByteArray();
    QTest::newRow("two backslashes at the end") << u"C:\\a\\\\"_s << QByteArray();
    QTest::newRow("two backslashes inside") << u"C:\\a\\\\b"_s << QByteArray();
    QTest::newRow("two backslashes alone") << u"C:\\\\"_s << QByteArray();
    QTest::newRow("the folder above") << u"C:\\a\\..\\b"_s << QByteArray();
    QTest::newRow("a slash in a name") << u"C:\\a/b"_s << QByteArray();
    QTest::newRow("an empty drive") << u"E:\\a"_s << QByteArray();
    QTest::newRow("a drive with neither mount point nor device") << u"F:\\a"_s << QByteArray();
}

void TestPaths::native_of_program()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, native);

    QCOMPARE(native_path(path), native);
}

void TestPaths::program_of_native_data()
{
    QTest::addColumn<QByteArray>("native");
    QTest::addColumn<QString>("path");

    QTest::newRow("the root") << QByteArray("/") << u"C:"_s;
    QTest::newRow("a file of the system") << QByteArray("/usr/a") << u"C:\\usr\\a"_s;
    QTest::newRow("the nearest drive wins") << QByteArray("/home/ann/Music/a.mp3") << u"M:\\a.mp3"_s;
    QTest::newRow("a drive's own root") << QByteArray("/home/ann/Music") << u"M:"_s;
    QTest::newRow("a folder whose name only begins like a drive's")
        << QByteArray("/home/ann/Musica/b") << u"H:\\Musica\\b"_s;
    QTest::newRow("a trailing slash") << QByteArray("/media/stick/x/") << u"D:\\x"_s;
    QTest::newRow("a backslash in a name") << QByteArray("/a\\b") << u"C:\\a\uF05Cb"_s;
    QTest::newRow("a stray byte") << QByteArray("/\xE9") << u"C:\\\xDCE9"_s;
    QTest::newRow("a relative path") << QByteArray("a/b") << QString();
    QTest::newRow("nothing") << QByteArray() << QString();
    QTest::newRow("the folder above") << QByteArray("/a/../b") << QString();
}

void TestPaths::program_of_native()
{
    QFETCH(QByteArray, native);
    QFETCH(QString, path);

    QCOMPARE(program_path(native), path);
}

void TestPaths::late_medium_is_found()
{
    const QByteArray device = any_mounted_device();
    if (device.isEmpty())
        QSKIP("no device is mounted on this machine");
    Drive late = fixed_drive(u"D"_s, {});
    late.Type = DriveType::cd;
    late.device = device;
    set_drives({late});

    const QByteArray mount_point = mount_point_of(device);
    QVERIFY(mount_point.startsWith('/'));
    QCOMPARE(native_path(u"D:\\a"_s), (mount_point == "/" ? QByteArray() : mount_point) + "/a");
    QCOMPARE(program_path(native_path(u"D:\\a"_s)), u"D:\\a"_s);
}

QUILMO_LOGIC_TEST(TestPaths)
#include "test_paths.moc"
