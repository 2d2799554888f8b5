#include "platform/text.h"
#include "test_main.h"

#include <QCoreApplication>
#include <QTest>

using namespace Qt::StringLiterals;

class TestText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void text_box_ends_at_nul_data();
    void text_box_ends_at_nul();
    void blanks_are_trimmed_data();
    void blanks_are_trimmed();
    void order_of_texts_data();
    void order_of_texts();
    void digits_are_grouped_data();
    void digits_are_grouped();
    void sizes_in_kilobytes_data();
    void sizes_in_kilobytes();
    void sizes_in_megabytes_data();
    void sizes_in_megabytes();
};

void TestText::text_box_ends_at_nul_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("kept");

    QTest::newRow("without a NUL all is kept") << u"abc "_s << u"abc "_s;
    QTest::newRow("what stands before the first NUL is kept")
        << QString(u"ab"_s + QChar(0) + u"c"_s + QChar(0)) << u"ab"_s;
    QTest::newRow("a NUL in front leaves nothing") << QString(QChar(0) + u"abc"_s) << QString();
    QTest::newRow("nothing stays nothing") << QString() << QString();
}

void TestText::text_box_ends_at_nul()
{
    QFETCH(QString, text);
    QFETCH(QString, kept);

    QCOMPARE(text_box_text(text), kept);
}

void TestText::blanks_are_trimmed_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("trimmed");

    QTest::newRow("blanks at both ends go, inner ones stay") << u"  a  b "_s << u"a  b"_s;
    QTest::newRow("blanks alone give nothing") << u"   "_s << QString();
    QTest::newRow("tabs and line breaks stay") << u"\ta\n"_s << u"\ta\n"_s;
    QTest::newRow("wide and hard blanks stay") << u"\u3000a\u00A0"_s << u"\u3000a\u00A0"_s;
}

void TestText::blanks_are_trimmed()
{
    QFETCH(QString, text);
    QFETCH(QString, trimmed);

    QCOMPARE(trim_blanks(text), trimmed);
}

void TestText::order_of_texts_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");

    QTest::newRow("case comes second") << u"apple"_s << u"Banana"_s;
    QTest::newRow("capitals come first between equals") << u"Apple"_s << u"apple"_s;
    QTest::newRow("a shorter text comes first") << u"ab"_s << u"abc"_s;
    QTest::newRow("digits are characters, not numbers") << u"10KB"_s << u"9KB"_s;
    QTest::newRow("Latin comes before Korean") << u"z"_s << u"가"_s;
    QTest::newRow("nothing comes first") << QString() << u"a"_s;
}

void TestText::order_of_texts()
{
    QFETCH(QString, first);
    QFETCH(QString, second);

    QVERIFY(compare_texts(first, second) < 0);
    QVERIFY(compare_texts(second, first) > 0);
    QCOMPARE(compare_texts(first, first), 0);
}

void TestText::digits_are_grouped_data()
{
    QTest::addColumn<qint64>("number");
    QTest::addColumn<QString>("text");

    QTest::newRow("nothing is printed for 0") << qint64(0) << QString();
    QTest::newRow("three digits") << qint64(999) << u"999"_s;
    QTest::newRow("four digits") << qint64(1000) << u"1,000"_s;
    QTest::newRow("seven digits") << qint64(1234567) << u"1,234,567"_s;
    QTest::newRow("more digits than the format has") << qint64(1234567890) << u"1,234,567,890"_s;
    QTest::newRow("a negative number of three digits") << qint64(-123) << u"-123"_s;
    QTest::newRow("a negative number of four digits") << qint64(-1234) << u"-1,234"_s;
}

void TestText::digits_are_grouped()
{
    QFETCH(qint64, number);
    QFETCH(QString, text);

    QCOMPARE(group_digits(number), text);
}

void TestText::sizes_in_kilobytes_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<QString>("text");

    QTest::newRow("an empty file") << qint64(0) << u"KB"_s;
    QTest::newRow("just under half a kilobyte") << qint64(511) << u"KB"_s;
    QTest::newRow("half a kilobyte goes to the even 0") << qint64(512) << u"KB"_s;
    QTest::newRow("just over half a kilobyte") << qint64(513) << u"1KB"_s;
    QTest::newRow("1,536 bytes go up to the even 2") << qint64(1536) << u"2KB"_s;
    QTest::newRow("2,560 bytes go down to the even 2") << qint64(2560) << u"2KB"_s;
    QTest::newRow("megabytes are grouped") << qint64(5) * 1024 * 1024 << u"5,120KB"_s;
    QTest::newRow("5 gigabytes") << qint64(5) * 1024 * 1024 * 1024 << u"5,242,880KB"_s;
}

void TestText::sizes_in_kilobytes()
{
    QFETCH(qint64, bytes);
    QFETCH(QString, text);

    QCOMPARE(kilobytes_text(bytes), text);
}

void TestText::sizes_in_megabytes_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<qint64>("whole");

    QTest::newRow("half a megabyte goes to the even 0") << qint64(524288) << qint64(0);
    QTest::newRow("a byte more is 1") << qint64(524289) << qint64(1);
    QTest::newRow("one and a half is 2") << qint64(1572864) << qint64(2);
    QTest::newRow("two and a half is 2") << qint64(2621440) << qint64(2);
    QTest::newRow("the greatest 32-bit sum") << qint64(2147483647) << qint64(2048);
}

void TestText::sizes_in_megabytes()
{
    QFETCH(qint64, bytes);
    QFETCH(qint64, whole);

    QCOMPARE(megabytes(bytes), whole);
}

QUILMO_LOGIC_TEST(TestText)
#include "test_text.moc"
