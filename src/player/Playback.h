#pragma once

#include "platform/controls/ListView.h"
#include "platform/controls/PictureBox.h"
#include "platform/controls/Placed.h"
#include "platform/controls/UsrButton.h"
#include "platform/media_player/MediaPlayerCtl.h"
#include "player/TitleScroller.h"
#include "player/Transport.h"

#include <QLabel>
#include <QObject>
#include <QTimer>

#include <functional>

/// Plays one file at a time on the media control, which it asks for its position once a second.
class Playback : public QObject, public Transport
{
    Q_OBJECT

public:
    /// What playback acts on; all of it lives as long as the playback.
    struct Controls
    {
        MediaPlayerCtl& Player;
        const ListView& lvListView;
        TitleScroller& title;
        QLabel& CurrentTime;
        QLabel& TotalTime;
        Placed<PictureBox>& play_index_button;
        const Place& Picture_back_play_index;
        const Place& volume_button;
        const Place& Picture_back_volume;
        UsrButton& backBtn;
        UsrButton& frontBtn;
        QTimer& UpdatePos;
        QTimer& Timer_mp3_back;
        QTimer& Timer_mp3_front;
    };

    /// Answers the timers, and the presses that hold `backBtn` and `frontBtn`; their Click is left to the form.
    explicit Playback(const Controls& controls, QObject* parent = nullptr);

    void release() override;
    /// Without a selected file nothing happens.
    void mp3_play(const QString& name) override;
    void mp3_stop() override;
    /// Without rows nothing happens.
    void PlayBtn_Click() override;
    void StopBtn_Click() override;
    /// PlayBtn_Click with the row's text kept in `shared.scroll_tail`. Nothing in the program calls it.
    void PlayBtn_Click_old();
    /// 5 seconds back, but not before the beginning. While nothing plays it is PlayBtn_Click.
    void backBtn_Click();
    /// 5 seconds forward; a step past the end is left to the media control. While nothing plays it is PlayBtn_Click.
    void frontBtn_Click();
    /// The poll: shows time and position, and tells the end of the track.
    void UpdatePos_Timer();

Q_SIGNALS:
    /// The track has come to its end, and the media control has been stopped.
    void track_ended();

private:
    void repeat_while_held(const UsrButton& button, QTimer& timer, const std::function<void()>& jump);
    void jump_to(double seconds);

    Controls controls_;
};
