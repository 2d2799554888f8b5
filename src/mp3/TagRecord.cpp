#include "mp3/TagRecord.h"

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
    QByteArray block;
    block.reserve(block_bytes);
    block += beginning;
    for (const TagField* field : text_fields())
        block += field->bytes();
    block += static_cast<char>(genre);
    return block;
}
