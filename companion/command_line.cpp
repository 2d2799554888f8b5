#include "companion/command_line.h"

#include "mp3/genre_list.h"

#include <QStringDecoder>

#include <getopt.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <vector>

namespace {

enum Option
{
    json = 256, // above all letters
    help,
    version,
    from_stdin,
    type,
    fix_artist,
    fix_genre,
    tags,
    apply,
    journal,
    no_journal,
    artist,
    title,
    album,
    year,
    comment,
    genre,
};

constexpr int word_alone = 1; ///< what getopt gives for a word that is no option

struct CommandName
{
    const char* name;
    Command command;
    std::vector<Option> options; ///< those that not all commands take
};

const std::vector<CommandName>& command_names()
{
    static const std::vector<CommandName> names = {
        {"check", Command::check, {from_stdin, type}},
        {"convert", Command::convert, {from_stdin, type, fix_artist, fix_genre, tags, apply, journal, no_journal}},
        {"tag", Command::tag, {from_stdin, apply, journal, no_journal, artist, title, album, year, comment, genre}},
        {"info", Command::info, {from_stdin}},
        {"undo", Command::undo, {}},
    };
    return names;
}

constexpr std::array long_options = std::to_array<option>({
    {"from-stdin", no_argument, nullptr, from_stdin},
    {"help", no_argument, nullptr, help},
    {"json", no_argument, nullptr, json},
    {"version", no_argument, nullptr, version},
    {"type", required_argument, nullptr, type},
    {"fix-artist", required_argument, nullptr, fix_artist},
    {"fix-genre", required_argument, nullptr, fix_genre},
    {"tags", no_argument, nullptr, tags},
    {"apply", no_argument, nullptr, apply},
    {"journal", required_argument, nullptr, journal},
    {"no-journal", no_argument, nullptr, no_journal},
    {"artist", required_argument, nullptr, artist},
    {"title", required_argument, nullptr, title},
    {"album", required_argument, nullptr, album},
    {"year", required_argument, nullptr, year},
    {"comment", required_argument, nullptr, comment},
    {"genre", required_argument, nullptr, genre},
    {nullptr, 0, nullptr, 0},
});

QByteArray name_of(int wanted)
{
    const auto* const found = std::ranges::find(long_options, wanted, &option::val);
    return QByteArray("--") + found->name;
}

QString text_of(const char* argument)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(QByteArrayView(argument));
    if (decoder.hasError())
        throw UsageError{"a text that is no UTF-8"};
    return text;
}

i16 number_of(const char* argument, int smallest, int largest, const QByteArray& option_name)
{
    bool is_number = false;
    const int number = QByteArray(argument).toInt(&is_number);
    if (!is_number || number < smallest || number > largest)
        throw UsageError{option_name + ": \"" + argument + "\" is no number from " + QByteArray::number(smallest) +
                         " to " + QByteArray::number(largest)};
    return static_cast<i16>(number);
}

/// A genre by its name, in the spelling of tags or of file names, or by its number.
i16 genre_of(const char* argument)
{
    const i16 index = genre_index_of(id3_genre_spelling(text_of(argument)));
    bool is_number = false;
    QByteArray(argument).toInt(&is_number);
    if (index < 0 && !is_number)
        throw UsageError{QByteArray("--genre: there is no genre \"") + argument + '"'};
    return index >= 0 ? index : number_of(argument, 0, 255, "--genre");
}

void take_tag_option(Order& order, int option, const char* argument)
{
    TagEdit& edit = order.edit;
    switch (option) {
    case artist:
        edit.artist = text_of(argument);
        break;
    case title:
        edit.title = text_of(argument);
        break;
    case album:
        edit.album = text_of(argument);
        break;
    case year:
        edit.year = text_of(argument);
        break;
    case comment:
        edit.comment = text_of(argument);
        break;
    default:
        edit.genre = genre_of(argument);
    }
}

void take_option(Order& order, int option, const char* argument)
{
    switch (option) {
    case from_stdin:
        order.from_stdin = true;
        break;
    case json:
        order.json = true;
        break;
    case type:
        order.type = number_of(argument, 1, 6, "--type");
        break;
    case fix_artist:
        order.fixed.artist = text_of(argument);
        break;
    case fix_genre:
        order.fixed.genre = text_of(argument);
        break;
    case tags:
        order.tags = true;
        break;
    case apply:
        order.apply = true;
        break;
    case journal:
        order.journal = argument;
        break;
    case no_journal:
        order.writes_journal = false;
        break;
    default:
        take_tag_option(order, option, argument);
    }
}

