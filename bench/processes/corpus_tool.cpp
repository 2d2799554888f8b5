// The corpora that whole programs are run on:
//   corpus_tool make FOLDER FILES FOLDERS plain|fif    writes one, with plain or with FIF names
//   corpus_tool check-names FOLDER                     how many files bear the title of their tag in their name
//   corpus_tool check-tags FOLDER                      how many files have the new artist in their tag, and what tag
//   that is

#include "corpus.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace {

constexpr std::size_t tag_bytes = 128;
constexpr std::size_t title_place = 3;
constexpr std::size_t artist_place = 33;
constexpr std::string_view new_artist = corpus_fif_artist;

std::string content_of(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string last_tag(const std::string& content)
{
    const std::string tag = content.substr(content.size() - std::min(content.size(), tag_bytes));
    return tag.starts_with("TAG") ? tag : std::string();
}

bool bears_its_title(const std::filesystem::path& path)
{
    const std::string tag = last_tag(content_of(path));
    constexpr std::size_t title_bytes = std::string_view("Title 000000").size();
    return !tag.empty() && path.filename().string().find(tag.substr(title_place, title_bytes)) != std::string::npos;
}

bool has_new_first_tag(const std::string& content)
{
    const std::string tag = last_tag(content);
    return !tag.empty() && std::string_view(tag).substr(artist_place).starts_with(new_artist);
}

/// Whether the artist stands in an ID3v2 tag, a byte or two to the character.
bool has_new_second_tag(const std::string& content)
{
    std::string wide;
    for (const char character : new_artist)
        wide.append({character, '\0'});
    return content.starts_with("ID3") &&
           (content.find(new_artist) < content.size() - tag_bytes || content.find(wide) != std::string::npos);
}

template<typename Count> void for_each_file(const char* folder, const Count& count)
{
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file())
            count(entry.path());
    }
}

void check_names(const char* folder)
{
    int named = 0;
    for_each_file(folder, [&named](const auto& path) { named += bears_its_title(path) ? 1 : 0; });
    std::printf("%d\n", named);
}

void check_tags(const char* folder)
{
    int first = 0;
    int second = 0;
    for_each_file(folder, [&](const auto& path) {
        const std::string content = content_of(path);
        first += has_new_first_tag(content) ? 1 : 0;
        second += has_new_second_tag(content) ? 1 : 0;
    });
    if (first >= second)
        std::printf("%d\tID3v1%s\n", first, first == second ? " and ID3v2" : "");
    else
        std::printf("%d\tID3v2\n", second);
}

} // namespace

int main(int argc, char** argv)
{
    const std::string_view command = argc > 2 ? argv[1] : "";
    if (command == "make" && argc == 6) {
        const auto names = std::string_view(argv[5]) == "fif" ? Corpus::FifNames::all : Corpus::FifNames::none;
        write_corpus(argv[2], {.files = std::atoi(argv[3]), .folders = std::atoi(argv[4]), .fif_names = names});
    } else if (command == "check-names") {
        check_names(argv[2]);
    } else if (command == "check-tags") {
        check_tags(argv[2]);
    } else {
        return 2;
    }
    return 0;
}
