#include "companion/companion.h"
#include "companion/look.h"
#include "companion/shown_text.h"
#include "companion/walk_files.h"
#include "fif/Check_korean.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int class_cells = 6;
constexpr int artist_cells = 22;
constexpr int title_cells = 26;
constexpr int genre_cells = 14;

QLatin1StringView class_of(const Look& look)
{
    switch (look.kind) {
    case 1:
        return "FIF"_L1;
    case 2:
        return "tag"_L1;
    default:
        return look.reason.code == Reason::unreadable ? "error"_L1 : "none"_L1;
    }
}

QByteArray line_of(const MusicFile& file, const Look& look, const NewName& new_name)
{
    constexpr qsizetype room_of_most_lines = 300;
    QByteArray line;
    line.reserve(room_of_most_lines);
    append_cell(line, QString(class_of(look)), class_cells);
    line += QByteArray::number(Byte_count(look.name)).rightJustified(3) + "  ";
    append_cell(line, look.fields.artist, artist_cells);
    append_cell(line, look.fields.title, title_cells);
    append_cell(line, look.fields.genre, genre_cells);
    append_shown(line, file.shown_path());
    if (new_name.reason)
        line += ": " + new_name.reason.text();
    else if (new_name.name != look.name)
        append_shown(line += " -> ", new_name.name);
    return line;
}

QJsonObject object_of(const MusicFile& file, const Look& look, const NewName& new_name)
{
    QJsonObject object{{u"class"_s, class_of(look)}, {u"bytes"_s, Byte_count(look.name)}};
    put_bytes(object, u"path"_s, file.shown_path());
    if (look.kind != 0) {
        put_bytes(object, u"artist"_s, bytes_of_field(look.fields.artist));
        put_bytes(object, u"title"_s, bytes_of_field(look.fields.title));
        put_bytes(object, u"genre"_s, bytes_of_field(look.fields.genre));
    }
    if (!new_name.reason)
        put_bytes(object, u"new_name"_s, bytes_of_field(new_name.name));
    put_reason(object, new_name.reason);
    return object;
}

} // namespace

void run_check(const Order& order, PathSource& paths, Output& output)
{
    const NamingRule rule{.also_fif_names = order.type.has_value(), .fixed = {}};
    const auto check_file = [&](const MusicFile& file) -> LookAhead::Turn {
        const Look look = look_at(file);
        const NewName new_name = new_name_of(look, rule);
        const bool has_failed = look.reason.code == Reason::unreadable;
        QByteArray line = output.is_json() ? line_of(object_of(file, look, new_name)) : line_of(file, look, new_name);
        return [&output, has_failed, line = std::move(line)] {
            if (has_failed)
                output.fail();
            output.write(line);
            output.step("checking");
        };
    };
    LookAhead looks(check_file, LookAhead::Reach::far, order.helpers);
    walk_files(paths, output, looks);
}
