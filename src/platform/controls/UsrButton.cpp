#include "platform/controls/UsrButton.h"

#include "platform/controls/focus.h"
#include "platform/controls/mouse.h"
#include "platform/controls/palette.h"

#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

namespace {

constexpr double disabled_opacity = 0.45;
constexpr double focus_ring_inset = 2.75;

void draw_focus_ring(QPainter& painter, const QRectF& face)
{
    const double radius = palette::corner_radius - 2;
    const QRectF ring = face.adjusted(focus_ring_inset, focus_ring_inset, -focus_ring_inset, -focus_ring_inset);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette::on_accent, 1));
    painter.drawRoundedRect(ring, radius, radius);
}

} // namespace

UsrButton::UsrButton(QWidget* parent) : QAbstractButton(parent)
{
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    // Assistive programs press a button by its clicked signal; mouse and keys never come this way.
    connect(this, &QAbstractButton::clicked, this, &UsrButton::run_click);
}

void UsrButton::set_PictureUp(const Picture& picture)
{
    up_ = picture;
    if (!picture.is_empty())
        setFixedSize(picture.size);
    update();
}

void UsrButton::set_PictureDn(const Picture& picture)
{
    down_ = picture;
    update();
}

void UsrButton::set_PictureMove(const Picture& picture)
{
    move_ = picture;
    update();
}

void UsrButton::set_faces(const Picture& up, const Picture& down, const Picture& move)
{
    set_PictureUp(up);
    set_PictureDn(down);
    set_PictureMove(move);
}

void UsrButton::SetMoveImg()
{
    show_picture(Shown::move);
}

void UsrButton::DelMoveImg()
{
    show_picture(Shown::up);
}

QSize UsrButton::sizeHint() const
{
    return up_.size;
}

bool UsrButton::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::ToolTipChange:
        follow_tool_tip();
        break;
    case QEvent::EnabledChange:
    case QEvent::WindowBlocked:
        held_ = {}; // the release won't come here
        break;
    default:
        break;
    }
    return QAbstractButton::event(event);
}

void UsrButton::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    if (!isEnabled())
        painter.setOpacity(disabled_opacity);
    const Picture& picture = shown_picture();
    if (picture.is_empty())
        return;
    picture.draw(painter, rect());
    if (hasFocus())
        draw_focus_ring(painter, rect());
}

void UsrButton::mousePressEvent(QMouseEvent* event)
{
    if (!rect().contains(event->position().toPoint()))
        return;
    held_ |= event->button();
    if (event->button() == Qt::LeftButton)
        left_press_ = true;
    show_picture(Shown::down);
    Q_EMIT MouseDown(mouse_button_number(event->button()), shift_number(event->modifiers()),
                     mouse_twips(event->position().x()), mouse_twips(event->position().y()));
}

// The toolkit goes on sending the mouse here while a button is held. Outside, the control doesn't see it.
void UsrButton::mouseMoveEvent(QMouseEvent* event)
{
    if (!rect().contains(event->position().toPoint()))
        return;
    Q_EMIT MouseMove(mouse_buttons_number(event->buttons()), shift_number(event->modifiers()),
                     mouse_twips(event->position().x()), mouse_twips(event->position().y()));
}

void UsrButton::mouseReleaseEvent(QMouseEvent* event)
{
    held_.setFlag(event->button(), false);
    const bool ends_left_press = event->button() == Qt::LeftButton && std::exchange(left_press_, false);
    if (!rect().contains(event->position().toPoint()))
        return;
    const QPointer<UsrButton> alive(this);
    show_picture(Shown::up);
    Q_EMIT MouseUp(mouse_button_number(event->button()), shift_number(event->modifiers()),
                   mouse_twips(event->position().x()), mouse_twips(event->position().y()));
    if (alive && ends_left_press)
        run_click();
}

void UsrButton::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        held_ |= event->button();
        run_pressed(&UsrButton::DblClick);
    } else {
        mousePressEvent(event);
    }
}

void UsrButton::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Space:
        if (!event->isAutoRepeat())
            run_click();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        event->ignore(); // what Enter does is the form's affair
        break;
    default:
        QAbstractButton::keyPressEvent(event);
    }
}

void UsrButton::focusInEvent(QFocusEvent* event)
{
    QAbstractButton::focusInEvent(event);
    if (!is_returning_focus(event->reason()))
        Q_EMIT GotFocus();
}

void UsrButton::focusOutEvent(QFocusEvent* event)
{
    QAbstractButton::focusOutEvent(event);
    if (!is_returning_focus(event->reason()))
        Q_EMIT LostFocus();
}

void UsrButton::showEvent(QShowEvent* event)
{
    show_picture(Shown::up);
    QAbstractButton::showEvent(event);
}

void UsrButton::hideEvent(QHideEvent* event)
{
    held_ = {};
    show_picture(Shown::up);
    QAbstractButton::hideEvent(event);
}

void UsrButton::show_picture(Shown which)
{
    if (shown_ == which)
        return;
    shown_ = which;
    update();
}

const Picture& UsrButton::shown_picture() const
{
    switch (shown_) {
    case Shown::down:
        return down_;
    case Shown::move:
        return move_;
    case Shown::up:
        break;
    }
    return up_;
}

void UsrButton::run_click()
{
    run_pressed(&UsrButton::Click);
}

// A handler may run for long, or close the form and so end the button.
void UsrButton::run_pressed(void (UsrButton::*handlers)())
{
    const QPointer<UsrButton> alive(this);
    show_picture(Shown::down);
    repaint();
    Q_EMIT(this->*handlers)();
    if (alive)
        show_picture(Shown::up);
}

void UsrButton::follow_tool_tip()
{
    if (accessibleName() == told_tip_)
        setAccessibleName(toolTip());
    told_tip_ = toolTip();
}
