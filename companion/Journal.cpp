#include "companion/Journal.h"

#include "companion/read_end.h"
#include "platform/uninterrupted.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace {

constexpr qint64 chunk = 1 << 16;

JournalError error_of(const QByteArray& path, const QByteArray& what)
{
    return {.path = path, .text = what + ": " + error_text(errno)};
}

JournalError damaged(const QByteArray& path)
{
    return {.path = path, .text = "damaged: it is not as the run wrote it"};
}

JournalError not_whole(const QByteArray& path)
{
    return {.path = path, .text = "not whole: the run that wrote it changed no file"};
}

void sync_folder_of(const QByteArray& path)
{
    const qsizetype name_at = path.lastIndexOf('/') + 1;
    const Descriptor folder(open_folder(AT_FDCWD, name_at == 0 ? QByteArray(".") : path.first(name_at)));
    if (!folder.is_open() || uninterrupted([&] { return fsync(folder.number()); }) != 0)
        throw error_of(path, "the folder of the journal cannot be synced");
}

} // namespace

void JournalDoubt::note(qint64 number) const
{
    const QByteArray line = journal_doubt(number);
    uninterrupted(
        [&] { return pwrite(file_.number(), line.constData(), static_cast<std::size_t>(line.size()), place_); });
}

JournalWriter::JournalWriter(const std::optional<QByteArray>& path) : path_(path ? *path : default_journal())
{
    const QByteArray wanted = path_;
    bool is_made = make_file();
    for (int number = 2; !is_made && errno == EEXIST && !path; ++number) {
        path_ = wanted + '-' + QByteArray::number(number);
        is_made = make_file();
    }
    if (!is_made)
        throw error_of(path_, "the journal cannot be made");
    append(journal_head());
}

/// Gives whether it was made, else with errno set.
bool JournalWriter::make_file()
{
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
    file_ = Descriptor(uninterrupted([&] { return open(path_.constData(), flags, S_IRUSR | S_IWUSR); }));
    return file_.is_open();
}

JournalWriter::~JournalWriter()
{
    if (!is_finished_)
        unlink(path_.constData());
}

bool JournalWriter::is_at(const QByteArray& folder, const QByteArray& name) const
{
    if (!path_.endsWith(name)) // spares the look at almost all files
        return false;
    const std::optional<struct stat> there = status_through_links(folder + name);
    const std::optional<struct stat> own = status_of(file_);
    return there && own && is_same_file(*there, *own);
}

void JournalWriter::add(const Change& change)
{
    append(journal_line(change));
    ++changes_;
    if (waiting_.size() >= chunk)
        flush();
}

void JournalWriter::finish()
{
    append(journal_end(changes_, hash_.result()));
    append(journal_doubt(0));
    flush();
    if (uninterrupted([&] { return fsync(file_.number()); }) != 0)
        throw error_of(path_, "the journal cannot be synced");
    sync_folder_of(path_);
    is_finished_ = true;
}

void JournalWriter::append(const QByteArray& line)
{
    hash_.addData(line);
    waiting_ += line;
}

void JournalWriter::flush()
{
    const char* bytes = waiting_.constData();
    const char* const end = bytes + waiting_.size();
    while (bytes < end) {
        const ssize_t written =
            uninterrupted([&] { return write(file_.number(), bytes, static_cast<std::size_t>(end - bytes)); });
        if (written <= 0)
            throw error_of(path_, "the journal cannot be written");
        bytes += written;
        size_ += written;
    }
    waiting_.clear();
}

JournalReader::JournalReader(const QByteArray& path) : path_(path)
{
    constexpr int flags = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    file_ = Descriptor(uninterrupted([&] { return open(path.constData(), O_RDWR | flags); }));
    if (!file_.is_open())
        file_ = Descriptor(uninterrupted([&] { return open(path.constData(), O_RDONLY | flags); }));
    const std::optional<struct stat> status = file_.is_open() ? status_of(file_) : std::nullopt;
    if (!status)
        throw error_of(path, "the journal cannot be read");
    if (!S_ISREG(status->st_mode))
        throw JournalError{.path = path, .text = "no journal of quilmo-fif"};
    if (uninterrupted([&] { return flock(file_.number(), LOCK_EX | LOCK_NB); }) != 0 && errno == EWOULDBLOCK)
        throw JournalError{.path = path, .text = "another program works with this journal"};
    check(status->st_size);
}

