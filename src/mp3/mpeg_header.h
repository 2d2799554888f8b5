#pragma once

#include "platform/numbers.h"

#include <QString>

#include <array>
#include <functional>
#include <span>
#include <string>

/// What the first frame header of a file tells. Three fields outlive the file they were read from: FrameLengthInBytes,
/// Pad and InfoString keep their values until a later analysis gets as far as setting them.
struct MpegFacts
{
    i32 FileBytes = 0;
    i16 Seconds = 0;       ///< at the constant bit rate of the first frame
    i16 MpegVersion = 0;   ///< 1; 2, 25 or 0 only when no frame was found
    i16 LayerVersion = 0;  ///< 1 to 3, 0 when the header tells none
    i16 Kbits = 0;         ///< kilobits per second
    i32 Frames = 0;
    i32 Hz = 0;
    i32 FrameLengthInBytes = 0;
    i16 Pad = 0;           ///< always 0
    QString Mode;
    QString PrivateBit;
    QString CRCs;
    QString Copyrighted;
    QString Original;
    QString Emphasis;
    i16 Channels = 0;
    QString InfoString;    ///< ten lines that list the above

    /// Everything but the three fields that outlive a file goes back to 0 or empty.
    void reset();
};

/// Bytes at a file's start that an analysis can look at.
constexpr int analysed_bytes = 5050;

/// Analyses a file of `file_length` bytes of which `start` holds the first `analysed_bytes` (all of a shorter file).
/// A statement that fails is skipped and its target keeps the value that it had.
void analyse_header(std::span<const char> start, qint64 file_length, MpegFacts& facts);

/// The bits of slots 1 to 4 as text without leading zeros; the slots are left holding zeros.
std::string byte_to_bit(std::array<std::uint8_t, 5>& bytes);

/// The number that a text of "0" and "1" means; raises "Overflow" beyond 31 bits.
i32 bin_to_dec(std::string_view text);
