#pragma once

#include "platform/controls/PromptBoxes.h"
#include "ui_soak_tree.h"

/// The program's own boxes for the questions of file operations, as long as the object lives. What a person answers
/// there tells the tree which contents may go.
class SoakPrompts : public PromptBoxes
{
public:
    /// Counts the answers in `counts`.
    SoakPrompts(SoakTree& tree, SoakCounts& counts);
    ~SoakPrompts() override;
    SoakPrompts(const SoakPrompts&) = delete;
    SoakPrompts& operator=(const SoakPrompts&) = delete;

    Overwrite ask_overwrite(const FileFacts& source, const FileFacts& target) override;
    OnError ask_error(const QString& path, const QString& reason, bool more_follow) override;
    bool ask_trash(const QStringList& paths) override;
    bool ask_delete(const QStringList& paths) override;

private:
    SoakTree& tree_;
    SoakCounts& counts_;
};
