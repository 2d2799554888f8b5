// Tags and headers of any file: reading changes nothing, writing changes the last 128 bytes alone, and what was not set
// comes back byte for byte.

#include "core/mod_of_grobal_var.h"
#include "fif/fif_name.h"
#include "fif/mod_of_FIF.h"
#include "mp3/cIDV3.h"
#include "platform/code_page.h"
#include "support.h"
#include "test_main.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype tag_bytes = 128;
constexpr int genre_place = 127;

/// One text field of a tag.
struct Field
{
    int place; ///< behind the tag's start
    int width;
    QString (cIDV3::*get)() const;
    void (cIDV3::*set)(const QString& text);
};

constexpr std::array<Field, 5> fields = {{{3, 30, &cIDV3::Title, &cIDV3::set_Title},
                                          {33, 30, &cIDV3::Artist, &cIDV3::set_Artist},
                                          {63, 30, &cIDV3::Album, &cIDV3::set_Album},
                                          {93, 4, &cIDV3::Year, &cIDV3::set_Year},
                                          {97, 30, &cIDV3::Comments, &cIDV3::set_Comments}}};

/// The file C:\a.mp3.
class DiskFile
{
public:
    DiskFile() : number_(open((disk_.root() + "/a.mp3").constData(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR))
    {
        require(number_ >= 0, "the file can be made");
    }
    ~DiskFile() { close(number_); }
    DiskFile(const DiskFile&) = delete;
    DiskFile& operator=(const DiskFile&) = delete;

    QString path() const { return u"C:\\a.mp3"_s; }
    void fill(QByteArrayView content) const
    {
        const auto size = static_cast<std::size_t>(content.size());
        require(ftruncate(number_, 0) == 0 && pwrite(number_, content.data(), size, 0) == content.size(),
                "the file can be filled");
    }
    QByteArray content() const
    {
        QByteArray bytes(status().st_size, '\0');
        require(pread(number_, bytes.data(), static_cast<std::size_t>(bytes.size()), 0) == bytes.size(),
                "the file can be read");
        return bytes;
    }
    struct stat status() const
    {
        struct stat status = {};
        require(fstat(number_, &status) == 0, "the file has a status");
        return status;
    }

private:
    TestDisk disk_;
    int number_;
};

bool is_same_time(const timespec& a, const timespec& b)
{
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

/// A file shorter than a tag leaves file number 1 open, and that must not reach the next step.
void free_file_number_1()
{
    shared.file_number_1_open = 0;
}

void check_facts(const cIDV3& tag, qsizetype size)
{
    require(tag.FileBytes() == size, "the size is told");
    require(tag.MpegVersion() >= 0 && tag.MpegVersion() <= 25 && tag.LayerVersion() >= 0 && tag.LayerVersion() <= 3,
            "version and layer are those that a header can tell");
    require(tag.Seconds() >= 0 && tag.Kbits() >= 0 && tag.Kbits() <= 448, "length and bit rate are in their ranges");
    require(tag.InfoString().isEmpty() || tag.InfoString().count(u'\n') == 9, "the list of facts has ten lines");
}

void check_load(const DiskFile& file, const QByteArray& content)
{
    const bool is_short = content.size() < tag_bytes;
    const bool is_tagged = !is_short && content.last(tag_bytes).first(3).toUpper() == "TAG";
    const struct stat before = file.status();
    cIDV3 tag;
    require(tag.load_and_has_tag(file.path()) == is_tagged, "a tag is told by its first three letters");
    require(tag.FileName() == file.path() && tag.HasTag() == is_tagged, "and told again when asked");
    require((shared.file_number_1_open == 1) == is_short, "a file shorter than a tag leaves file number 1 open");
    check_facts(tag, content.size());
    for (const Field& field : fields) {
        const QByteArray bytes = content.last(is_tagged ? tag_bytes : 0).mid(field.place, field.width);
        const QString text = (tag.*field.get)();
        require(!text.endsWith(u' ') && text_from_code_page(bytes).left(text.size()) == text,
                "a field reads as its bytes");
    }
    require(is_tagged || tag.Genre() == 12, "without a tag the genre is Other");
    const struct stat after = file.status();
    require(file.content() == content && is_same_time(before.st_mtim, after.st_mtim) &&
                is_same_time(before.st_ctim, after.st_ctim),
            "reading changes nothing");
    if (is_short) {
        require(!tag.WriteTag() && !tag.ClearTag() && file.content() == content, "a file too short for a tag is kept");
        free_file_number_1();
        require(!tag.WriteTag(), "also when it is met first by a write");
    }
    free_file_number_1();
}

/// The 128 bytes that a write without any setting gives.
QByteArray tag_as_read(const QByteArray& content)
{
    const QByteArray block = content.last(tag_bytes);
    if (block.first(3).toUpper() != "TAG")
        return "TAG" + QByteArray(tag_bytes - 4, ' ') + '\x0C';
    return "TAG" + block.sliced(3);
}

void check_write(const DiskFile& file, const QByteArray& content)
{
    const QByteArray written = content.chopped(tag_bytes) + tag_as_read(content);
    cIDV3 tag;
    tag.set_FileName(file.path());
    require(tag.WriteTag() && file.content() == written, "what was not set goes out with the bytes that it came with");
    tag.set_FileName(file.path());
    require(tag.WriteTag() && file.content() == written, "a second write changes nothing");
}

void check_set_field(const DiskFile& file, const QByteArray& content, const Field& field, const QString& text)
{
    file.fill(content);
    cIDV3 tag;
    tag.set_FileName(file.path());
    (tag.*field.set)(text);
    const QString kept = (tag.*field.get)();
    require(kept.size() <= field.width && text.left(kept.size()) == kept, "a field keeps the beginning of its text");
    QByteArray block = tag_as_read(content);
    block.replace(field.place, field.width, text_to_field(text.left(field.width), field.width));
    require(tag.WriteTag() && file.content() == content.chopped(tag_bytes) + block, "one field alone is changed");
}

void check_set_genre(const DiskFile& file, const QByteArray& content, int genre)
{
    file.fill(content);
    cIDV3 tag;
    tag.set_FileName(file.path());
    const bool is_set = errors_ignored([&] { tag.set_Genre(genre); });
    require(is_set == (genre >= 0 && genre <= 255), "a genre is a byte");
    QByteArray block = tag_as_read(content);
    if (is_set)
        block[genre_place] = static_cast<char>(genre);
    require(tag.WriteTag() && file.content() == content.chopped(tag_bytes) + block, "the genre alone is changed");
}

void check_clear(const DiskFile& file, const QByteArray& content)
{
    file.fill(content);
    cIDV3 tag;
    tag.set_FileName(file.path());
    QByteArray cleared = content;
    cleared.replace(content.size() - tag_bytes, tag_bytes - 1, QByteArray(tag_bytes - 1, '\0'));
    require(tag.ClearTag() && file.content() == cleared && !tag.HasTag(), "clearing leaves all but the tag's texts");
}

/// The way of a conversion: from the tag to a name, and back into the tag.
void check_conversion(const DiskFile& file, const QByteArray& content)
{
    file.fill(content);
    shared.current_folder = u"C:\\"_s;
    if (Check_file_for_fif(u"a.mp3"_s) != 2)
        return;
    require(file.content() == content, "telling what a file is changes nothing");
    const FifFields found = {.artist = shared.fif_artist, .title = shared.fif_title, .genre = shared.fif_genre};
    const ComposedName composed = compose_name(shared.fif_type, found.artist, found.title, found.genre);
    require(code_page_bytes(composed.name) <= 64, "a name made of a tag takes at most 64 bytes");

    QString genre = found.genre;
    Write_fif_tag(file.path(), found.artist, found.title, genre);
    QByteArray block = tag_as_read(content);
    const int index = id3().Genre_index(genre);
    require(index < 0 || index == static_cast<unsigned char>(block[genre_place]) || genre.isEmpty(),
            "the genre of a tag stays what it was");
    block.replace(3, 30, text_to_field(found.title.left(30), 30));
    block.replace(33, 30, text_to_field(found.artist.left(30), 30));
    require(file.content() == content.chopped(tag_bytes) + block, "a conversion writes artist and title alone");
}

} // namespace

/// The first line is a text to set, and its first byte chooses field, genre and type of names; the rest is the file.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const DiskFile file;
    static NotedMessages messages;
    QByteArrayView input = bytes_of(data, size);
    const QByteArrayView line = take_line(input);
    const QByteArray content = input.toByteArray();
    const int choice = line.empty() ? 0 : static_cast<unsigned char>(line.front());
    file.fill(content);
    check_load(file, content);
    if (content.size() < tag_bytes)
        return 0;
    check_write(file, content);
    check_set_field(file, content, fields.at(static_cast<std::size_t>(choice) % fields.size()), any_text(line));
    check_set_genre(file, content, 2 * choice - 128);
    check_clear(file, content);
    shared.fif_type = static_cast<i16>(choice % 7);
    check_conversion(file, content);
    require(messages.take().isEmpty(), "nothing went wrong");
    return 0;
}
