#pragma once

#include "faulty_disk.h"
#include "platform/controls/FilePrompts.h"

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>

// Operations of the forms on a disk that fails: each is done again and again, with every fault at every call that it
// makes, until it runs through, and after each time the files, the final list and all that was said are looked at.

/// A file whose audio nobody else has, so that it is known again under whatever name; `tag` are its last 128 bytes.
QByteArray marked_file(const QByteArray& mark, const QByteArray& tag);

/// What stands on a disk: content by path. Folders are not in it.
using DiskContent = QMap<QByteArray, QByteArray>;

/// How an operation went.
struct FaultedRun
{
    DiskFault fault{.name = "none"};
    int nth = 0;
    QByteArray failed_call; ///< the first call that went wrong; empty when none did
    QStringList messages;
    QStringList questions; ///< as ScriptedPrompts notes them
    QList<int> run_time_errors;
    DiskContent before;
    DiskContent after;

    /// Whether one of the calls that went wrong may have been one of these, such as "stat".
    bool may_have_failed(const QByteArray& call) const { return fault.lasts || failed_call.startsWith(call); }
};

/// An operation, and what may come of it beside its being done. A path is the program's own.
struct FaultedOperation
{
    const char* name;
    std::function<void()> prepare; ///< makes the disk C: and the shared state anew
    std::function<void()> act;
    /// All files of C: and of the trash where nothing went wrong, sorted; those in the trash as "trash: NAME".
    QStringList result;
    QStringList bystanders;          ///< files that nobody asked to change
    QStringList messages = {};       ///< what is shown where nothing went wrong
    QStringList told_messages = {};  ///< what else may be shown
    QStringList told_questions = {}; ///< what the only ones begin with
    FilePrompts::OnError on_error = FilePrompts::OnError::skip;
    bool may_copy = false;        ///< a file may stand twice
    bool may_delete = false;      ///< a person who is asked whether to delete for good says yes
    bool record_may_lead = false; ///< a record has its new name and the file its old one
    bool record_may_lag = false;  ///< a file has gone on and its record stays
    bool record_may_go = false;   ///< a record goes when the disk doesn't tell that its file is there
    /// What else is wrong, in words.
    std::function<QStringList(const FaultedRun&)> more_findings = {};
};

/// Does the operation with every fault at every call; fails the test with the first things that are wrong.
void prove_against_faults(const FaultedOperation& operation);

/// Puts all that the test makes on disk into memory, where the machine has a file system for that: thousands of small
/// disks come and go.
void keep_disks_in_memory();

/// The main function of a test of faults.
#define QUILMO_FAULTS_TEST(TestClass)                                                                                  \
    int main(int argc, char** argv)                                                                                    \
    {                                                                                                                  \
        keep_disks_in_memory();                                                                                        \
        const TestHome home;                                                                                           \
        const QApplication application(argc, argv);                                                                    \
        TestClass test;                                                                                                \
        return QTest::qExec(&test, argc, argv);                                                                        \
    }
