#include "mp3/mpeg_header.h"

#include <QStringBuilder>
#include <QStringList>

#include <algorithm>
#include <bit>
#include <cmath>
#include <string_view>

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t last_search_position = 5000;

constexpr std::array<i16, 4> versions{25, 0, 2, 1};
constexpr std::array<i16, 4> layers{0, 3, 2, 1};
constexpr std::array<i32, 3> sampling_rates{44100, 48000, 32000};

using BitRates = std::array<i16, 15>;
constexpr std::array<BitRates, 3> bit_rates_by_layer{{
    {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},
    {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},
}};

QStringView mode_text(i32 index)
{
    switch (index) {
    case 0:
        return u"Stereo";
    case 1:
        return u"Joint Stereo";
    case 2:
        return u"Dual Channel";
    default:
        return u"Single Channel";
    }
}

QStringView emphasis_text(i32 index)
{
    switch (index) {
    case 0:
        return u"None";
    case 1:
        return u"50/15";
    case 2:
        return u"Reserved";
    default:
        return u"CCITT J 17";
    }
}

QStringView yes_or_no(bool yes)
{
    return yes ? QStringView(u"Yes") : QStringView(u"No");
}

/// The position, counted from 1, of the first MPEG-1 Layer III header; 0 when none begins in the first 5000 bytes.
int frame_position(std::string_view start)
{
    for (std::size_t at = start.find('\xFF'); at < last_search_position; at = start.find('\xFF', at + 1)) {
        const std::string_view second = start.substr(at + 1, 1);
        if (second == "\xFA" || second == "\xFB")
            return static_cast<int>(at) + 1;
    }
    return 0;
}

/// Reads the four bytes from `position` on, counted from 1, into slots 1 to 4. A slot whose byte lies outside the file
/// keeps what it holds.
void read_slots(std::string_view start, int position, ByteSlots& bytes)
{
    for (int slot = 1; slot <= 4; ++slot) {
        const int at = position + slot - 2;
        if (at >= 0 && at < std::ssize(start))
            bytes[slot] = static_cast<std::uint8_t>(start[at]);
    }
}

i32 field(const BitText& bits, int position, int length)
{
    return bin_to_dec(bits.mid(position, length));
}

double frame_length(const MpegFacts& facts, i16 pad)
{
    // The formula of Layer I lacks a factor of 1000, and both take one byte off: on purpose, frame counts rest on it.
    if (facts.LayerVersion == 1)
        return (12.0 * facts.Kbits / facts.Hz + pad) * 4 - 1;
    return facts.Kbits * 1440.0 / (facts.Hz / 100.0) + pad - 1;
}

/// Works out lengths and counts from the bit rate and the sampling rate; what can't be worked out stays as it was.
void set_lengths(HeaderAnalysis& analysis)
{
    MpegFacts& facts = analysis.facts;
    if (facts.Hz != 0)
        analysis.FrameLengthInBytes = rounded<i32>(frame_length(facts, analysis.Pad));

    const std::int64_t bits = std::int64_t{facts.FileBytes} * 8;
    if (bits <= std::numeric_limits<i32>::max() && facts.Kbits != 0) {
        const std::int64_t seconds = bits / facts.Kbits / 1000;
        if (seconds <= std::numeric_limits<i16>::max())
            facts.Seconds = static_cast<i16>(seconds);
    }
    if (analysis.FrameLengthInBytes != 0)
        facts.Frames = rounded<i32>(std::floor(double(facts.FileBytes) / analysis.FrameLengthInBytes));
}

