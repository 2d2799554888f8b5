#pragma once

#include "platform/file_operation/NewFile.h"
#include "platform/file_operation/OperationRun.h"

#include <functional>
#include <optional>
#include <vector>

/// Copies or moves files and folders into a folder. A move renames where it can; across file systems it copies, and
/// deletes what has arrived in the end: of each source all or, when the person cancels on the way, nothing.
class Transfer
{
public:
    enum class Kind
    {
        copy,
        move
    };

    Transfer(Kind kind, OperationRun& run, const FileCalls& calls) : kind_(kind), run_(run), calls_(calls) {}

    /// Brings the sources into the folder `target`.
    void run(const QStringList& sources, const QString& target);

private:
    using Status = struct stat;
    /// What a new file may take the place of: the state of the file that the person gave up, nothing for none.
    using Replaced = std::optional<Status>;
    /// Gives a thing its name `target`. Gives 0 or an error number, EEXIST where something stands that the person was
    /// not asked about.
    using Putter = std::function<int(const QByteArray& target, const Replaced& replaced)>;

    /// A file or folder that stands whole at its new place, in the states that both had then.
    struct Arrival
    {
        DiskPlace source;
        Status source_status;
        QByteArray target;
        Status target_status;
    };

    bool find_target(const QString& path);
    std::vector<qint64> bytes_up_to(const QStringList& sources);
    qint64 bytes_below(const DiskPlace& place);

    void bring_source(const DiskPlace& source);
    void bring_beside(const DiskPlace& source, bool is_folder);
    bool holds_target(const Status& folder) const;
    void bring(const DiskPlace& source, const DiskPlace& target);
    void move_file(const DiskPlace& source, const Status& status, const DiskPlace& target);
    void copy(const DiskPlace& source, const Status& status, const DiskPlace& target);
    void copy_folder(const DiskPlace& source, const Status& status, const DiskPlace& target);
    void bring_content(const DiskPlace& source, const DiskPlace& target);
    void copy_file(const DiskPlace& source, const Status& status, const DiskPlace& target);
    bool fill(const NewFile& file, const DiskPlace& source, const Status& status, const DiskPlace& target);
    void copy_link(const DiskPlace& source, const Status& status, const DiskPlace& target);
    void put_new(NewFile& file, const DiskPlace& source, const Status& status, const DiskPlace& target,
                 const Replaced& replaced);

    bool clear_way(const DiskPlace& source, const Status& status, const DiskPlace& target, Replaced& replaced);
    bool put(const Putter& putter, const DiskPlace& source, const Status& status, const DiskPlace& target,
             Replaced replaced);

    bool sync_folder(const DiskPlace& folder);
    void delete_arrived();
    bool delete_source(const Arrival& arrival);

    Kind kind_;
    OperationRun& run_;
    const FileCalls& calls_;
    DiskPlace target_;
    std::vector<Status> target_chain_; ///< the target folder and all folders that it lies in
    std::vector<Arrival> arrived_;     ///< in a move: what was copied, a folder after all below it
    bool has_copied_ = false;
};
