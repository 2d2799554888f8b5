#include "frame/SplitterGrip.h"

#include "platform/twips.h"

#include <QMouseEvent>

SplitterGrip::SplitterGrip(QWidget* parent) : QWidget(parent)
{
    setCursor(Qt::SplitHCursor);
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
