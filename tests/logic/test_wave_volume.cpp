#include "platform/wave_volume.h"
#include "test_main.h"

#include <QTest>

class TestWaveVolume : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void until_the_first_call_the_level_is_full() { QCOMPARE(wave_output_level(), 0xFFFFFFFFU); }

    void the_level_is_kept_with_both_words_data()
    {
        QTest::addColumn<int>("level");
        QTest::addColumn<quint32>("kept");
        QTest::newRow("silent") << 0 << 0x00000000U;
        QTest::newRow("35 percent") << 0x596A596A << 0x596A596AU;
        QTest::newRow("100 percent, a negative number") << -8847494 << 0xFF78FF7AU;
        QTest::newRow("right channel only") << -65536 << 0xFFFF0000U;
        QTest::newRow("both full") << -1 << 0xFFFFFFFFU;
    }

    void the_level_is_kept_with_both_words()
    {
        QFETCH(const int, level);
        QFETCH(const quint32, kept);
        waveOutSetVolume(0, level);
        QCOMPARE(wave_output_level(), kept);
    }

    void another_device_is_passed_over_data()
    {
        QTest::addColumn<int>("device");
        QTest::newRow("the next one") << 1;
        QTest::newRow("the one that stands for any") << -1;
    }

    void another_device_is_passed_over()
    {
        QFETCH(const int, device);
        waveOutSetVolume(0, 0x12345678);
        waveOutSetVolume(device, 0);
        QCOMPARE(wave_output_level(), 0x12345678U);
    }
};

QUILMO_LOGIC_TEST(TestWaveVolume)

#include "test_wave_volume.moc"
