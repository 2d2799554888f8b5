#include "platform/controls/TextBox.h"

#include "platform/controls/focus.h"
#include "platform/text.h"

#include <QFocusEvent>

namespace {

/// No text of so many characters takes more bytes than a 16-bit count holds.
constexpr int longest_text = 16383;

} // namespace

TextBox::TextBox(QWidget* parent) : QLineEdit(parent)
{
    setMouseTracking(true);
    setAcceptDrops(false);
    setMaxLength(longest_text);
    connect(this, &QLineEdit::textChanged, this, &TextBox::take_change);
}

void TextBox::set_Text(const QString& text)
{
    setText(text_box_text(text));
    setCursorPosition(0);
}

void TextBox::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    if (!is_returning_focus(event->reason()))
        Q_EMIT GotFocus();
}

void TextBox::mouseMoveEvent(QMouseEvent* event)
{
    QLineEdit::mouseMoveEvent(event);
    Q_EMIT MouseMove();
}

void TextBox::take_change(const QString& text)
{
    const QString kept = text_box_text(text);
    if (kept.size() < text.size())
        set_Text(kept); // comes back here with what is kept
    else
        Q_EMIT Change();
}
