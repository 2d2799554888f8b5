#pragma once

#include "fif/fif_name.h"
#include "platform/numbers.h"

#include <QString>

#include <functional>

class Transport;
struct FinalListEntry;

/// The work of the batch conversion dialog on the final list, without its window.
class BatchConversion
{
public:
    /// `transport` outlives it.
    explicit BatchConversion(Transport& transport) : transport_(transport) {}

    /// The name that a file gets from its tag, empty when none can be made; with `do_rename` 1 the final list and the
    /// file follow. A file without a tag takes the text of the last file that had one.
    QString rename_to_fif(const QString& folder, const QString& name, i16 do_rename);
    /// Rewrites the tags of all listed files whose names are FIF, but for the file in the player. `between_files` is
    /// called after each of them.
    void Update_FIF_id3_tag(const std::function<void()>& between_files);
    /// What the button Change_FIF does to the files: tags of FIF names rewritten, marked changeable files renamed.
    void Change_FIF(const std::function<void()>& between_files);

private:
    /// Renames the file that is open in the player: it is released before and comes back in the state it was in.
    void rename_file_in_player(const FinalListEntry& record);

    Transport& transport_;
    FifFields texts_; ///< those of the last tag, as text boxes keep them
};
