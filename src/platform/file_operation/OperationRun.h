#pragma once

#include "platform/file_operation/FileOperation.h"
#include "platform/file_operation/disk_entry.h"
#include "platform/own_words.h"

#include <optional>

/// One file operation under way: what has been done, and what the person has said.
class OperationRun
{
public:
    explicit OperationRun(FileOperationGuide& guide) : guide_(guide) {}

    /// One of several things to do, nested as the folders are: as long as it lives, errors know whether more follows.
    class Step
    {
    public:
        Step(OperationRun& run, bool more_follow) : run_(run), outer_(run.more_follow_)
        {
            run.more_follow_ = outer_ || more_follow;
        }
        ~Step() { run_.more_follow_ = outer_; }
        Step(const Step&) = delete;
        Step& operator=(const Step&) = delete;

    private:
        OperationRun& run_;
        bool outer_;
    };

    FileOperationGuide& guide() const { return guide_; }
    const FileOutcome& outcome() const { return outcome_; }
    /// Ends the operation at the person's word.
    void abort() { outcome_.aborted = true; }
    bool is_aborted() const { return outcome_.aborted; }

    /// Tells that `place` is next.
    void tell(const DiskPlace& place);
    /// The same, and gives whether to go on with it: the person has not cancelled.
    bool begin(const DiskPlace& place);
    /// Tells that so many bytes more are done; gives whether to go on.
    bool advance(qint64 bytes);
    /// Sets the bytes of all files; what is told from here on counts from 0.
    void set_bytes_all(qint64 bytes);
    /// Tells that so many bytes in all are done, those that were passed over among them.
    void pass_to(qint64 bytes);

    /// Tells of an error, by its number or by the program's own word for it, and ends the operation if the person
    /// wants that.
    void report(const DiskPlace& place, int error);
    void report(const DiskPlace& place, Word reason);
    /// Whether the person lets a file take another's place.
    bool may_replace(const FileFacts& source, const FileFacts& target);

private:
    void report(const DiskPlace& place, const QString& reason);
    bool go_on();

    FileOperationGuide& guide_;
    FileOutcome outcome_;
    FileProgress progress_;
    bool more_follow_ = false;
    std::optional<bool> replaces_all_; ///< the person's word for all files still to come
};
