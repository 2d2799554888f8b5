#include "convert/ChoiceForm.h"

#include "convert/LineButton.h"
#include "platform/controls/message_window.h"
#include "platform/controls/palette.h"
#include "platform/own_words.h"

#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int button_gap = 8;
constexpr int form_margin = 16; ///< round the buttons

} // namespace

ChoiceForm::ChoiceForm(const QString& name, const QString& title, QWidget* parent) : ButtonDialog(name, title, parent)
{
}

QRadioButton* ChoiceForm::add_option(const QString& name, i16 value)
{
    auto* option = new LineButton<QRadioButton>(this);
    option->setObjectName(name);
    connect(option, &QRadioButton::toggled, this, [this, value](bool on) {
        if (on)
            chosen_ = value;
    });
    lines_.push_back({.option = option, .value = value, .label = {}});
    return option;
}

void ChoiceForm::set_label(QRadioButton& option, const QString& words, const Picture& label)
{
    option.setAccessibleName(words);
    std::ranges::find(lines_, &option, &Line::option)->label = label;
}

void ChoiceForm::load(i16 value)
{
    add_command_buttons();
    const auto set = std::ranges::find(lines_, value, &Line::value);
    if (set == lines_.end())
        return;
    set->option->setChecked(true);
    set->option->setFocus(); // arrow keys go on from it
}

QRect ChoiceForm::options_rect() const
{
    QRect all;
    for (const Line& line : lines_)
        all |= line.option->geometry();
    return all;
}

void ChoiceForm::add_command_buttons()
{
    UsrButton* const ok = add_button(u"cmd_ok"_s, own_word(Word::button_ok));
    UsrButton* const cancel = add_button(u"cmd_cancel"_s, own_word(Word::button_cancel));
    set_default_button(ok);
    const QRect options = options_rect();
    const int buttons_width = ok->width() + button_gap + cancel->width();
    const int width = qMax(options.right() + 1 + options.left(), buttons_width + 2 * form_margin);
    paper_height_ = options.bottom() + 1 + options.top();
    const int top = paper_height_ + form_margin;
    cancel->move(width - form_margin - cancel->width(), top);
    ok->move(cancel->x() - button_gap - ok->width(), top);
    setFixedSize(width, top + ok->height() + form_margin);
    connect(ok, &UsrButton::Click, this, guarded([this] {
                apply();
                close();
            }));
    connect(cancel, &UsrButton::Click, this, &QDialog::close);
}

void ChoiceForm::paintEvent(QPaintEvent* event)
{
    QDialog::paintEvent(event);
    QPainter painter(this);
    painter.fillRect(0, 0, width(), paper_height_, palette::paper);
    painter.fillRect(0, paper_height_, width(), 1, palette::line);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Line& line : lines_) {
        const QRect place = line.option->geometry().adjusted(LineButton<QRadioButton>::caption_left, 0, 0, 0);
        painter.save();
        line.label.draw(painter, place);
        painter.restore();
    }
}
