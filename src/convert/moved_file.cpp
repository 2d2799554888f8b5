#include "convert/moved_file.h"

#include "core/Mod_of_nation.h"
#include "core/mod_of_grobal_var.h"
#include "fif/mod_of_FIF.h"

void tag_moved_file(bool done, const QString& path, const QString& artist, const QString& title, QString& genre)
{
    if (!done && shared.fso.FileExists(path))
        show_message(msg_tag_write_failed);
    else
        Write_fif_tag(path, artist, title, genre);
}
