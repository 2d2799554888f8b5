#include "convert/form_captions.h"
#include "core/captions.h"
#include "core/mod_of_grobal_var.h"
#include "frame/QuilmoMain.h"
#include "platform/language.h"

using namespace Qt::StringLiterals;

namespace {

QString caption(const QString& control)
{
    return caption_of(Form::QuilmoMain, control);
}

void apply_to_toolbar(const Toolbar& bar)
{
    for (int index = 1; index <= bar.actions().size(); ++index)
        bar.button(index)->setToolTip(caption(u"main_toolbar.%1"_s.arg(index)));
}

void apply_to_tips(const MainControls& controls)
{
    for (QWidget* control :
         std::initializer_list<QWidget*>{&*controls.cmd_select_all, &*controls.cmdRemove, &*controls.Change_all,
                                         &*controls.cmdBurn, &*controls.cmdSave, &*controls.muteBtn})
        control->setToolTip(caption(control->objectName()));
    controls.muteBtn->setAccessibleName(controls.muteBtn->toolTip());
}

/// The columns behind the fourth have no text of their own in another language.
void apply_to_headers(ListView& list)
{
    constexpr std::size_t texts = 4;
    std::vector<ColumnHeader> headers = list.ColumnHeaders();
    for (std::size_t column = 0; column < texts; ++column)
        headers.at(column).Text = caption(u"lvListView.%1"_s.arg(column + 1));
    list.set_ColumnHeaders(headers);
}

} // namespace

// The pictures that hold words were painted in the program's language.
void QuilmoMain::apply_language_main()
{
    if (shared.language_id == english)
        return;
    menus_.apply_language();
    apply_to_toolbar(*controls_.main_toolbar);
    apply_to_tips(controls_);
    apply_to_headers(*controls_.lvListView);
    apply_korean_font({&*controls_.txtFilename, &*controls_.txtArtist, &*controls_.txtTitle, &*controls_.txtGenre,
                       &*controls_.cboGenre, &*controls_.Label_filesize, &*controls_.label_title_of_player});
}
