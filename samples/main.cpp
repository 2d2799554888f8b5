#include "sample_collection.h"

#include "platform/paths.h"

#include <QByteArray>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <span>

namespace {

constexpr int most_files = 100000;
constexpr int seconds_of_longest_song = 32;

struct Order
{
    QByteArray folder;
    SampleCollection collection;
};

/// What the arguments ask for; nothing where they can't be understood.
std::optional<Order> order_of(std::span<char*> arguments)
{
    Order order{.folder = {}, .collection = {.seconds = seconds_of_longest_song}};
    for (std::size_t place = 1; place < arguments.size(); ++place) {
        const QByteArray argument = arguments[place];
        if (argument == "--files" && place + 1 < arguments.size()) {
            bool is_number = false;
            order.collection.files = QByteArray(arguments[++place]).toInt(&is_number);
            if (!is_number || order.collection.files < 0 || order.collection.files > most_files)
                return std::nullopt;
        } else if (argument.isEmpty() || argument.startsWith('-') || !order.folder.isEmpty()) {
            return std::nullopt;
        } else {
            order.folder = argument;
        }
    }
    return order.folder.isEmpty() ? std::nullopt : std::optional(order);
}

} // namespace

int main(int argc, char** argv)
{
    const std::optional<Order> order = order_of(std::span(argv, static_cast<std::size_t>(argc)));
    if (!order) {
        std::fprintf(stderr, "usage: quilmo-samples FOLDER [--files N]   (N from 0 to %d)\n", most_files);
        return 2;
    }
    if (!write_sample_collection(order->folder, order->collection)) {
        std::fprintf(stderr, "quilmo-samples: can't write the collection to %s\n", order->folder.constData());
        return 1;
    }
    const std::unique_ptr<char, decltype(&std::free)> absolute(realpath(order->folder.constData(), nullptr), std::free);
    std::printf("%s\n", qUtf8Printable(program_path(QByteArray(absolute.get()))));
    return 0;
}
