#include "platform/controls/Placed.h"

#include "platform/twips.h"

Place::Place(QWidget& widget, int left, int top, int width, int height) : widget_(&widget)
{
    Move(left, top, width, height);
}

void Place::set_Left(int twips)
{
    Move(twips, top_, width_, height_);
}

void Place::set_Top(int twips)
{
    Move(left_, twips, width_, height_);
}

void Place::set_Width(int twips)
{
    Move(left_, top_, twips, height_);
}

void Place::set_Height(int twips)
{
    Move(left_, top_, width_, twips);
}

void Place::Move(int left, int top, int width, int height)
{
    left_ = left;
    top_ = top;
    width_ = width;
    height_ = height;
    const QPoint upper_left(to_pixels(left), to_pixels(top));
    const QPoint lower_right(to_pixels(left + width), to_pixels(top + height));
    widget_->setGeometry(QRect(upper_left, lower_right - QPoint(1, 1)));
}
