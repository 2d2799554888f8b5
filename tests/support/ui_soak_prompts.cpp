#include "ui_soak_prompts.h"

#include "core/mod_of_grobal_var.h"

#include <algorithm>

using namespace Qt::StringLiterals;

SoakPrompts::SoakPrompts(SoakTree& tree, SoakCounts& counts) : tree_(tree), counts_(counts)
{
    set_file_prompts(this);
}

SoakPrompts::~SoakPrompts()
{
    set_file_prompts(nullptr);
}

FilePrompts::Overwrite SoakPrompts::ask_overwrite(const FileFacts& source, const FileFacts& target)
{
    ++counts_[u"asked: overwrite"_s];
    const Overwrite answer = PromptBoxes::ask_overwrite(source, target);
    if (answer == Overwrite::yes)
        tree_.give_up(target.path);
    if (answer == Overwrite::yes_to_all) { // for all that the operation will meet in its target
        for (const QString& folder : {shared.tree_node_path, shared.dest_folder_path}) {
            if (!folder.isEmpty() && target.path.startsWith(folder))
                tree_.give_up(folder);
        }
    }
    return answer;
}

FilePrompts::OnError SoakPrompts::ask_error(const QString& path, const QString& reason, bool more_follow)
{
    ++counts_[u"asked: error"_s];
    return PromptBoxes::ask_error(path, reason, more_follow);
}

bool SoakPrompts::ask_trash(const QStringList& paths)
{
    ++counts_[u"asked: trash"_s];
    const bool yes = PromptBoxes::ask_trash(paths);
    return yes && std::ranges::none_of(paths, SoakTree::is_on_other_volume);
}

bool SoakPrompts::ask_delete(const QStringList& paths)
{
    ++counts_[u"asked: delete for good"_s];
    const bool yes = PromptBoxes::ask_delete(paths);
    if (yes) {
        for (const QString& path : paths)
            tree_.give_up(path);
    }
    return yes;
}
