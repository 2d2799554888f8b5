#include "platform/display_text.h"

#include "platform/text.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace {

constexpr int longest_run = 40; ///< letters of a word that fit into a box
constexpr char16_t zero_width_space = 0x200b;
constexpr char16_t left_to_right_mark = 0x200e;

/// Whether a character turns the direction of what follows it, behind the name that holds it too.
bool turns_direction(QChar character)
{
    switch (character.direction()) {
    case QChar::DirLRE:
    case QChar::DirLRO:
    case QChar::DirRLE:
    case QChar::DirRLO:
    case QChar::DirPDF:
    case QChar::DirLRI:
    case QChar::DirRLI:
    case QChar::DirFSI:
    case QChar::DirPDI:
        return true;
    default:
        return false;
    }
}

} // namespace

bool is_drawn(QChar character)
{
    const QChar::Category category = character.category();
    return category != QChar::Other_Control && category != QChar::Separator_Line &&
           category != QChar::Separator_Paragraph && !turns_direction(character);
}

QString display_text(const QString& text)
{
    if (std::all_of(text.begin(), text.end(), is_drawn))
        return text;
    QString line = text_box_text(text);
    std::replace_if(
        line.begin(), line.end(), [](QChar character) { return !is_drawn(character); }, QChar(u' '));
    return line;
}

QString tool_tip_text(const QString& text)
{
    // The toolkit would take a text that looks like markup for markup, so it gets markup always.
    return QStringLiteral("<p style='white-space: pre-wrap'>") + breakable_text(text).toHtmlEscaped() +
           QStringLiteral("</p>");
}

QString breakable_text(const QString& text)
{
    QString result;
    // A name of right-to-left letters in front would turn the whole text round.
    if (text.isRightToLeft())
        result += QChar(left_to_right_mark);
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
