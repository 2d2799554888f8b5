#include "frame/Splash_Dlg.h"

#include "platform/controls/message_window.h"

#include <QGuiApplication>
#include <QPainter>
#include <QResource>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace {

constexpr int splash_milliseconds = 1000;
constexpr QSize splash_size(480, 300);

} // namespace

Splash_Dlg::Splash_Dlg(std::function<void()> show_main_form)
    : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint),
      show_main_form_(std::move(show_main_form)),
      picture_(splash_picture()),
      Timer_splash(new QTimer(this))
{
    setObjectName(u"Splash_Dlg"_s);
    setWindowTitle(u"Vurlo"_s);
    setAccessibleName(u"Vurlo"_s);
    setFixedSize(picture_.size);
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        move(screen->availableGeometry().center() - rect().center());

    Timer_splash->setObjectName(u"Timer_splash"_s);
    Timer_splash->setInterval(splash_milliseconds);
    connect(Timer_splash, &QTimer::timeout, this, &Splash_Dlg::tick);
    Timer_splash->start();
}

void Splash_Dlg::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    picture_.draw(painter, rect());
}

void Splash_Dlg::tick()
{
    Timer_splash->stop();
    guarded(show_main_form_)();
    close();
    deleteLater();
}

Picture splash_picture()
{
    const Picture drawing = svg_picture(u":/splash.svg"_s, splash_size);
    return {splash_size, [drawing](QPainter& painter, const QRectF& rect) {
                const QSize size = (rect.size() * painter.device()->devicePixelRatioF()).toSize();
                const QResource ready(u":/splash_%1x%2.pixels"_s.arg(size.width()).arg(size.height()));
                if (!ready.isValid()) {
                    drawing.draw(painter, rect);
                    return;
                }
                const QByteArray pixels = ready.uncompressedData();
                painter.drawImage(rect, QImage(reinterpret_cast<const uchar*>(pixels.constData()), size.width(),
                                               size.height(), QImage::Format_RGB32));
            }};
}
