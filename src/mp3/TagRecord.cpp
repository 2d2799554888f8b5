#include "mp3/TagRecord.h"

#include <algorithm>

namespace {

constexpr QByteArrayView beginning = "TAG";

} // namespace

bool TagRecord::is_tag(QByteArrayView block)
{
    return block.first(beginning.size()).compare(beginning, Qt::CaseInsensitive) == 0;
}

void TagRecord::reset()
{
    for (TagField* field : text_fields())
        field->reset();
    genre = other_genre;
}

void TagRecord::read(QByteArrayView block)
{
    QByteArrayView rest = block.sliced(beginning.size());
    for (TagField* field : text_fields()) {
        field->read(rest.first(field->width()));
        rest = rest.sliced(field->width());
    }
    genre = static_cast<std::uint8_t>(rest.front());
}

QByteArray TagRecord::block() const
{
    QByteArray block(block_bytes, Qt::Uninitialized);
    char* place = std::ranges::copy(beginning, block.data()).out;
    for (const TagField* field : text_fields())
        place = std::ranges::copy(field->bytes(), place).out;
    *place = static_cast<char>(genre);
    return block;
}
