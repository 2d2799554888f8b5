#include "platform/controls/ButtonDialog.h"

#include "platform/controls/faces.h"

#include <QKeyEvent>

namespace {

constexpr QSize button_size(150, 34);

} // namespace

ButtonDialog::ButtonDialog(const QString& name, const QString& title, QWidget* parent) : QDialog(parent)
{
    setObjectName(name);
    setWindowTitle(title);
    setMouseTracking(true);
}

UsrButton* ButtonDialog::add_button(const QString& name, const QString& caption, const QString& tip)
{
    auto* button = new UsrButton(this);
    button->setObjectName(name);
    button->setToolTip(tip);
    set_caption(*button, caption);
    connect(button, &UsrButton::MouseMove, this, [this, button] { light_only(button); });
    connect(button, &UsrButton::GotFocus, this, [this, button] { light_only(button); });
    connect(button, &UsrButton::LostFocus, button, &UsrButton::DelMoveImg);
    buttons_.push_back(button);
    return button;
}

void ButtonDialog::set_caption(UsrButton& button, const QString& caption)
{
    button.set_faces(button_face(caption, FaceState::up, button_size),
                     button_face(caption, FaceState::down, button_size),
                     button_face(caption, FaceState::hover, button_size));
    if (button.toolTip().isEmpty())
        button.setAccessibleName(caption);
}

void ButtonDialog::light_only(const UsrButton* lit)
{
    for (UsrButton* button : buttons_) {
        if (button == lit)
            button->SetMoveImg();
        else
            button->DelMoveImg();
    }
}

void ButtonDialog::mouseMoveEvent(QMouseEvent* event)
{
    put_out_buttons();
    QDialog::mouseMoveEvent(event);
}

void ButtonDialog::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    auto* const focused = qobject_cast<UsrButton*>(focusWidget());
    UsrButton* const pressed = focused != nullptr ? focused : default_button_;
    if (!enter || pressed == nullptr)
        QDialog::keyPressEvent(event);
    else if (!event->isAutoRepeat()) // the key may be held down since it opened the dialog
        pressed->click();
}
