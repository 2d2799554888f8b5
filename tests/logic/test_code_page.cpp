#include "test_main.h"

#include "platform/code_page.h"

#include <QTest>

#include <array>

#include <iconv.h>

using namespace Qt::StringLiterals;

namespace {

/// Code page 949 as the C library's converter knows it.
class PageOfTheCLibrary
{
public:
    PageOfTheCLibrary() : converter_(iconv_open("UTF-16LE", "CP949")) {}
    ~PageOfTheCLibrary() { iconv_close(converter_); }
    PageOfTheCLibrary(const PageOfTheCLibrary&) = delete;
    PageOfTheCLibrary& operator=(const PageOfTheCLibrary&) = delete;

    /// The character of a pair of bytes, 0 for none.
    char16_t character(int lead, int trail) const
    {
        std::array<char, 2> pair{static_cast<char>(lead), static_cast<char>(trail)};
        std::array<char16_t, 2> characters{};
        char* in = pair.data();
        std::size_t in_left = pair.size();
        char* out = reinterpret_cast<char*>(characters.data());
        std::size_t out_left = sizeof characters;
        iconv(converter_, nullptr, nullptr, nullptr, nullptr);
        const bool whole = iconv(converter_, &in, &in_left, &out, &out_left) != static_cast<std::size_t>(-1);
        return whole && out_left == sizeof(char16_t) ? characters[0] : char16_t{0};
    }

private:
    iconv_t converter_;
};

/// Whether the pair lies in the two rows that the page leaves to its users.
bool is_user_defined(int lead, int trail)
{
    return (lead == 0xC9 || lead == 0xFE) && trail >= 0xA1;
}

QByteArray bytes_of(int lead, int trail)
{
    return QByteArray().append(static_cast<char>(lead)).append(static_cast<char>(trail));
}

} // namespace

class TestCodePage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void holds_every_pair_of_949_and_no_other();
    void reads_bytes_data();
    void reads_bytes();
    void reads_every_byte_of_1252();
    void writes_every_character_of_1252();
    void writes_text_data();
    void writes_text();
    void fills_a_field_data();
    void fills_a_field();
    void counts_what_949_takes();
};

void TestCodePage::holds_every_pair_of_949_and_no_other()
{
    const PageOfTheCLibrary page;
    int pairs = 0;
    for (int lead = 0x80; lead <= 0xFF; ++lead) {
        for (int trail = 0x40; trail <= 0xFF; ++trail) {
            if (is_user_defined(lead, trail))
                continue;
            const char16_t character = page.character(lead, trail);
            const QString text = text_from_code_page(bytes_of(lead, trail));
            if (character == 0) {
                // Not a pair of 949, so both bytes are read as Western ones.
                QCOMPARE(text.size(), 2);
                continue;
            }
            ++pairs;
            QCOMPARE(text, QString(QChar(character)));
            QCOMPARE(text_to_code_page(text), bytes_of(lead, trail));
            QCOMPARE(code_page_bytes(text), 2);
        }
    }
    QCOMPARE(pairs, 17048);
}

void TestCodePage::reads_bytes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    const QByteArray fourteen_syllables = QByteArray("\xB0\xA1").repeated(14);
    QTest::newRow("nothing") << QByteArray() << QString();
    QTest::newRow("ASCII with its blanks") << QByteArray(" a b ") << u" a b "_s;
    QTest::newRow("NULs stay") << QByteArray("ab\0\0c", 5) << u"ab\0\0c"_s;
    QTest::newRow("all NUL") << QByteArray(30, '\0') << QString(30, QChar(0));
    QTest::newRow("all 0xFF is Western") << QByteArray(30, '\xFF') << QString(30, u'ÿ');
    QTest::newRow("Korean") << QByteArray("\xB0\xA1 \xB3\xAA") << u"가 나"_s;
    QTest::newRow("Korean of the extension") << QByteArray("\x81\x41\xC6\x52") << u"갂힣"_s;
    QTest::newRow("Western with blanks") << QByteArray("Caf\xE9 ") << u"Café "_s;
    QTest::newRow("Western within a word") << QByteArray("Bj\xF6rk") << u"Björk"_s;
    QTest::newRow("Western in capitals") << QByteArray("MOT\xD6RHEAD") << u"MOTÖRHEAD"_s;
    QTest::newRow("Western with its own specials") << QByteArray("Don\x92t \x80") << u"Don’t €"_s;
    QTest::newRow("0x80 and 0xFF alone are Western") << QByteArray("\x80 \xFF ") << u"€ ÿ "_s;
    QTest::newRow("one invalid pair makes all of it Western") << QByteArray("\xB0\xA1\xFF ") << u"°¡ÿ "_s;
    QTest::newRow("a half at the field's end is dropped") << fourteen_syllables + "a\xB0" << QString(14, u'가') + u'a';
    QTest::newRow("a half behind ASCII alone is Western") << QByteArray(29, 'a') + '\xB0' << QString(29, u'a') + u'°';
    QTest::newRow("0xFF at the field's end is no half") << QByteArray("\xB0\xA1\xFF") << u"°¡ÿ"_s;
    QTest::newRow("0x80 at the field's end is no half") << QByteArray("\xB0\xA1\x80") << u"°¡€"_s;
    QTest::newRow("a half before a blank is not at the end") << QByteArray("\xB0\xA1\xB0 ") << u"°¡° "_s;
    QTest::newRow("a half before a NUL is not at the end") << QByteArray("\xB0\xA1\xB0\0", 4) << u"°¡°\0"_s;
    QTest::newRow("Korean before a NUL and rubbish") << QByteArray("\xB0\xA1\0\xFFz", 5) << u"가\0ÿz"_s;
    QTest::newRow("Western before a NUL and Korean") << QByteArray("\xE9 \0\xB0\xA1", 5) << u"é \0가"_s;
}

