#include "convert/Set_genre_type.h"

#include "convert/LineButton.h"
#include "convert/genre_controls.h"
#include "core/mod_of_grobal_var.h"
#include "platform/controls/palette.h"
#include "platform/language.h"
#include "platform/own_words.h"

using namespace Qt::StringLiterals;

namespace {

// Places of the options, in twips.
constexpr int combo_left = 270;
constexpr int edit_left = 2700;
constexpr int option_top = 270;
constexpr int option_width = 2250;
constexpr int option_height = 1050;

constexpr double words_height = LineButton<QRadioButton>::line_height; ///< logical pixels, as all that follow
constexpr double sample_height = 26;
constexpr double sample_right_margin = 8;
constexpr double sample_text_left = 7;
constexpr double arrow_room = 22;

enum class Sample
{
    list,
    text
};

/// A small closed list: its arrow stands apart behind a line.
void draw_arrow(QPainter& painter, const QRectF& box)
{
    const double left = box.right() - arrow_room;
    painter.drawLine(QPointF(left, box.top() + 1), QPointF(left, box.bottom() - 1));
    painter.setPen(QPen(palette::ink, palette::stroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF tip(left + arrow_room / 2, box.center().y() + 2);
    painter.drawPolyline(QPolygonF({tip + QPointF(-4, -4), tip, tip + QPointF(4, -4)}));
}

void draw_sample(QPainter& painter, const QRectF& box, Sample sample)
{
    const QString genre = u"Rock"_s;
    painter.setPen(QPen(palette::soft_ink, 1));
    painter.setBrush(palette::paper);
    painter.drawRoundedRect(box, palette::corner_radius - 1, palette::corner_radius - 1);
    if (sample == Sample::list)
        draw_arrow(painter, box);
    const QRectF room = box.adjusted(sample_text_left, 0, 0, 0);
    painter.setPen(palette::ink);
    painter.drawText(room, Qt::AlignVCenter | Qt::TextSingleLine, genre);
    if (sample == Sample::list)
        return;
    const double cursor = room.left() + QFontMetricsF(painter.font()).horizontalAdvance(genre) + 2;
    painter.setPen(QPen(palette::accent, palette::stroke));
    painter.drawLine(QPointF(cursor, box.top() + 6), QPointF(cursor, box.bottom() - 6));
}

/// The words of an option and below them a small drawing of what they mean.
Picture painted_option(const QString& words, Sample sample)
{
    return {.size = QSize(), .draw = [words, sample](QPainter& painter, const QRectF& place) {
                painter.setPen(palette::ink);
                painter.drawText(QRectF(place.topLeft(), QSizeF(place.width(), words_height)),
                                 Qt::AlignVCenter | Qt::TextSingleLine, words);
                const QRectF box(place.left(), place.top() + words_height, place.width() - sample_right_margin,
                                 sample_height);
                draw_sample(painter, box.adjusted(0.5, 0.5, -0.5, -0.5), sample);
            }};
}

} // namespace

Set_genre_type::Set_genre_type(ComboBox& cboGenre, TextBox& txtGenre, QWidget* parent)
    : ChoiceForm(u"Set_genre_type"_s, own_word(Word::title_choose_genre_type), parent),
      cboGenre_(cboGenre),
      txtGenre_(txtGenre)
{
    const auto option = [this](const QString& name, i16 value, int left) {
        QRadioButton* const button = add_option(name, value);
        return Placed<QRadioButton>(*button, Place(*button, left, option_top, option_width, option_height));
    };
    Option_combo_ = option(u"Option_combo"_s, genre_from_list, combo_left);
    Option_edit_ = option(u"Option_edit"_s, genre_as_text, edit_left);
    apply_language_set_genre();
    load(shared.genre_type);
}

/// The back picture in the language of the run. The German one stands further left.
void Set_genre_type::apply_language_set_genre()
{
    const QString from_list = own_word(Word::option_genre_from_list);
    const QString as_text = own_word(Word::option_genre_as_text);
    set_label(*Option_combo_, from_list, painted_option(from_list, Sample::list));
    set_label(*Option_edit_, as_text, painted_option(as_text, Sample::text));
    if (shared.language_id == german) {
        Option_combo_.set_Left(204);
        Option_edit_.set_Left(2520);
    }
}

void Set_genre_type::apply()
{
    shared.genre_type = selected_genre_type();
    enable_genre_controls(cboGenre_, txtGenre_, shared.fif_type);
    choose_genre_control(cboGenre_, txtGenre_, shared.genre_type);
}
