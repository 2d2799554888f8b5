#include "sample_files.h"

#include <QStringEncoder>

#include <algorithm>
#include <array>
#include <cstdint>

namespace {

constexpr int samples_per_frame = 1152;
constexpr unsigned padding_bit = 0x02;

unsigned byte_at(const QByteArray& bytes, qsizetype place)
{
    return static_cast<unsigned char>(bytes[place]);
}

int bits_per_second(const QByteArray& header)
{
    constexpr std::array<int, 16> kilobits = {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 0};
    return 1000 * kilobits.at(byte_at(header, 2) >> 4U);
}

int samples_per_second(const QByteArray& header)
{
    constexpr std::array<int, 4> rates = {44100, 48000, 32000, 0};
    return rates.at(byte_at(header, 2) >> 2U & 3U);
}

/// `text` in the code page called `page`, character by character so that one that it lacks becomes "?".
QByteArray bytes_in_page(const QString& text, const char* page)
{
    QStringEncoder encoder(page);
    QStringDecoder decoder(page);
    QByteArray bytes;
    for (const char32_t code : text.toStdU32String()) {
        const QString character = QString::fromUcs4(&code, 1);
        const QByteArray encoded = encoder(character);
        const QString decoded = decoder(encoded);
        bytes += decoded == character ? encoded : QByteArray("?");
    }
    return bytes;
}

} // namespace

QByteArray sample_audio(const SampleAudio& audio)
{
    const int rate = samples_per_second(audio.header);
    const std::int64_t bytes_per_second = bits_per_second(audio.header) / 8;
    if (rate == 0 || bytes_per_second == 0)
        return {};
    const auto end_of = [&](std::int64_t frames) { return frames * samples_per_frame * bytes_per_second / rate; };
    QByteArray bytes;
    bytes.reserve(end_of(audio.frames));
    const std::int64_t plain_length = end_of(1);
    for (int frame = 0; frame < audio.frames; ++frame) {
        const std::int64_t length = end_of(frame + 1) - bytes.size();
        const unsigned padding = length > plain_length ? padding_bit : 0U;
        QByteArray header = audio.header;
        header[2] = static_cast<char>((byte_at(header, 2) & ~padding_bit) | padding);
        bytes += header.leftJustified(length, '\0');
    }
    return bytes;
}

QByteArray sample_tag(const SampleTag& tag)
{
    const auto field = [&tag](const QByteArray& text, qsizetype width) {
        return text.leftJustified(width, tag.padding, true);
    };
    return "TAG" + field(tag.title, 30) + field(tag.artist, 30) + field(tag.album, 30) + field(tag.year, 4) +
           field(tag.comment, 30) + static_cast<char>(tag.genre);
}

QByteArray korean_bytes(const QString& text)
{
    return bytes_in_page(text, "windows-949");
}

QByteArray western_bytes(const QString& text)
{
    return bytes_in_page(text, "windows-1252");
}
