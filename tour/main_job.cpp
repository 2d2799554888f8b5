#include "main_job.h"

#include "Driver.h"
#include "core/mod_of_grobal_var.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/FileProgressWindow.h"

#include <QLabel>
#include <QMenu>
#include <QRadioButton>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString music = u"C:\\Music"_s;
const QString copies = u"C:\\Copies"_s;

void close_next_dialog(Album& album, const QString& picture)
{
    Driver::in_next_dialog([&album, picture](QDialog& dialog) {
        album.take(dialog, picture);
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
}

void ask_for_too_much(const Driver& driver, Album& album)
{
    close_next_dialog(album, u"message"_s);
    driver.click(u"Change_all"_s); // no file is picked yet
}

void pick_files(const Driver& driver, Album& album, QWidget& form)
{
    QStringList folders = shared.fso.GetFolder(music).SubFolders();
    folders.sort();
    driver.open_node(u"C:"_s);
    driver.open_node(music);
    album.take(form, u"folders"_s);

    auto& list = driver.control<ListView>(u"lvListView"_s);
    driver.click_node(music + u'\\' + folders.first());
    for (int row = 1; row <= std::min(list.Count(), 5); ++row)
        driver.click_check_box(list, row);
    album.take(form, u"ticked-files"_s);

    for (const QString& folder : folders.sliced(1)) {
        driver.click_node(music + u'\\' + folder);
        driver.click(u"cmd_select_all"_s);
    }
    album.take(form, u"tools-menu"_s, &driver.open_menu(u"menu_Tool"_s));
    driver.choose_from_popup(u"menu_Tool"_s, u"menu_Tool_Select_all"_s);
    driver.click_row(list, 4);
    driver.hover(u"Change_all"_s);
    album.take(form, u"files-of-all-folders"_s);
}

void play_song(const Driver& driver, Album& album, QWidget& form)
{
    const auto& time = driver.control<QLabel>(u"CurrentTime"_s);
    const QString at_start = time.text();
    driver.click(u"PlayBtn"_s);
    constexpr int longest_wait_ms = 10000;
    if (!QTest::qWaitFor([&] { return time.text() != at_start; }, longest_wait_ms))
        qFatal("the song does not play");
    album.take(form, u"playing"_s);
    driver.click(u"StopBtn"_s);
}

/// Gives the last file whose name is not FIF a name that is typed in the window.
void save_one_file(const Driver& driver, Album& album, QWidget& form)
{
    auto& list = driver.control<ListView>(u"lvListView"_s);
    constexpr int other_icon = 2;
    int row = list.Count();
    while (list.Item(row).SmallIcon != other_icon)
        --row;
    driver.click_row(list, row);
    driver.type(u"txtArtist"_s, u"Harbour Lights"_s);
    driver.type(u"txtTitle"_s, u"Paper Boats"_s);
    auto& genre = driver.control<ComboBox>(u"cboGenre"_s);
    genre.setFocus();
    QTest::keyClicks(&genre, u"Jazz"_s);
    driver.hover(u"cmdSave"_s);
    album.take(form, u"typed-fields"_s);
    driver.click(u"cmdSave"_s);
    album.take(form, u"saved-file"_s);
}

void edit_by_hand(const Driver& in_list, Album& album)
{
    auto& list = in_list.control<ListView>(u"Impossible_ListView"_s);
    Driver::in_next_dialog([&album](QDialog& dialog) {
        const Driver in_dialog(dialog);
        in_dialog.type(u"txtArtist"_s, u"The Paper Lanterns"_s);
        in_dialog.type(u"txtTitle"_s, u"Evening Train"_s);
        album.take(dialog, u"single-edit"_s);
        in_dialog.click(u"cmdSave"_s);
    });
    in_list.double_click_row(list, 1);
}

void choose_destination(const Driver& in_list, Album& album)
{
    Driver::in_next_dialog([&album](QDialog& dialog) {
        const Driver in_dialog(dialog);
        in_dialog.open_node(u"C:"_s, u"FileCopyTreeView"_s);
        in_dialog.click_node(copies, u"FileCopyTreeView"_s);
        album.take(dialog, u"destination-folder"_s);
        in_dialog.click(u"cmd_cancel"_s);
    });
    in_list.click(u"cmd_transfer"_s);
}

void convert_files(const Driver& driver, Album& album)
{
    Driver::in_next_dialog([&album](QDialog& dialog) {
        const Driver in_dialog(dialog);
        album.take(dialog, u"final-list"_s);
        in_dialog.click(u"Change_FIF"_s);
        album.take(dialog, u"final-list-converted"_s);
        edit_by_hand(in_dialog, album);
        choose_destination(in_dialog, album);
        in_dialog.click(u"Cancel"_s);
    });
    driver.click(u"Change_all"_s);
}

void choose_switches(const Driver& driver, Album& album)
{
    const auto look_and_take = [&album](const QString& picture, const QString& option) {
        Driver::in_next_dialog([&album, picture, option](QDialog& dialog) {
            const Driver in_dialog(dialog);
            QTest::mouseClick(&in_dialog.control<QRadioButton>(option), Qt::LeftButton);
            album.take(dialog, picture);
            in_dialog.click(u"cmd_ok"_s);
        });
    };
    look_and_take(u"shape-of-names"_s, u"Option_3"_s);
    driver.choose(u"menu_Tool"_s, u"menu_Tool_Select_FIF_Format"_s);
    look_and_take(u"genre-entry"_s, u"Option_combo"_s);
    driver.choose(u"menu_Tool"_s, u"menu_Tool_Set_Genre_Type"_s);
}

void convert_selected_rows(const Driver& driver, Album& album, QWidget& form)
{
    auto& list = driver.control<ListView>(u"lvListView"_s);
    driver.click_row(list, 1);
    driver.click_row(list, list.Count(), Qt::ShiftModifier);
    Driver::in_next_dialog([&album](QDialog& dialog) {
        const Driver in_dialog(dialog);
        in_dialog.click(u"freeview"_s);
        album.take(dialog, u"auto-convert"_s);
        in_dialog.click(u"autoconvert"_s);
        in_dialog.click(u"Cancel"_s);
    });
    driver.right_click_row(list, list.Count());
    album.take(form, u"list-menu"_s, &driver.control<QMenu>(u"mnu_ListView"_s));
    driver.choose_from_popup(u"mnu_ListView"_s, u"mnu_ListView_auto"_s);
}

void copy_file_twice(const Driver& driver, Album& album)
{
    auto& list = driver.control<ListView>(u"lvListView"_s);
    driver.click_row(list, 1);
    driver.choose(u"menu_Edit"_s, u"menu_Edit_copy"_s);
    driver.click_node(copies);
    driver.choose(u"menu_Edit"_s, u"menu_Edit_paste"_s);
    close_next_dialog(album, u"overwrite"_s);
    driver.choose(u"menu_Edit"_s, u"menu_Edit_paste"_s);
}

void ask_for_deletion(const Driver& driver, Album& album)
{
    driver.click_row(driver.control<ListView>(u"lvListView"_s), 1);
    close_next_dialog(album, u"trash"_s);
    driver.choose(u"menu_Edit"_s, u"menu_Edit_delete"_s);
}

/// The window of long work, in the middle of it; no work of the tour takes long enough to show it.
void show_progress(QWidget& form, Album& album)
{
    FileProgressWindow window(FileAction::copy, &form);
    window.show_progress({.name = u"Evening Train.mp3"_s, .bytes_done = 262'000'000, .bytes_all = 650'000'000});
    window.show();
    album.take(window, u"progress"_s);
}

} // namespace

void play_main_job(QWidget& form, Album& album)
{
    const Driver driver(form);
    album.take(form, u"start"_s);
    ask_for_too_much(driver, album);
    pick_files(driver, album, form);
    play_song(driver, album, form);
    save_one_file(driver, album, form);
    convert_files(driver, album);
    album.take(form, u"renamed-files"_s);
    choose_switches(driver, album);
    convert_selected_rows(driver, album, form);
    album.take(form, u"files-in-another-shape"_s);
    copy_file_twice(driver, album);
    ask_for_deletion(driver, album);
    show_progress(form, album);
    close_next_dialog(album, u"about"_s);
    driver.choose(u"menu_Help"_s, u"menu_Help_about"_s);
}
