#pragma once

#include "player/Transport.h"

/// A player that nothing is open in.
class SilentPlayer : public Transport
{
public:
    void release() override {}
    void mp3_play(const QString& /*name*/) override {}
    void mp3_stop() override {}
    void PlayBtn_Click() override {}
    void StopBtn_Click() override {}
};
