#pragma once

#include "platform/file_operation/FileOperation.h"

#include <functional>

/// The work of a file operation. Runs on a thread of its own and asks its questions through the guide.
using FileWork = std::function<FileOutcome(FileOperationGuide& guide)>;

/// Runs `work`, and returns when it is over. Until then no input reaches the windows that are open, but they paint and
/// their timers run. Questions go to file_prompts; when for half a second nothing was asked, a window shows how far the
/// work has come and lets the person cancel. What `work` throws is thrown here.
FileOutcome run_file_work(FileAction action, const FileWork& work);
