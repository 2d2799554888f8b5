#include "race_files.h"

#include "sample_files.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype least_size = 12'000;
constexpr int tag_bytes = 128;
constexpr int digits = 8;
constexpr std::string_view mark = "race file ";

QByteArray audio()
{
    return sample_audio({.frames = 2});
}

/// Bytes that no other number has.
QByteArray proof(int number, qsizetype size)
{
    QByteArray bytes(size, '\0');
    std::uint32_t state = static_cast<std::uint32_t>(number) * 2'654'435'761U + 1;
    for (char& byte : bytes) {
        state = state * 1'664'525U + 1'013'904'223U;
        byte = static_cast<char>(state >> 24U);
    }
    return bytes;
}

/// All in front of the area that is written over.
QByteArray front(int number)
{
    QByteArray bytes = audio() + QByteArray(mark.data(), static_cast<qsizetype>(mark.size())) +
                       QByteArray::number(number).rightJustified(digits, '0');
    return bytes + proof(number, race_area_start(number) - bytes.size());
}

} // namespace

qsizetype race_file_size(int number)
{
    return least_size + number;
}

QByteArray race_file(int number)
{
    return front(number) + QByteArray(race_area, '\0') +
           sample_tag(
               {.title = "T" + QByteArray::number(number), .artist = "A" + QByteArray::number(number), .genre = 17});
}

QString plain_race_name(int number)
{
    return u"track %1.mp3"_s.arg(number);
}

QString fif_race_name(int number)
{
    return u"[A%1][T%1][Rock].mp3"_s.arg(number);
}

int race_number(std::string_view content)
{
    const auto place = static_cast<std::size_t>(audio().size());
    if (content.size() < place + mark.size() + digits || content.substr(place, mark.size()) != mark)
        return -1;
    const std::string_view number_text = content.substr(place + mark.size(), digits);
    int number = -1;
    const auto end = std::from_chars(number_text.begin(), number_text.end(), number).ptr;
    return end == number_text.end() ? number : -1;
}

qsizetype race_area_start(int number)
{
    return race_file_size(number) - tag_bytes - race_area;
}

QByteArray race_fault(int number, const QByteArray& content)
{
    if (content.size() != race_file_size(number))
        return "has " + QByteArray::number(content.size()) + " bytes for " + QByteArray::number(race_file_size(number));
    if (!content.startsWith(front(number)))
        return "has other bytes in front";
    const QByteArray area = content.mid(race_area_start(number), race_area);
    const auto newer_end = std::ranges::find_if(area, [&](char byte) { return byte != area.front(); });
    const char older = newer_end == area.end() ? area.front() : static_cast<char>(area.front() - 1);
    if (!std::all_of(newer_end, area.end(), [&](char byte) { return byte == older; }))
        return "is a mixture that never was";
    return content.last(tag_bytes).startsWith("TAG") ? QByteArray() : QByteArray("has no tag");
}
