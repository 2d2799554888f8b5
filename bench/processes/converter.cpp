// The program's own converters without a window, on all files in the folders below FOLDER:
//   converter rename FOLDER [PROCESSES]    gives the files the names that their tags make
//   converter tag FOLDER [PROCESSES]       brings the tags in line with the FIF names
// The folders are shared out among that many processes, or as many as there are cores. The files go through the final
// list, as many at a time as it holds.

#include "convert/BatchConversion.h"
#include "core/mod_of_grobal_var.h"
#include "platform/MsgBox.h"
#include "platform/drives.h"
#include "platform/file_names.h"
#include "platform/file_operation/disk_entry.h"
#include "selection/final_list.h"
#include "silent_player.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <string_view>
#include <thread>
#include <vector>

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
            remove_from_final_list(QString(record.name), record.folder, record.full_path, record.size);
    }
}

void convert_folder(const QByteArray& native, const QString& folder, BatchConversion& batch)
{
    shared.current_folder = folder;
    std::vector<QByteArray> names;
    if (read_names(native, names) != 0)
        qFatal("can't read %s", native.constData());
    for (const QByteArray& bytes : names) {
        const QString name = name_from_bytes(bytes);
        if (!name.endsWith(music_name_ending, Qt::CaseInsensitive))
            continue;
        // Nobody sees the sum of the sizes, so no file is asked for its own.
        const auto add = [&] { return add_to_final_list(name, folder, folder + name, 0, {}, {}); };
        if (add() != list_full)
            continue;
        convert_list(batch);
        add();
    }
}

/// Converts each `share_count`th folder from number `share` on.
void convert_share(const std::vector<QByteArray>& folders, std::size_t share, std::size_t share_count)
{
    SilentPlayer player;
    BatchConversion batch(player);
    for (std::size_t place = share; place < folders.size(); place += share_count)
        convert_folder("./" + folders[place], u"C:\\"_s + name_from_bytes(folders[place]) + u'\\', batch);
    convert_list(batch);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3 || argc > 4 || chdir(argv[2]) != 0)
        return 2;
    set_message_box([](const QString& text, int, const QString&) { qFatal("%s", qPrintable(text)); });
    set_drives({{.DriveLetter = u"C"_s,
                 .Type = DriveType::fixed,
                 .VolumeName = {},
                 .IsReady = true,
                 .mount_point = ".",
                 .device = {}}});
    shared.language_id = 1;
    shared.fif_type = std::string_view(argv[1]) == "rename" ? 2 : 1;
    std::vector<QByteArray> folders;
    if (read_names(".", folders) != 0)
        return 1;
    const std::size_t wanted = argc == 4 ? QByteArray(argv[3]).toUInt() : std::thread::hardware_concurrency();
    const std::size_t processes = std::max<std::size_t>(wanted, 1);
    std::vector<pid_t> others;
    for (std::size_t share = 1; share < processes; ++share) {
        const pid_t process = fork();
        if (process == 0) {
            convert_share(folders, share, processes);
            return 0;
        }
        others.push_back(process);
    }
    convert_share(folders, 0, processes);
    bool all_done = true;
    for (const pid_t process : others) {
        int status = 0;
        all_done = waitpid(process, &status, 0) == process && status == 0 && all_done;
    }
    return all_done ? 0 : 1;
}
