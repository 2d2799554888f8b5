#include "platform/controls/LongWork.h"

#include <QCoreApplication>
#include <QCursor>
#include <QGuiApplication>

LongWork::LongWork()
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    since_painted_.start();
}

LongWork::~LongWork()
{
    QGuiApplication::restoreOverrideCursor();
}

void LongWork::step()
{
    constexpr qint64 paint_every_ms = 100;
    if (since_painted_.elapsed() < paint_every_ms)
        return;
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    since_painted_.restart();
}
