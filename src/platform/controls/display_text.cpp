#include "platform/controls/display_text.h"

#include "platform/text.h"

#include <algorithm>

namespace {

bool is_drawn(QChar character)
{
    const QChar::Category category = character.category();
    return category != QChar::Other_Control && category != QChar::Separator_Line &&
           category != QChar::Separator_Paragraph;
}

} // namespace

QString display_text(const QString& text)
{
    if (std::all_of(text.begin(), text.end(), is_drawn))
        return text;
    QString line = text_box_text(text);
    std::replace_if(
        line.begin(), line.end(), [](QChar character) { return !is_drawn(character); }, QChar(u' '));
    return line;
}
