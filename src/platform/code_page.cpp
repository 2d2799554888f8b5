#include "platform/code_page.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace {

constexpr int last_ascii = 0x7F;
constexpr int first_lead = 0x81;
constexpr int first_trail = 0x41;
constexpr int last_half = 0xFE;

/// What Windows-1252 holds at 0x80 to 0x9F. Its five undefined bytes stand for the control characters of the same
/// number, so that every byte string survives the round trip.
constexpr std::array<char16_t, 32> western_specials{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

/// The double-byte characters of code page 949, both ways.
class KoreanPage
{
public:
    KoreanPage();

    /// The character of a pair of bytes, 0 when the page has none there.
    char16_t character(std::uint8_t lead, std::uint8_t trail) const { return characters_[(lead << 8) | trail]; }
    /// The pair of bytes of a character, lead byte high, 0 when the page lacks it.
    std::uint16_t pair(char16_t character) const { return pairs_[character]; }

private:
    std::vector<char16_t> characters_;
    std::vector<std::uint16_t> pairs_;
};

KoreanPage::KoreanPage() : characters_(0x10000), pairs_(0x10000)
{
    // One batch, a line for each pair: behind a pair that the page lacks the line end brings the decoder back in step.
    constexpr std::size_t trails = last_half - first_trail + 1;
    constexpr std::size_t candidates = (last_half - first_lead + 1) * trails;
    constexpr std::size_t line_bytes = 3;
    const auto lead_of = [](std::size_t candidate) { return first_lead + candidate / trails; };
    const auto trail_of = [](std::size_t candidate) { return first_trail + candidate % trails; };
    std::string lines(candidates * line_bytes, '\n');
    for (std::size_t candidate = 0; candidate < candidates; ++candidate) {
        lines[candidate * line_bytes] = static_cast<char>(lead_of(candidate));
        lines[candidate * line_bytes + 1] = static_cast<char>(trail_of(candidate));
    }
    QStringDecoder decoder("windows-949");
    const QString decoded = decoder.decode(lines);
    std::size_t candidate = 0;
    for (const QStringView line : QStringView(decoded).tokenize(u'\n')) {
        if (line.size() == 1 && line.front() != QChar::ReplacementCharacter) {
            const auto pair = static_cast<std::uint16_t>((lead_of(candidate) << 8) | trail_of(candidate));
            characters_[pair] = line.front().unicode();
            pairs_[line.front().unicode()] = pair;
        }
        ++candidate;
    }
}

const KoreanPage& korean_page()
{
    static const KoreanPage page;
    return page;
}

bool is_ascii(QChar character)
{
    return character.unicode() <= last_ascii;
}

bool is_korean(QChar character)
{
    return is_ascii(character) || korean_page().pair(character.unicode()) != 0;
}

QChar western_character(char byte)
{
    const auto code = static_cast<std::uint8_t>(byte);
    return code >= 0x80 && code < 0xA0 ? western_specials[code - 0x80] : char16_t{code};
}

/// The byte of a character in Windows-1252.
std::optional<char> western_byte(QChar character)
{
    const char16_t code = character.unicode();
    if (code < 0x80 || (code >= 0xA0 && code <= 0xFF))
        return static_cast<char>(code);
    const auto* const special = std::ranges::find(western_specials, code);
    if (special == western_specials.end())
        return std::nullopt;
    return static_cast<char>(0x80 + (special - western_specials.begin()));
}

QString western_text(QByteArrayView bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    std::ranges::transform(bytes, text.begin(), western_character);
    return text;
}

/// The text of `bytes` in code page 949, if they are valid there. A lone first half at the end is dropped behind
/// double-byte text when `may_end_cut` says that this end is the field's.
std::optional<QString> korean_text(QByteArrayView bytes, bool may_end_cut)
{
    QString text(bytes.size(), Qt::Uninitialized);
    QChar* end = text.data();
    const KoreanPage& page = korean_page();
    bool has_pairs = false;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto lead = static_cast<std::uint8_t>(bytes[i]);
        if (lead <= last_ascii) {
            *end++ = QChar(char16_t{lead});
            continue;
        }
        if (i + 1 == bytes.size()) {
            const bool is_half = lead >= first_lead && lead <= last_half;
            if (!may_end_cut || !has_pairs || !is_half)
                return std::nullopt;
            break;
        }
        const char16_t character = page.character(lead, static_cast<std::uint8_t>(bytes[++i]));
        if (character == 0)
            return std::nullopt;
        *end++ = QChar(character);
        has_pairs = true;
    }
    text.truncate(end - text.constData());
    return text;
}

/// The text of bytes of which the first NUL, if any, stands at the beginning.
QString text_of_part(QByteArrayView bytes, bool may_end_cut)
{
    if (std::ranges::all_of(bytes, [](char byte) { return static_cast<std::uint8_t>(byte) <= last_ascii; }))
        return QString::fromLatin1(bytes);
    std::optional<QString> korean = korean_text(bytes, may_end_cut);
    return korean ? *std::move(korean) : western_text(bytes);
}

enum class Page
{
    korean,
    western
};

Page page_for(QStringView text)
{
    if (std::ranges::all_of(text, is_korean))
        return Page::korean;
    const bool western = std::ranges::all_of(text, [](QChar character) { return western_byte(character).has_value(); });
    return western ? Page::western : Page::korean;
}

/// Calls `take` with the bytes of each character in turn until it gives false.
template<typename Take> void encode(QStringView text, Take take)
{
    const Page page = page_for(text);
    for (const QChar character : text) {
        std::array<char, 2> bytes{'?', 0};
        int count = 1;
        if (is_ascii(character)) {
            bytes[0] = static_cast<char>(character.unicode());
        } else if (page == Page::western) {
            bytes[0] = western_byte(character).value_or('?');
        } else if (const std::uint16_t pair = korean_page().pair(character.unicode())) {
            bytes = {static_cast<char>(pair >> 8), static_cast<char>(pair & 0xFF)};
            count = 2;
        }
        if (!take(QByteArrayView(bytes.data(), count)))
            return;
    }
}

} // namespace

int code_page_bytes(QStringView text)
{
    int bytes = 0;
    for (const QChar character : text)
        bytes += is_ascii(character) || !is_korean(character) ? 1 : 2;
    return bytes;
}

QString text_from_code_page(QByteArrayView bytes)
{
    const qsizetype nul = bytes.indexOf('\0');
    return nul < 0 ? text_of_part(bytes, true) : text_before_nul(bytes) + text_of_part(bytes.sliced(nul), true);
}

QString text_before_nul(QByteArrayView bytes)
{
    const qsizetype nul = bytes.indexOf('\0');
    // What another program left behind the first NUL has no say in how the text before it is read.
    return nul < 0 ? text_of_part(bytes, true) : text_of_part(bytes.first(nul), false);
}

QByteArray text_to_code_page(QStringView text)
{
    QByteArray encoded;
    encode(text, [&encoded](QByteArrayView character) {
        encoded.append(character);
        return true;
    });
    return encoded;
}

QByteArray text_to_field(QStringView text, int width)
{
    QByteArray field(width, ' ');
    char* end = field.data();
    const char* const edge = end + width;
    encode(text, [&end, edge](QByteArrayView character) {
        if (character.size() > edge - end)
            return false;
        end = std::ranges::copy(character, end).out;
        return true;
    });
    return field;
}
