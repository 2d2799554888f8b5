#include "page_tables.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr double to_milliseconds = 1e3;
constexpr double to_microseconds = 1e6;
constexpr double most_growth = 1.1;
constexpr int many_rows = 20000;

/// A piece of work with its aim.
struct Aim
{
    enum class Kind
    {
        times_floor,
        milliseconds,
        kilobytes_a_row
    };

    QString title;
    QString name; ///< of its results
    Kind kind;
    double most;
};

const std::array aims = {
    Aim{u"Classify 10,000 files in 50 folders by name and tag"_s, u"classify/10000"_s, Aim::Kind::times_floor, 1.3},
    Aim{u"`FillListView` of 20,000 files until the first rows are painted"_s, u"fill_list_view/20000"_s,
        Aim::Kind::times_floor, 2},
    Aim{u"Sort 20,000 rows by name"_s, u"sort_by_name/20000"_s, Aim::Kind::milliseconds, 100},
    Aim{u"Sort 20,000 rows by size"_s, u"sort_by_size/20000"_s, Aim::Kind::milliseconds, 100},
    Aim{u"Sort 20,000 rows by type"_s, u"sort_by_type/20000"_s, Aim::Kind::milliseconds, 100},
    Aim{u"Tick 1,000 files by Select All"_s, u"select_all/1000"_s, Aim::Kind::times_floor, 2},
    Aim{u"`Fill_list` of 1,000 files, half changeable"_s, u"fill_final_list/1000"_s, Aim::Kind::times_floor, 2},
    Aim{u"`Change_FIF` of 1,000 files"_s, u"change_fif/1000"_s, Aim::Kind::times_floor, 2},
    Aim{u"Rewrite the tags of 1,000 files"_s, u"write_tags/1000"_s, Aim::Kind::times_floor, 1.5},
    Aim{u"Preview of the auto convert of 10,000 files"_s, u"preview/10000"_s, Aim::Kind::times_floor, 1.5},
    Aim{u"Expand a node with 2,000 children of 20 each"_s, u"expand/2000"_s, Aim::Kind::times_floor, 2},
    Aim{u"Walk a tree of 100,000 folders"_s, u"walk/100000"_s, Aim::Kind::times_floor, 2},
    Aim{u"Start of the process until the splash is painted"_s, u"start"_s, Aim::Kind::times_floor, 1.3},
    Aim{u"Memory at rest"_s, u"memory"_s, Aim::Kind::times_floor, 1.5},
    Aim{u"`quilmo-fif check` of 10,000 files in 50 folders"_s, u"companion_check/10000"_s, Aim::Kind::times_floor, 1.3},
    Aim{u"`quilmo-fif convert --apply --no-journal` of as many"_s, u"companion_convert/10000"_s, Aim::Kind::times_floor,
        1.5},
    Aim{u"Memory for each of 20,000 rows"_s, u"memory"_s, Aim::Kind::kilobytes_a_row, 0.7},
};

QString number(std::optional<double> value, int decimals)
{
    return value ? QString::number(*value, 'f', decimals) : u"–"_s;
}

std::optional<double> ratio(std::optional<double> value, std::optional<double> base)
{
    return value && base ? std::optional(*value / *base) : std::nullopt;
}

std::optional<double> scaled(std::optional<double> value, double factor)
{
    return value ? std::optional(*value * factor) : std::nullopt;
}

QString row(const QStringList& cells)
{
    return u"| "_s + cells.join(u" | "_s) + u" |"_s;
}

QString mark(std::optional<double> value, double most)
{
    if (!value)
        return u"not measured"_s;
    return *value <= most ? u"yes"_s : u"**no**"_s;
}

std::optional<double> measured(const Aim& aim, const Results& results)
{
    const std::optional<double> work = results.best(aim.name + u"/work"_s);
    switch (aim.kind) {
    case Aim::Kind::times_floor:
        return ratio(work, results.best(aim.name + u"/floor"_s));
    case Aim::Kind::milliseconds:
        return scaled(work, to_milliseconds);
    default: {
        const std::optional<double> rows = results.best(aim.name + u"/rows"_s);
        return rows && work ? std::optional((*rows - *work) / 1024 / many_rows) : std::nullopt;
    }
    }
}