const CommandName& command_of(const QByteArray& word)
{
    const auto found =
        std::ranges::find_if(command_names(), [&](const CommandName& name) { return word == name.name; });
    if (found == command_names().end())
        throw UsageError{"there is no command \"" + word + '"'};
    return *found;
}

bool is_common(int option)
{
    return option == json || option == help || option == version;
}

bool sets_nothing(const TagEdit& edit)
{
    return !edit.artist && !edit.title && !edit.album && !edit.year && !edit.comment && !edit.genre;
}

/// What is wrong with an option that getopt refused, the last of `word`.
UsageError refused(const QByteArray& word)
{
    if (optopt >= json)
        return {word + ": its value is missing or one too many"};
    if (optopt != 0)
        return {QByteArray("there is no option -") + static_cast<char>(optopt)};
    const QByteArray beginning = word.sliced(2).split('=').first();
    const bool is_unclear = std::ranges::any_of(long_options, [&](const option& known) {
        return known.name != nullptr && QByteArrayView(known.name).startsWith(beginning);
    });
    return {word + (is_unclear ? ": several options begin so" : ": there is no such option")};
}

/// What goes beyond the single option.
void check_order(const Order& order)
{
    if (order.command == Command::undo && order.paths.size() != 1)
        throw UsageError{"undo takes one journal"};
    if (order.command == Command::tag && sets_nothing(order.edit))
        throw UsageError{"tag: no field to set; give --artist, --title, --album, --year, --comment or --genre"};
    if (order.from_stdin && !order.paths.isEmpty())
        throw UsageError{"paths come as arguments or from standard input, not both"};
    if (!order.from_stdin && order.paths.isEmpty())
        throw UsageError{"no path given"};
    if (order.paths.contains(QByteArray()))
        throw UsageError{"an empty path"};
    if (order.journal == QByteArray())
        throw UsageError{"--journal: an empty path"};
    if (!order.writes_journal && order.journal)
        throw UsageError{"--journal and --no-journal do not go together"};
    if (!order.apply && (!order.writes_journal || order.journal))
        throw UsageError{"a journal goes with --apply"};
}

/// Reads on: an Option, `word_alone`, or what getopt gives at an error or at the end.
int next_option(std::span<char*> words)
{
    // The sign at the front: options may stand behind other words, whatever the environment says.
    const int given = getopt_long(static_cast<int>(words.size()), words.data(), "-0h", long_options.data(), nullptr);
    if (given == '0')
        return from_stdin;
    return given == 'h' ? help : given;
}

std::variant<Order, Wanted> parsed(std::span<char*> words)
{
    Order order;
    std::vector<int> used;
    opterr = 0;
    optind = 0; // begins anew
    while (true) {
        const int given = next_option(words);
        if (given < 0)
            break;
        if (given == '?')
            throw refused(words[static_cast<std::size_t>(optind - 1)]);
        if (given == help || given == version)
            return given == help ? Wanted::help : Wanted::version;
        if (given == word_alone) {
            order.paths.append(optarg);
            continue;
        }
        used.push_back(given);
        take_option(order, given, optarg);
    }
    for (char* const word : words.subspan(static_cast<std::size_t>(optind)))
        order.paths.append(word);
    if (order.paths.isEmpty())
        throw UsageError{"no command given"};
    const CommandName& command = command_of(order.paths.takeFirst());
    order.command = command.command;
    for (const int option : used) {
        if (!is_common(option) && std::ranges::find(command.options, option) == command.options.end())
            throw UsageError{QByteArray(command.name) + " has no option " + name_of(option)};
    }
    check_order(order);
    return order;
}

} // namespace

std::variant<Order, Wanted, UsageError> parse_command_line(std::span<char*> words)
{
    try {
        return std::visit([](auto&& result) { return std::variant<Order, Wanted, UsageError>(result); }, parsed(words));
    } catch (const UsageError& error) {
        return error;
    }
}
