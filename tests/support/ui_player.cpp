#include "ui_player.h"

#include <utility>

using namespace Qt::StringLiterals;

void NotedPlayer::Open(const QString& file)
{
    calls_.append(u"open "_s + file);
    position = 0;
}

void NotedPlayer::Stop()
{
    calls_.append(u"stop"_s);
    position = 0;
}

void NotedPlayer::set_FileName(const QString& file)
{
    calls_.append(u"file "_s + file);
    length = 0;
    position = 0;
}

void NotedPlayer::set_CurrentPosition(double seconds)
{
    calls_.append(u"seek %1"_s.arg(seconds));
    position = qBound(0.0, seconds, length);
}

void NotedPlayer::set_Volume(i32 hundredths)
{
    calls_.append(u"volume %1"_s.arg(hundredths));
}

QStringList NotedPlayer::take()
{
    return std::exchange(calls_, {});
}
