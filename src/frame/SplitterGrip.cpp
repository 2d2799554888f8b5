#include "frame/SplitterGrip.h"

#include "platform/controls/palette.h"
#include "platform/twips.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace {

QAccessibleInterface* face_of(const QString& /*class_name*/, QObject* object)
{
    auto* grip = qobject_cast<SplitterGrip*>(object);
    return grip != nullptr ? new QAccessibleWidget(grip, QAccessible::Splitter) : nullptr;
}

} // namespace

SplitterGrip::SplitterGrip(QWidget* parent) : QWidget(parent)
{
    QAccessible::installFactory(face_of);
    setCursor(Qt::SplitHCursor);
    setFocusPolicy(Qt::TabFocus); // the mouse leaves the focus with the pane that it is in
}

void SplitterGrip::paintEvent(QPaintEvent* /*event*/)
{
    if (hasFocus())
        QPainter(this).fillRect(rect().adjusted(1, 0, -1, 0), palette::accent);
}

void SplitterGrip::keyPressEvent(QKeyEvent* event)
{
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (plain && event->key() == Qt::Key_Left)
        Q_EMIT KeyDown(-1);
    else if (plain && event->key() == Qt::Key_Right)
        Q_EMIT KeyDown(1);
    else
        QWidget::keyPressEvent(event);
}

void SplitterGrip::mousePressEvent(QMouseEvent* /*event*/)
{
    Q_EMIT MouseDown();
}

void SplitterGrip::mouseMoveEvent(QMouseEvent* event)
{
    Q_EMIT MouseMove(static_cast<float>(event->position().x() * twips_per_pixel));
}

void SplitterGrip::mouseReleaseEvent(QMouseEvent* /*event*/)
{
    Q_EMIT MouseUp();
}
