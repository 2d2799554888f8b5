#pragma once

#include "platform/media_player/MediaPlayerCtl.h"

#include <QString>
#include <QStringList>

/// A media control that plays nothing and notes what it is told. Length and position are as the test sets them.
class NotedPlayer : public MediaPlayerCtl
{
public:
    void Open(const QString& file) override;
    void Stop() override;
    void set_FileName(const QString& file) override;
    double CurrentPosition() const override { return position; }
    void set_CurrentPosition(double seconds) override;
    double SelectionEnd() const override { return length; }
    void set_Volume(i32 hundredths) override;

    /// The calls since the last take, oldest first: "open PATH", "stop", "file PATH", "seek SECONDS", "volume LEVEL".
    QStringList take();

    double length = 0;
    double position = 0;

private:
    QStringList calls_;
};
