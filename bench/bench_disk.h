#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <vector>

/// A folder of numbered files with tags, whose names are not FIF, which the program sees as C:\Bench\ and which is the
/// current folder of a fresh run.
class BenchDisk
{
public:
    explicit BenchDisk(int files);

    QString folder() const;
    const std::vector<QString>& names() const { return names_; }
    /// Path on disk of the folder, without trailing slash.
    QByteArray native_folder() const;
    /// Paths on disk of the files, in the order of their names.
    const std::vector<QByteArray>& native_paths() const { return native_paths_; }

    /// Puts all files into the final list, at most 1000.
    void list_all() const;

private:
    QTemporaryDir disk_;
    std::vector<QString> names_;
    std::vector<QByteArray> native_paths_;
};
