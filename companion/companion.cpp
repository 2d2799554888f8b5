#include "companion/companion.h"

#include "companion/Journal.h"
#include "companion/shown_text.h"
#include "core/mod_of_grobal_var.h"
#include "core/user_settings.h"
#include "platform/RunTimeError.h"
#include "platform/code_page.h"
#include "platform/drives.h"
#include "platform/settings.h"

#include <csignal>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

/// A fresh run, on one drive that holds the whole file system. The machine is not asked for its real drives: all names
/// mean the same files under C:, and looking for discs and mounts would take longer than all else.
void begin(const Order& order)
{
    // Who reads the output may go away; what is changed is finished all the same.
    if (order.apply || order.command == Command::undo)
        std::signal(SIGPIPE, SIG_IGN);
    shared = {};
    set_drives({{.DriveLetter = u"C"_s,
                 .Type = DriveType::fixed,
                 .VolumeName = {},
                 .IsReady = true,
                 .mount_point = "/",
                 .device = {}}});
    if (order.command == Command::check || order.command == Command::convert) {
        if (order.type)
            shared.fif_type = *order.type;
        else
            read_settings();
    }
}

/// The forced value must leave something to put into a name, and its bytes must be counted with 16 bits.
void check_fixed(const std::optional<QString>& value, const QByteArray& option)
{
    if (value && code_page_bytes(*value) > std::numeric_limits<i16>::max())
        throw UsageError{option + ": its value is too long"};
    if (value && trimmed_and_cleaned(*value).isEmpty())
        throw UsageError{option + ": nothing of its value can stand in a name"};
}

void run(const Order& order, const Streams& streams, Output& output)
{
    begin(order);
    check_fixed(order.fixed.artist, "--fix-artist");
    check_fixed(order.fixed.genre, "--fix-genre");
    PathSource paths = order.from_stdin ? PathSource(streams.in) : PathSource(order.paths);
    switch (order.command) {
    case Command::check:
        return run_check(order, paths, output);
    case Command::convert:
        return run_convert(order, paths, output);
    case Command::tag:
        return run_tag(order, paths, output);
    case Command::info:
        return run_info(paths, output);
    case Command::undo:
        return run_undo(order.paths.first(), output);
    }
}

int usage_error(const UsageError& error, Output& output)
{
    output.remark(shown(error.text) + "\nTry \"quilmo-fif --help\".");
    return 2;
}

} // namespace

int run_companion(std::span<char*> words, const Streams& streams, int helpers)
{
    std::variant<Order, Wanted, UsageError> line = parse_command_line(words);
    Order* const order = std::get_if<Order>(&line);
    Output output(streams, order != nullptr && order->json);
    if (const UsageError* const error = std::get_if<UsageError>(&line))
        return usage_error(*error, output);
    if (order == nullptr) {
        output.write(std::get<Wanted>(line) == Wanted::help ? help_text() : QByteArray("quilmo-fif " QUILMO_VERSION));
        return output.finish();
    }
    order->helpers = helpers;
    try {
        run(*order, streams, output);
    } catch (const UsageError& error) {
        return usage_error(error, output);
    } catch (const JournalError& error) {
        output.remark(shown(error.path) + ": " + error.text);
        output.fail();
    } catch (const RunTimeError& error) {
        const QByteArray store = shown(settings_file(u"Quilmo"_s));
        output.remark(store + ": the settings cannot be used: " + error.text().toUtf8());
        output.fail();
    }
    return output.finish();
}
