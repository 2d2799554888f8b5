#include "platform/controls/display_text.h"

#include "platform/text.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace {

constexpr int longest_run = 40; ///< letters of a word that fit into a box
constexpr char16_t zero_width_space = 0x200b;

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

QString breakable_text(const QString& text)
{
    QString result;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    int run = 0;
    for (qsizetype start = 0, end = finder.toNextBoundary(); end > start; start = end, end = finder.toNextBoundary()) {
        run = text.at(start).isSpace() ? 0 : run + 1;
        if (run > longest_run) {
            result += QChar(zero_width_space);
            run = 1;
        }
        result += QStringView(text).mid(start, end - start);
    }
    return result;
}
