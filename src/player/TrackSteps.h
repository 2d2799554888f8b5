#pragma once

#include "platform/controls/ListView.h"
#include "platform/numbers.h"
#include "player/Transport.h"

/// The steps from track to track. The rows of the file list are the tracks, and the selected row is the present one;
/// behind the last comes the first. When another row was clicked since the play began, either step plays that row. A
/// failure ends a step silently.
class TrackSteps
{
public:
    /// Both live as long as the steps.
    TrackSteps(ListView& list, Transport& transport) : list_(list), transport_(transport) {}

    void FastBtn_Click(); ///< the next track
    void ReBtn_Click();   ///< the previous track

private:
    void choose_next();
    void choose_previous();
    void play_chosen_row();

    ListView& list_;
    Transport& transport_;
    i16 track_index_ = 0; ///< the row that the last step has chosen
};
