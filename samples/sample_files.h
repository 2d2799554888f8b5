#pragma once

#include <QByteArray>
#include <QString>

// Valid MP3 files made from nothing: MPEG-1 Layer III frames of silence, with a tag or without.

/// The frames of a sample file.
struct SampleAudio
{
    int frames = 40;                                     ///< each 1152 samples long
    QByteArray header = QByteArray::fromHex("fffb9064"); ///< 128 kbit/s, 44100 Hz, joint stereo, no CRC
};

/// Frames of silence, padded so that the mean bit rate is exact. `header` may be any MPEG-1 Layer III header with a bit
/// rate.
QByteArray sample_audio(const SampleAudio& audio = {});

/// The raw bytes of an ID3v1 tag's fields; each is cut or padded to its width.
struct SampleTag
{
    QByteArray title{};
    QByteArray artist{};
    QByteArray album{};
    QByteArray year{};
    QByteArray comment{};
    unsigned char genre = 12;
    char padding = '\0'; ///< what fills a field behind its text
};

/// The 128 bytes of a tag.
QByteArray sample_tag(const SampleTag& tag);

/// `text` in code page 949; characters that it lacks become "?".
QByteArray korean_bytes(const QString& text);

/// `text` in Windows-1252; characters that it lacks become "?".
QByteArray western_bytes(const QString& text);
