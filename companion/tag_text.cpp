#include "companion/tag_text.h"

#include "companion/shown_text.h"
#include "mp3/TagRecord.h"
#include "mp3/genre_list.h"
#include "platform/text.h"

#include <QByteArrayList>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int fields = 6;
constexpr std::array<const char*, fields> field_names{"title", "artist", "album", "year", "comment", "genre"};

QString genre_text(std::uint8_t genre)
{
    const QString name = genre_name(genre);
    return name.isEmpty() ? QString::number(genre) : name;
}

using TagTexts = std::array<QString, fields>;

TagTexts texts_of(const QByteArray& block)
{
    TagTexts texts;
    if (!TagRecord::is_tag(block))
        return texts;
    TagRecord tag;
    tag.read(block);
    std::ranges::transform(tag.text_fields(), texts.begin(),
                           [](const TagField* field) { return text_box_text(field->text()); });
    texts.back() = genre_text(tag.genre);
    return texts;
}

} // namespace

QByteArray tag_change_text(const QByteArray& before, const QByteArray& after)
{
    const TagTexts old_texts = texts_of(before);
    const TagTexts new_texts = texts_of(after);
    const bool had_tag = TagRecord::is_tag(before);
    QByteArrayList changes;
    for (std::size_t index = 0; index < new_texts.size(); ++index) {
        if (old_texts.at(index) == new_texts.at(index))
            continue;
        const QByteArray old_text = had_tag ? '"' + shown(old_texts.at(index)) + "\" -> " : QByteArray();
        changes.append(QByteArray(field_names.at(index)) + ' ' + old_text + '"' + shown(new_texts.at(index)) + '"');
    }
    if (!had_tag)
        return "a tag over the last 128 bytes: " + changes.join(", ");
    return changes.isEmpty() ? "the same fields, filled with blanks" : changes.join(", ");
}

QByteArray tag_fields_text(const QByteArray& block)
{
    const TagTexts texts = texts_of(block);
    QByteArrayList fields_text;
    for (std::size_t index = 0; index < texts.size(); ++index)
        fields_text.append(QByteArray(field_names.at(index)) + " \"" + shown(texts.at(index)) + '"');
    return fields_text.join(", ");
}

QJsonObject tag_object(const QByteArray& block)
{
    QJsonObject object;
    if (!TagRecord::is_tag(block))
        return object;
    const TagTexts texts = texts_of(block);
    for (std::size_t index = 0; index < texts.size(); ++index)
        object.insert(QLatin1StringView(field_names.at(index)), texts.at(index));
    return object;
}
