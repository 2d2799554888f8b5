#include "platform/controls/LabelEditor.h"

#include "platform/text.h"

#include <QAbstractItemDelegate>
#include <QAbstractItemView>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QStyle>
#include <QStyleOptionViewItem>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// How the view paints a row, as far as the place of its text depends on it.
QStyleOptionViewItem row_option(const QAbstractItemView& view, const QModelIndex& index)
{
    QStyleOptionViewItem option;
    option.initFrom(&view);
    option.widget = &view;
    option.font = view.font();
    option.rect = view.visualRect(index);
    const int icon = view.style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, &view);
    option.decorationSize = view.iconSize().isValid() ? view.iconSize() : QSize(icon, icon);
    option.decorationPosition = QStyleOptionViewItem::Left;
    option.displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
    return option;
}

} // namespace

LabelEditor::LabelEditor(QAbstractItemView& view, const QModelIndex& index, const QString& text, Selects selects)
    : QLineEdit(view.viewport()), view_(view), index_(index), old_text_(text)
{
    setObjectName(u"label_editor"_s);
    setAccessibleName(view.accessibleName());
    // The wheel over the box scrolls the view; were the focus to follow it there, the edit would end.
    setFocusPolicy(Qt::WheelFocus);
    setText(text);
    const qsizetype stop = text.lastIndexOf(u'.');
    if (selects == Selects::stem && stop > 0)
        setSelection(0, static_cast<int>(stop));
    else
        selectAll();
    connect(this, &QLineEdit::textChanged, this, &LabelEditor::place);
    place();
    show();
    setFocus(Qt::OtherFocusReason);
}

void LabelEditor::place()
{
    if (view_.visualRect(index_).isEmpty()) {
        cancel(); // nobody sees any more what is edited
        return;
    }
    view_.itemDelegateForIndex(index_)->updateEditorGeometry(this, row_option(view_, index_), index_);
    const QRect sight = view_.viewport()->rect();
    QRect box = geometry();
    // The row still draws its text, of which nothing is to stick out.
    const int text_width = std::max(fontMetrics().horizontalAdvance(displayText()),
                                    fontMetrics().horizontalAdvance(index_.data(Qt::DisplayRole).toString()));
    const int needed = text_width + minimumSizeHint().width();
    const int room = std::max(sight.right() - std::max(box.left(), 0), minimumSizeHint().width());
    box.setWidth(std::min(needed, room));
    const int height = std::max(box.height(), sizeHint().height());
    const bool is_in_sight = box.intersects(sight);
    box.adjust(0, (box.height() - height) / 2, 0, 0);
    box.setHeight(height);
    if (is_in_sight) // the box is higher than its row, and none of its frame is to be cut off
        box.moveTop(std::clamp(box.top(), 0, std::max(sight.height() - height, 0)));
    setGeometry(box);
}

bool LabelEditor::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride &&
        !static_cast<const QKeyEvent*>(event)->modifiers().testFlag(Qt::AltModifier)) {
        event->accept();
        return true;
    }
    return QLineEdit::event(event);
}

void LabelEditor::keyPressEvent(QKeyEvent* event)
{
    const bool is_enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (is_enter || event->key() == Qt::Key_Escape) {
        event->accept();
        finish(is_enter);
        return;
    }
    QLineEdit::keyPressEvent(event);
    event->accept(); // also what the box has no use for: the view and the form have none for it now
}

void LabelEditor::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    // Only the box's own menu opens as a pop-up while it has the focus.
    if (event->reason() != Qt::PopupFocusReason)
        finish(!window()->isHidden()); // closing the form is no answer
}

bool LabelEditor::focusNextPrevChild(bool /*next*/)
{
    finish(true);
    return true;
}

void LabelEditor::finish(bool accepted)
{
    if (!std::exchange(is_open_, false))
        return;
    const QPointer<LabelEditor> self(this);
    if (window()->focusWidget() == this)
        view_.setFocus(Qt::OtherFocusReason); // also takes over what an input method still composes
    if (self.isNull())
        return;
    hide();
    deleteLater();
    Q_EMIT Ended(accepted, isModified() ? text_box_text(text()) : old_text_);
}
