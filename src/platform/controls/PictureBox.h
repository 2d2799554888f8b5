#pragma once

#include "platform/controls/Picture.h"
#include "platform/numbers.h"

#include <QWidget>

/// A box that shows one picture, drawn to fill it. A press on it never reaches what lies below; a move of the mouse
/// does if nobody listens to the box's own. One that was given a focus policy is pressed by the space bar as well.
class PictureBox : public QWidget
{
    Q_OBJECT

public:
    explicit PictureBox(const Picture& picture, QWidget* parent = nullptr);

    const Picture& picture() const { return picture_; }
    void set_picture(const Picture& picture);

    QSize sizeHint() const override;

Q_SIGNALS:
    /// Numbers as in mouse.h; x and y in twips from the box's upper left corner, where it stands when the event comes.
    /// A press holds the mouse: until the release, moves and releases outside the box are told too, with places below 0
    /// or beyond its size. The second press of a double click is a press like any other.
    void MouseDown(i16 button, i16 shift, float x, float y);
    void MouseMove(i16 button, i16 shift, float x, float y);
    void MouseUp(i16 button, i16 shift, float x, float y);
    /// The left button was pressed and released inside, after its MouseUp; or the space bar was pressed.
    void Click();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    Picture picture_;
    bool left_press_ = false; ///< a press of the left button that may become a Click
};