/// The part of the analysis that follows from the header's bits. It ends early where the header is no MPEG-1 one.
void decode_header(const BitText& bits, HeaderAnalysis& analysis)
{
    MpegFacts& facts = analysis.facts;
    facts.MpegVersion = versions[field(bits, 12, 2)];
    facts.LayerVersion = layers[field(bits, 14, 2)];
    const i32 mode = field(bits, 25, 2);
    facts.Mode = mode_text(mode);
    facts.Channels = mode == 3 ? 1 : 2;
    facts.Emphasis = emphasis_text(field(bits, 31, 2));
    if (facts.MpegVersion != 1)
        return;
    const auto sampling_rate = static_cast<std::size_t>(field(bits, 21, 2));
    if (sampling_rate < sampling_rates.size())
        facts.Hz = sampling_rates[sampling_rate];
    if (facts.LayerVersion == 0) {
        facts.Kbits = 1;
        return;
    }
    const auto bit_rate = static_cast<std::size_t>(field(bits, 17, 4));
    const BitRates& bit_rates = bit_rates_by_layer[facts.LayerVersion - 1];
    if (bit_rate < bit_rates.size())
        facts.Kbits = bit_rates[bit_rate];
    facts.Original = yes_or_no(field(bits, 30, 1) == 1);
    facts.Copyrighted = yes_or_no(field(bits, 29, 1) == 1);
    facts.PrivateBit = yes_or_no(field(bits, 24, 1) == 1);
    facts.CRCs = yes_or_no(field(bits, 16, 1) == 0);
    set_lengths(analysis);
    analysis.listed = facts;
}

} // namespace

QString HeaderAnalysis::InfoString() const
{
    if (!listed)
        return {};
    const auto number = [](i32 value) { return QString::number(value); };
    const QStringList lines{
        u"Size: "_s + number(listed->FileBytes) + u" bytes"_s,
        u"Length: "_s + number(listed->Seconds) + u" seconds"_s,
        u"MPEG "_s + QString::number(listed->MpegVersion, 'f', 1) + u" layer "_s + number(listed->LayerVersion),
        number(listed->Kbits) + u"kbit, "_s + number(listed->Frames) + u" frames"_s,
        number(listed->Hz) % u"hz " % listed->Mode,
        u"Private: " % listed->PrivateBit,
        u"CRCs: " % listed->CRCs,
        u"Copyrighted: " % listed->Copyrighted,
        u"Original: " % listed->Original,
        u"Emphasis: " % listed->Emphasis,
    };
    return lines.join(u"\r\n"_s);
}

bool is_enough_to_analyse(std::span<const char> start)
{
    constexpr int behind_frame = 47; // where the number of frames ends
    const int position = frame_position({start.data(), start.size()});
    return position > 0 && position + behind_frame <= std::ssize(start);
}

void analyse_header(std::span<const char> start, qint64 file_length, HeaderAnalysis& analysis)
{
    const std::string_view bytes(start.data(), start.size());
    if (file_length <= std::numeric_limits<i32>::max())
        analysis.facts.FileBytes = static_cast<i32>(file_length);

    const int position = frame_position(bytes);
    ByteSlots slots{};
    read_slots(bytes, position + 44, slots);
    const BitText provisional_frames = byte_to_bit(slots);
    // A number with its top bit set passes 31 bits.
    if (provisional_frames.size < 32)
        analysis.facts.Frames = bin_to_dec(provisional_frames);

    // Without a frame the header is made up, on purpose, of the file's first three bytes in slots 2 to 4.
    read_slots(bytes, position, slots);
    decode_header(byte_to_bit(slots), analysis);
}

BitText BitText::mid(int position, int length) const
{
    const int rest = size - position + 1;
    if (rest <= 0)
        return {};
    const int taken = std::min(length, rest);
    const std::uint64_t values = std::uint64_t{1} << taken;
    return {.number = static_cast<std::uint32_t>((std::uint64_t{number} >> (rest - taken)) % values), .size = taken};
}

BitText byte_to_bit(ByteSlots& bytes)
{
    std::uint32_t bits = 0;
    for (int slot = 1; slot <= 4; ++slot) {
        bits = bits << 8 | bytes[slot];
        bytes[slot] = 0;
    }
    return {.number = bits, .size = static_cast<int>(std::bit_width(bits))};
}

i32 bin_to_dec(const BitText& text)
{
    return checked<i32>(text.number);
}
