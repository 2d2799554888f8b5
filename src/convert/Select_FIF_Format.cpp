#include "convert/Select_FIF_Format.h"

#include "convert/LineButton.h"
#include "convert/genre_controls.h"
#include "core/mod_of_grobal_var.h"
#include "platform/controls/palette.h"
#include "platform/own_words.h"

#include <QFontMetricsF>

using namespace Qt::StringLiterals;

namespace {

constexpr int margin = 18;
constexpr int line_height = LineButton<QRadioButton>::line_height;
constexpr int line_width = 350;
constexpr int pair_gap = 8; ///< between the shapes of one kind of delimiter and the next
constexpr int shape_pixels = 13;

/// What stands before the artist, between two fields, and behind the last one.
struct Delimiters
{
    QStringView open;
    QStringView between;
    QStringView close;
};

constexpr Delimiters delimiters[] = {{u"[", u"][", u"]"}, {u"(", u")(", u")"}, {u"", u"-", u""}};

/// A stretch of a name in one colour and weight.
struct Stretch
{
    QString text;
    QColor colour = palette::accent;
    QFont::Weight weight = QFont::Bold;
};

/// A name of a shape, whose fields hold the words for artist, title and genre.
std::vector<Stretch> name_of_shape(i16 fif_type)
{
    const auto [open, between, close] = delimiters[(fif_type - 1) / 2];
    const auto field = [](Word word) {
        return Stretch{.text = own_word(word), .colour = palette::ink, .weight = QFont::Normal};
    };
    std::vector<Stretch> name = {
        {.text = open.toString()}, field(Word::field_artist), {.text = between.toString()}, field(Word::field_title)};
    if (fif_type % 2 == 1)
        name.insert(name.end(), {{.text = between.toString()}, field(Word::field_genre)});
    name.push_back({.text = close.toString()});
    name.push_back({.text = u".mp3"_s, .colour = palette::soft_ink, .weight = QFont::Normal});
    return name;
}

QString text_of(const std::vector<Stretch>& name)
{
    QString text;
    for (const Stretch& stretch : name)
        text += stretch.text;
    return text;
}

Picture painted_name(const std::vector<Stretch>& name)
{
    return {.size = QSize(line_width, line_height), .draw = [name](QPainter& painter, const QRectF& place) {
                QFont font = painter.font();
                font.setPixelSize(shape_pixels);
                QRectF rest = place;
                for (const Stretch& stretch : name) {
                    font.setWeight(stretch.weight);
                    painter.setFont(font);
                    painter.setPen(stretch.colour);
                    painter.drawText(rest, Qt::AlignVCenter | Qt::TextSingleLine, stretch.text);
                    rest.setLeft(rest.left() + QFontMetricsF(font).horizontalAdvance(stretch.text));
                }
            }};
}

} // namespace

Select_FIF_Format::Select_FIF_Format(ComboBox& cboGenre, TextBox& txtGenre, QWidget* parent)
    : ChoiceForm(u"Select_FIF_Format"_s, own_word(Word::title_choose_format), parent),
      cboGenre_(cboGenre),
      txtGenre_(txtGenre)
{
    for (int row = 0; row < static_cast<int>(options_.size()); ++row) {
        QRadioButton* const option = add_option(u"Option_%1"_s.arg(row + 1), static_cast<i16>(row + 1));
        option->setGeometry(margin, margin + row * line_height + row / 2 * pair_gap, line_width, line_height);
        options_.at(static_cast<std::size_t>(row)) = option;
    }
    apply_language_select_fif();
    load(shared.fif_type);
}

/// The back picture in the language of the run.
void Select_FIF_Format::apply_language_select_fif()
{
    for (i16 fif_type = 1; QRadioButton * option : options_) {
        const std::vector<Stretch> name = name_of_shape(fif_type++);
        set_label(*option, text_of(name), painted_name(name));
    }
}

void Select_FIF_Format::apply()
{
    shared.fif_type = selected_type();
    enable_genre_controls(cboGenre_, txtGenre_, shared.fif_type);
}
