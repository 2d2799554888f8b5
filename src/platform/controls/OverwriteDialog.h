#pragma once

#include "platform/file_operation/FileOperation.h"

#include <QDialog>
#include <QDialogButtonBox>

/// Asks whether a file may take another's place, and shows what is known of both. The result is the button pressed, as
/// QDialogButtonBox numbers it; 0 is Esc or the close box, as good as Cancel.
class OverwriteDialog : public QDialog
{
    Q_OBJECT

public:
    OverwriteDialog(const FileFacts& source, const FileFacts& target, QWidget* parent);

private:
    QDialogButtonBox* new_buttons();
};
