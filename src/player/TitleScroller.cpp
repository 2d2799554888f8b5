#include "player/TitleScroller.h"

#include "core/mod_of_grobal_var.h"
#include "platform/display_text.h"
#include "platform/twips.h"

namespace {

constexpr int turn_milliseconds = 350;
constexpr int free_twips = 300; ///< what a title that stands still leaves free at least
constexpr int lead = 38;        ///< blanks: the pause between two passes

/// The first character of a text: two units of it for one beyond the basic plane.
QString first_character(const QString& text)
{
    const bool pair = text.size() > 1 && text[0].isHighSurrogate() && text[1].isLowSurrogate();
    return text.left(pair ? 2 : 1);
}

} // namespace

TitleScroller::TitleScroller(Placed<TextBox>& box, QTimer& timer, const QWidget& form, QObject* parent)
    : QObject(parent), box_(box), timer_(timer), form_(form)
{
    connect(&timer_, &QTimer::timeout, this, &TitleScroller::turn);
}

void TitleScroller::prepare()
{
    timer_.setInterval(turn_milliseconds);
    timer_.stop();
    box_.set_Height(to_twips(form_.fontMetrics().height()));
}

// A long title after a short one stays centred, on purpose: nothing sets the alignment back.
void TitleScroller::lay_out()
{
    const int text_width = to_twips(form_.fontMetrics().horizontalAdvance(shared.scroll_title));
    if (text_width + free_twips <= box_.Width()) {
        timer_.stop();
        box_->set_Text(display_text(shared.scroll_title));
        box_->setAlignment(Qt::AlignCenter);
    } else {
        shared.scroll_title.prepend(QString(lead, u' '));
        box_->set_Text({});
        timer_.stop();
        timer_.start();
    }
}

void TitleScroller::turn()
{
    const QString first = first_character(shared.scroll_title);
    shared.scroll_title = shared.scroll_title.mid(first.size()) + first;
    box_->set_Text(display_text(shared.scroll_title));
}
