#include "companion/journal_lines.h"

#include <QByteArrayList>

#include <sys/stat.h>

namespace {

QByteArray escaped(const QByteArray& name)
{
    QByteArray text;
    for (const char byte : name) {
        const bool is_control = (byte >= 0 && byte < ' ') || byte == '\x7f';
        if (is_control || byte == '\\')
            text += "\\x" + QByteArray(1, byte).toHex();
        else
            text += byte;
    }
    return text;
}

QByteArray unescaped(const QByteArray& text)
{
    QByteArray name;
    for (qsizetype place = 0; place < text.size(); ++place) {
        if (text[place] == '\\') {
            name += QByteArray::fromHex(text.mid(place + 2, 2));
            place += 3;
        } else {
            name += text[place];
        }
    }
    return name;
}

QByteArray or_dash(const QByteArray& text)
{
    return text.isEmpty() ? QByteArray("-") : text;
}

/// Whether a name is one entry of a folder.
bool is_name(const QByteArray& name)
{
    return !name.isEmpty() && !name.contains('/') && !name.contains('\0') && name != "." && name != "..";
}

bool is_whole(const Change& change)
{
    constexpr qsizetype block_bytes = 128;
    const bool has_block =
        !change.block || (change.block->before.size() == block_bytes && change.block->after.size() == block_bytes);
    return change.folder.startsWith('/') && change.folder.endsWith('/') && is_name(change.old_name) &&
           is_name(change.new_name) && has_block;
}

} // namespace

QByteArray journal_head()
{
    return "quilmo-fif journal 1\n";
}

QByteArray journal_line(const Change& change)
{
    const auto& block = change.block;
    QByteArrayList fields{QByteArray::number(change.size), QByteArray::number(change.changed),
                          escaped(change.folder),          escaped(change.shown_folder),
                          escaped(change.old_name),        escaped(change.new_name)};
    fields.append(or_dash(block ? block->before.toHex() : QByteArray()));
    fields.append(or_dash(block ? block->after.toHex() : QByteArray()));
    fields.append(or_dash(block && block->mode ? QByteArray::number(*block->mode, 8) : QByteArray()));
    return fields.join('\t') + '\n';
}

std::optional<Change> parse_journal_line(const QByteArray& line)
{
    const QByteArrayList fields = line.split('\t');
    if (fields.size() != 9)
        return std::nullopt;
    bool is_size = false;
    bool is_time = false;
    bool is_mode = true;
    Change change{.folder = unescaped(fields[2]),
                  .shown_folder = unescaped(fields[3]),
                  .old_name = unescaped(fields[4]),
                  .new_name = unescaped(fields[5]),
                  .block = std::nullopt,
                  .size = fields[0].toLongLong(&is_size),
                  .changed = fields[1].toLongLong(&is_time)};
    if (fields[6] != "-") {
        change.block = {
            .before = QByteArray::fromHex(fields[6]), .after = QByteArray::fromHex(fields[7]), .mode = std::nullopt};
        if (fields[8] != "-")
            change.block->mode = fields[8].toUInt(&is_mode, 8) & ALLPERMS;
    }
    return is_size && is_time && is_mode && is_whole(change) ? std::optional(change) : std::nullopt;
}

QByteArray journal_end(qint64 changes, const QByteArray& hash)
{
    return "end\t" + QByteArray::number(changes) + '\t' + hash.toHex() + '\n';
}

std::optional<JournalEnd> parse_journal_end(const QByteArray& line)
{
    const QByteArrayList fields = line.split('\t');
    if (fields.size() != 3 || fields[0] != "end" || !fields[2].endsWith('\n'))
        return std::nullopt;
    bool is_number = false;
    const qint64 changes = fields[1].toLongLong(&is_number);
    return is_number ? std::optional(JournalEnd{.changes = changes, .hash = QByteArray::fromHex(fields[2].chopped(1))})
                     : std::nullopt;
}
