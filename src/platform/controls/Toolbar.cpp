#include "platform/controls/Toolbar.h"

#include "platform/RunTimeError.h"

#include <QAction>
#include <QEvent>

namespace {

constexpr int icon_side = 24;

} // namespace

Toolbar::Toolbar(QWidget* parent) : QToolBar(parent)
{
    setIconSize({icon_side, icon_side});
    setToolButtonStyle(Qt::ToolButtonIconOnly);
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu); // the main window's own menu would hide the bar
    setMouseTracking(true);
}

void Toolbar::Add(const QString& key, const QIcon& icon, const QString& tip)
{
    if (button(key) != nullptr)
        throw RunTimeError(RunTimeError::key_not_unique);
    QAction* action = addAction(icon, tip);
    action->setObjectName(key);
    action->setToolTip(tip);
    connect(action, &QAction::triggered, this, [this, key] { Q_EMIT ButtonClick(key); });
    // The text is what assistive programs read: it follows the tip when a language changes that.
    connect(action, &QAction::changed, action, [action] { action->setText(action->toolTip()); });
    QWidget* tool_button = widgetForAction(action);
    tool_button->setFocusPolicy(Qt::TabFocus);
    tool_button->setMouseTracking(true); // so that moves over the buttons reach the bar
}

void Toolbar::AddSeparator()
{
    widgetForAction(addSeparator())->setMouseTracking(true);
}

QAction* Toolbar::button(const QString& key) const
{
    return findChild<QAction*>(key, Qt::FindDirectChildrenOnly);
}

QAction* Toolbar::button(int index) const
{
    return actions().value(index - 1);
}

void Toolbar::mouseMoveEvent(QMouseEvent* event)
{
    QToolBar::mouseMoveEvent(event);
    Q_EMIT MouseMove();
}
