#pragma once

#include <QIcon>
#include <QString>

#include <vector>

/// Pictures of one size for a tree, a list or a toolbar, each with a key and an index from 1.
class ImageList
{
public:
    void Add(const QString& key, const QIcon& icon);
    int Count() const { return static_cast<int>(images_.size()); }
    /// The image of a key, or of an index from 1; an empty icon for none.
    QIcon icon(const QString& key) const;
    QIcon icon(int index) const;

private:
    struct Image
    {
        QString key;
        QIcon icon;
    };
    std::vector<Image> images_;
};
