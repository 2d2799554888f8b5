#pragma once

#include <QString>
#include <QStringView>

#include <span>

/// The forms with texts that follow the language. They are designed in English.
enum class Form
{
    QuilmoMain,
    Chang_FIF,
    FIF_convert,
    FIF_Auto_Convert,
    File_copy_Dlg
};

/// What takes the place of a text of a form's design: a menu entry's caption, a column's header, a button's or toolbar
/// button's tool tip, a label's text.
struct Caption
{
    QStringView control; ///< its name; one of several texts of a control has its number, from 1, behind a dot
    QStringView korean;
    QStringView german;
};

/// All texts of a form that follow the language.
std::span<const Caption> captions_of(Form form);

/// The text in the language of the run; null in English, where the text of the design stays.
QString caption_text(const Caption& caption);

/// The text of one control, such as "cmdSave" or "lvListView.2"; null in English and for a control without one.
QString caption_of(Form form, QStringView control);
