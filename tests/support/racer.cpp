#include "racer.h"

#include "race_files.h"

#include <QFile>
#include <QTest>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int most_files_made = 300;
constexpr int patience = 30'000; ///< milliseconds
const QString racer_argument = u"--racer"_s;

volatile std::sig_atomic_t is_to_end = 0;

/// The racer in its own process, which does nothing but calls of the system.
class Runner
{
public:
    Runner(const std::string& notes, std::string acts, unsigned seed, int first_number,
           std::vector<std::string> folders, std::vector<std::string> names)
        : acts_(std::move(acts)),
          folders_(std::move(folders)),
          names_(std::move(names)),
          random_(seed),
          first_number_(first_number),
          next_number_(first_number),
          last_number_(first_number + most_files_made),
          notes_(open(notes.c_str(), O_WRONLY | O_CREAT | O_APPEND, S_IRUSR | S_IWUSR))
    {
    }
    ~Runner() { close(notes_); }
    Runner(const Runner&) = delete;
    Runner& operator=(const Runner&) = delete;

    void run()
    {
        while (is_to_end == 0) {
            const char act = acts_[below(acts_.size())];
            if (perform(act))
                ++done_[act];
        }
        for (const auto& [act, count] : done_)
            note(std::string("done ") + act + ' ' + std::to_string(count));
        note("end");
    }

private:
    std::size_t below(std::size_t limit) { return random_() % limit; }

