#include "core/mod_of_grobal_var.h"
#include "core/user_settings.h"
#include "platform/settings.h"
#include "test_main.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString store_file()
{
    return qEnvironmentVariable("XDG_CONFIG_HOME") + u"/Quilmo.ini"_s;
}

void write_store(const QByteArray& content)
{
    QDir().mkpath(QFileInfo(store_file()).path());
    QFile file(store_file());
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

QByteArray read_store()
{
    QFile file(store_file());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestSettings : public QObject
{
    Q_OBJECT

    QTemporaryDir machine_; ///< holds settings for all users of the machine, which have no say

private Q_SLOTS:
    void initTestCase();
    void init();
    void first_start_gives_the_defaults();
    void texts_survive_data();
    void texts_survive();
    void sections_are_apart();
    void store_is_the_users_alone();
    void bad_store_is_empty_data();
    void bad_store_is_empty();
    void damaged_section_leaves_the_others();
    void damaged_store_is_mended_by_writing();
    void saved_store_is_later_than_the_one_before();
    void store_without_settings_takes_one_data();
    void store_without_settings_takes_one();
    void unreadable_store_is_empty();
    void four_settings_survive_a_run();
    void empty_path_leaves_the_stored_one();
    void stored_numbers_data();
    void stored_numbers();
    void stored_text_that_is_no_number_data();
    void stored_text_that_is_no_number();
    void failure_keeps_the_order_of_reading();
};

void TestSettings::initTestCase()
{
    QFile file(machine_.filePath(u"Quilmo.ini"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("[location_burn]\nlocation=x\n[fif_type]\nlocation=6\n[vol_type]\nlocation=7\n") > 0);
    qputenv("XDG_CONFIG_DIRS", QFile::encodeName(machine_.path()));
}

void TestSettings::init()
{
    QDir(store_file()).removeRecursively();
    QFile::remove(store_file());
    shared = {};
}

void TestSettings::first_start_gives_the_defaults()
{
    shared.burn_program_path = u"old"_s;
    read_settings();

    QCOMPARE(shared.burn_program_path, QString());
    QCOMPARE(shared.fif_type, i16(1));
    QCOMPARE(shared.genre_type, i16(1));
    QCOMPARE(shared.vol_type, i16(35));
    QVERIFY2(!QFile::exists(store_file()), "reading writes nothing");
}

void TestSettings::texts_survive_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("a path") << u"C:\\Program Files\\burn\\burn.exe"_s;
    QTest::newRow("backslashes before letters that mean something") << u"C:\\new\\x41\\tools\\0"_s;
    QTest::newRow("commas and semicolons") << u"a, b;c,,d"_s;
    QTest::newRow("per cent and equal signs") << u"%1=%20&%"_s;
    QTest::newRow("quotation marks") << u"\"a\" 'b'"_s;
    QTest::newRow("Korean") << u"C:\\프로그램\\굽기"_s;
    QTest::newRow("Western letters") << u"C:\\Größe\\café"_s;
    QTest::newRow("blanks at both ends") << u"  a  "_s;
    QTest::newRow("line breaks and tabs") << u"a\nb\r\tc"_s;
    QTest::newRow("an at sign in front") << u"@Variant(x)"_s;
    QTest::newRow("an empty text") << u""_s;
}

void TestSettings::texts_survive()
{
    QFETCH(QString, text);
    SaveSetting(u"Quilmo"_s, u"location_burn"_s, u"location"_s, text);
    // A touched file is read anew, so that the text comes from disk and not from a cache.
    write_store(read_store() + "\n");

    QCOMPARE(GetSetting(u"Quilmo"_s, u"location_burn"_s, u"location"_s, u"default"_s), text);
}

void TestSettings::sections_are_apart()
{
    SaveSetting(u"Quilmo"_s, u"fif_type"_s, u"location"_s, u"2"_s);

    QCOMPARE(GetSetting(u"Quilmo"_s, u"genre_type"_s, u"location"_s, u"default"_s), u"default"_s);
    QCOMPARE(GetSetting(u"Quilmo"_s, u"fif_type"_s, u"other"_s, u"default"_s), u"default"_s);
    QCOMPARE(GetSetting(u"Other"_s, u"fif_type"_s, u"location"_s, u"default"_s), u"default"_s);
    QCOMPARE(read_store().trimmed(), QByteArray("[fif_type]\nlocation=2"));
}

void TestSettings::store_is_the_users_alone()
{
    SaveSetting(u"Quilmo"_s, u"fif_type"_s, u"location"_s, u"2"_s);

    const QFileDevice::Permissions others =
        QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ReadOther | QFileDevice::WriteOther;
    QVERIFY(!(QFileInfo(store_file()).permissions() & others));
}

void TestSettings::bad_store_is_empty_data()
{
    QTest::addColumn<QByteArray>("content");

    QTest::newRow("an empty file") << QByteArray();
    QTest::newRow("a line without a value") << QByteArray("[fif_type]\nlocation\n[vol_type]\nlocation\n");
    QTest::newRow("random bytes") << QByteArray("\x00\xFF\x80[fif_type\nlocation\x01", 22);
}

void TestSettings::bad_store_is_empty()
{
    QFETCH(QByteArray, content);
    write_store(content);
    read_settings();

    QCOMPARE(shared.burn_program_path, QString());
    QCOMPARE(shared.fif_type, i16(1));
    QCOMPARE(shared.genre_type, i16(1));
    QCOMPARE(shared.vol_type, i16(35));
    QCOMPARE(read_store(), content);
}

void TestSettings::damaged_section_leaves_the_others()
{
    write_store("[location_burn]\nlocation=C:/burn\n[fif_type\nlocation=2\n[vol_type]\nlocation\n");
    read_settings();

    QCOMPARE(shared.burn_program_path, u"C:/burn"_s);
    QCOMPARE(shared.fif_type, i16(2));
    QCOMPARE(shared.vol_type, i16(35));
}

void TestSettings::damaged_store_is_mended_by_writing()
{
    write_store(QByteArray("\x00\xFF\x80[fif_type\nlocation\x01", 22));
    shared.fif_type = 4;
    write_settings();
    shared = {};
    read_settings();

    QCOMPARE(shared.fif_type, i16(4));
}

void TestSettings::saved_store_is_later_than_the_one_before()
{
    write_store("[fif_type]\nlocation=2\n");
    QFile file(store_file());
    QVERIFY(file.open(QIODevice::ReadWrite));
    const QDateTime an_hour_ahead = QDateTime::currentDateTime().addSecs(3600);
    QVERIFY(file.setFileTime(an_hour_ahead, QFile::FileModificationTime));
    SaveSetting(u"Quilmo"_s, u"fif_type"_s, u"location"_s, u"4"_s);

    QVERIFY(QFileInfo(store_file()).lastModified() > an_hour_ahead);
    QCOMPARE(GetSetting(u"Quilmo"_s, u"fif_type"_s, u"location"_s, {}), u"4"_s);
}

void TestSettings::store_without_settings_takes_one_data()
{
    QTest::addColumn<QByteArray>("content");

    QTest::newRow("a comment that looks like a setting") << QByteArray("[fif_type]\n;location=2\n");
    QTest::newRow("a comment behind blanks") << QByteArray("  ; location=2\n");
    QTest::newRow("a section named like a setting") << QByteArray("[location=2]\n");
    QTest::newRow("a quotation mark in a section's name") << QByteArray("[fif\"_type\n]\nlocation=2\n");
}

void TestSettings::store_without_settings_takes_one()
{
    QFETCH(QByteArray, content);
    write_store(content);
    SaveSetting(u"Quilmo"_s, u"fif_type"_s, u"location"_s, u"4"_s);

    QCOMPARE(GetSetting(u"Quilmo"_s, u"fif_type"_s, u"location"_s, u"default"_s), u"4"_s);
}

void TestSettings::unreadable_store_is_empty()
{
    QDir().mkpath(store_file());
    read_settings();
    write_settings();

    QCOMPARE(shared.vol_type, i16(35));
    QVERIFY(QFileInfo(store_file()).isDir());
}

void TestSettings::four_settings_survive_a_run()
{
    shared.burn_program_path = u"C:\\burn"_s;
    shared.fif_type = 6;
    shared.genre_type = 2;
    shared.vol_type = 100;
    write_settings();
    shared = {};
    read_settings();

    QCOMPARE(shared.burn_program_path, u"C:\\burn"_s);
    QCOMPARE(shared.fif_type, i16(6));
    QCOMPARE(shared.genre_type, i16(2));
    QCOMPARE(shared.vol_type, i16(100));
    QCOMPARE(GetSetting(u"Quilmo"_s, u"vol_type"_s, u"location"_s, {}), u"100"_s);
}

void TestSettings::empty_path_leaves_the_stored_one()
{
    SaveSetting(u"Quilmo"_s, u"location_burn"_s, u"location"_s, u"C:\\burn"_s);
    write_settings();

    QCOMPARE(GetSetting(u"Quilmo"_s, u"location_burn"_s, u"location"_s, {}), u"C:\\burn"_s);
    QCOMPARE(GetSetting(u"Quilmo"_s, u"fif_type"_s, u"location"_s, {}), u"0"_s);
}

void TestSettings::stored_numbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");

    QTest::newRow("a whole number") << u"4"_s << 4;
    QTest::newRow("a number outside 1 to 6 stays as it stands") << u"77"_s << 77;
    QTest::newRow("a negative number") << u"-3"_s << -3;
    QTest::newRow("a plus sign") << u"+3"_s << 3;
    QTest::newRow("blanks around") << u"  5 "_s << 5;
    QTest::newRow("a half goes to the even number below") << u"2.5"_s << 2;
    QTest::newRow("a half goes to the even number above") << u"3.5"_s << 4;
    QTest::newRow("a full stop in front") << u".6"_s << 1;
    QTest::newRow("a full stop behind") << u"6."_s << 6;
    QTest::newRow("an exponent") << u"1e2"_s << 100;
    QTest::newRow("an exponent in capitals with a sign") << u"-.25E+1"_s << -2;
    QTest::newRow("a tiny number") << u"1e-999"_s << 0;
    QTest::newRow("the greatest") << u"32767.4"_s << 32767;
    QTest::newRow("the least") << u"-32768"_s << -32768;
    QTest::newRow("zeros in front") << u"0000000000000000000000006"_s << 6;
}

void TestSettings::stored_numbers()
{
    QFETCH(QString, text);
    QFETCH(int, number);
    SaveSetting(u"Quilmo"_s, u"fif_type"_s, u"location"_s, text);
    read_settings();

    QCOMPARE(int(shared.fif_type), number);
}

void TestSettings::stored_text_that_is_no_number_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("error");

    QTest::newRow("nothing") << u""_s << 13;
    QTest::newRow("blanks") << u"  "_s << 13;
    QTest::newRow("a word") << u"one"_s << 13;
    QTest::newRow("a number and a word") << u"1 one"_s << 13;
    QTest::newRow("two numbers") << u"1 2"_s << 13;
    QTest::newRow("a sign alone") << u"-"_s << 13;
    QTest::newRow("two signs") << u"+-1"_s << 13;
    QTest::newRow("two full stops") << u"1.2.3"_s << 13;
    QTest::newRow("an exponent alone") << u"e2"_s << 13;
    QTest::newRow("an exponent without digits") << u"1e"_s << 13;
    QTest::newRow("an exponent with a sign alone") << u"1e+"_s << 13;
    QTest::newRow("an exponent that is no whole number") << u"1e2.5"_s << 13;
    QTest::newRow("a full stop alone") << u"."_s << 13;
    QTest::newRow("infinity") << u"inf"_s << 13;
    QTest::newRow("not a number by name") << u"nan"_s << 13;
    QTest::newRow("a number in another base") << u"0x10"_s << 13;
    QTest::newRow("Arabic digits") << u"\u0661"_s << 13;
    QTest::newRow("a number before a line break") << u"1\n"_s << 13;
    QTest::newRow("one above 16 bits") << u"32768"_s << 6;
    QTest::newRow("a half above 16 bits") << u"32767.5"_s << 6;
    QTest::newRow("one below 16 bits") << u"-32769"_s << 6;
    QTest::newRow("beyond every number") << u"1e999"_s << 6;
}

