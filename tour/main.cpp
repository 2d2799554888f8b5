// The guided tour: starts the real forms on a sample collection, drives the main job with input events and saves a
// picture after each step. Its one argument is the folder for the pictures.

#include "Driver.h"
#include "core/Mod_of_nation.h"
#include "core/mod_of_grobal_var.h"
#include "frame/QuilmoMain.h"
#include "frame/Splash_Dlg.h"
#include "frame/look.h"
#include "platform/controls/message_window.h"
#include "platform/drives.h"
#include "sample_collection.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

/// Saves numbered pictures.
class Album
{
public:
    explicit Album(const QString& folder) : folder_(folder)
    {
        if (!folder_.mkpath(u"."_s))
            qFatal("can't make the folder %s", qPrintable(folder));
    }

    void take(QWidget& form, const QString& name)
    {
        QTest::qWait(50); // lets the form paint what the last event changed
        const QString file = folder_.filePath(u"%1-%2.png"_s.arg(++count_, 2, 10, QChar(u'0')).arg(name));
        if (!form.grab().save(file))
            qFatal("can't save %s", qPrintable(file));
    }

    QString path() const { return folder_.absolutePath(); }
    int count() const { return count_; }

private:
    QDir folder_;
    int count_ = 0;
};

/// The tour's own machine: one drive with a music folder, and settings that go with it.
class TourMachine
{
public:
    TourMachine()
    {
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(disk_.filePath(u"settings"_s)));
        const QByteArray root = QFile::encodeName(disk_.filePath(u"disk"_s));
        if (!write_sample_collection(root + "/Music", {.files = 60}))
            qFatal("can't write the sample collection");
        set_drives({{.DriveLetter = u"C"_s,
                     .Type = DriveType::fixed,
                     .VolumeName = u"Tour"_s,
                     .IsReady = true,
                     .mount_point = root,
                     .device = {}}});
    }

private:
    QTemporaryDir disk_;
};

QStringList music_folders()
{
    return shared.fso.GetFolder(u"C:\\Music"_s).SubFolders();
}

void pick_files(const Driver& driver, Album& album, QWidget& form)
{
    QStringList folders = music_folders();
    folders.sort();
    driver.open_node(u"C:"_s);
    driver.open_node(u"C:\\Music"_s);
    album.take(form, u"folders"_s);

    auto& list = driver.control<ListView>(u"lvListView"_s);
    driver.click_node(u"C:\\Music\\"_s + folders.first());
    for (int row = 1; row <= std::min(list.Count(), 5); ++row)
        driver.click_check_box(list, row);
    album.take(form, u"ticked-files"_s);

    for (const QString& folder : folders.sliced(1)) {
        driver.click_node(u"C:\\Music\\"_s + folder);
        driver.click(u"cmd_select_all"_s);
    }
    driver.click_row(list, 4);
    driver.hover(u"Change_all"_s);
    album.take(form, u"files-of-all-folders"_s);
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

void convert_files(const Driver& driver, Album& album)
{
    Driver::in_next_dialog([&album](QDialog& dialog) {
        const Driver in_dialog(dialog);
        album.take(dialog, u"final-list"_s);
        in_dialog.click(u"Change_FIF"_s);
        album.take(dialog, u"final-list-converted"_s);
        edit_by_hand(in_dialog, album);
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

void convert_selected_rows(const Driver& driver, Album& album)
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
    driver.choose_from_popup(u"mnu_ListView"_s, u"mnu_ListView_auto"_s);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\nPlays the guided tour and saves its pictures in FOLDER.\n", argv[0]);
        return 2;
    }
    const TourMachine machine;
    const QApplication application(argc, argv);
    apply_look();
    Album album(QFile::decodeName(argv[1]));

    std::unique_ptr<QuilmoMain> form;
    auto* splash = new Splash_Dlg([&form] {
        form = std::make_unique<QuilmoMain>();
        form->show();
    });
    splash->show();
    album.take(*splash, u"splash"_s);
    while (form == nullptr)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    if (!QTest::qWaitForWindowExposed(form.get()))
        qFatal("the main window did not come");
    album.take(*form, u"start"_s);

    const Driver driver(*form);
    pick_files(driver, album, *form);
    convert_files(driver, album);
    album.take(*form, u"renamed-files"_s);
    choose_switches(driver, album);
    convert_selected_rows(driver, album);
    album.take(*form, u"files-in-another-shape"_s);
    form->close();
    std::printf("%d pictures in %s\n", album.count(), qPrintable(album.path()));
    return 0;
}