void TestCodePage::reads_bytes()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QString, text);
    QCOMPARE(text_from_code_page(bytes), text);
    QCOMPARE(text_before_nul(bytes), text.section(QChar(0), 0, 0));
}

void TestCodePage::reads_every_byte_of_1252()
{
    const QString specials = u"€\u0081‚ƒ„…†‡ˆ‰Š‹Œ\u008DŽ\u008F\u0090‘’“”•–—˜™š›œ\u009DžŸ"_s;
    QCOMPARE(specials.size(), 32);
    for (int code = 0x80; code <= 0xFF; ++code) {
        const QChar expected = code < 0xA0 ? specials[code - 0x80] : QChar(code);
        // The blank behind it keeps the byte from being the first half of a pair.
        QCOMPARE(text_from_code_page(bytes_of(code, ' ')), QString(expected) + u' ');
    }
}

void TestCodePage::writes_every_character_of_1252()
{
    for (int code = 1; code <= 0xFF; ++code) {
        // The letter before it is one that 949 lacks.
        const QByteArray bytes = bytes_of(0xE9, ' ') + static_cast<char>(code) + ' ';
        const QString text = text_from_code_page(bytes);
        QCOMPARE(text.size(), 4);
        QCOMPARE(text_to_code_page(text), bytes);
    }
}

void TestCodePage::writes_text_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("nothing") << QString() << QByteArray();
    QTest::newRow("ASCII and a NUL") << u"a b\0c"_s << QByteArray("a b\0c", 5);
    QTest::newRow("Korean") << u"가 나"_s << QByteArray("\xB0\xA1 \xB3\xAA");
    QTest::newRow("a sign that both pages have goes out in 949") << u"®"_s << QByteArray("\xA2\xE7");
    QTest::newRow("Western") << u"Café"_s << QByteArray("Caf\xE9");
    QTest::newRow("that sign beside a letter of 1252 alone") << u"é®"_s << QByteArray("\xE9\xAE");
    QTest::newRow("a no-break blank is not taken for a blank") << u"a\u00A0b"_s
                                                               << QByteArray("a\xA0"
                                                                             "b");
    QTest::newRow("what neither page has becomes a question mark")
        << u"Łódź 가"_s << QByteArray("\xA8\xA9?d? \xB0\xA1");
    QTest::newRow("Korean and Western together stay Korean") << u"가é"_s << QByteArray("\xB0\xA1?");
    QTest::newRow("a pair of surrogates becomes two") << u"a😀"_s << QByteArray("a??");
    QTest::newRow("the stray byte of a name becomes one") << u"a"_s + QChar(0xDCE9) << QByteArray("a?");
}

void TestCodePage::writes_text()
{
    QFETCH(const QString, text);
    QTEST(text_to_code_page(text), "bytes");
}

void TestCodePage::fills_a_field_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("width");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("no text is all blanks") << QString() << 4 << QByteArray("    ");
    QTest::newRow("short text is filled with blanks") << u"ab"_s << 4 << QByteArray("ab  ");
    QTest::newRow("text of the width") << u"abcd"_s << 4 << QByteArray("abcd");
    QTest::newRow("longer text is cut") << u"abcde"_s << 4 << QByteArray("abcd");
    QTest::newRow("Western text is cut by bytes") << u"ééééé"_s << 4 << QByteArray("\xE9\xE9\xE9\xE9");
    QTest::newRow("Korean that fits") << u"가나"_s << 4 << QByteArray("\xB0\xA1\xB3\xAA");
    QTest::newRow("Korean is not cut within a character") << u"a가나"_s << 4 << QByteArray("a\xB0\xA1 ");
    QTest::newRow("what follows a character left out is left out") << u"a가나b"_s << 4 << QByteArray("a\xB0\xA1 ");
    QTest::newRow("twenty syllables in thirty bytes")
        << QString(20, u'가') << 30 << QByteArray("\xB0\xA1").repeated(15);
}

void TestCodePage::fills_a_field()
{
    QFETCH(const QString, text);
    QFETCH(const int, width);
    QTEST(text_to_field(text, width), "bytes");
}

void TestCodePage::counts_what_949_takes()
{
    QCOMPARE(code_page_bytes(u""), 0);
    QCOMPARE(code_page_bytes(u"a\u007F"), 2);
    QCOMPARE(code_page_bytes(u"가a"), 3);
    QCOMPARE(code_page_bytes(u"é\u0080"), 2);
    QCOMPARE(code_page_bytes(u"😀"), 2);
}

QUILMO_LOGIC_TEST(TestCodePage)

#include "test_code_page.moc"
