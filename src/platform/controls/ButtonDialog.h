#pragma once

#include "platform/controls/UsrButton.h"

#include <QDialog>

#include <vector>

/// A dialog whose commands are UsrButtons: the pointer or the focus lights one and puts out the others, and Enter
/// presses the one that has the focus, or else the default button if there is one.
class ButtonDialog : public QDialog
{
    Q_OBJECT

public:
    /// Makes all buttons show their picture at rest.
    void put_out_buttons() { light_only(nullptr); }

protected:
    ButtonDialog(const QString& name, const QString& title, QWidget* parent);

    /// A button with `caption` painted into its faces, named `name`. Its tool tip, if it has one, is its accessible
    /// name; else the caption is.
    UsrButton* add_button(const QString& name, const QString& caption, const QString& tip = {});
    /// Paints another caption into the faces of a button of add_button.
    static void set_caption(UsrButton& button, const QString& caption);

    void set_default_button(UsrButton* button) { default_button_ = button; }

    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// Lights one button, or none for nullptr, and puts out the others.
    void light_only(const UsrButton* lit);

    std::vector<UsrButton*> buttons_;
    UsrButton* default_button_ = nullptr;
};
