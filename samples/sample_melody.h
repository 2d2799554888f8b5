#pragma once

#include "sample_tones.h"

/// A quiet little melody for the tones of a song, the same in both channels; each `number` has its own. It goes on for
/// ever and is meant for MPEG 1. No sample of it passes a tenth of full scale.
std::function<Tone(int frame, int channel)> sample_melody(int number);
