#pragma once

#include "fif/fif_name.h"
#include "platform/numbers.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

#include <optional>
#include <span>
#include <variant>

enum class Command
{
    check,
    convert,
    tag,
    info,
    undo
};

/// The fields of a tag that a person sets; the others stay.
struct TagEdit
{
    std::optional<QString> artist;
    std::optional<QString> title;
    std::optional<QString> album;
    std::optional<QString> year;
    std::optional<QString> comment;
    std::optional<i16> genre;
};

/// What a command line asks for.
struct Order
{
    Command command = Command::check;
    QByteArrayList paths; ///< for undo the journal alone
    bool from_stdin = false;
    bool json = false;
    std::optional<i16> type; ///< shape of new names; nothing for the user's setting
    FixedFields fixed;
    TagEdit edit;
    bool tags = false;
    bool apply = false;
    bool writes_journal = true;
    std::optional<QByteArray> journal; ///< nothing for one in the user's state folder
    int helpers = 0; ///< threads beside the program's own that look at files; no part of the command line
};

/// What the person wants to read instead of having something done.
enum class Wanted
{
    help,
    version
};

/// What is wrong with a command line.
struct UsageError
{
    QByteArray text;
};

/// Reads the words of a command line, the program's own name first.
std::variant<Order, Wanted, UsageError> parse_command_line(std::span<char*> words);

/// What --help shows.
QByteArray help_text();
