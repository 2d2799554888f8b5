// The program's own converters without a window, on all files in the folders below FOLDER:
//   converter rename FOLDER    gives the files the names that their tags make
//   converter tag FOLDER       brings the tags in line with the FIF names
// The files go through the final list, as many at a time as it holds.

#include "convert/BatchConversion.h"
#include "core/mod_of_grobal_var.h"
#include "platform/MsgBox.h"
#include "platform/drives.h"
#include "selection/final_list.h"
#include "silent_player.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

void convert_list(BatchConversion& batch)
{
    // The dialog of the final list marks what it shows as changeable.
    for (FinalListEntry& record : final_list_slots())
        record.convert = 1;
    batch.Change_FIF([] {});
    for (const FinalListEntry& record : final_list_slots()) {
        if (record.in_use == 1)
            remove_from_final_list_by_path(QString(record.full_path));
    }
}

void convert_folder(const QString& folder, BatchConversion& batch)
{
    shared.current_folder = folder;
    for (const File& file : shared.fso.GetFolder(folder).Files(u"MP3"_s)) {
        const auto add = [&] {
            return add_to_final_list(file.Name, folder, folder + file.Name, checked<i32>(file.Size), file.Type(), {});
        };
        if (add() != list_full)
            continue;
        convert_list(batch);
        add();
    }
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3)
        return 2;
    set_message_box([](const QString& text, int, const QString&) { qFatal("%s", qPrintable(text)); });
    set_drives({{.DriveLetter = u"C"_s,
                 .Type = DriveType::fixed,
                 .VolumeName = {},
                 .IsReady = true,
                 .mount_point = arguments[2].toLocal8Bit(),
                 .device = {}}});
    shared.language_id = 1;
    shared.fif_type = arguments[1] == u"rename"_s ? 2 : 1;
    SilentPlayer player;
    BatchConversion batch(player);
    for (const QString& folder : shared.fso.GetFolder(u"C:\\"_s).SubFolders())
        convert_folder(u"C:\\"_s + folder + u'\\', batch);
    convert_list(batch);
    return 0;
}
