#include "platform/controls/ComboBox.h"

#include "platform/controls/focus.h"
#include "platform/text.h"

#include <QFocusEvent>

namespace {

constexpr int visible_entries = 20;

} // namespace

ComboBox::ComboBox(QWidget* parent) : QComboBox(parent)
{
    setMaxVisibleItems(visible_entries);
}

void ComboBox::Clear()
{
    clear();
}

void ComboBox::AddItem(const QString& text)
{
    int low = 0;
    int high = count();
    while (low < high) {
        const int middle = (low + high) / 2;
        if (compare_texts(itemText(middle), text) <= 0)
            low = middle + 1;
        else
            high = middle;
    }
    const bool selected = currentIndex() >= 0;
    insertItem(low, text);
    if (!selected)
        setCurrentIndex(-1); // the toolkit selects a first entry by itself
}

int ComboBox::ListIndex() const
{
    return currentIndex();
}

void ComboBox::set_ListIndex(int position)
{
    if (position >= -1 && position < count())
        setCurrentIndex(position);
}

QString ComboBox::Text() const
{
    return currentText();
}

void ComboBox::focusInEvent(QFocusEvent* event)
{
    QComboBox::focusInEvent(event);
    if (!is_returning_focus(event->reason()))
        Q_EMIT GotFocus();
}
