#pragma once

#include "platform/controls/FilePrompts.h"

/// The program's own prompts: modal boxes in front of all its windows. Esc and the close box give the answer that
/// changes nothing.
class PromptBoxes : public FilePrompts
{
public:
    Overwrite ask_overwrite(const FileFacts& source, const FileFacts& target) override;
    OnError ask_error(const QString& path, const QString& reason, bool more_follow) override;
    bool ask_trash(const QStringList& paths) override;
    bool ask_delete(const QStringList& paths) override;
};