QStringList aims_table(const Results& results)
{
    QStringList lines = {row({u"Work"_s, u"Measured"_s, u"Aim"_s, u"Reached"_s}), u"|---|---:|---:|---|"_s};
    for (const Aim& aim : aims) {
        const std::optional<double> value = measured(aim, results);
        const QString unit = aim.kind == Aim::Kind::times_floor    ? u" × floor"_s
                             : aim.kind == Aim::Kind::milliseconds ? u" ms"_s
                                                                   : u" KB"_s;
        const int decimals = aim.kind == Aim::Kind::milliseconds ? 0 : 2;
        lines +=
            row({aim.title, number(value, decimals) + unit, QString::number(aim.most) + unit, mark(value, aim.most)});
    }
    return lines;
}

QStringList times_table(const Results& results)
{
    QStringList lines = {row({u"Work"_s, u"Floor"_s, u"Quilmo"_s}), u"|---|---:|---:|"_s};
    for (const Aim& aim : aims) {
        if (aim.kind == Aim::Kind::kilobytes_a_row)
            continue;
        const bool is_memory = aim.name == u"memory"_s;
        const double factor = is_memory ? 1.0 / 1024 / 1024 : to_milliseconds;
        const QString unit = is_memory ? u" MB"_s : u" ms"_s;
        const auto cell = [&](const QString& part) {
            const std::optional<double> value = scaled(results.best(aim.name + part), factor);
            return value ? number(value, 1) + unit : QString();
        };
        lines += row({aim.title, cell(u"/floor"_s), cell(u"/work"_s)});
    }
    return lines;
}

/// The logarithms of a size and of the time that it takes.
using Point = std::pair<double, double>;

std::vector<Point> points_of(const Results& results, const QString& name, const QString& part)
{
    std::vector<Point> points;
    for (const QString& size : results.parts_behind(name)) {
        if (const std::optional<double> time = results.best(name + u'/' + size + part))
            points.emplace_back(std::log(size.toDouble()), std::log(*time));
    }
    return points;
}

/// The exponent of the power of the size that fits the times best; nothing for fewer than two sizes.
std::optional<double> exponent(std::span<const Point> points)
{
    if (points.size() < 2)
        return std::nullopt;
    double mean_x = 0;
    double mean_y = 0;
    for (const auto& [x, y] : points) {
        mean_x += x / static_cast<double>(points.size());
        mean_y += y / static_cast<double>(points.size());
    }
    double products = 0;
    double squares = 0;
    for (const auto& [x, y] : points) {
        products += (x - mean_x) * (y - mean_y);
        squares += (x - mean_x) * (x - mean_x);
    }
    return products / squares;
}

QStringList growth_table(const Results& results)
{
    QStringList lines = {row({u"Work"_s, u"Files"_s, u"µs for each"_s, u"Exponent (floor's)"_s,
                              u"Last step (floor's)"_s, u"At most 1.1"_s}),
                         u"|---|---|---|---:|---:|---|"_s};
    QStringList names;
    for (const Aim& aim : aims) {
        if (aim.name.contains(u'/'))
            names.append(aim.name.section(u'/', 0, 0));
    }
    for (const QString& name : names) {
        QStringList sizes;
        QStringList times;
        for (const QString& size : results.parts_behind(name)) {
            const std::optional<double> time = results.best(name + u'/' + size + u"/work"_s);
            sizes.append(size);
            times.append(number(scaled(time, to_microseconds / size.toDouble()), 1));
        }
        const std::vector<Point> work = points_of(results, name, u"/work"_s);
        const std::vector<Point> floor = points_of(results, name, u"/floor"_s);
        const auto cell = [&](std::size_t sizes_from_the_end) {
            const auto of = [=](std::span<const Point> points) {
                return number(exponent(points.last(std::min(points.size(), sizes_from_the_end))), 2);
            };
            return of(work) + u" ("_s + of(floor) + u')';
        };
        lines += row({u'`' + name + u'`', sizes.join(u", "_s), times.join(u", "_s), cell(work.size()), cell(2),
                      mark(exponent(work), most_growth)});
    }
    return lines;
}

/// The cells of a tool at one kind of work.
QStringList peer_cells(const Results& results, const QString& work, const QString& tool)
{
    const QString name = u"peer/"_s + work + u'/' + tool;
    const std::optional<double> time = results.best(name);
    const QString note = results.text(name + u"/note"_s);
    if (!time)
        return {note.isEmpty() ? u"–"_s : note, {}};
    const QString times = number(ratio(time, results.best(u"peer/"_s + work + u"/quilmo"_s)), 2);
    return {number(time, 2) + u" s"_s + (note.isEmpty() ? QString() : u", "_s + note), times};
}

