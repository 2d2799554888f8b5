// Text between the program and the legacy code page: what can be kept is kept, and lengths are what goes out.

#include "platform/code_page.h"
#include "support.h"

#include <algorithm>

namespace {

bool is_in_949(QChar character)
{
    return character.unicode() < 0x80 || code_page_bytes(QStringView(&character, 1)) == 2;
}

void check_bytes(QByteArrayView bytes)
{
    const QString text = text_from_code_page(bytes);
    const QByteArray out = text_to_code_page(text);
    require(text.size() <= bytes.size(), "a byte is one character at most");
    require(text.count(QChar::Null) == bytes.count('\0'), "NULs stay where they are");
    require(!has_lone_surrogate(text), "bytes are never read as half of a character");
    if (!bytes.contains('\0')) {
        require(text_from_code_page(out) == text, "a text that was read is written so that it reads alike");
        require(text_to_code_page(text_from_code_page(out)) == out, "bytes are stable once they were written");
    }
    const QByteArrayView before_nul = bytes.first(bytes.contains('\0') ? bytes.indexOf('\0') : bytes.size());
    const bool is_cut = before_nul.size() == bytes.size();
    require(is_cut || text.startsWith(text_from_code_page(before_nul)) || !before_nul.empty(),
            "what stands behind a NUL has no say");
}

void check_text(QStringView text)
{
    const QByteArray out = text_to_code_page(text);
    const int count = code_page_bytes(text);
    require(count >= text.size() && count <= 2 * text.size(), "a character is one byte or two");
    if (std::ranges::all_of(text, is_in_949)) {
        require(out.size() == count, "the bytes that go out are those that were counted");
        require(text_from_code_page(out) == text, "Korean text survives");
        return;
    }
    // Western text keeps all of its characters in one byte each.
    const bool may_be_western = out.size() == text.size() && out.count('?') == text.count(u'?');
    require(out.size() == count || (may_be_western && out.size() < count),
            "what the page lacks is counted as the one byte that goes out");
}

void check_field(QStringView text, int width)
{
    const QByteArray whole = text_to_code_page(text);
    const QByteArray field = text_to_field(text, width);
    require(field.size() == width, "a field has its width");
    if (whole.size() <= width) {
        require(field == whole.leftJustified(width, ' '), "a text that fits is filled with blanks");
        return;
    }
    const bool is_full = field == whole.first(width);
    const bool lacks_one = width > 0 && field == whole.first(width - 1) + ' ';
    require(is_full || lacks_one, "a text that doesn't fit is cut behind its last whole character");
    if (std::ranges::all_of(text, is_in_949)) {
        const QString back = text_from_code_page(is_full ? field : field.chopped(1));
        require(text.startsWith(back) && code_page_bytes(back) >= width - 1, "no character is cut in half");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView bytes = bytes_of(data, size);
    const QString text = any_text(bytes);
    check_bytes(bytes);
    for (const QString& one : {text, text_from_code_page(bytes)}) {
        check_text(one);
        for (const int width : {0, 1, 4, 29, 30})
            check_field(one, width);
    }
    return 0;
}
