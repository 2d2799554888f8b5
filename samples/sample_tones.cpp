#include "sample_tones.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <optional>

namespace {

constexpr std::array<int, 9> rates = {44100, 48000, 32000, 22050, 24000, 16000, 11025, 12000, 8000};
constexpr std::array<int, 15> kilobits_1 = {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
constexpr std::array<int, 15> kilobits_2 = {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160};
constexpr int lines = 576;
constexpr qsizetype header_bytes = 4;
constexpr qsizetype crc_bytes = 2;

class BitWriter
{
public:
    /// Appends `value` as a number of `count` bits, the highest first.
    void put(unsigned value, unsigned count)
    {
        size_ += count;
        bytes_.resize((size_ + 7) / 8, '\0');
        for (unsigned place = size_ - 1; value != 0; value >>= 1U, --place) {
            char& byte = bytes_[place / 8];
            byte = static_cast<char>(static_cast<unsigned char>(byte) | (value & 1U) << (7U - place % 8));
        }
    }
    unsigned size() const { return size_; }
    const QByteArray& bytes() const { return bytes_; }

private:
    QByteArray bytes_;
    unsigned size_ = 0;
};

/// What the headers of all frames have in common.
struct Format
{
    unsigned version_bits; ///< 3 for MPEG 1, 2 for 2, 0 for 2.5
    unsigned rate_index;
    bool is_mpeg_1;
    int granules;
    int channels;
};

std::optional<Format> format_of(const ToneAudio& audio)
{
    const auto* const place = std::ranges::find(rates, audio.rate);
    if (place == rates.end())
        return std::nullopt;
    constexpr std::array<unsigned, 3> version_bits = {3, 2, 0};
    const auto index = static_cast<unsigned>(place - rates.begin());
    return Format{.version_bits = version_bits.at(index / 3),
                  .rate_index = index % 3,
                  .is_mpeg_1 = index < 3,
                  .granules = index < 3 ? 2 : 1,
                  .channels = audio.mode == ToneMode::mono ? 1 : 2};
}

std::optional<unsigned> kilobits_index(const Format& format, int kilobits)
{
    const auto& table = format.is_mpeg_1 ? kilobits_1 : kilobits_2;
    const auto* const place = std::ranges::find(table, kilobits);
    if (place == table.end())
        return std::nullopt;
    return static_cast<unsigned>(place - table.begin());
}

qsizetype side_bytes(const Format& format)
{
    if (format.is_mpeg_1)
        return format.channels == 1 ? 17 : 32;
    return format.channels == 1 ? 9 : 17;
}

QByteArray header_of(const ToneAudio& audio, const Format& format, unsigned index, bool has_padding)
{
    BitWriter header;
    header.put(0x7FF, 11);
    header.put(format.version_bits, 2);
    header.put(1, 2); // Layer III
    header.put(audio.has_crc ? 0 : 1, 1);
    header.put(index, 4);
    header.put(format.rate_index, 2);
    header.put(has_padding ? 1 : 0, 1);
    header.put(0, 1);
    header.put(static_cast<unsigned>(audio.mode), 2);
    header.put(0, 3); // neither kind of joint coding, no copyright
    header.put(audio.is_original ? 1 : 0, 1);
    header.put(0, 2);
    return header.bytes();
}

/// The check sum over what follows the sync in the header and the side information.
QByteArray crc_of(const QByteArray& header, const QByteArray& side)
{
    unsigned crc = 0xFFFF;
    for (const char byte : header.last(2) + side) {
        for (unsigned bit = 8; bit-- > 0;) {
            const unsigned top = (crc >> 15U ^ static_cast<unsigned char>(byte) >> bit) & 1U;
            crc = (crc << 1U & 0xFFFFU) ^ (top != 0 ? 0x8005U : 0U);
        }
    }
    BitWriter bytes;
    bytes.put(crc, 16);
    return bytes.bytes();
}

/// Whether a granule turns the sign of its line. The decoder overlaps each granule with the next by half, and the line
/// turns by a quarter wave between them. With one sign throughout, the quarters add up to a tone of the even step at
/// an edge of the line, with signs in turn to one of the odd step: either way to a pure one.
bool is_negative(const Tone& tone, int granule)
{
    return tone.step % 2 != 0 && granule % 2 != 0;
}

bool sounds(const Tone& tone)
{
    return tone.step > 0 && tone.step < lines;
}

/// The lines of a granule in the Huffman code for four lines that are 0 or 1, up to the one that is not 0.
void put_lines(BitWriter& data, const Tone& tone, int granule)
{
    constexpr std::array<unsigned, 4> codes = {0b0111, 0b0110, 0b0100, 0b0101};
    for (int quad = 0; quad < tone.step / 4; ++quad)
        data.put(1, 1);
    data.put(codes.at(static_cast<std::size_t>(tone.step) % 4), 4);
    data.put(is_negative(tone, granule) ? 1 : 0, 1);
}

/// What the decoder has to know about a granule of one channel.
void put_granule(BitWriter& side, const Format& format, unsigned data_bits, unsigned gain)
{
    side.put(data_bits, 12);
    side.put(0, 9); // no pairs of larger values
    side.put(gain, 8);
    side.put(0, format.is_mpeg_1 ? 4 : 9); // no bits for scale factors
    side.put(0, 1 + 15 + 7);               // long blocks; tables and regions of the pairs
    side.put(0, format.is_mpeg_1 ? 3 : 2); // the table that put_lines speaks is 0
}

/// What a frame holds behind its header; `frame` counts from the beginning of the audio.
QByteArray body_of(const ToneAudio& audio, const Format& format, const QByteArray& header, int frame)
{
    BitWriter side;
    BitWriter data;
    const bool is_mono = format.channels == 1;
    side.put(0, format.is_mpeg_1 ? 9 : 8); // every frame stands for itself
    if (format.is_mpeg_1)
        side.put(0, is_mono ? 5 + 4 : 3 + 8);
    else
        side.put(0, is_mono ? 1 : 2);
    for (int granule = 0; granule < format.granules; ++granule) {
        for (int channel = 0; channel < format.channels; ++channel) {
            const Tone tone = audio.tone ? audio.tone(frame, channel) : Tone{};
            const unsigned before = data.size();
            if (sounds(tone))
                put_lines(data, tone, frame * format.granules + granule);
            const unsigned length = data.size() - before;
            put_granule(side, format, length, length > 0 ? static_cast<unsigned>(tone.gain) : 0);
        }
    }
    return (audio.has_crc ? crc_of(header, side.bytes()) : QByteArray()) + side.bytes() + data.bytes();
}

/// How long frames are, one after the other.
class FrameLengths
{
public:
    struct Length
    {
        qsizetype bytes;
        bool has_padding;
    };

    explicit FrameLengths(int rate) : rate_(rate) {}

    /// The length of the next frame. What is cut off a byte is carried on, and padding makes up for it.
    Length next(int kilobits)
    {
        const std::int64_t wanted = std::int64_t{samples_per_frame(rate_)} / 8 * 1000 * kilobits;
        rest_ += wanted % rate_;
        const bool has_padding = rest_ >= rate_;
        if (has_padding)
            rest_ -= rate_;
        return {.bytes = wanted / rate_ + (has_padding ? 1 : 0), .has_padding = has_padding};
    }

private:
    int rate_;
    std::int64_t rest_ = 0;
};

void put_number(QByteArray& bytes, int number)
{
    for (const unsigned shift : {24U, 16U, 8U, 0U})
        bytes += static_cast<char>(static_cast<unsigned>(number) >> shift & 0xFFU);
}

/// What an encoder adds to the information about the audio.
QByteArray encoder_part(const ToneInfo& info)
{
    BitWriter part;
    part.put(static_cast<unsigned>(info.delay), 12);
    part.put(static_cast<unsigned>(info.padding), 12);
    return "LAME3.100" + QByteArray(12, '\0') + part.bytes() + QByteArray(12, '\0');
}

} // namespace

double tone_amplitude(int gain)
{
    return std::exp2((gain - 210) / 4.0);
}

int samples_per_frame(int rate)
{
    return rate >= 32000 ? 1152 : 576;
}

QByteArray tone_audio(const ToneAudio& audio)
{
    const std::optional<Format> format = format_of(audio);
    const bool is_free = audio.free_bytes > 0;
    if (!format || (!is_free && audio.kilobits.empty()))
        return {};
    QByteArray bytes;
    FrameLengths lengths(audio.rate);
    for (int frame = 0; frame < audio.frames; ++frame) {
        std::optional<unsigned> index = 0;
        FrameLengths::Length length{.bytes = audio.free_bytes, .has_padding = false};
        if (!is_free) {
            const int kilobits = audio.kilobits.at(static_cast<std::size_t>(frame) % audio.kilobits.size());
            index = kilobits_index(*format, kilobits);
            length = lengths.next(kilobits);
        }
        if (!index)
            return {};
        const QByteArray header = header_of(audio, *format, *index, length.has_padding);
        const QByteArray content = header + body_of(audio, *format, header, frame);
        if (content.size() > length.bytes)
            return {};
        bytes += content.leftJustified(length.bytes, '\0');
    }
    return bytes;
}

QByteArray tone_info_frame(const ToneAudio& audio, const ToneInfo& info)
{
    const std::optional<Format> format = format_of(audio);
    if (!format)
        return {};
    QByteArray content = info.is_variable ? "Xing" : "Info";
    put_number(content, (info.frames > 0 ? 1 : 0) | (info.bytes > 0 ? 2 : 0));
    if (info.frames > 0)
        put_number(content, info.frames);
    if (info.bytes > 0)
        put_number(content, info.bytes);
    if (info.delay >= 0)
        content += encoder_part(info);

    ToneAudio silence = audio;
    silence.frames = 1;
    silence.tone = {};
    // Encoders put it where the data begins in a frame without check sum, in one with a check sum too.
    const qsizetype place = header_bytes + side_bytes(*format);
    for (const int kilobits : format->is_mpeg_1 ? kilobits_1 : kilobits_2) {
        silence.kilobits = {kilobits};
        QByteArray frame = tone_audio(silence);
        if (frame.size() < place + content.size())
            continue;
        frame.replace(place, content.size(), content);
        if (audio.has_crc)
            frame.replace(header_bytes, crc_bytes,
                          crc_of(frame.first(header_bytes), frame.mid(header_bytes + crc_bytes, side_bytes(*format))));
        return frame;
    }
    return {};
}

QByteArray sample_id3v2(int bytes)
{
    const auto size = static_cast<unsigned>(bytes - 10);
    QByteArray tag("ID3\x03\0\0", 6);
    for (const unsigned shift : {21U, 14U, 7U, 0U})
        tag += static_cast<char>(size >> shift & 0x7FU);
    return tag.leftJustified(bytes, '\0');
}
