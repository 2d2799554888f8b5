#include "Album.h"

#include <QPainter>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int painting_ms = 50; ///< lets the form paint what the last event changed

} // namespace

Album::Album(const QString& folder) : folder_(folder)
{
    if (!folder_.mkpath(u"."_s))
        qFatal("can't make the folder %s", qPrintable(folder));
}

void Album::take(QWidget& form, const QString& name, QWidget* menu)
{
    QTest::qWait(painting_ms);
    QPixmap picture = form.grab();
    if (menu != nullptr)
        QPainter(&picture).drawPixmap(form.mapFromGlobal(menu->pos()), menu->grab());
    const QString file = folder_.filePath(u"%1-%2.png"_s.arg(++count_, 2, 10, QChar(u'0')).arg(name));
    if (!picture.save(file))
        qFatal("can't save %s", qPrintable(file));
}