QStringList peers_table(const Results& results)
{
    QStringList lines = {
        row({u"Program"_s, u"Renaming 10,000 files"_s, u"× Quilmo"_s, u"Tagging 10,000 files"_s, u"× Quilmo"_s}),
        u"|---|---:|---:|---:|---:|"_s};
    QStringList tools = results.parts_behind(u"peer/rename"_s) + results.parts_behind(u"peer/tag"_s);
    tools.removeDuplicates();
    const auto key = [&results](const QString& tool) {
        const auto rename = results.best(u"peer/rename/"_s + tool);
        const auto tag = results.best(u"peer/tag/"_s + tool);
        return rename && tag ? *rename + *tag : 2 * std::max(rename.value_or(0), tag.value_or(0));
    };
    std::ranges::sort(tools, {}, key);
    for (const QString& tool : tools)
        lines += row(QStringList(tool) + peer_cells(results, u"rename"_s, tool) + peer_cells(results, u"tag"_s, tool));
    return lines;
}

/// What the companion has in memory at most.
QStringList companion_table(const Results& results)
{
    QStringList lines = {row({u"Work"_s, u"1,000 files"_s, u"10,000"_s, u"100,000"_s}), u"|---|---:|---:|---:|"_s};
    const auto add = [&](const QString& title, const QString& work) {
        QStringList cells(title);
        for (const QString& size : {u"1000"_s, u"10000"_s, u"100000"_s}) {
            const std::optional<double> bytes = results.best(u"companion_memory/"_s + work + u'/' + size);
            cells += number(scaled(bytes, 1.0 / 1024 / 1024), 1) + (bytes ? u" MB"_s : QString());
        }
        lines += row(cells);
    };
    add(u"`quilmo-fif check`"_s, u"check"_s);
    add(u"`quilmo-fif convert --apply`, with its journal"_s, u"convert"_s);
    return lines;
}

QStringList others_table(const Results& results)
{
    QStringList lines = {row({u"Work"_s, u"Floor"_s, u"Quilmo"_s, u"× floor"_s}), u"|---|---:|---:|---:|"_s};
    const auto add = [&](const QString& title, const QString& work, const QString& floor) {
        const std::optional<double> time = results.best(work);
        const std::optional<double> base = results.best(floor);
        const auto cell = [](std::optional<double> seconds) {
            if (!seconds)
                return QString();
            const bool is_short = *seconds * to_milliseconds < 0.1;
            return is_short ? number(*seconds * to_microseconds, 1) + u" µs"_s
                            : number(*seconds * to_milliseconds, 2) + u" ms"_s;
        };
        lines += row({title, cell(base), cell(time), base && time ? number(ratio(time, base), 2) : QString()});
    };
    const QString until_ready = u"/ready"_s;
    add(u"Open a song of 5 MB whose frames must be counted, until its length is known"_s,
        u"open_counted/work"_s + until_ready, u"open_counted/floor"_s);
    add(u"Open one whose header tells its length"_s, u"open_told/work"_s + until_ready, u"open_told/floor"_s);
    add(u"A tick of the player's poll with its labels and knob"_s, u"poll_tick"_s, {});
    add(u"Copy 100 files of 4 MB, beside `cp -a` and a sync of each"_s, u"copy_large/work"_s,
        u"copy_large/floor_synced"_s);
    add(u"Copy 100 files of 3 KB, beside `cp -a` and a sync of each"_s, u"copy_small/work"_s,
        u"copy_small/floor_synced"_s);
    return lines;
}

QStringList machine_table(const Results& results)
{
    QStringList lines = {row({u"What"_s, u"Which"_s}), u"|---|---|"_s};
    for (const QString& what : {u"Processor"_s, u"Cores"_s, u"Memory"_s, u"Kernel"_s, u"System"_s, u"File system"_s,
                                u"Compiler"_s, u"Qt"_s, u"Screen"_s})
        lines += row({what, results.text(u"machine/"_s + what)});
    return lines;
}

} // namespace

QStringList table(const QString& name, const Results& results)
{
    if (name == u"aims"_s)
        return aims_table(results);
    if (name == u"times"_s)
        return times_table(results);
    if (name == u"growth"_s)
        return growth_table(results);
    if (name == u"peers"_s)
        return peers_table(results);
    if (name == u"companion"_s)
        return companion_table(results);
    if (name == u"others"_s)
        return others_table(results);
    if (name == u"machine"_s)
        return machine_table(results);
    qFatal("there is no table %s", qPrintable(name));
}
