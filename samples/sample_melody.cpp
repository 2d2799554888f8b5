#include "sample_melody.h"

#include <algorithm>
#include <array>
#include <random>

namespace {

/// Do, re, mi and so of two octaves, in pure intonation.
constexpr std::array<int, 8> scale = {8, 9, 10, 12, 16, 18, 20, 24};
constexpr int notes_in_phrase = 8;
constexpr int loudest_gain = 196;

using Phrase = std::array<int, notes_in_phrase>;

/// A phrase that wanders about the scale.
Phrase phrase_of(std::minstd_rand& random)
{
    Phrase phrase{};
    int place = static_cast<int>(random() % scale.size());
    for (int& step : phrase) {
        place = std::clamp(place + static_cast<int>(random() % 5) - 2, 0, static_cast<int>(scale.size()) - 1);
        step = scale.at(static_cast<std::size_t>(place));
    }
    return phrase;
}

} // namespace

std::function<Tone(int frame, int channel)> sample_melody(int number)
{
    std::minstd_rand random(static_cast<unsigned>(number) + 1);
    const Phrase first = phrase_of(random);
    const Phrase second = phrase_of(random);
    const int frames_in_note = 9 + number % 6;
    return [first, second, frames_in_note](int frame, int /*channel*/) {
        const int note = frame / frames_in_note;
        const bool is_third_line = note / notes_in_phrase % 4 == 2;
        const Phrase& phrase = is_third_line ? second : first;
        // Each note dies away like that of a music box.
        return Tone{.step = phrase.at(static_cast<std::size_t>(note % notes_in_phrase)),
                    .gain = loudest_gain - frame % frames_in_note};
    };
}
