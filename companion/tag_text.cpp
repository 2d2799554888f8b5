#include "companion/tag_text.h"

#include "companion/shown_text.h"
#include "mp3/TagField.h"
#include "mp3/genre_list.h"
#include "platform/text.h"

#include <QByteArrayList>

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int fields = 6;
constexpr std::array<const char*, fields> field_names{"title", "artist", "album", "year", "comment", "genre"};
constexpr std::array<int, fields - 1> field_widths{30, 30, 30, 4, 30};

bool is_tag(const QByteArray& block)
{
    return block.first(3).compare("TAG", Qt::CaseInsensitive) == 0;
}

QString genre_text(unsigned char genre)
{
    const QString name = genre_name(genre);
    return name.isEmpty() ? QString::number(genre) : name;
}

using TagTexts = std::array<QString, fields>;

TagTexts texts_of(const QByteArray& block)
{
    TagTexts texts;
    if (!is_tag(block))
        return texts;
    qsizetype place = 3;
    for (std::size_t index = 0; index < field_widths.size(); ++index) {
        TagField field(field_widths.at(index));
        field.read(QByteArrayView(block).sliced(place, field.width()));
        texts.at(index) = text_box_text(field.text());
        place += field.width();
    }
    texts.back() = genre_text(static_cast<unsigned char>(block.back()));
    return texts;
}

} // namespace

QByteArray tag_change_text(const QByteArray& before, const QByteArray& after)
{
    const TagTexts old_texts = texts_of(before);
    const TagTexts new_texts = texts_of(after);
    const bool had_tag = is_tag(before);
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
    if (!is_tag(block))
        return object;
    const TagTexts texts = texts_of(block);
    for (std::size_t index = 0; index < texts.size(); ++index)
        object.insert(QLatin1StringView(field_names.at(index)), texts.at(index));
    return object;
}
