#pragma once

#include "platform/numbers.h"

#include <QString>

#include <array>
#include <optional>
#include <span>
#include <string_view>

/// What the first frame header of a file tells.
struct MpegFacts
{
    i32 FileBytes = 0;    ///< 0 for a file that 32 bits can't count
    i16 Seconds = 0;      ///< at the constant bit rate of the first frame
    i16 MpegVersion = 0;  ///< 1; 2, 25 or 0 only when no frame was found
    i16 LayerVersion = 0; ///< 1 to 3, 0 when the header tells none
    i16 Kbits = 0;        ///< kilobits per second
    i32 Frames = 0;
    i32 Hz = 0;
    QString Mode;
    QString PrivateBit;
    QString CRCs;
    QString Copyrighted;
    QString Original;
    QString Emphasis;
    i16 Channels = 0;
};

/// The facts of the file in hand, and three things that outlive it: FrameLengthInBytes, Pad and what InfoString lists
/// keep their values until a later analysis gets as far as setting them.
struct HeaderAnalysis
{
    MpegFacts facts;
    i32 FrameLengthInBytes = 0;
    i16 Pad = 0; ///< always 0
    std::optional<MpegFacts> listed;

    /// Ten lines that list the facts of the last file whose analysis ran to its end; empty when none did.
    QString InfoString() const;
};

/// Bytes at a file's start that an analysis can look at.
constexpr int analysed_bytes = 5050;

/// Whether an analysis of a file that begins with `start` would look at no byte behind it.
bool is_enough_to_analyse(std::span<const char> start);

/// Analyses a file of `file_length` bytes of which `start` holds the first `analysed_bytes` (all of a shorter file),
/// with `analysis.facts` cleared. A statement that fails is skipped and its target keeps the value that it had.
void analyse_header(std::span<const char> start, qint64 file_length, HeaderAnalysis& analysis);

/// Up to 32 bits as a text of "0" and "1".
class BitText
{
public:
    void append(char bit) { characters_.at(size_++) = bit; }
    std::string_view text() const { return {characters_.data(), size_}; }
    /// `length` characters from `position` on, counted from 1; fewer or none where the text ends before.
    std::string_view mid(std::size_t position, std::size_t length) const;

private:
    std::array<char, 32> characters_{};
    std::size_t size_ = 0;
};

/// Four bytes in slots 1 to 4.
using ByteSlots = std::array<std::uint8_t, 5>;

/// The bits of slots 1 to 4 as text without leading zeros; the slots are left holding zeros.
BitText byte_to_bit(ByteSlots& bytes);

/// The number that a text of "0" and "1" means; raises "Overflow" beyond 31 bits.
i32 bin_to_dec(std::string_view text);
