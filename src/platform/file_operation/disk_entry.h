#pragma once

#include <QByteArray>
#include <QString>

#include <sys/stat.h>

#include <optional>
#include <vector>

// What the steps of a file operation know of files and folders on disk.

/// A file or folder by its path on disk and by the same path as the program writes it.
struct DiskPlace
{
    QByteArray native;
    QString shown; ///< without trailing backslash

    /// The place of a path of the program; `native` is empty when it has none on disk.
    static DiskPlace of(const QString& path);
    /// Whether it is a drive's root, which is neither copied nor moved nor deleted as a whole.
    bool is_drive() const { return shown.size() == 2; }
    /// The bytes of its name.
    QByteArray name() const { return native.sliced(native.lastIndexOf('/') + 1); }
    /// The path on disk of the folder that it lies in.
    QByteArray folder() const;
    DiskPlace child(const QByteArray& name) const;
};

/// An open file, closed with the object; negative for none.
class Descriptor
{
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    ~Descriptor();
    Descriptor(Descriptor&& other) noexcept;
    Descriptor& operator=(Descriptor&& other) noexcept;
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int number() const { return number_; }
    bool is_open() const { return number_ >= 0; }

private:
    int number_;
};

/// The status of what stands at a path; of a link itself, or of what it leads to. Nothing, with errno set, when there
/// is none.
std::optional<struct stat> status_of(const QByteArray& native);
std::optional<struct stat> status_through_links(const QByteArray& native);
/// The status of an open file.
std::optional<struct stat> status_of(const Descriptor& file);

/// Whether both are one and the same file or folder on disk.
bool is_same_file(const struct stat& a, const struct stat& b);
/// Whether, besides, its content has not been changed in between: size and time of the last change.
bool is_same_state(const struct stat& a, const struct stat& b);

/// Opens the folder `name` of an open folder, or with AT_FDCWD the one at a path; a link is not followed.
Descriptor open_folder(int folder, const QByteArray& name);
/// Reads the names in an open folder; gives 0 or an error number.
int read_names(const Descriptor& folder, std::vector<QByteArray>& names);
/// The same of the folder at a path; a link is not followed.
int read_names(const QByteArray& native, std::vector<QByteArray>& names);
