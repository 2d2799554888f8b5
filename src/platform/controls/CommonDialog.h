#pragma once

#include <QString>

#include <functional>

/// The platform's chooser of one file that is there.
struct CommonDialog
{
    QString DialogTitle;
    /// The text shown for the kind of files looked for, "|", and their patterns with ";" between them. A second choice,
    /// all files, is added to it.
    QString Filter;
    QString FileName; ///< the path chosen, as the program writes it; comes back empty after Cancel

    void ShowOpen();
};

/// What ShowOpen shows: tests put a double in its place; an empty chooser brings the real dialog back.
using FileChooser = std::function<QString(const CommonDialog& dialog)>;
void set_file_chooser(FileChooser chooser);
