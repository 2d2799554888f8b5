#pragma once

#include "platform/controls/ButtonDialog.h"
#include "platform/controls/Picture.h"
#include "platform/numbers.h"

#include <QRadioButton>

#include <vector>

/// A small form that sets one switch: options in front of a back picture that serves as their labels, OK and Cancel.
class ChoiceForm : public ButtonDialog
{
    Q_OBJECT

protected:
    ChoiceForm(const QString& name, const QString& title, QWidget* parent);

    /// A new option, behind those before it, that stands for `value`. Its place is to take in its label.
    QRadioButton* add_option(const QString& name, i16 value);
    /// What the back picture shows beside an option, and its words for those who can't see it.
    void set_label(QRadioButton& option, const QString& words, const Picture& label);
    /// The last step of loading: adds the command buttons below the options and sets the option of `value`; a value
    /// without one sets none.
    void load(i16 value);

    /// The value of the option chosen last, 0 for none.
    i16 chosen() const { return chosen_; }
    /// What OK does before the form goes.
    virtual void apply() = 0;

    void paintEvent(QPaintEvent* event) override;

private:
    struct Line
    {
        QRadioButton* option = nullptr;
        i16 value = 0;
        Picture label;
    };

    /// The place of all options together.
    QRect options_rect() const;
    void add_command_buttons();

    std::vector<Line> lines_;
    int paper_height_ = 0; ///< of the ground of the options, logical pixels
    i16 chosen_ = 0;
};
