#include "mp3/cIDV3.h"

#include "core/mod_of_grobal_var.h"
#include "platform/BinaryFile.h"

#include <algorithm>
#include <array>

namespace {

constexpr int tag_bytes = TagRecord::block_bytes;

using TagBlock = std::array<char, tag_bytes>;

/// Whether file number 1 gives access to `file`: not once it has been left open.
bool opens_as_number_1(const BinaryFile& file)
{
    return shared.file_number_1_open == 0 && file.is_open();
}

/// The last 128 bytes of `file`, read over file number 1; a file that opens and can't give them leaves it open.
std::optional<TagBlock> last_block(const BinaryFile& file)
{
    if (!opens_as_number_1(file))
        return std::nullopt;
    TagBlock block{};
    if (file.read_at(file.length() - tag_bytes, block) != tag_bytes) {
        shared.file_number_1_open = 1;
        return std::nullopt;
    }
    return block;
}

/// Reads as much of `file` from `place` on as `room` takes; gives how many bytes came.
std::size_t read_from(const BinaryFile& file, std::size_t place, std::span<char> room)
{
    return static_cast<std::size_t>(file.read_at(static_cast<qint64>(place), room));
}

} // namespace

bool cIDV3::load_and_has_tag(const QString& path)
{
    reset_fields();
    const BinaryFile file(path, BinaryFile::Access::read);
    // A file that exists and can't be opened keeps its name and is analysed as an empty one.
    const bool exists = file.is_open() || shared.fso.FileExists(path);
    file_name_ = exists ? path : QString();
    loaded_ = file.identity();
    was_writable_ = file.is_writable();
    is_tagged_ = exists && load_file(file);
    return is_tagged_;
}

bool cIDV3::ClearTag()
{
    constexpr std::array<char, tag_bytes - 1> nothing{};
    return overwrite_last_block(nothing);
}

bool cIDV3::HasTag() const
{
    const auto block = last_block(BinaryFile(file_name_, BinaryFile::Access::read));
    return block && TagRecord::is_tag(*block);
}

bool cIDV3::WriteTag()
{
    const QByteArray block = tag_.block();
    return overwrite_last_block(std::span(block.constData(), static_cast<std::size_t>(block.size())));
}

/// Writes `bytes` over the beginning of the file's last 128 bytes, over file number 1; gives whether it was done.
bool cIDV3::overwrite_last_block(std::span<const char> bytes) const
{
    const BinaryFile file(file_name_, BinaryFile::Access::write);
    // The fields that nobody set are those of the loaded file; no other file's tag may be lost to them.
    if (!opens_as_number_1(file) || file.identity() != loaded_)
        return false;
    const bool written = file.write_at(file.length() - tag_bytes, bytes);
    if (!written)
        shared.file_number_1_open = 1;
    return written;
}

void cIDV3::reset_fields()
{
    tag_.reset();
    // On purpose the frame length, Pad and InfoString of the file before stay.
    header_.facts = {};
}

/// Loads tag and header facts; gives whether there was a tag.
bool cIDV3::load_file(const BinaryFile& file)
{
    const auto block = last_block(file);
    const bool tagged = block && TagRecord::is_tag(*block);
    if (tagged)
        tag_.read(*block);
    // Mostly the first frame stands at the very beginning.
    std::array<char, 512> beginning{};
    const std::size_t read = read_from(file, 0, beginning);
    const std::span<const char> start = std::span(beginning).first(read);
    if (read < beginning.size() || is_enough_to_analyse(start)) {
        analyse_header(start, file.length(), header_);
    } else {
        std::array<char, analysed_bytes> whole{};
        std::ranges::copy(beginning, whole.begin());
        const std::size_t more = read_from(file, read, std::span(whole).subspan(read));
        analyse_header(std::span(whole).first(read + more), file.length(), header_);
    }
    return tagged;
}

cIDV3& id3()
{
    if (!shared.id3_object)
        shared.id3_object = std::make_shared<cIDV3>();
    return *shared.id3_object;
}
