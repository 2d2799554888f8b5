#include "platform/controls/PictureBox.h"

#include "platform/controls/mouse.h"
#include "platform/controls/palette.h"
#include "platform/controls/picture_box_face.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMetaMethod>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

#include <utility>

namespace {

void draw_focus_ring(QPainter& painter, const QRectF& box)
{
    painter.setPen(QPen(palette::accent, palette::stroke));
    painter.setBrush(Qt::NoBrush);
    constexpr double inset = palette::stroke / 2;
    painter.drawRoundedRect(box.adjusted(inset, inset, -inset, -inset), palette::corner_radius, palette::corner_radius);
}

} // namespace

PictureBox::PictureBox(const Picture& picture, QWidget* parent) : QWidget(parent), picture_(picture)
{
    install_picture_box_face();
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    resize(picture.size);
}

void PictureBox::set_picture(const Picture& picture)
{
    picture_ = picture;
    update();
}

void PictureBox::set_slider(Slider* slider)
{
    slider_ = slider;
    if (slider_ != nullptr)
        told_percent_ = slider_->shown_percent();
}

void PictureBox::follow_slider()
{
    if (slider_ == nullptr)
        return;
    const int percent = slider_->shown_percent();
    if (std::exchange(told_percent_, percent) == percent)
        return;
    QAccessibleValueChangeEvent event(this, percent);
    QAccessible::updateAccessibility(&event);
    Q_EMIT ValueChanged(percent);
}

void PictureBox::set_checked(bool checked)
{
    if (std::exchange(checked_, checked) == checked)
        return;
    QAccessible::State changed;
    changed.checked = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
}

QSize PictureBox::sizeHint() const
{
    return picture_.size;
}

void PictureBox::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!picture_.is_empty())
        picture_.draw(painter, QRectF(rect()));
    if (hasFocus())
        draw_focus_ring(painter, QRectF(rect()));
}

void PictureBox::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        left_press_ = true;
    Q_EMIT MouseDown(mouse_button_number(event->button()), shift_number(event->modifiers()),
                     mouse_twips(event->position().x()), mouse_twips(event->position().y()));
}

void PictureBox::mouseMoveEvent(QMouseEvent* event)
{
    Q_EMIT MouseMove(mouse_buttons_number(event->buttons()), shift_number(event->modifiers()),
                     mouse_twips(event->position().x()), mouse_twips(event->position().y()));
    event->setAccepted(isSignalConnected(QMetaMethod::fromSignal(&PictureBox::MouseMove)));
}

void PictureBox::mouseReleaseEvent(QMouseEvent* event)
{
    const bool clicks = event->button() == Qt::LeftButton && std::exchange(left_press_, false) &&
                        rect().contains(event->position().toPoint());
    const QPointer<PictureBox> alive(this);
    Q_EMIT MouseUp(mouse_button_number(event->button()), shift_number(event->modifiers()),
                   mouse_twips(event->position().x()), mouse_twips(event->position().y()));
    if (alive && clicks)
        Q_EMIT Click();
}

void PictureBox::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Space)
        QWidget::keyPressEvent(event);
    else if (!event->isAutoRepeat())
        Q_EMIT Click();
}
