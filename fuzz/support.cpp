#include "support.h"

#include "platform/file_names.h"

#include <cstdio>
#include <cstdlib>

void require(bool holds, const char* property)
{
    if (holds)
        return;
    std::fprintf(stderr, "This does not hold: %s\n", property);
    std::abort();
}

QByteArrayView bytes_of(const std::uint8_t* data, std::size_t size)
{
    return {data, static_cast<qsizetype>(size)};
}

QByteArrayView take_line(QByteArrayView& input)
{
    const qsizetype end = input.indexOf('\n');
    const QByteArrayView line = input.first(end < 0 ? input.size() : end);
    input = input.sliced(end < 0 ? input.size() : end + 1);
    return line;
}

QString any_text(QByteArrayView bytes)
{
    constexpr char16_t backslash_in_names = 0xF05C;
    constexpr char16_t first_stray = 0xDC80;
    constexpr char16_t last_stray_made_high = 0xDCBF;
    QString text = name_from_bytes(bytes);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i].unicode();
        const bool is_stray = i == 0 || !text[i - 1].isHighSurrogate();
        if (unit == backslash_in_names)
            text[i] = u'\\';
        else if (unit >= first_stray && unit <= last_stray_made_high && is_stray)
            text[i] = QChar(static_cast<char16_t>(unit - 0x400));
    }
    return text;
}

bool has_lone_surrogate(QStringView text)
{
    return !text.isValidUtf16();
}
