#pragma once

#include "platform/file_operation/FileOperation.h"

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;

/// Shows how far a file operation has come. Modal for the whole program while it is shown; it neither starts a loop of
/// events nor closes by itself.
class FileProgressWindow : public QDialog
{
    Q_OBJECT

public:
    FileProgressWindow(FileAction action, QWidget* parent);

    /// Shows the file at work, the bytes done and the bar, which only tells that work goes on while `bytes_all` is 0.
    void show_progress(const FileProgress& progress);
    /// The person cancels by the close box or Esc too; the window stays until the work has ended.
    void reject() override;

Q_SIGNALS:
    void Cancel();

private:
    void show_name(const QString& name);

    QLabel* name_;
    QLabel* amount_;
    QProgressBar* bar_;
    QPushButton* cancel_;
    QString shown_name_;
    bool is_cancelled_ = false;
};
