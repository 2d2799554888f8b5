#pragma once

#include <QString>

/// What the genre routines need of a combo box whose entries are kept in alphabetical order.
class GenreBox
{
public:
    virtual ~GenreBox() = default;
    virtual void Clear() = 0;
    virtual void AddItem(const QString& text) = 0;
    /// Position of the selected entry, from 0; -1 for none. Setting a position that does not exist is ignored.
    virtual int ListIndex() const = 0;
    virtual void set_ListIndex(int position) = 0;
    /// Text of the selected entry, empty for none.
    virtual QString Text() const = 0;
};
