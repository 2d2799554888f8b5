#pragma once

#include "player/Transport.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>

class ComboBox;
class TextBox;

// What the tests of the converting forms share.

/// A player that notes what it is told and opens nothing. Playing and stopping show in the shared state as with the
/// program's own.
class NotedTransport : public Transport
{
public:
    void release() override;
    void mp3_play(const QString& name) override;
    void mp3_stop() override;
    void PlayBtn_Click() override;
    void StopBtn_Click() override;

    /// The calls since the last take, oldest first: "release", "play PATH as NAME", "stop", "PlayBtn PATH", "StopBtn".
    QStringList take();
    /// Makes `path` the file in the player.
    static void load(const QString& path, bool playing);

    std::function<void()> on_release; ///< runs when a file is let go

private:
    QStringList calls_;
};

/// The fields of a tag, without what fills them up.
struct TagTexts
{
    QByteArray artist;
    QByteArray title;
    int genre = 0;

    bool operator==(const TagTexts&) const = default;
};

/// Readable in the report of a failing comparison.
char* toString(const TagTexts& tag);

/// The tag in the last 128 bytes of a file; an empty one when they are none.
TagTexts tag_in(const QByteArray& content);

/// Clicks into a text box, marks what stands there and types `text` over it, key by key.
void type_into(TextBox& box, const QString& text);

/// Gives a list the focus and picks an entry by typing its beginning.
void pick_genre(ComboBox& box, const QString& beginning);
