#pragma once

#include "player/Transport.h"

/// No player in this window: nothing is ever open, nothing plays.
class SilentTransport : public Transport
{
public:
    void Stop() {}
    void release() override {}
    void mp3_play(const QString& /*name*/) override {}
    void mp3_stop() override {}
    void PlayBtn_Click() override {}
    void StopBtn_Click() override {}
};
