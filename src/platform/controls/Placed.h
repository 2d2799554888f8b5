#pragma once

#include <QWidget>

/// The place of a control on its form: lengths in twips, as exact as they were set. The control itself stands on the
/// nearest logical pixels; its edges are rounded, not its size, so that neighbours keep their distance.
class Place
{
public:
    Place() = default;
    Place(QWidget& widget, int left, int top, int width, int height);

    int Left() const { return left_; }
    void set_Left(int twips);
    int Top() const { return top_; }
    void set_Top(int twips);
    int Width() const { return width_; }
    void set_Width(int twips);
    int Height() const { return height_; }
    void set_Height(int twips);
    void Move(int left, int top, int width, int height);

private:
    QWidget* widget_ = nullptr;
    int left_ = 0;
    int top_ = 0;
    int width_ = 0;
    int height_ = 0;
};

/// A control that is placed by hand. The control belongs to its form.
template<typename Control> class Placed : public Place
{
public:
    Placed() = default;
    Placed(Control& control, const Place& place) : Place(place), control_(&control) {}

    Control& operator*() const { return *control_; }
    Control* operator->() const { return control_; }

private:
    Control* control_ = nullptr;
};
