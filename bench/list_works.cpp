#include "FilePanel.h"
#include "bench_disk.h"
#include "core/mod_of_grobal_var.h"
#include "floor.h"
#include "work.h"

#include <QAbstractTableModel>
#include <QCoreApplication>
#include <QTreeView>

namespace {

/// The least that a model of a list of files can be.
class BareModel : public QAbstractTableModel
{
public:
    void set_rows(int rows)
    {
        beginResetModel();
        rows_ = rows;
        endResetModel();
    }

    int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : rows_; }
    int columnCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : 4; }
    QVariant data(const QModelIndex& index, int role) const override
    {
        return role == Qt::DisplayRole ? QVariant(index.row()) : QVariant();
    }

private:
    int rows_ = 0;
};

void fill_list_view_floor(benchmark::State& state, int files)
{
    const BenchDisk& disk = BenchDisk::of({.files = files});
    const QByteArray folder = disk.native() + "/folder 000";
    BareModel model;
    QTreeView view;
    view.setRootIsDecorated(false);
    view.setUniformRowHeights(true);
    view.setModel(&model);
    view.resize(800, 600);
    view.show();
    for ([[maybe_unused]] auto round : state) {
        list_and_read(folder.constData());
        model.set_rows(files);
        QCoreApplication::processEvents();
    }
}

void fill_list_view_work(benchmark::State& state, int files)
{
    const BenchDisk& disk = BenchDisk::of({.files = files});
    FilePanel panel;
    for ([[maybe_unused]] auto round : state) {
        panel.files.FillListView(disk.files().front().folder);
        QCoreApplication::processEvents();
        if (panel.list.Count() != files)
            state.SkipWithError("a file was not listed");
    }
}

/// By a click on the header, until the rows are painted.
template<int column> void sort_work(benchmark::State& state, int files)
{
    const BenchDisk& disk = BenchDisk::of({.files = files});
    FilePanel panel;
    panel.files.FillListView(disk.files().front().folder);
    QCoreApplication::processEvents();
    for ([[maybe_unused]] auto round : state) {
        panel.files.ColumnClick(column);
        QCoreApplication::processEvents();
    }
}

void select_all_floor(benchmark::State& state, int files)
{
    const std::vector<QByteArray> paths = BenchDisk::of({.files = files}).paths_as_listed();
    for ([[maybe_unused]] auto round : state) {
        for (const QByteArray& path : paths)
            read_start_and_tag(path.constData());
    }
}

void select_all_work(benchmark::State& state, int files)
{
    const BenchDisk& disk = BenchDisk::of({.files = files});
    FilePanel panel;
    for ([[maybe_unused]] auto round : state) {
        state.PauseTiming();
        disk.begin_run();
        panel.files.FillListView(disk.files().front().folder);
        QCoreApplication::processEvents();
        state.ResumeTiming();
        panel.picks.cmd_select_all_Click();
        if (shared.final_list_count != files)
            state.SkipWithError("a file was not taken into the final list");
    }
}

} // namespace

std::vector<Work> list_works()
{
    const std::vector<int> sizes = {100, 1000, 10000, 20000};
    return {{.name = "fill_list_view", .work = fill_list_view_work, .floor = fill_list_view_floor, .sizes = sizes},
            {.name = "sort_by_name", .work = sort_work<0>, .sizes = sizes},
            {.name = "sort_by_size", .work = sort_work<1>, .sizes = sizes},
            {.name = "sort_by_type", .work = sort_work<2>, .sizes = sizes},
            {.name = "select_all", .work = select_all_work, .floor = select_all_floor, .sizes = {100, 300, 1000}}};
}