/// Finds the changes, and looks whether all is as it was written.
void JournalReader::check(qint64 size)
{
    begin_ = journal_head().size();
    const QByteArray head = read(0, std::min(begin_, size));
    if (head.size() < begin_ && journal_head().startsWith(head))
        throw not_whole(path_);
    if (head != journal_head())
        throw JournalError{.path = path_,
                           .text = head.startsWith(journal_family())
                                       ? "the journal of another version of quilmo-fif, which alone can undo it"
                                       : "no journal of quilmo-fif"};
    size = read_doubts(size);
    const qint64 tail_at = std::max(begin_ - 1, size - journal_end_bytes);
    const QByteArray tail = read(tail_at, size - tail_at);
    const qsizetype last_line_at = tail.chopped(1).lastIndexOf('\n') + 1;
    const std::optional<JournalEnd> end = parse_journal_end(tail.sliced(last_line_at));
    end_ = end ? tail_at + last_line_at : size;
    if (!end) {
        each_forwards([](const Change&) {});
        throw not_whole(path_);
    }
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (qint64 place = 0; place < end_; place += chunk)
        hash.addData(read(place, std::min(chunk, end_ - place)));
    if (hash.result() != end->hash)
        throw damaged(path_);
    changes_ = end->changes;
}

/// Reads the lines behind the end from the last; gives where they begin.
qint64 JournalReader::read_doubts(qint64 size)
{
    const qint64 tail_at = std::max(begin_ - 1, size - journal_doubt_bytes);
    const QByteArray tail = read(tail_at, size - tail_at);
    if (const QByteArray last = tail.sliced(tail.lastIndexOf('\n') + 1); is_cut_doubt(last))
        size -= last.size();
    doubt_at_ = size;
    for (qint64 line_at = size - journal_doubt_bytes; line_at >= begin_; line_at -= journal_doubt_bytes) {
        const std::optional<qint64> number = parse_journal_doubt(read(line_at, journal_doubt_bytes));
        if (!number)
            break;
        if (*number != 0)
            doubts_.insert(*number);
        else if (line_at + journal_doubt_bytes == doubt_at_)
            doubt_at_ = line_at;
        size = line_at;
    }
    return size;
}

QByteArray JournalReader::read(qint64 offset, qint64 length) const
{
    QByteArray bytes(length, Qt::Uninitialized);
    if (!read_whole(file_, offset, std::span(bytes.data(), static_cast<std::size_t>(length))))
        throw error_of(path_, "the journal cannot be read");
    return bytes;
}

void JournalReader::visit(const QByteArray& line, const Visitor& visitor) const
{
    const std::optional<Change> change = parse_journal_line(line);
    if (!change)
        throw damaged(path_);
    visitor(*change);
}

void JournalReader::each_forwards(const Visitor& visitor) const
{
    QByteArray bytes;
    for (qint64 place = begin_; place < end_; place += chunk) {
        bytes += read(place, std::min(chunk, end_ - place));
        qsizetype line_at = 0;
        for (qsizetype end = bytes.indexOf('\n'); end >= 0; end = bytes.indexOf('\n', line_at)) {
            visit(bytes.sliced(line_at, end - line_at), visitor);
            line_at = end + 1;
        }
        bytes.remove(0, line_at);
    }
}

void JournalReader::each_backwards(const Visitor& visitor) const
{
    QByteArray bytes; // up to the end of the last line that was not visited yet
    for (qint64 place = end_; place > begin_;) {
        const qint64 from = std::max(begin_, place - chunk);
        bytes.prepend(read(from, place - from));
        place = from;
        while (!bytes.isEmpty()) {
            const qsizetype line_at = bytes.chopped(1).lastIndexOf('\n') + 1;
            if (line_at == 0 && place > begin_)
                break;
            visit(bytes.sliced(line_at).chopped(1), visitor);
            bytes.truncate(line_at);
        }
    }
}
