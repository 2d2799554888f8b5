#include "platform/numbers.h"
#include "test_main.h"

#include <QCoreApplication>
#include <QTest>

#include <limits>

class TestNumbers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void checked_keeps_what_fits_data();
    void checked_keeps_what_fits();
    void checked_raises_overflow_data();
    void checked_raises_overflow();
    void halves_go_to_the_even_neighbour_data();
    void halves_go_to_the_even_neighbour();
    void rounded_raises_overflow_data();
    void rounded_raises_overflow();
};

void TestNumbers::checked_keeps_what_fits_data()
{
    QTest::addColumn<qint64>("value");

    QTest::newRow("nothing") << qint64(0);
    QTest::newRow("the greatest 16-bit number") << qint64(32767);
    QTest::newRow("the least 16-bit number") << qint64(-32768);
}

void TestNumbers::checked_keeps_what_fits()
{
    QFETCH(qint64, value);

    QCOMPARE(checked<i16>(value), static_cast<i16>(value));
    QCOMPARE(checked<i32>(value * 65536), static_cast<i32>(value * 65536));
}

void TestNumbers::checked_raises_overflow_data()
{
    QTest::addColumn<qint64>("value");
    QTest::addColumn<bool>("fits_32_bits");

    QTest::newRow("one above 16 bits") << qint64(32768) << true;
    QTest::newRow("one below 16 bits") << qint64(-32769) << true;
    QTest::newRow("the greatest 32-bit number") << qint64(2147483647) << true;
    QTest::newRow("one above 32 bits") << qint64(2147483648) << false;
    QTest::newRow("one below 32 bits") << qint64(-2147483649) << false;
    QTest::newRow("the greatest of all") << std::numeric_limits<qint64>::max() << false;
}

void TestNumbers::checked_raises_overflow()
{
    QFETCH(qint64, value);
    QFETCH(bool, fits_32_bits);

    QVERIFY_THROWS_EXCEPTION(RunTimeError, checked<i16>(value));
    QCOMPARE(errors_ignored([value] { checked<i32>(value); }), fits_32_bits);
    try {
        checked<i16>(value);
    } catch (const RunTimeError& error) {
        QCOMPARE(error.number(), 6);
        QCOMPARE(error.text(), QStringLiteral("Overflow"));
    }
}

void TestNumbers::halves_go_to_the_even_neighbour_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("whole");

    QTest::newRow("a half goes down to 0") << 0.5 << 0;
    QTest::newRow("one and a half goes up") << 1.5 << 2;
    QTest::newRow("two and a half goes down") << 2.5 << 2;
    QTest::newRow("a negative half goes to 0") << -0.5 << 0;
    QTest::newRow("minus one and a half goes down") << -1.5 << -2;
    QTest::newRow("just below a half") << 0.49999999999999994 << 0;
    QTest::newRow("just above a half") << 2.5000000001 << 3;
    QTest::newRow("a whole number stays") << 7.0 << 7;
}

void TestNumbers::halves_go_to_the_even_neighbour()
{
    QFETCH(double, value);
    QFETCH(int, whole);

    QCOMPARE(rounded<i32>(value), whole);
    QCOMPARE(round_half_even(value), static_cast<double>(whole));
}

void TestNumbers::rounded_raises_overflow_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("fits");

    QTest::newRow("rounds down to the greatest") << 32767.4 << true;
    QTest::newRow("a half too much") << 32767.5 << false;
    QTest::newRow("rounds to the least, which is even") << -32768.5 << true;
    QTest::newRow("below the least") << -32768.6 << false;
    QTest::newRow("infinity") << std::numeric_limits<double>::infinity() << false;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << false;
}

void TestNumbers::rounded_raises_overflow()
{
    QFETCH(double, value);
    QFETCH(bool, fits);

    QCOMPARE(errors_ignored([value] { rounded<i16>(value); }), fits);
}

QUILMO_LOGIC_TEST(TestNumbers)
#include "test_numbers.moc"
