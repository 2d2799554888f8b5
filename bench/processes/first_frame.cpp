// Linked to a program, ends it as soon as a window of it is painted.

#include <QCoreApplication>
#include <QEvent>

#include <cstdlib>

namespace {

class FirstFrame : public QObject
{
public:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        // What is queued while a window paints comes when the whole of it is on the screen.
        if (event->type() == QEvent::Paint && watched->isWidgetType())
            QMetaObject::invokeMethod(
                this, [] { std::_Exit(0); }, Qt::QueuedConnection);
        return false;
    }
};

void watch()
{
    static FirstFrame first_frame;
    QCoreApplication::instance()->installEventFilter(&first_frame);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(watch)
