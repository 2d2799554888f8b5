#include "FilePanel.h"
#include "bench_disk.h"
#include "convert/FIF_Auto_Convert.h"
#include "convert/FIF_convert.h"
#include "core/mod_of_grobal_var.h"
#include "floor.h"
#include "platform/FileSystemObject.h"
#include "selection/final_list.h"
#include "silent_player.h"
#include "work.h"

#include <QCoreApplication>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const FIF_convert::Surroundings no_surroundings = {.refresh_all = [] {}, .small_icons = {}};

Corpus half_changeable(int files)
{
    return {.files = files, .fif_names = Corpus::FifNames::every_other};
}

bool is_changeable(const BenchDisk::File& file)
{
    return !file.name.startsWith(u'[');
}

void fill_final_list_floor(benchmark::State& state, int files)
{
    const BenchDisk& disk = BenchDisk::of(half_changeable(files));
    for ([[maybe_unused]] auto round : state) {
        for (const BenchDisk::File& file : disk.files()) {
            look_for(file.native.constData());
            if (is_changeable(file))
                read_start_and_tag(file.native.constData());
        }
    }
}

void fill_final_list_work(benchmark::State& state, int files)
{
    const BenchDisk& disk = BenchDisk::of(half_changeable(files));
    disk.list_all();
    SilentPlayer player;
    FIF_convert dialog(player, no_surroundings, nullptr);
    for ([[maybe_unused]] auto round : state)
        dialog.Fill_list();
}

/// Files of which every name is to be changed; they get their old names back.
const BenchDisk& changed_disk(int files)
{
    return BenchDisk::of({.files = files, .folders = 2});
}

void change_fif_floor(benchmark::State& state, int files)
{
    const BenchDisk& disk = changed_disk(files);
    for ([[maybe_unused]] auto round : state) {
        for (const BenchDisk::File& file : disk.files()) {
            read_start_and_tag(file.native.constData());
            rename_file(file.native.constData(), (file.native + ".new").constData());
        }
        for (const BenchDisk::File& file : disk.files())
            look_for((file.native + ".new").constData());
        state.PauseTiming();
        for (const BenchDisk::File& file : disk.files())
            rename_file((file.native + ".new").constData(), file.native.constData());
        state.ResumeTiming();
    }
}

void change_fif_work(benchmark::State& state, int files)
{
    const BenchDisk& disk = changed_disk(files);
    SilentPlayer player;
    for ([[maybe_unused]] auto round : state) {
        state.PauseTiming();
        disk.begin_run();
        disk.list_all();
        auto dialog = std::make_unique<FIF_convert>(player, no_surroundings, nullptr);
        auto* button = dialog->findChild<UsrButton*>(u"Change_FIF"_s);
        state.ResumeTiming();
        button->click();
        state.PauseTiming();
        if (std::ranges::count(final_list_slots(), 1, &FinalListEntry::kind) != files)
            state.SkipWithError("a file was not renamed");
        // The slots are in the order of the files.
        for (std::size_t slot = 0; slot < disk.files().size(); ++slot)
            MoveFileA(shared.final_list.at(slot).full_path, disk.files()[slot].folder + disk.files()[slot].name);
        dialog.reset();
        state.ResumeTiming();
    }
}

void preview_floor(benchmark::State& state, int files)
{
    const std::vector<QByteArray> paths = BenchDisk::of({.files = files}).paths_as_listed();
    for ([[maybe_unused]] auto round : state) {
        for (const QByteArray& path : paths)
            read_start_and_tag(path.constData());
    }
}

void preview_work(benchmark::State& state, int files)
{
    const BenchDisk& disk = BenchDisk::of({.files = files});
    FilePanel panel;
    panel.files.FillListView(disk.files().front().folder);
    for (int row = 1; row <= panel.list.Count(); ++row)
        panel.list.set_Selected(row, true);
    SilentPlayer player;
    FIF_Auto_Convert dialog(player, {.lvListView = panel.list, .small_icons = {}, .refresh_all = [] {}}, nullptr);
    auto* button = dialog.findChild<UsrButton*>(u"freeview"_s);
    QCoreApplication::processEvents(); // the list has yet to show what was selected
    for ([[maybe_unused]] auto round : state)
        button->click();
    const auto* previews = dialog.findChild<ListView*>(u"Selected_ListView"_s);
    if (previews->Count() != files || !previews->Item(files).column(1).startsWith(u'['))
        state.SkipWithError("a file has no preview");
}

} // namespace

std::vector<Work> dialog_works()
{
    const std::vector<int> listed = {100, 300, 1000};
    return {{.name = "fill_final_list", .work = fill_final_list_work, .floor = fill_final_list_floor, .sizes = listed},
            {.name = "change_fif", .work = change_fif_work, .floor = change_fif_floor, .sizes = listed},
            {.name = "preview", .work = preview_work, .floor = preview_floor, .sizes = {100, 1000, 10000}}};
}
