#pragma once

/// The playback as the machine sees it: whoever plays lines may have asked to be stopped by a contact or by a
/// spindle command. Without a playback nothing stops. Not owned; must outlive its use.
class PlaybackStop {
  public:
    PlaybackStop() = default;
    PlaybackStop(const PlaybackStop&) = delete;
    PlaybackStop& operator=(const PlaybackStop&) = delete;
    virtual ~PlaybackStop() = default;

    /// The user wants contacts and spindle commands to stop the playback.
    [[nodiscard]] virtual bool stopOnContact() const { return false; }
    virtual void stop() {}
};
