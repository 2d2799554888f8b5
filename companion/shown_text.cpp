#include "companion/shown_text.h"

#include "platform/display_text.h"
#include "platform/file_names.h"

#include <QList>

#include <algorithm>
#include <cwchar>

namespace {

constexpr char16_t backslash_in_names = 0xF05C;

bool is_plain(char byte)
{
    return byte >= ' ' && byte <= '~' && byte != '\\';
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

QByteArray shown(QByteArrayView bytes)
{
    if (std::ranges::all_of(bytes, is_plain))
        return bytes.toByteArray();
    QByteArray text;
    const QString name = name_from_bytes(bytes);
    for (qsizetype place = 0; place < name.size(); ++place) {
        const QChar character = name[place];
        const char16_t unit = character.unicode();
        if (character.isHighSurrogate()) {
            text += QStringView(name).sliced(place++, 2).toUtf8();
        } else if (is_stray_byte(unit)) {
            // What stands below 0xA0 are control characters for terminals that do not speak UTF-8.
            const auto byte = static_cast<char16_t>(unit & 0xFFU);
            text += byte < 0xA0 ? escape(byte) : QByteArray(1, static_cast<char>(byte));
        } else if (unit == backslash_in_names) {
            text += "\\\\";
        } else if (!is_drawn(character)) {
            text += escape(unit);
        } else {
            text += QStringView(&character, 1).toUtf8();
        }
    }
    return text;
}

QByteArray shown(const QString& field)
{
    return shown(QByteArrayView(bytes_of_field(field)));
}

QByteArray bytes_of_field(const QString& field)
{
    const QByteArray bytes = name_to_bytes(field);
    return bytes.isEmpty() ? field.toUtf8() : bytes;
}

void append_cell(QByteArray& line, const QByteArray& text, int cells)
{
    constexpr int least_blanks = 2;
    line += text;
    if (std::ranges::all_of(text, is_plain)) {
        cells -= static_cast<int>(text.size());
    } else {
        for (const char32_t character : QString::fromUtf8(text).toUcs4())
            cells -= std::max(wcwidth(static_cast<wchar_t>(character)), 0);
    }
    line.append(std::max(cells, least_blanks), ' ');
}
