#include "frame/look.h"
#include "test_main.h"

#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString menu_entry = u"share/applications/example.quilmo.Quilmo.desktop"_s;
const QString metadata = u"share/metainfo/example.quilmo.Quilmo.metainfo.xml"_s;
const QString documents = u"share/doc/" QUILMO_PACKAGE u"/"_s;

QString icon_path(int size)
{
    return u"share/icons/hicolor/%1x%1/apps/example.quilmo.Quilmo.png"_s.arg(size);
}

} // namespace

/// What `cmake --install` puts below a prefix.
class TestInstall : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void each_file_is_installed_and_no_other();
    void the_programs_can_be_started_by_all();
    void the_window_bears_the_name_of_the_menu_entry();
    void the_menu_entry_says_data();
    void the_menu_entry_says();
    void the_menu_entry_speaks_data();
    void the_menu_entry_speaks();
    void an_icon_has_its_size_data();
    void an_icon_has_its_size();
    void the_metadata_and_manuals_tell_the_version();
    void the_metadata_name_the_menu_entry();
    void the_guide_has_beside_it_what_it_shows_and_points_to();

private:
    QByteArray content(const QString& path) const;
    /// What the menu entry says for a key; nothing where it has no such line.
    QString said_for(const QString& key) const;

    QTemporaryDir prefix_;
};

void TestInstall::initTestCase()
{
    QProcess cmake;
    cmake.setProcessChannelMode(QProcess::MergedChannels);
    cmake.start(QUILMO_CMAKE, {u"--install"_s, QUILMO_BUILD_FOLDER, u"--prefix"_s, prefix_.path()});
    QVERIFY(cmake.waitForFinished());
    QVERIFY2(cmake.exitStatus() == QProcess::NormalExit && cmake.exitCode() == 0, cmake.readAll().constData());
}

QByteArray TestInstall::content(const QString& path) const
{
    QFile file(prefix_.filePath(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString TestInstall::said_for(const QString& key) const
{
    for (const QString& line : QString::fromUtf8(content(menu_entry)).split(u'\n')) {
        if (line.startsWith(key + u'='))
            return line.mid(key.size() + 1);
    }
    return {};
}

void TestInstall::each_file_is_installed_and_no_other()
{
    QStringList expected = {
        u"bin/quilmo"_s,
        u"bin/quilmo-fif"_s,
        menu_entry,
        metadata,
        u"share/bash-completion/completions/quilmo-fif"_s,
        u"share/fish/vendor_completions.d/quilmo-fif.fish"_s,
        u"share/zsh/site-functions/_quilmo-fif"_s,
        documents + u"copyright"_s,
        documents + u"guide.md"_s,
        documents + u"safety.md"_s,
        u"share/icons/hicolor/scalable/apps/example.quilmo.Quilmo.svg"_s,
        u"share/man/man1/quilmo.1.gz"_s,
        u"share/man/man1/quilmo-fif.1.gz"_s,
        u"share/man/de/man1/quilmo.1.gz"_s,
        u"share/man/ko/man1/quilmo.1.gz"_s,
    };
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256, 512})
        expected.append(icon_path(size));
    for (const QString& picture :
         {u"auto-convert"_s, u"converted"_s, u"copy-folder"_s, u"edit-file"_s, u"fif-type"_s, u"final-list"_s,
          u"genre-type"_s, u"main-window"_s, u"one-file"_s, u"player"_s, u"replace"_s, u"ticked-files"_s, u"trash"_s})
        expected.append(u"%1pictures/%2.png"_s.arg(documents, picture));
    expected.sort();

    QStringList installed;
    QDirIterator files(prefix_.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext())
        installed.append(QDir(prefix_.path()).relativeFilePath(files.next()));
    installed.sort();
    QCOMPARE(installed.join(u'\n'), expected.join(u'\n'));
}

void TestInstall::the_programs_can_be_started_by_all()
{
    for (const QString& program : {u"bin/quilmo"_s, u"bin/quilmo-fif"_s}) {
        const QFile::Permissions rights = QFile::permissions(prefix_.filePath(program));
        QVERIFY(rights.testFlag(QFile::ExeOther));
        QVERIFY(!rights.testFlag(QFile::WriteOther));
    }
}

void TestInstall::the_window_bears_the_name_of_the_menu_entry()
{
    apply_look();
    QCOMPARE(u"share/applications/%1.desktop"_s.arg(QGuiApplication::desktopFileName()), menu_entry);
}

void TestInstall::the_menu_entry_says_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("text");

    QTest::newRow("it is a program") << u"Type"_s << u"Application"_s;
    QTest::newRow("it starts the program without a path") << u"Exec"_s << u"quilmo"_s;
    QTest::newRow("the icon is the one that is installed") << u"Icon"_s << u"example.quilmo.Quilmo"_s;
    QTest::newRow("a window is known by the program's name") << u"StartupWMClass"_s << u"quilmo"_s;
    QTest::newRow("no kinds of files are opened") << u"MimeType"_s << QString();
    QTest::newRow("it stands among the sound programs")
        << u"Categories"_s << u"AudioVideo;Audio;AudioVideoEditing;Qt;"_s;
}

