#include "frame/hover.h"

#include "core/mod_of_grobal_var.h"
#include "frame/MainControls.h"

namespace {

void put_out(const std::vector<UsrButton*>& row)
{
    for (UsrButton* button : row)
        button->DelMoveImg();
}

void light_only(const std::vector<UsrButton*>& row, const UsrButton& lit)
{
    for (UsrButton* button : row) {
        if (button == &lit)
            button->SetMoveImg();
        else
            button->DelMoveImg();
    }
}

} // namespace

HoverRows::HoverRows(const MainControls& controls, QObject* parent)
    : QObject(parent),
      list_row_{&*controls.cmd_select_all, &*controls.cmdRemove, &*controls.Change_all, &*controls.cmdBurn,
                &*controls.cmdSave},
      player_row_{&*controls.ReBtn,   &*controls.backBtn,  &*controls.PlayBtn,
                  &*controls.StopBtn, &*controls.frontBtn, &*controls.FastBtn}
{
    follow_mouse(list_row_);
    follow_mouse(player_row_);
}

void HoverRows::init_ctl_over()
{
    put_out(list_row_);
    put_out(player_row_);
    shared.enter_saves = 0;
}

void HoverRows::follow_mouse(const Row& row)
{
    for (UsrButton* button : row)
        connect(button, &UsrButton::MouseMove, this, [&row, button] { light_only(row, *button); });
}
