#pragma once

#include "platform/controls/Placed.h"
#include "platform/media_player/MediaPlayerCtl.h"
#include "platform/numbers.h"

/// Twice the device's word for both channels, as the device takes it: folded into 32 bits with a sign, which leaves the
/// left channel 2 above the right one from 2147483647 on. Raises "Overflow" below -2147483648.
i32 folded_level(double doubled);

/// Writes the level of a percentage to the wave device, muted or not. Raises "Overflow" above 100 and below -50.
void set_wave_volume(i16 percent);

/// Keeps a percentage as the volume asked for and, unless muted, sets the wave level to it, or to the nearest of 0 and
/// 100 outside these.
void set_volume_percent(i16 percent);

/// Brings wave level and player level to the place of the volume knob. While muted both go silent, and the volume asked
/// for becomes 0, on purpose.
void sync_player_volume(const Place& knob, const Place& track, MediaPlayerCtl& player);

/// Puts the volume knob where `shared.vol_type` asks for, and the level with it.
void restore_volume(Place& knob, const Place& track);