void TestSettings::stored_text_that_is_no_number()
{
    QFETCH(QString, text);
    QFETCH(int, error);
    SaveSetting(u"Quilmo"_s, u"fif_type"_s, u"location"_s, text);

    int number = 0;
    try {
        read_settings();
    } catch (const RunTimeError& raised) {
        number = raised.number();
    }
    QCOMPARE(number, error);
}

void TestSettings::failure_keeps_the_order_of_reading()
{
    SaveSetting(u"Quilmo"_s, u"location_burn"_s, u"location"_s, u"C:\\burn"_s);
    SaveSetting(u"Quilmo"_s, u"fif_type"_s, u"location"_s, u"3"_s);
    SaveSetting(u"Quilmo"_s, u"genre_type"_s, u"location"_s, u"list"_s);
    SaveSetting(u"Quilmo"_s, u"vol_type"_s, u"location"_s, u"50"_s);

    QVERIFY_THROWS_EXCEPTION(RunTimeError, read_settings());
    QCOMPARE(shared.burn_program_path, u"C:\\burn"_s);
    QCOMPARE(shared.fif_type, i16(3));
    QCOMPARE(shared.genre_type, i16(0));
    QCOMPARE(shared.vol_type, i16(0));
}

QUILMO_LOGIC_TEST(TestSettings)
#include "test_settings.moc"
