#include "bench_disk.h"
#include "explorer/FolderTree.h"
#include "floor.h"
#include "platform/controls/TreeView.h"
#include "work.h"

#include <QCoreApplication>

#include <sys/stat.h>

#include <map>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

void make_folder(const QByteArray& native)
{
    if (mkdir(native.constData(), 0777) != 0)
        qFatal("can't make %s", native.constData());
}

constexpr int grandchildren = 20;

/// A drive with folders of 20 folders each.
void make_broad(const QByteArray& root, int folders)
{
    for (int child = 0; child < folders; ++child) {
        const QByteArray path = root + "/child " + QByteArray::number(child);
        make_folder(path);
        for (int below = 0; below < grandchildren; ++below)
            make_folder(path + "/folder " + QByteArray::number(below));
    }
}

/// A drive on which each folder holds 10 others, as long as there are any.
void make_deep(const QByteArray& root, int folders)
{
    std::vector<QByteArray> paths;
    for (int number = 0; number < folders; ++number) {
        const QByteArray& parent = number < 10 ? root : paths[static_cast<std::size_t>(number) / 10 - 1];
        paths.push_back(parent + "/folder " + QByteArray::number(number));
        make_folder(paths.back());
    }
}

using MakeFolders = void (*)(const QByteArray& root, int folders);

/// The disk with these folders, kept from the first call on.
const BenchDisk& disk_of(MakeFolders make, int folders)
{
    static std::map<std::pair<MakeFolders, int>, std::unique_ptr<BenchDisk>> disks;
    std::unique_ptr<BenchDisk>& disk = disks[{make, folders}];
    if (!disk) {
        disk = std::make_unique<BenchDisk>();
        make(disk->native(), folders);
    }
    disk->begin_run();
    return *disk;
}

/// The folder tree on the screen, with the first level of the drive.
struct TreePanel
{
    TreePanel()
    {
        tree.resize(300, 600);
        tree.show();
        folders.init_main_tree();
        QCoreApplication::processEvents();
    }

    TreeView tree;
    FolderTree folders{tree};
};

/// Takes `act` on a fresh tree, which has to have so many nodes then.
template<typename Act> void measure(benchmark::State& state, int nodes, const Act& act)
{
    for ([[maybe_unused]] auto round : state) {
        state.PauseTiming();
        auto panel = std::make_unique<TreePanel>();
        state.ResumeTiming();
        act(panel->tree);
        panel->tree.node_rect(panel->tree.Item(u"C:"_s)); // has the rows find their places, if they have not yet
        state.PauseTiming();
        if (panel->tree.Count() != nodes)
            state.SkipWithError("a folder is missing in the tree");
        panel.reset();
        state.ResumeTiming();
    }
}

void expand_floor(benchmark::State& state, int folders)
{
    const BenchDisk& disk = disk_of(make_broad, folders);
    for ([[maybe_unused]] auto round : state) {
        for (int child = 0; child < folders; ++child)
            list_names((disk.native() + "/child " + QByteArray::number(child)).constData());
    }
}

void expand_work(benchmark::State& state, int folders)
{
    disk_of(make_broad, folders);
    measure(state, 2 + folders * (1 + grandchildren),
            [](TreeView& tree) { tree.set_Expanded(tree.Item(u"C:"_s), true); });
}

void walk_floor(benchmark::State& state, int folders)
{
    const BenchDisk& disk = disk_of(make_deep, folders);
    for ([[maybe_unused]] auto round : state)
        list_names_below(disk.native().constData());
}

/// Opens a node, walks what is below it, and closes it again.
void walk(TreeView& tree, TreeNode* node)
{
    if (node->children().empty())
        return;
    tree.set_Expanded(node, true);
    for (const auto& child : node->children())
        walk(tree, child.get());
    tree.set_Expanded(node, false);
}

void walk_work(benchmark::State& state, int folders)
{
    disk_of(make_deep, folders);
    measure(state, 2 + folders, [](TreeView& tree) { walk(tree, tree.Item(u"C:"_s)); });
}

} // namespace

std::vector<Work> tree_works()
{
    constexpr int folders_a_round = 2000; // each turn needs a fresh window
    return {{.name = "expand",
             .work = expand_work,
             .floor = expand_floor,
             .sizes = {100, 1000, 2000, 10000},
             .files_a_round = folders_a_round},
            {.name = "walk",
             .work = walk_work,
             .floor = walk_floor,
             .sizes = {100, 1000, 10000, 100000},
             .files_a_round = folders_a_round}};
}
