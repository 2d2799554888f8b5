// A plain program on TagLib, on all files in the folders below FOLDER:
//   taglib rename FOLDER    gives the files the names that their ID3v1 tags make
//   taglib tag FOLDER       writes an artist into their ID3v1 tags

#include <taglib/id3v1tag.h>
#include <taglib/mpegfile.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace {

bool rename_by_tag(const std::string& path)
{
    TagLib::MPEG::File file(path.c_str(), false);
    const TagLib::ID3v1::Tag* tag = file.ID3v1Tag();
    if (tag == nullptr)
        return false;
    const std::string name = "[" + tag->artist().to8Bit(true) + "][" + tag->title().to8Bit(true) + "].mp3";
    const std::string target = path.substr(0, path.rfind('/') + 1) + name;
    return std::rename(path.c_str(), target.c_str()) == 0;
}

bool tag_anew(const std::string& path)
{
    TagLib::MPEG::File file(path.c_str(), false);
    file.ID3v1Tag(true)->setArtist("New Artist");
    return file.save(TagLib::MPEG::File::ID3v1, TagLib::File::StripNone);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    const auto act = std::string_view(argv[1]) == "rename" ? rename_by_tag : tag_anew;
    bool done = true;
    for (const auto& folder : std::filesystem::directory_iterator(argv[2])) {
        // All names are read first: a listing tells a renamed file again.
        std::vector<std::string> paths;
        for (const auto& file : std::filesystem::directory_iterator(folder))
            paths.push_back(file.path().string());
        for (const std::string& path : paths)
            done = act(path) && done;
    }
    return done ? 0 : 1;
}
