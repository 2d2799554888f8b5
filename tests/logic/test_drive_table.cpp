#include "test_main.h"

#include "core/drive_table.h"
#include "core/mod_of_grobal_var.h"

#include <QCoreApplication>
#include <QTest>

using namespace Qt::StringLiterals;

class TestDriveTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void state_follows_kind_and_readiness_data();
    void state_follows_kind_and_readiness();
    void an_unknown_letter_has_state_0();
    void the_letter_is_compared_exactly();
    void an_entry_goes_to_the_first_free_slot();
    void the_first_entry_of_a_letter_counts();
    void the_twenty_first_drive_is_dropped();
};

void TestDriveTable::state_follows_kind_and_readiness_data()
{
    QTest::addColumn<i16>("kind");
    QTest::addColumn<i16>("ready");
    QTest::addColumn<i16>("state");
    QTest::newRow("ready removable drive") << i16{1} << i16{1} << i16{1};
    QTest::newRow("ready CD") << i16{2} << i16{1} << i16{2};
    QTest::newRow("ready local drive") << i16{4} << i16{1} << i16{1};
    QTest::newRow("removable drive without medium") << i16{1} << i16{0} << i16{0};
    QTest::newRow("CD drive without disc") << i16{2} << i16{0} << i16{0};
    QTest::newRow("local drive that is not ready") << i16{4} << i16{0} << i16{0};
    QTest::newRow("ready is 1 and nothing else") << i16{4} << i16{2} << i16{0};
}

void TestDriveTable::state_follows_kind_and_readiness()
{
    QFETCH(const i16, kind);
    QFETCH(const i16, ready);
    const TestDisk disk;
    add_drive_entry(kind, u"D"_s, ready);
    QTEST(get_drive_state(u"D"_s), "state");
}

void TestDriveTable::an_unknown_letter_has_state_0()
{
    const TestDisk disk;
    QCOMPARE(get_drive_state(u"Q"_s), i16{0});
    QCOMPARE(get_drive_state(QString()), i16{0});
    add_drive_entry(4, u"C"_s, 1);
    QCOMPARE(get_drive_state(u"Q"_s), i16{0});
    QCOMPARE(get_drive_state(QString()), i16{0});
}

void TestDriveTable::the_letter_is_compared_exactly()
{
    const TestDisk disk;
    add_drive_entry(4, u"C"_s, 1);
    QCOMPARE(get_drive_state(u"C"_s), i16{1});
    QCOMPARE(get_drive_state(u"c"_s), i16{0});
    QCOMPARE(get_drive_state(u"C:"_s), i16{0});
}

void TestDriveTable::an_entry_goes_to_the_first_free_slot()
{
    const TestDisk disk;
    add_drive_entry(4, u"C"_s, 1);
    add_drive_entry(2, u"D"_s, 0);
    add_drive_entry(1, u"E"_s, 1);
    shared.drive_table[1].in_use = 0;
    add_drive_entry(2, u"F"_s, 1);
    QCOMPARE(shared.drive_table[1].letter, u"F"_s);
    QCOMPARE(shared.drive_table[1].kind, i16{2});
    QCOMPARE(shared.drive_table[1].ready, i16{1});
    QCOMPARE(shared.drive_table[1].in_use, i16{1});
    QCOMPARE(shared.drive_table[2].letter, u"E"_s);
    QCOMPARE(shared.drive_table[3].in_use, i16{0});
    QCOMPARE(get_drive_state(u"D"_s), i16{0});
    QCOMPARE(get_drive_state(u"F"_s), i16{2});
}

void TestDriveTable::the_first_entry_of_a_letter_counts()
{
    const TestDisk disk;
    add_drive_entry(4, u"C"_s, 1);
    add_drive_entry(2, u"C"_s, 1);
    QCOMPARE(get_drive_state(u"C"_s), i16{1});
}

void TestDriveTable::the_twenty_first_drive_is_dropped()
{
    const TestDisk disk;
    for (char16_t letter = u'A'; letter < u'A' + 21; ++letter)
        add_drive_entry(4, QString(QChar(letter)), 1);
    QCOMPARE(get_drive_state(u"T"_s), i16{1});
    QCOMPARE(get_drive_state(u"U"_s), i16{0});
    QCOMPARE(shared.drive_table[20].in_use, i16{0});
}

QUILMO_LOGIC_TEST(TestDriveTable)
#include "test_drive_table.moc"
