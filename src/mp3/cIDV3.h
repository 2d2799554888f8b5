#pragma once

#include "mp3/TagRecord.h"
#include "mp3/mpeg_header.h"
#include "platform/BinaryFile.h"
#include "platform/GenreBox.h"
#include "platform/numbers.h"

#include <QString>

#include <optional>
#include <span>

/// The program's one reader and writer of MP3 file contents: the ID3v1 tag in a file's last 128 bytes and the facts of
/// its first MPEG audio frame. It holds one file at a time. Nothing is reported but by results.
///
/// Tags go through file number 1, which a failure behind a successful opening (a file shorter than a tag) leaves open
/// for the rest of the run: from then on no tag is found, written or cleared, on purpose.
class cIDV3
{
public:
    // Facts of the file, valid after set_FileName; see HeaderAnalysis.
    QString InfoString() const { return header_.InfoString(); }
    i32 FileBytes() const { return header_.facts.FileBytes; }
    i16 Seconds() const { return header_.facts.Seconds; }
    i16 MpegVersion() const { return header_.facts.MpegVersion; }
    i16 LayerVersion() const { return header_.facts.LayerVersion; }
    i16 Kbits() const { return header_.facts.Kbits; }
    i32 FrameLengthInBytes() const { return header_.FrameLengthInBytes; }
    i32 Frames() const { return header_.facts.Frames; }
    i32 Hz() const { return header_.facts.Hz; }
    i16 Pad() const { return header_.Pad; }
    QString Mode() const { return header_.facts.Mode.toString(); }
    QString PrivateBit() const { return header_.facts.PrivateBit.toString(); }
    QString CRCs() const { return header_.facts.CRCs.toString(); }
    QString Copyrighted() const { return header_.facts.Copyrighted.toString(); }
    QString Original() const { return header_.facts.Original.toString(); }
    QString Emphasis() const { return header_.facts.Emphasis.toString(); }
    i16 Channels() const { return header_.facts.Channels; }

    /// Resets the object and loads the file's tag and header facts. A file that does not exist leaves FileName empty.
    void set_FileName(const QString& path) { load_and_has_tag(path); }
    const QString& FileName() const { return file_name_; }
    /// set_FileName followed at once by HasTag, with a single opening of the file.
    bool load_and_has_tag(const QString& path);
    /// Whether the file could be opened when it was loaded.
    bool was_opened() const { return loaded_.has_value(); }
    /// Whether it could be opened then and was not read-only.
    bool was_writable() const { return was_writable_; }
    /// Whether it had a tag then.
    bool is_tagged() const { return is_tagged_; }

    QString Comments() const { return tag_.comments.text(); }
    void set_Comments(const QString& text) { tag_.comments.set(text); }
    QString Year() const { return tag_.year.text(); }
    void set_Year(const QString& text) { tag_.year.set(text); }
    QString Album() const { return tag_.album.text(); }
    void set_Album(const QString& text) { tag_.album.set(text); }
    QString Artist() const { return tag_.artist.text(); }
    void set_Artist(const QString& text) { tag_.artist.set(text); }
    QString Title() const { return tag_.title.text(); }
    void set_Title(const QString& text) { tag_.title.set(text); }
    /// The genre byte, 0 to 255.
    i16 Genre() const { return tag_.genre; }
    /// Raises "Overflow" for a value that does not fit a byte.
    void set_Genre(i32 value) { tag_.genre = checked<std::uint8_t>(value); }

    /// Blanks the last 128 bytes of the file but the very last one, whether or not they are a tag. Gives whether it
    /// was done; only the file that was loaded is written.
    bool ClearTag();
    /// Whether the file ends in a tag: its last 128 bytes begin with "TAG", case ignored. Asks the disk each time.
    bool HasTag() const;
    /// Writes the tag over the last 128 bytes of the file, whether or not they are a tag; the file keeps its length.
    /// Gives whether it was done; only the file that was loaded is written. A file that was there and could not be
    /// opened, or another one that has taken its name, stays as it is.
    bool WriteTag();
    /// What the tag properties hold.
    const TagRecord& tag() const { return tag_; }
    TagRecord& tag() { return tag_; }

    /// The list spelling of a genre index, empty outside 0 to 147.
    QString GenreText(i16 index) const;
    /// The index of a genre in list spelling, compared exactly; -1 for none.
    i16 Genre_index(const QString& text) const;

    /// Fills a combo box with the 148 genres in display spelling and an empty entry, none selected.
    void init_FillComboGenre(GenreBox& combo) const;
    /// Selects the entry of a genre index, the empty one when it has no name.
    void FillComboGenre(GenreBox& combo, i16 index) const;
    /// Selects the entry of a genre text and gives its text; without such an entry selects the empty one and gives "".
    QString FillComboGenre_FIF(GenreBox& combo, const QString& text) const;

private:
    void reset_fields();
    bool load_file(const BinaryFile& file);
    bool overwrite_last_block(std::span<const char> bytes) const;

    QString file_name_;
    std::optional<BinaryFile::Identity> loaded_; ///< the file behind the name; nothing when it could not be opened
    bool was_writable_ = false;
    bool is_tagged_ = false;
    TagRecord tag_;
    HeaderAnalysis header_;
};

/// The one shared object, made at its first use and kept to the end of the run.
cIDV3& id3();
