#pragma once

#include "platform/GenreBox.h"

#include <QString>

/// The six fields of the main window that show the selected file.
class DetailFields
{
public:
    virtual ~DetailFields() = default;
    virtual void set_txtFilename(const QString& text) = 0;
    virtual void set_txtArtist(const QString& text) = 0;
    virtual void set_txtTitle(const QString& text) = 0;
    virtual void set_txtGenre(const QString& text) = 0;
    virtual QString txtGenre() const = 0;
    virtual void set_Label_filesize(const QString& text) = 0;
    virtual GenreBox& cboGenre() = 0;
};
