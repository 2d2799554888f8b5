#include "fif/genre_codes.h"
#include "test_main.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestGenreCodes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void every_position_has_its_code();
    void other_positions_have_none_data();
    void other_positions_have_none();
};

void TestGenreCodes::every_position_has_its_code()
{
    const QStringList codes = u"ALT BLU CLS CNT DAN ELE FLK GOS HIP JAZ MET NAG POP RAP RNB ROC OTH"_s.split(u' ');
    for (int position = 0; position < codes.size(); ++position)
        QCOMPARE(genre_code(position), codes[position]);
}

void TestGenreCodes::other_positions_have_none_data()
{
    QTest::addColumn<int>("position");
    QTest::newRow("nothing selected") << -1;
    QTest::newRow("behind the last") << 17;
    QTest::newRow("the last entry of the genre box") << 148;
}

void TestGenreCodes::other_positions_have_none()
{
    QFETCH(int, position);
    QCOMPARE(genre_code(position), QString());
}

QUILMO_LOGIC_TEST(TestGenreCodes)

#include "test_genre_codes.moc"