    void note(const std::string& line)
    {
        const std::string text = line + '\n';
        if (write(notes_, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
            std::abort();
    }

    const std::string& folder() { return folders_[below(folders_.size())]; }
    std::string place() { return folder() + '/' + names_[below(names_.size())]; }

    static std::string parent_of(const std::string& path) { return path.substr(0, path.rfind('/')); }

    /// A name that only the racer knows, on the file system of a folder of the race.
    std::string new_pen_place(const std::string& race_folder)
    {
        return parent_of(race_folder) + "/pen/" + std::to_string(++parked_count_);
    }

    static bool rename_to_free(const std::string& from, const std::string& to)
    {
        return renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0;
    }

    /// Takes what stands at a place to the racer's own; gives the path there, empty when nothing was there.
    std::string take(const std::string& path)
    {
        const std::string own = new_pen_place(parent_of(path));
        return rename_to_free(path, own) ? own : std::string();
    }

    static int number_of(int file)
    {
        std::array<char, race_head> head{};
        const ssize_t count = pread(file, head.data(), head.size(), 0);
        return count < 0 ? -1 : race_number({head.data(), static_cast<std::size_t>(count)});
    }

    bool perform(char act)
    {
        switch (act) {
        case swap_two:
            return renameat2(AT_FDCWD, place().c_str(), AT_FDCWD, place().c_str(), RENAME_EXCHANGE) == 0;
        case rename_one:
            return rename_to_free(place(), place());
        case park_one:
            return park(take(place()));
        case bring_back:
            return unpark();
        case make_file:
            return make();
        case delete_one:
            return destroy(false);
        case cut_one:
            return destroy(true);
        case write_into:
            return scribble(place());
        case link_one:
            return symlink(below(3) == 0 ? "../there/is/nothing" : place().c_str(), place().c_str()) == 0;
        case make_folder:
            return mkdir(place().c_str(), S_IRWXU) == 0;
        case make_pipe:
            return mkfifo(place().c_str(), S_IRUSR | S_IWUSR) == 0;
        case change_rights:
            return change_mode();
        case take_folder_away:
            return move_folder_to_and_fro();
        case take_file_away:
            return take_and_give_back();
        case contest_name:
            return contest();
        default:
            std::abort();
        }
    }

    bool park(const std::string& own)
    {
        if (!own.empty())
            parked_.push_back(own);
        return !own.empty();
    }

    bool unpark()
    {
        if (parked_.empty())
            return false;
        const std::size_t index = below(parked_.size());
        if (!rename_to_free(parked_[index], place()))
            return false;
        parked_[index] = parked_.back();
        parked_.pop_back();
        return true;
    }

    bool make()
    {
        if (next_number_ == last_number_)
            return false;
        const int number = next_number_++;
        const QByteArray content = race_file(number);
        const std::string own = new_pen_place(folder());
        const int file = open(own.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
        if (file < 0 || write(file, content.constData(), static_cast<std::size_t>(content.size())) != content.size())
            std::abort();
        close(file);
        note("made " + std::to_string(number));
        return park(own);
    }

    /// Deletes a file, or makes it shorter at its place; what else stands there goes.
    bool destroy(bool keeps_a_part)
    {
        const std::string path = place();
        const std::string own = take(path);
        if (own.empty())
            return false;
        const int file = open(own.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
        struct stat status = {};
        const bool is_file = file >= 0 && fstat(file, &status) == 0 && S_ISREG(status.st_mode);
        const int number = is_file ? number_of(file) : -1;
        if (number >= 0)
            note("destroyed " + std::to_string(number));
        if (is_file && keeps_a_part) {
            if (!rename_to_free(own, path))
                parked_.push_back(own);
            if (ftruncate(file, static_cast<off_t>(below(static_cast<std::size_t>(status.st_size) + 1))) != 0)
                std::abort();
        } else if (unlink(own.c_str()) != 0 && rmdir(own.c_str()) != 0) {
            parked_.push_back(own);
        }
        if (file >= 0)
            close(file);
        return true;
    }

    /// Writes over the area of a file that is made for that.
    static bool scribble(const std::string& path)
    {
        const int file = open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
        if (file < 0)
            return false;
        struct stat status = {};
        const int number = fstat(file, &status) == 0 && S_ISREG(status.st_mode) ? number_of(file) : -1;
        const bool writes = number >= 0 && status.st_size == race_file_size(number) && write_area(file, number);
        close(file);
        return writes;
    }

    static bool write_area(int file, int number)
    {
        constexpr std::size_t part = 1024;
        const off_t start = race_area_start(number);
        std::string area(race_area, '\0');
        if (pread(file, area.data(), area.size(), start) != race_area ||
            area.find_first_not_of(area.front()) != std::string::npos)
            return false;
        area.assign(race_area, static_cast<char>(area.front() + 1));
        for (std::size_t done = 0; done < area.size(); done += part) {
            if (pwrite(file, area.data(), part, start + static_cast<off_t>(done)) < 0)
                return false;
        }
        return true;
    }

    bool change_mode()
    {
        constexpr std::array<mode_t, 5> modes = {0644, 0444, 0400, 0200, 0};
        return chmod(place().c_str(), modes.at(below(modes.size()))) == 0;
    }

    bool move_folder_to_and_fro()
    {
        const std::string& home = folder();
        const std::string away = home + " away";
        if (!rename_to_free(home, away))
            return false;
        usleep(static_cast<useconds_t>(below(2000)));
        while (!rename_to_free(away, home))
            rename_to_free(home, new_pen_place(home)); // something took the folder's place
        return true;
    }

    bool take_and_give_back()
    {
        const std::string path = place();
        const std::string own = take(path);
        return !own.empty() && (rename_to_free(own, path) || park(own));
    }

    bool contest()
    {
        std::string path = place();
        while (path[path.rfind('/') + 1] != '[')
            path = place();
        if (!parked_.empty() && rename_to_free(parked_.back(), path)) {
            parked_.pop_back();
            return true;
        }
        const std::string own = take(path);
        if (own.empty())
            return false;
        const int file = open(own.c_str(), O_RDONLY | O_CLOEXEC);
        const int number = number_of(file);
        close(file);
        return number >= first_number_ ? park(own) : rename_to_free(own, path);
    }

    std::string acts_;
    std::vector<std::string> folders_;
    std::vector<std::string> names_;
    std::mt19937 random_;
    int first_number_;
    int next_number_;
    int last_number_;
    int notes_;
    int parked_count_ = 0;
    std::vector<std::string> parked_;
    std::map<char, int> done_;
};

} // namespace

Racer::Racer(const RacerJob& job)
{
    for (const QByteArray& folder : job.folders)
        mkdir((folder.first(folder.lastIndexOf('/')) + "/pen").constData(), S_IRWXU);
    QStringList arguments = {racer_argument,
                             notes_.filePath(u"notes"_s),
                             QString::fromLatin1(job.acts),
                             QString::number(job.seed),
                             QString::number(job.first_number),
                             QString::number(job.folders.size())};
    for (const QByteArray& text : job.folders + job.names)
        arguments.append(QString::fromUtf8(text));
    process_.setProcessChannelMode(QProcess::ForwardedChannels);
    process_.start(u"/proc/self/exe"_s, arguments);
    // From the moment when there are notes, it can be told to end.
    if (!process_.waitForStarted() ||
        !QTest::qWaitFor([this] { return QFile::exists(notes_.filePath(u"notes"_s)); }, patience))
        qFatal("the racer did not start");
}

Racer::~Racer()
{
    if (process_.state() != QProcess::NotRunning)
        stop();
}

bool Racer::stop()
{
    process_.terminate();
    const bool is_over = process_.waitForFinished(patience) && process_.exitStatus() == QProcess::NormalExit;
    std::ifstream notes(notes_.filePath(u"notes"_s).toStdString());
    bool is_complete = false;
    std::string word;
    while (notes >> word) {
        int number = 0;
        if (word == "end") {
            is_complete = true;
        } else if (word == "done") {
            char act = 0;
            notes >> act >> number;
            done_[act] = number;
        } else {
            notes >> number;
            (word == "made" ? made_ : destroyed_).insert(number);
        }
    }
    return is_over && is_complete;
}

bool was_racer(int argc, char** argv, int& status)
{
    constexpr int fixed_arguments = 7;
    if (argc < fixed_arguments || QString::fromLocal8Bit(argv[1]) != racer_argument)
        return false;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    std::signal(SIGTERM, [](int) { is_to_end = 1; });
    const auto folder_end = argv + fixed_arguments + std::atoi(argv[6]);
    Runner(argv[2], argv[3], static_cast<unsigned>(std::atoi(argv[4])), std::atoi(argv[5]),
           {argv + fixed_arguments, folder_end}, {folder_end, argv + argc})
        .run();
    status = EXIT_SUCCESS;
    return true;
}
