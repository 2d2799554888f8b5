#pragma once

#include <QDir>
#include <QString>
#include <QWidget>

/// Saves numbered pictures in a folder, which is made where it is missing. Ends the process when that fails.
class Album
{
public:
    explicit Album(const QString& folder);

    /// A picture of the form, with the menu that is open in front of it if there is one.
    void take(QWidget& form, const QString& name, QWidget* menu = nullptr);

    int count() const { return count_; }

private:
    QDir folder_;
    int count_ = 0;
};
