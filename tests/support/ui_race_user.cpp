#include "ui_race_user.h"

#include "core/mod_of_grobal_var.h"
#include "platform/controls/ListView.h"
#include "platform/controls/TreeView.h"
#include "platform/controls/UsrButton.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

/// Runs `visit` in the dialog that opens next, and closes it.
void in_dialog(const std::function<void(QDialog&)>& visit)
{
    QTimer::singleShot(0, qApp, [visit, present = QApplication::activeModalWidget()] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr || dialog == present)
            return;
        visit(*dialog);
        dialog->close();
    });
}

void click(QWidget& form, const QString& button)
{
    Q_EMIT form.findChild<UsrButton*>(button)->Click();
}

void click_node(TreeView& tree, const QString& key)
{
    TreeNode* const node = tree.Item(key);
    if (node == nullptr)
        return;
    tree.set_Selected(node);
    Q_EMIT tree.NodeClick(node);
}

} // namespace

RaceUser::RaceUser(QWidget& window, RaceRound& round)
    : window_(window),
      round_(round),
      list_(*window.findChild<ListView*>(u"lvListView"_s)),
      tree_(*window.findChild<TreeView*>(u"tvTreeView"_s))
{
    for (const QString& drive : {u"C:"_s, u"D:"_s})
        tree_.set_Expanded(tree_.Item(drive), true);
}

const QList<RaceUser::Act>& RaceUser::acts()
{
    static const QList<Act> all = {{u"click a folder"_s, &RaceUser::click_folder, 6},
                                   {u"expand a folder"_s, &RaceUser::expand_folder, 2},
                                   {u"refresh"_s, &RaceUser::refresh, 4},
                                   {u"click a row"_s, &RaceUser::click_row, 4},
                                   {u"tick a row"_s, &RaceUser::tick_row, 6},
                                   {u"pick all"_s, &RaceUser::pick_all, 2},
                                   {u"pick none"_s, &RaceUser::pick_none, 1},
                                   {u"sort"_s, &RaceUser::sort, 1},
                                   {u"save"_s, &RaceUser::save, 6},
                                   {u"convert the final list"_s, &RaceUser::convert_final_list, 6},
                                   {u"auto convert"_s, &RaceUser::auto_convert, 6},
                                   {u"copy files"_s, &RaceUser::copy_files, 3},
                                   {u"delete files"_s, &RaceUser::delete_files, 1},
                                   {u"rename a file"_s, &RaceUser::rename_file, 4},
                                   {u"work on a subfolder"_s, &RaceUser::work_on_subfolder, 1},
                                   {u"add a folder"_s, &RaceUser::add_folder, 1},
                                   {u"play"_s, &RaceUser::play, 2}};
    return all;
}

QString RaceUser::act()
{
    int weights = 0;
    for (const Act& each : acts())
        weights += each.weight;
    int left = below(weights);
    for (const Act& each : acts()) {
        left -= each.weight;
        if (left >= 0)
            continue;
        (this->*each.perform)();
        QCoreApplication::processEvents();
        return each.name;
    }
    return {};
}

void RaceUser::click_folder()
{
    click_node(tree_, round_.folder());
}

void RaceUser::expand_folder()
{
    TreeNode* const node = tree_.Item(below(2) == 0 ? round_.folder() : round_.folder().left(2));
    if (node == nullptr)
        return;
    tree_.set_Expanded(node, false);
    tree_.set_Expanded(node, true);
}

void RaceUser::refresh()
{
    choose(u"menu_View_refresh"_s);
}

void RaceUser::click_row()
{
    if (list_.Count() == 0)
        return;
    const int row = 1 + below(list_.Count());
    list_.clear_selection();
    list_.set_Selected(row, true);
    Q_EMIT list_.ItemClick(row);
}

void RaceUser::tick_row()
{
    if (list_.Count() == 0)
        return;
    const int row = 1 + below(list_.Count());
    list_.set_Checked(row, !list_.Item(row).Checked);
    Q_EMIT list_.ItemCheck(row);
}

void RaceUser::pick_all()
{
    click(window_, u"cmd_select_all"_s);
}

void RaceUser::pick_none()
{
    click(window_, u"cmdRemove"_s);
}

void RaceUser::sort()
{
    Q_EMIT list_.ColumnClick(below(3));
}

void RaceUser::save()
{
    click_row();
    if (below(4) == 0)
        window_.findChild<QLineEdit*>(u"txtTitle"_s)->setText(u"New %1"_s.arg(below(3)));
    click(window_, u"cmdSave"_s);
}

void RaceUser::convert_final_list()
{
    in_dialog([this](QDialog& dialog) {
        click(dialog, u"Change_FIF"_s);
        if (below(3) == 0)
            edit_one(dialog);
        if (below(6) == 0)
            copy_to_folder(dialog);
        click(dialog, u"Change_FIF"_s);
    });
    click(window_, u"Change_all"_s);
}

