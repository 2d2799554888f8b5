#include "bench_disk.h"
#include "core/mod_of_grobal_var.h"
#include "fif/mod_of_FIF.h"
#include "floor.h"
#include "work.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int folders = 50;

/// Another corpus than that of the classification, whose tags stay as they are.
Corpus tagged_corpus(int files)
{
    return {.files = files, .folders = folders, .fif_names = Corpus::FifNames::all};
}

void classify_floor(benchmark::State& state, int files)
{
    const BenchDisk& disk = BenchDisk::of({.files = files, .folders = folders});
    for ([[maybe_unused]] auto round : state) {
        for (const BenchDisk::File& file : disk.files())
            read_start_and_tag(file.native.constData());
    }
}

void classify_work(benchmark::State& state, int files)
{
    const BenchDisk& disk = BenchDisk::of({.files = files, .folders = folders});
    for ([[maybe_unused]] auto round : state) {
        for (const BenchDisk::File& file : disk.files()) {
            shared.current_folder = file.folder;
            if (Check_file_for_fif(file.name) != 2)
                state.SkipWithError("a file was not classified by its tag");
        }
    }
}

void write_tags_floor(benchmark::State& state, int files)
{
    const BenchDisk& disk = BenchDisk::of(tagged_corpus(files));
    for ([[maybe_unused]] auto round : state) {
        for (const BenchDisk::File& file : disk.files())
            write_tag(file.native.constData(), read_start_and_tag(file.native.constData()));
    }
}

void write_tags_work(benchmark::State& state, int files)
{
    const BenchDisk& disk = BenchDisk::of(tagged_corpus(files));
    for ([[maybe_unused]] auto round : state) {
        for (const BenchDisk::File& file : disk.files()) {
            QString genre = u"Hip_Hop"_s;
            Write_fif_tag(file.folder + file.name, u"New Artist"_s, u"새 제목"_s, genre);
        }
    }
}

} // namespace

std::vector<Work> file_works()
{
    const std::vector<int> sizes = {100, 1000, 10000, 100000};
    return {{.name = "classify", .work = classify_work, .floor = classify_floor, .sizes = sizes},
            {.name = "write_tags", .work = write_tags_work, .floor = write_tags_floor, .sizes = sizes}};
}
