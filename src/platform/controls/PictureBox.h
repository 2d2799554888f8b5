#pragma once

#include "platform/controls/Picture.h"

#include <QWidget>

/// A box that shows one picture, drawn to fill it.
class PictureBox : public QWidget
{
    Q_OBJECT

public:
    explicit PictureBox(const Picture& picture, QWidget* parent = nullptr);

    const Picture& picture() const { return picture_; }
    void set_picture(const Picture& picture);

    QSize sizeHint() const override;

Q_SIGNALS:
    void MouseMove();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    Picture picture_;
};
