#include "platform/controls/FilePrompts.h"

#include "platform/controls/PromptBoxes.h"

namespace {

FilePrompts*& prompts_in_use()
{
    static FilePrompts* prompts = nullptr;
    return prompts;
}

} // namespace

FilePrompts& file_prompts()
{
    static PromptBoxes boxes;
    FilePrompts* const prompts = prompts_in_use();
    return prompts == nullptr ? boxes : *prompts;
}

void set_file_prompts(FilePrompts* prompts)
{
    prompts_in_use() = prompts;
}
