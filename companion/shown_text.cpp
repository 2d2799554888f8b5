#include "companion/shown_text.h"

#include "platform/display_text.h"
#include "platform/file_names.h"

#include <QList>

#include <algorithm>
#include <cwchar>

namespace {

constexpr char16_t backslash_in_names = 0xF05C;

template<typename Character> bool is_plain(Character character)
{
    return character >= ' ' && character <= '~' && character != '\\';
}

bool is_stray_byte(char16_t unit)
{
    return unit >= 0xDC80 && unit <= 0xDCFF;
}

QByteArray escape(char16_t unit)
{
    switch (unit) {
    case u'\n':
        return "\\n";
    case u'\r':
        return "\\r";
    case u'\t':
        return "\\t";
    default:
        const QByteArray digits = QByteArray::number(unit, 16);
        return unit <= 0xFF ? "\\x" + digits.rightJustified(2, '0') : "\\u" + digits.rightJustified(4, '0');
    }
}

} // namespace

void append_shown(QByteArray& line, QByteArrayView bytes)
{
    if (std::ranges::all_of(bytes, is_plain<char>))
        line += bytes;
    else
        append_shown(line, QStringView(name_from_bytes(bytes)));
}

void append_shown(QByteArray& line, QStringView text)
{
    for (qsizetype place = 0; place < text.size(); ++place) {
        const QChar character = text[place];
        const char16_t unit = character.unicode();
        const bool is_pair = character.isHighSurrogate() && place + 1 < text.size() && text[place + 1].isLowSurrogate();
        if (is_plain(unit)) {
            line += static_cast<char>(unit);
        } else if (is_pair) {
            append_name(line, text.sliced(place++, 2));
        } else if (is_stray_byte(unit)) {
            // What stands below 0xA0 are control characters for terminals that do not speak UTF-8.
            const auto byte = static_cast<char16_t>(unit & 0xFFU);
            line += byte < 0xA0 ? escape(byte) : QByteArray(1, static_cast<char>(byte));
        } else if (unit == backslash_in_names || unit == u'\\') {
            line += "\\\\";
        } else if (character.isSurrogate() || !is_drawn(character)) {
            line += escape(unit);
        } else {
            append_name(line, text.sliced(place, 1));
        }
    }
}

QByteArray shown(QByteArrayView bytes)
{
    QByteArray text;
    append_shown(text, bytes);
    return text;
}

QByteArray shown(QStringView text)
{
    QByteArray bytes;
    append_shown(bytes, text);
    return bytes;
}

QByteArray bytes_of_field(const QString& field)
{
    const QByteArray bytes = name_to_bytes(field);
    return bytes.isEmpty() ? field.toUtf8() : bytes;
}

void append_cell(QByteArray& line, QStringView text, int cells)
{
    constexpr int least_blanks = 2;
    const qsizetype begin = line.size();
    append_shown(line, text);
    const QByteArrayView added = QByteArrayView(line).sliced(begin);
    if (std::ranges::all_of(added, is_plain<char>)) {
        cells -= static_cast<int>(added.size());
    } else {
        for (const char32_t character : QString::fromUtf8(added).toUcs4())
            cells -= std::max(wcwidth(static_cast<wchar_t>(character)), 0);
    }
    line.append(std::max(cells, least_blanks), ' ');
}
