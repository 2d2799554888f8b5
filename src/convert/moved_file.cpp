#include "convert/moved_file.h"

#include "core/Mod_of_nation.h"
#include "fif/mod_of_FIF.h"

// Not even where nothing stands at the moment: a file may come between that look and the writing.
void tag_moved_file(bool done, const QString& path, const QString& artist, const QString& title, QString& genre)
{
    if (done)
        Write_fif_tag(path, artist, title, genre);
    else
        show_message(msg_tag_write_failed);
}
