#include "selection/BurningProgram.h"

#include "core/Mod_of_nation.h"
#include "core/mod_of_grobal_var.h"
#include "platform/MsgBox.h"
#include "platform/controls/CommonDialog.h"
#include "platform/display_text.h"
#include "platform/own_words.h"
#include "platform/start_program.h"

using namespace Qt::StringLiterals;

namespace {

void start_burning_program()
{
    const QString reason = start_program(shared.burn_program_path);
    if (!reason.isEmpty())
        MsgBox(own_word(Word::program_not_started).arg(display_text(shared.burn_program_path), reason),
               message_box_information, application_title());
}

} // namespace

void cmdBurn_Click()
{
    if (!shared.burn_program_path.isEmpty()) {
        start_burning_program();
        return;
    }
    CommonDialog chooser = {.DialogTitle = u"Select Burning Program"_s,
                            .Filter = u"Select burnning program.(*.exe;*.ico)|*.exe;*.ico"_s,
                            .FileName = {}};
    chooser.ShowOpen();
    if (chooser.FileName.isEmpty())
        return;
    shared.burn_program_path = chooser.FileName;
    if (shared.fso.FileExists(shared.burn_program_path))
        start_burning_program();
}

void menu_Tool_Select_Burning_Program_Click()
{
    shared.burn_program_path.clear();
    cmdBurn_Click();
}
