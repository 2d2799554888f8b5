#include "convert/ChoiceForm.h"

#include "platform/controls/message_window.h"
#include "platform/controls/palette.h"
#include "platform/own_words.h"

#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int margin = 18;
constexpr int line_height = 32;
constexpr int line_width = 400;
constexpr int button_gap = 8;

QRect line_rect(int row)
{
    return {margin, margin + row * line_height, line_width, line_height};
}

/// The form's picture: one line for each text, on paper.
Picture painted_lines(const QStringList& texts)
{
    const QSize size(2 * margin + line_width, 2 * margin + static_cast<int>(texts.size()) * line_height);
    return {.size = size, .draw = [texts](QPainter& painter, const QRectF& /*place*/) {
                painter.setPen(QPen(palette::line, 1));
                painter.setBrush(palette::paper);
                const QRectF paper(margin - 8, margin - 8, line_width + 16,
                                   static_cast<double>(texts.size()) * line_height + 16);
                painter.drawRoundedRect(paper.adjusted(0.5, 0.5, -0.5, -0.5), palette::corner_radius,
                                        palette::corner_radius);
                painter.setPen(palette::ink);
                for (int row = 0; row < texts.size(); ++row)
                    painter.drawText(line_rect(row).adjusted(LineButton<QRadioButton>::caption_left, 0, 0, 0),
                                     Qt::AlignVCenter, texts[row]);
            }};
}

} // namespace

ChoiceForm::ChoiceForm(const QString& name, const QString& title, const std::vector<Option>& options, i16 chosen,
                       QWidget* parent)
    : ButtonDialog(name, title, parent)
{
    QStringList texts;
    for (const Option& option : options) {
        add_option(option, static_cast<int>(texts.size()));
        texts.append(option.text);
    }
    back_picture_ = painted_lines(texts);
    add_command_buttons();
    const auto set = std::ranges::find(options, chosen, &Option::value);
    if (set == options.end())
        return;
    QRadioButton* const present = options_[static_cast<std::size_t>(set - options.begin())];
    present->setChecked(true);
    present->setFocus(); // arrow keys go on from it
}

void ChoiceForm::add_option(const Option& option, int row)
{
    auto* button = new LineButton<QRadioButton>(this);
    button->setObjectName(option.name);
    button->setAccessibleName(option.text);
    button->setGeometry(line_rect(row));
    connect(button, &QRadioButton::toggled, this, [this, value = option.value](bool on) {
        if (on)
            chosen_ = value;
    });
    options_.push_back(button);
}

void ChoiceForm::add_command_buttons()
{
    UsrButton* ok = add_button(u"cmd_ok"_s, own_word(Word::button_ok), own_word(Word::button_ok));
    UsrButton* cancel = add_button(u"cmd_cancel"_s, own_word(Word::button_cancel), own_word(Word::button_cancel));
    set_default_button(ok);
    const int top = back_picture_.size.height() + button_gap;
    const int right = back_picture_.size.width() - margin + 8;
    cancel->move(right - cancel->width(), top);
    ok->move(cancel->x() - button_gap - ok->width(), top);
    setFixedSize(back_picture_.size.width(), top + ok->height() + margin);
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
    painter.setRenderHint(QPainter::Antialiasing);
    back_picture_.draw(painter, QRectF({0, 0}, back_picture_.size));
}
