#include "convert/form_captions.h"

#include "core/mod_of_grobal_var.h"
#include "platform/controls/ListView.h"
#include "platform/controls/fonts.h"
#include "platform/language.h"

#include <QLabel>

namespace {

/// `column` is counted from 1.
void set_header(ListView& list, int column, const QString& text)
{
    std::vector<ColumnHeader> headers = list.ColumnHeaders();
    headers.at(static_cast<std::size_t>(column) - 1).Text = text;
    list.set_ColumnHeaders(headers);
}

void set_text(QWidget& control, const QString& text)
{
    if (auto* const label = qobject_cast<QLabel*>(&control))
        label->setText(text);
    else
        control.setToolTip(text);
}

} // namespace

void apply_captions(QWidget& form, Form captions)
{
    if (shared.language_id == english)
        return;
    for (const Caption& caption : captions_of(captions)) {
        const QString name = caption.control.toString();
        const QString column = name.section(u'.', 1);
        auto* const control = form.findChild<QWidget*>(name.section(u'.', 0, 0));
        if (column.isEmpty())
            set_text(*control, caption_text(caption));
        else
            set_header(*qobject_cast<ListView*>(control), column.toInt(), caption_text(caption));
    }
}

void apply_korean_font(std::initializer_list<QWidget*> controls)
{
    if (shared.language_id != korean)
        return;
    for (QWidget* control : controls)
        control->setFont(korean_font());
}
