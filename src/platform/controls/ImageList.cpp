#include "platform/controls/ImageList.h"

#include <algorithm>

void ImageList::Add(const QString& key, const QIcon& icon)
{
    images_.push_back({key, icon});
}

QIcon ImageList::icon(const QString& key) const
{
    const auto found =
        std::find_if(images_.begin(), images_.end(), [&key](const Image& image) { return image.key == key; });
    return found == images_.end() ? QIcon() : found->icon;
}

QIcon ImageList::icon(int index) const
{
    return index < 1 || index > Count() ? QIcon() : images_[static_cast<std::size_t>(index) - 1].icon;
}
