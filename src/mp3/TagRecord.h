#pragma once

#include "mp3/TagField.h"
#include "platform/numbers.h"

#include <QByteArray>
#include <QByteArrayView>

#include <array>

/// What an ID3v1 tag holds: five text fields and the genre byte. No file is touched.
struct TagRecord
{
    /// Bytes of a tag, the last ones of a file.
    static constexpr int block_bytes = 128;
    /// The index of the genre "Other".
    static constexpr std::uint8_t other_genre = 12;

    TagField title{30};
    TagField artist{30};
    TagField album{30};
    TagField year{4};
    TagField comments{30};
    std::uint8_t genre = other_genre;

    /// Whether the last bytes of a file are a tag: they begin with "TAG", case ignored.
    static bool is_tag(QByteArrayView block);

    /// The text fields in the order of the file.
    std::array<TagField*, 5> text_fields() { return {&title, &artist, &album, &year, &comments}; }
    std::array<const TagField*, 5> text_fields() const { return {&title, &artist, &album, &year, &comments}; }

    /// The texts blank, the genre "Other".
    void reset();
    /// Takes what a tag holds; `block` has `block_bytes`.
    void read(QByteArrayView block);
    /// The tag as it goes to a file.
    QByteArray block() const;
};
