#include "test_main.h"

#include "fif/Check_korean.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestCheckKorean : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void counts_bytes_of_the_code_page_data();
    void counts_bytes_of_the_code_page();
    void a_count_beyond_16_bits_overflows();
    void shows_a_count_with_its_unit();
};

void TestCheckKorean::counts_bytes_of_the_code_page_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("bytes");
    QTest::newRow("no text") << QString() << 0;
    QTest::newRow("an ASCII character is one byte") << u"Artist - Title.mp3"_s << 18;
    QTest::newRow("a NUL is one byte") << u"a\0b"_s << 3;
    QTest::newRow("a syllable is two bytes") << u"가나다.mp3"_s << 10;
    QTest::newRow("a syllable of the extension of the page is two bytes") << u"갂힣"_s << 4;
    QTest::newRow("a Chinese character of the page is two bytes") << u"金"_s << 2;
    QTest::newRow("a symbol of the page is two bytes") << u"★"_s << 2;
    QTest::newRow("a letter that the page lacks is one byte") << u"Café"_s << 4;
    QTest::newRow("a no-break blank is one byte") << u"a\u00A0b"_s << 3;
    QTest::newRow("each half of a pair of surrogates is one byte") << u"😀"_s << 2;
    QTest::newRow("a stray byte of a name is one byte") << QString(QChar(0xDCE9)) << 1;
    QTest::newRow("a backslash within a name is one byte") << QString(QChar(0xF05C)) << 1;
}

void TestCheckKorean::counts_bytes_of_the_code_page()
{
    QFETCH(const QString, text);
    QTEST(int{Byte_count(text)}, "bytes");
}

void TestCheckKorean::a_count_beyond_16_bits_overflows()
{
    QCOMPARE(int{Byte_count(QString(32767, u'a'))}, 32767);
    QCOMPARE(int{Byte_count(QString(16383, u'가'))}, 32766);
    QVERIFY_THROWS_EXCEPTION(RunTimeError, Byte_count(QString(32768, u'a')));
    QVERIFY_THROWS_EXCEPTION(RunTimeError, Byte_count(QString(16384, u'가')));
}

void TestCheckKorean::shows_a_count_with_its_unit()
{
    QCOMPARE(byte_count_text(u"가나다-노래.mp3"), u"15 byte"_s);
    QCOMPARE(byte_count_text(u""), u"0 byte"_s);
    QCOMPARE(byte_count_text(u"a"), u"1 byte"_s);
}

QUILMO_LOGIC_TEST(TestCheckKorean)

#include "test_check_korean.moc"
