#pragma once

#include "convert/LineButton.h"
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
    /// An option's name, the text painted beside it, and the value it stands for.
    struct Option
    {
        QString name;
        QString text;
        i16 value;
    };

    /// `chosen` is the value whose option is set; a value without one sets none.
    ChoiceForm(const QString& name, const QString& title, const std::vector<Option>& options, i16 chosen,
               QWidget* parent);

    /// The value of the option chosen last, 0 for none.
    i16 chosen() const { return chosen_; }
    /// What OK does before the form goes.
    virtual void apply() = 0;

    void paintEvent(QPaintEvent* event) override;

private:
    void add_option(const Option& option, int row);
    void add_command_buttons();

    Picture back_picture_;
    std::vector<QRadioButton*> options_;
    i16 chosen_ = 0;
};
