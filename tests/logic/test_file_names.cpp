#include "platform/file_names.h"
#include "test_main.h"

#include <QCoreApplication>
#include <QTest>

#include <array>
#include <random>
#include <utility>

using namespace Qt::StringLiterals;

class TestFileNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void text_of_bytes_data();
    void text_of_bytes();
    void every_single_byte_survives();
    void random_bytes_survive();
    void no_file_bears_data();
    void no_file_bears();
};

void TestFileNames::text_of_bytes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");

    QTest::newRow("ASCII stays") << QByteArray("[a][b].mp3") << u"[a][b].mp3"_s;
    QTest::newRow("a leading full stop stays") << QByteArray(".hidden") << u".hidden"_s;
    QTest::newRow("line breaks stay") << QByteArray("a\nb\r.mp3") << u"a\nb\r.mp3"_s;
    QTest::newRow("Korean is read as UTF-8") << QByteArray("\xEA\xB0\x80.mp3") << u"가.mp3"_s;
    QTest::newRow("characters beyond 16 bits are pairs") << QByteArray("\xF0\x9F\x98\x80") << u"\U0001F600"_s;
    QTest::newRow("a byte order mark stays") << QByteArray("\xEF\xBB\xBF"
                                                           "a")
                                             << u"\uFEFFa"_s;
    QTest::newRow("a Windows-1252 letter is a stray byte") << QByteArray("Caf\xE9.mp3") << u"Caf\xDCE9.mp3"_s;
    QTest::newRow("a backslash is U+F05C") << QByteArray("a\\b") << u"a\uF05Cb"_s;
    QTest::newRow("U+F05C on disk is three stray bytes") << QByteArray("\xEF\x81\x9C") << u"\xDCEF\xDC81\xDC9C"_s;
    QTest::newRow("an overlong slash is stray bytes") << QByteArray("\xC0\xAF") << u"\xDCC0\xDCAF"_s;
    QTest::newRow("an overlong letter of three bytes is stray bytes")
        << QByteArray("\xE0\x81\x81") << u"\xDCE0\xDC81\xDC81"_s;
    QTest::newRow("a surrogate in UTF-8 is stray bytes") << QByteArray("\xED\xB2\x80") << u"\xDCED\xDCB2\xDC80"_s;
    QTest::newRow("a code beyond the last is stray bytes")
        << QByteArray("\xF4\x90\x80\x80") << u"\xDCF4\xDC90\xDC80\xDC80"_s;
    QTest::newRow("a cut sequence is stray bytes") << QByteArray("a\xEA\xB0") << u"a\xDCEA\xDCB0"_s;
    QTest::newRow("a broken sequence keeps what follows") << QByteArray("\xEA\xB0"
                                                                        "a")
                                                          << u"\xDCEA\xDCB0"
                                                             u"a"_s;
}

void TestFileNames::text_of_bytes()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);

    QCOMPARE(name_from_bytes(bytes), text);
    QCOMPARE(name_to_bytes(text), bytes);
}

void TestFileNames::every_single_byte_survives()
{
    for (int value = 1; value <= 0xFF; ++value) {
        const QByteArray bytes(1, static_cast<char>(value));
        if (bytes == "/" || bytes == ".")
            continue;
        QCOMPARE(name_to_bytes(name_from_bytes(bytes)), bytes);
    }
}

void TestFileNames::random_bytes_survive()
{
    std::mt19937 random(949); // NOLINT(bugprone-random-generator-seed, cert-msc51-cpp): the same names at each run
    std::uniform_int_distribution<int> length(1, 255);
    // Narrow ranges of bytes make valid, cut and overlong sequences likely.
    const std::array<std::pair<int, int>, 4> ranges = {{{1, 255}, {0x7F, 255}, {0xE0, 0xF5}, {0x80, 0xC3}}};
    for (int round = 0; round < 20000; ++round) {
        const auto [low, high] = ranges.at(static_cast<std::size_t>(round) % ranges.size());
        std::uniform_int_distribution<int> any(low, high);
        std::uniform_int_distribution<int> follower(0x80, 0xBF);
        QByteArray bytes;
        for (int left = length(random); left > 0; --left) {
            const int value = left % 2 == 0 ? follower(random) : any(random);
            bytes += static_cast<char>(value == '/' ? '\\' : value);
        }
        if (bytes == "." || bytes == "..")
            continue;
        QCOMPARE(name_to_bytes(name_from_bytes(bytes)), bytes);
    }
}

void TestFileNames::no_file_bears_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("an empty name") << QString();
    QTest::newRow("the folder itself") << u"."_s;
    QTest::newRow("the folder above") << u".."_s;
    QTest::newRow("a slash") << u"a/b"_s;
    QTest::newRow("a backslash, which parts names") << u"a\\b"_s;
    QTest::newRow("a NUL") << QString(u"a"_s + QChar(0) + u'b');
    QTest::newRow("a high surrogate without a low one") << u"a\xD800"_s;
    QTest::newRow("a high surrogate before a letter") << u"\xD800"
                                                         u"a"_s;
    QTest::newRow("a low surrogate below the stray bytes") << u"\xDC7F"_s;
    QTest::newRow("a low surrogate above the stray bytes") << u"\xDD00"_s;
}

void TestFileNames::no_file_bears()
{
    QFETCH(QString, name);

    QVERIFY(name_to_bytes(name).isEmpty());
}

QUILMO_LOGIC_TEST(TestFileNames)
#include "test_file_names.moc"