void RaceUser::edit_one(QDialog& final_list)
{
    for (const QString& name : {u"FIF_ListView"_s, u"Impossible_ListView"_s, u"Possible_ListView"_s}) {
        auto* list = final_list.findChild<ListView*>(name);
        if (list->Count() == 0)
            continue;
        in_dialog([this](QDialog& edit) {
            edit.findChild<QLineEdit*>(u"txtArtist"_s)->setText(u"Edit"_s);
            edit.findChild<QLineEdit*>(u"txtTitle"_s)->setText(QString::number(below(3)));
            click(edit, u"cmdSave"_s);
        });
        list->set_Selected(1 + below(list->Count()), true);
        shared.list_drag_active = 1;
        Q_EMIT list->DblClick();
        return;
    }
}

void RaceUser::copy_to_folder(QDialog& final_list)
{
    in_dialog([this](QDialog& choice) {
        auto* tree = choice.findChild<TreeView*>(u"FileCopyTreeView"_s);
        const QString folder = round_.folder();
        click_node(*tree, folder.left(2));
        click_node(*tree, folder);
        if (tree->SelectedItem() != nullptr && tree->SelectedItem()->Key() == folder)
            click(choice, u"cmd_ok"_s);
    });
    click(final_list, u"cmd_transfer"_s);
}

void RaceUser::auto_convert()
{
    if (!select_rows(4))
        return;
    in_dialog([this](QDialog& dialog) {
        if (below(2) == 0) {
            dialog.findChild<QLineEdit*>(u"txtArtist"_s)->setText(u"All"_s);
            dialog.findChild<QCheckBox*>(u"Check_Artist"_s)->setChecked(true);
        }
        click(dialog, u"freeview"_s);
        click(dialog, u"autoconvert"_s);
    });
    choose(u"mnu_ListView_auto"_s);
}

void RaceUser::copy_files()
{
    if (!select_rows(3))
        return;
    choose(u"mnu_ListView_copy"_s);
    click_folder();
    choose(u"mnu_ListView_paste"_s);
}

void RaceUser::delete_files()
{
    if (select_rows(2) && !tree_.SelectedItem()->Key().startsWith(u'D'))
        choose(u"mnu_ListView_delete"_s);
}

void RaceUser::rename_file()
{
    click_row();
    choose(u"mnu_ListView_rename"_s);
    type_label(round_.name());
}

/// Only what lies below the folders of the race, so that these stay.
void RaceUser::work_on_subfolder()
{
    const TreeNode* const parent = tree_.Item(round_.folder());
    if (parent == nullptr || parent->children().empty())
        return;
    const auto index = round_.below(parent->children().size());
    click_node(tree_, QString(parent->children()[index]->Key()));
    switch (below(4)) {
    case 0:
        if (!tree_.SelectedItem()->Key().startsWith(u'D') && tree_.SelectedItem()->Key().count(u'\\') > 1)
            choose(u"mnu_tree_delete"_s);
        break;
    case 1:
        choose(u"mnu_tree_copy"_s);
        click_folder();
        choose(u"mnu_tree_paste"_s);
        break;
    default:
        if (tree_.SelectedItem()->Key().count(u'\\') < 2)
            return;
        choose(u"mnu_tree_rename"_s);
        type_label(round_.name());
        break;
    }
}

void RaceUser::add_folder()
{
    click_folder();
    choose(u"mnu_tree_add_folder"_s);
    type_label(round_.name());
}

void RaceUser::play()
{
    click_row();
    const QStringList buttons = {u"PlayBtn"_s, u"PlayBtn"_s, u"StopBtn"_s, u"FastBtn"_s, u"ReBtn"_s, u"frontBtn"_s};
    click(window_, buttons[below(static_cast<int>(buttons.size()))]);
}

/// Selects up to so many rows; gives whether there are any.
bool RaceUser::select_rows(int most)
{
    if (list_.Count() == 0)
        return false;
    list_.clear_selection();
    for (int count = 1 + below(most); count > 0; --count)
        list_.set_Selected(1 + below(list_.Count()), true);
    return true;
}

void RaceUser::choose(const QString& entry)
{
    window_.findChild<QAction*>(entry)->trigger();
}

/// Ends the label edit that is open, if there is one.
void RaceUser::type_label(const QString& text)
{
    for (QWidget* pane : {static_cast<QWidget*>(&tree_), static_cast<QWidget*>(&list_)}) {
        for (auto* editor : pane->findChildren<QLineEdit*>(u"label_editor"_s)) {
            if (!editor->isVisible())
                continue;
            editor->setText(text);
            QTest::keyClick(editor, Qt::Key_Return);
            return;
        }
    }
}
