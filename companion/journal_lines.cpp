#include "companion/journal_lines.h"

#include <QByteArrayList>

#include <algorithm>
#include <charconv>

namespace {

const QByteArray doubt = "doubt\t";
constexpr int doubt_digits = 19;

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

/// Reads a number that is all of a field; gives whether it is one.
template<typename Number> bool read_number(const QByteArray& field, Number& number, int base = 10)
{
    const auto [end, error] = std::from_chars(field.begin(), field.end(), number, base);
    return error == std::errc() && end == field.end();
}

/// The same, where a dash stands for none.
template<typename Number> bool read_number(const QByteArray& field, std::optional<Number>& number, int base = 10)
{
    return field == "-" || read_number(field, number.emplace(), base);
}

bool read_block(const QByteArrayList& fields, Change::Block& block)
{
    block.before = QByteArray::fromHex(fields[6]);
    block.after = QByteArray::fromHex(fields[7]);
    block.mark = Change::Mark();
    Change::Mark& mark = *block.mark;
    const QByteArrayList file = fields[10].split(':');
    return read_number(fields[8], block.mode, 8) && read_number(fields[9], mark.changed_after) && file.size() == 2 &&
           read_number(file[0], mark.device) && read_number(file[1], mark.number);
}

QByteArray number_or_dash(const auto& number, int base = 10)
{
    return number ? QByteArray::number(*number, base) : QByteArray("-");
}

} // namespace

QByteArray journal_family()
{
    return "quilmo-fif journal ";
}

QByteArray journal_head()
{
    return journal_family() + "2\n";
}

QByteArray journal_line(const Change& change)
{
    QByteArrayList fields{QByteArray::number(change.size), QByteArray::number(change.changed),
                          escaped(change.folder),          escaped(change.shown_folder),
                          escaped(change.old_name),        escaped(change.new_name)};
    if (change.block) {
        const Change::Block& block = *change.block;
        const Change::Mark mark = block.mark.value_or(Change::Mark());
        fields += {block.before.toHex(), block.after.toHex(), number_or_dash(block.mode, 8),
                   number_or_dash(mark.changed_after),
                   QByteArray::number(quint64(mark.device)) + ':' + QByteArray::number(quint64(mark.number))};
    } else {
        fields += {"-", "-", "-", "-", "-"};
    }
    return fields.join('\t') + '\n';
}

std::optional<Change> parse_journal_line(const QByteArray& line)
{
    const QByteArrayList fields = line.split('\t');
    if (fields.size() != 11)
        return std::nullopt;
    Change change{.folder = unescaped(fields[2]),
                  .shown_folder = unescaped(fields[3]),
                  .old_name = unescaped(fields[4]),
                  .new_name = unescaped(fields[5]),
                  .block = std::nullopt};
    if (fields[6] != "-")
        change.block = Change::Block();
    const bool is_read = read_number(fields[0], change.size) && read_number(fields[1], change.changed) &&
                         (!change.block || read_block(fields, *change.block));
    return is_read && is_whole(change) ? std::optional(change) : std::nullopt;
}

QByteArray journal_end(qint64 changes, const QByteArray& hash)
{
    return "end\t" + QByteArray::number(changes) + '\t' + hash.toHex() + '\n';
}

std::optional<JournalEnd> parse_journal_end(const QByteArray& line)
{
    const QByteArrayList fields = line.split('\t');
    JournalEnd end;
    if (fields.size() != 3 || fields[0] != "end" || !fields[2].endsWith('\n') || !read_number(fields[1], end.changes))
        return std::nullopt;
    end.hash = QByteArray::fromHex(fields[2].chopped(1));
    return end;
}

QByteArray journal_doubt(qint64 number)
{
    return doubt + QByteArray::number(number).rightJustified(doubt_digits, '0') + '\n';
}

std::optional<qint64> parse_journal_doubt(const QByteArray& line)
{
    qint64 number = 0;
    const bool is_one = line.size() == journal_doubt_bytes && line.startsWith(doubt) && line.endsWith('\n') &&
                        read_number(line.sliced(doubt.size(), doubt_digits), number) && number >= 0;
    return is_one ? std::optional(number) : std::nullopt;
}

bool is_cut_doubt(const QByteArray& bytes)
{
    return bytes.size() < journal_doubt_bytes && doubt.startsWith(bytes.first(std::min(bytes.size(), doubt.size()))) &&
           std::all_of(bytes.begin() + std::min(bytes.size(), doubt.size()), bytes.end(),
                       [](char byte) { return byte >= '0' && byte <= '9'; });
}
