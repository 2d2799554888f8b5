#pragma once

#include "platform/file_operation/FileCalls.h"
#include "platform/file_operation/OperationRun.h"
#include "platform/file_operation/Trash.h"

#include <QStringList>

#include <vector>

/// Puts files and folders into the trash, or deletes those that no trash takes for good. Asks before each of the two.
class Removal
{
public:
    Removal(OperationRun& run, const FileCalls& calls) : run_(run), trash_(calls) {}

    void run(const QStringList& sources);

private:
    void put_into_trash(const DiskPlace& source);
    void delete_for_good();
    bool delete_entry(int folder, const QByteArray& name, const DiskPlace& place, dev_t volume);
    bool delete_content(int folder, const QByteArray& name, const DiskPlace& place, dev_t volume);

    OperationRun& run_;
    Trash trash_;
    std::vector<DiskPlace> left_; ///< what no trash takes
};
