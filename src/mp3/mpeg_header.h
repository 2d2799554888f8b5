#pragma once

#include "platform/numbers.h"

#include <QString>
#include <QStringView>

#include <array>
#include <cstdint>
#include <optional>
#include <span>

/// What the first frame header of a file tells. The texts are constants.
struct MpegFacts
{
    i32 FileBytes = 0;    ///< 0 for a file that 32 bits can't count
    i16 Seconds = 0;      ///< at the constant bit rate of the first frame
    i16 MpegVersion = 0;  ///< 1; 2, 25 or 0 only when no frame was found
    i16 LayerVersion = 0; ///< 1 to 3, 0 when the header tells none
    i16 Kbits = 0;        ///< kilobits per second
    i32 Frames = 0;
    i32 Hz = 0;
    QStringView Mode;
    QStringView PrivateBit;
    QStringView CRCs;
    QStringView Copyrighted;
    QStringView Original;
    QStringView Emphasis;
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

/// A text of up to 32 characters "0" and "1", held as the number that it means.
struct BitText
{
    std::uint32_t number = 0;
    int size = 0; ///< characters, zeros at the front among them

    /// `length` characters from `position` on, counted from 1; fewer or none where the text ends before.
    BitText mid(int position, int length) const;
};

/// Four bytes in slots 1 to 4.
using ByteSlots = std::array<std::uint8_t, 5>;

/// The bits of slots 1 to 4 without leading zeros; the slots are left holding zeros.
BitText byte_to_bit(ByteSlots& bytes);

/// The number that a text of bits means; raises "Overflow" beyond 31 bits.
i32 bin_to_dec(const BitText& text);
