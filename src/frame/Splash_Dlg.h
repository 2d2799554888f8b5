#pragma once

#include "platform/controls/Picture.h"

#include <QTimer>
#include <QWidget>

#include <functional>

/// The first window of the program: one picture, for about a second and until the main form stands.
class Splash_Dlg : public QWidget
{
    Q_OBJECT

public:
    /// `show_main_form` makes and shows the main form. It is called once, at the timer's tick, while the splash is
    /// still on the screen; then the splash closes and deletes itself.
    explicit Splash_Dlg(std::function<void()> show_main_form);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void tick();

    std::function<void()> show_main_form_;
    Picture picture_;
    QTimer* Timer_splash;
};

/// The drawing of the splash with the program's name and what it is for.
Picture splash_picture();