void TestInstall::the_menu_entry_says()
{
    QFETCH(const QString, key);
    QFETCH(const QString, text);
    QCOMPARE(said_for(key), text);
}

void TestInstall::the_menu_entry_speaks_data()
{
    QTest::addColumn<QString>("language");

    QTest::newRow("English") << QString();
    QTest::newRow("Korean") << u"[ko]"_s;
    QTest::newRow("German") << u"[de]"_s;
}

void TestInstall::the_menu_entry_speaks()
{
    QFETCH(const QString, language);
    for (const QString& key : {u"GenericName"_s, u"Comment"_s, u"Keywords"_s})
        QVERIFY(!said_for(key + language).isEmpty());
}

void TestInstall::an_icon_has_its_size_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256, 512})
        QTest::addRow("%d pixels", size) << size;
}

void TestInstall::an_icon_has_its_size()
{
    QFETCH(const int, size);
    const QImage icon(prefix_.filePath(icon_path(size)));
    QCOMPARE(icon.size(), QSize(size, size));
    QCOMPARE(icon.pixelColor(0, 0).alpha(), 0);
    QCOMPARE(icon.pixelColor(size / 2, size / 8).alpha(), 255);
}

void TestInstall::the_metadata_and_manuals_tell_the_version()
{
    const QByteArray version = QUILMO_VERSION;
    QVERIFY(content(metadata).contains("<release version=\"" + version + "\""));
    for (const QString& manual :
         {u"man1/quilmo.1"_s, u"man1/quilmo-fif.1"_s, u"de/man1/quilmo.1"_s, u"ko/man1/quilmo.1"_s}) {
        QProcess gzip;
        gzip.start(u"gzip"_s, {u"-dc"_s, prefix_.filePath(u"share/man/%1.gz"_s.arg(manual))});
        QVERIFY(gzip.waitForFinished());
        QVERIFY2(gzip.readAll().contains("\"Quilmo " + version + "\""), qPrintable(manual));
    }
}

void TestInstall::the_metadata_name_the_menu_entry()
{
    QVERIFY(content(metadata).contains("<launchable type=\"desktop-id\">example.quilmo.Quilmo.desktop</launchable>"));
    QVERIFY(!content(metadata).contains('@'));
}

void TestInstall::the_guide_has_beside_it_what_it_shows_and_points_to()
{
    static const QRegularExpression link(u"\\]\\(([^)#:]+)\\)"_s);
    int pictures = 0;
    for (const QString& page : {u"guide.md"_s, u"safety.md"_s}) {
        QRegularExpressionMatchIterator links = link.globalMatch(QString::fromUtf8(content(documents + page)));
        while (links.hasNext()) {
            const QString target = links.next().captured(1);
            QVERIFY2(!target.contains(u".."_s), qPrintable(target));
            QVERIFY2(QFile::exists(prefix_.filePath(documents + target)), qPrintable(target));
            pictures += target.endsWith(u".png"_s) ? 1 : 0;
        }
    }
    QCOMPARE(pictures, 13);
}

QUILMO_UI_TEST(TestInstall)
#include "test_install.moc"
