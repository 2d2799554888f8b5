#include "platform/file_names.h"

#include <algorithm>
#include <array>

namespace {

constexpr char16_t backslash_in_names = 0xF05C;
constexpr char16_t stray_byte_base = 0xDC00;

/// One character at the start of some bytes; a length of 0 where they do not begin with valid UTF-8.
struct Utf8Character
{
    char32_t code = 0;
    qsizetype length = 0;
};

qsizetype utf8_length(unsigned char lead)
{
    if (lead < 0x80)
        return 1;
    if (lead < 0xC0 || lead > 0xF7)
        return 0;
    if (lead < 0xE0)
        return 2;
    return lead < 0xF0 ? 3 : 4;
}

Utf8Character first_character(QByteArrayView bytes)
{
    constexpr std::array<char32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
    const auto lead = static_cast<unsigned char>(bytes[0]);
    const qsizetype length = utf8_length(lead);
    if (length == 0 || length > bytes.size())
        return {};
    if (length == 1)
        return {.code = lead, .length = 1};
    char32_t code = lead & (0x7FU >> length);
    for (qsizetype place = 1; place < length; ++place) {
        const auto next = static_cast<unsigned char>(bytes[place]);
        if ((next & 0xC0U) != 0x80)
            return {};
        code = code << 6U | (next & 0x3FU);
    }
    if (code < smallest.at(static_cast<std::size_t>(length)) || code > 0x10FFFF || QChar::isSurrogate(code))
        return {};
    return {.code = code, .length = length};
}

void append_utf8(QByteArray& bytes, char32_t code)
{
    const auto part = [code](unsigned shift) { return static_cast<char>(0x80U | (code >> shift & 0x3FU)); };
    if (code < 0x80) {
        bytes += static_cast<char>(code);
    } else if (code < 0x800) {
        bytes += static_cast<char>(0xC0U | code >> 6U);
        bytes += part(0);
    } else if (code < 0x10000) {
        bytes += static_cast<char>(0xE0U | code >> 12U);
        bytes += part(6);
        bytes += part(0);
    } else {
        bytes += static_cast<char>(0xF0U | code >> 18U);
        bytes += part(12);
        bytes += part(6);
        bytes += part(0);
    }
}

/// Adds what `name` begins with that takes the same characters on disk; gives how many they are. Most names hold
/// nothing else.
qsizetype append_plain(QByteArray& path, QStringView name)
{
    const auto is_plain = [](char16_t unit) { return unit > 0 && unit < 0x80 && unit != u'/' && unit != u'\\'; };
    const qsizetype size = path.size();
    path.resize(size + name.size());
    char* const bytes = path.data() + size;
    qsizetype count = 0;
    for (; count < name.size() && is_plain(name[count].unicode()); ++count)
        bytes[count] = static_cast<char>(name[count].unicode());
    path.truncate(size + count);
    return count;
}

bool is_stray_byte(char16_t unit)
{
    return unit >= stray_byte_base + 0x80 && unit <= stray_byte_base + 0xFF;
}

} // namespace

QString name_from_bytes(QByteArrayView bytes)
{
    const auto is_plain = [](char byte) { return byte >= 0 && byte != '\\'; };
    if (std::ranges::all_of(bytes, is_plain))
        return QString::fromLatin1(bytes);
    QString name;
    name.reserve(bytes.size());
    while (!bytes.empty()) {
        const Utf8Character character = first_character(bytes);
        if (character.length == 0 || character.code == backslash_in_names) {
            name += QChar(static_cast<char16_t>(stray_byte_base + static_cast<unsigned char>(bytes[0])));
            bytes = bytes.sliced(1);
            continue;
        }
        const char32_t code = character.code == U'\\' ? backslash_in_names : character.code;
        name += QChar::fromUcs4(code);
        bytes = bytes.sliced(character.length);
    }
    return name;
}

QByteArray name_to_bytes(QStringView name)
{
    QByteArray bytes;
    bytes.reserve(name.size());
    return append_name(bytes, name) ? bytes : QByteArray();
}

bool append_name(QByteArray& path, QStringView name)
{
    if (name.empty() || name == u"." || name == u"..")
        return false;
    for (qsizetype place = append_plain(path, name); place < name.size(); ++place) {
        const char16_t unit = name[place].unicode();
        if (unit == 0 || unit == u'/' || unit == u'\\')
            return false;
        if (unit == backslash_in_names) {
            path += '\\';
        } else if (!QChar::isSurrogate(unit)) {
            append_utf8(path, unit);
        } else if (QChar::isHighSurrogate(unit) && place + 1 < name.size() && name[place + 1].isLowSurrogate()) {
            ++place;
            append_utf8(path, QChar::surrogateToUcs4(unit, name[place].unicode()));
        } else if (is_stray_byte(unit)) {
            path += static_cast<char>(unit - stray_byte_base);
        } else {
            return false;
        }
    }
    return true;
}
