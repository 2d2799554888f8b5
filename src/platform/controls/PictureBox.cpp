#include "platform/controls/PictureBox.h"

#include <QMouseEvent>
#include <QPainter>

PictureBox::PictureBox(const Picture& picture, QWidget* parent) : QWidget(parent), picture_(picture)
{
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    resize(picture.size);
}

void PictureBox::set_picture(const Picture& picture)
{
    picture_ = picture;
    update();
}

QSize PictureBox::sizeHint() const
{
    return picture_.size;
}

void PictureBox::paintEvent(QPaintEvent* /*event*/)
{
    if (picture_.is_empty())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    picture_.draw(painter, QRectF(rect()));
}

void PictureBox::mouseMoveEvent(QMouseEvent* event)
{
    Q_EMIT MouseMove();
    event->ignore(); // the form below takes the move as well
}
