// The bare system calls of renaming files and writing tags, on all files in the folders below FOLDER:
//   bare_calls rename|tag FOLDER       as the dialogs do, which look at the sound, too
//   bare_calls check|convert FOLDER    reading and renaming by the tags alone

#include "floor.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr std::size_t title_place = 3;
constexpr std::size_t artist_place = 33;
constexpr std::size_t field_width = 30;

std::string_view field(const TagBytes& tag, std::size_t place)
{
    const std::string_view bytes(tag.data() + place, field_width);
    return bytes.substr(0, bytes.find('\0'));
}

void rename_by(const TagBytes& tag, const std::string& path)
{
    std::string target = path.substr(0, path.rfind('/') + 1);
    target.append("[").append(field(tag, artist_place)).append("][").append(field(tag, title_place)).append("].mp3");
    rename_file(path.c_str(), target.c_str());
}

void rename_by_tag(const std::string& path)
{
    rename_by(read_start_and_tag(path.c_str()), path);
}

void check(const std::string& path)
{
    read_tag(path.c_str());
}

void convert(const std::string& path)
{
    rename_by(read_tag(path.c_str()), path);
}

void tag_anew(const std::string& path)
{
    constexpr std::string_view artist = "New Artist";
    TagBytes tag = read_start_and_tag(path.c_str());
    std::fill_n(tag.begin() + artist_place, field_width, ' ');
    std::ranges::copy(artist, tag.begin() + artist_place);
    write_tag(path.c_str(), tag);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    const std::string_view work = argv[1];
    const auto act = work == "rename"    ? rename_by_tag
                     : work == "check"   ? check
                     : work == "convert" ? convert
                                         : tag_anew;
    for (const auto& folder : std::filesystem::directory_iterator(argv[2])) {
        // All names are read first: a listing tells a renamed file again.
        std::vector<std::string> paths;
        for (const auto& file : std::filesystem::directory_iterator(folder))
            paths.push_back(file.path().string());
        std::ranges::for_each(paths, act);
    }
    return 0;
}
