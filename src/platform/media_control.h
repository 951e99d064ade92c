#pragma once
// The multimedia control: a player of one sound file at a time, driven by command texts as the
// forms use it ("Open", "Play", "Stop", "Prev", "Close"), with times in milliseconds.
//
// Each control is a voice of the one audio engine. "Open" decodes FileName (through the shared
// cache); "Play" plays from From (or where it stands) to To (or the end), both taken by that one
// play only and then cleared; "Stop" halts where it is; "Prev" halts and goes back to the start;
// "Close" halts and lets the file go. A missing or undecodable file opens nothing, and a "Play"
// then plays nothing.
//
// Notify is kept until changed. When a play was started with Notify on, Done tells how it ended,
// always as a queued event on the user-interface thread, in order: 1 when it ran to its end,
// 2 when a new "Play" replaced it, 4 when "Stop", "Prev" or "Close" ended it, 8 when there was
// nothing to play. The end is reported a few tens of milliseconds before the last sample sounds,
// so a clip started from Done follows without a gap; Position then already stands at the end.
// Wait, Shareable, DeviceType ("WaveAudio", "MpegVideo") and TimeFormat (0, milliseconds) are
// kept as set; every file is played the same way and Play never blocks.

#include <QObject>
#include <QString>
#include <cstdint>
#include <memory>

namespace vt {

class AudioEngine;
class SoundCache;
struct Clip;

class MMControl : public QObject {
    Q_OBJECT
public:
    static constexpr int ModeNotOpen = 524;
    static constexpr int ModeStopped = 525;
    static constexpr int ModePlaying = 526;

    static constexpr int NotifySuccessful = 1;
    static constexpr int NotifySuperseded = 2;
    static constexpr int NotifyAborted = 4;
    static constexpr int NotifyFailure = 8;

    MMControl(AudioEngine& engine, SoundCache& cache, QObject* parent = nullptr);
    ~MMControl() override;

    QString DeviceType() const { return deviceType_; }
    void SetDeviceType(const QString& type) { deviceType_ = type; }
    QString FileName() const { return fileName_; }
    void SetFileName(const QString& path) { fileName_ = path; }
    bool Notify() const { return notify_; }
    void SetNotify(bool on) { notify_ = on; }
    bool Wait() const { return wait_; }
    void SetWait(bool on) { wait_ = on; }
    bool Shareable() const { return shareable_; }
    void SetShareable(bool on) { shareable_ = on; }
    int TimeFormat() const { return timeFormat_; }
    void SetTimeFormat(int format) { timeFormat_ = format; }
    int64_t From() const { return from_; }
    void SetFrom(int64_t ms) { from_ = ms; }
    int64_t To() const { return to_; }
    void SetTo(int64_t ms) { to_ = ms; }

    // Runs a command; the text is matched without regard to case. Unknown commands set Error.
    void SetCommand(const QString& command);
    QString Command() const { return command_; }

    int64_t Position() const; // milliseconds from the start of the file
    int64_t Length() const;   // milliseconds, 0 when nothing is open
    int Mode() const;

    // 0 after a command that worked; otherwise the reason is in ErrorMessage.
    int Error() const { return error_; }
    QString ErrorMessage() const { return errorMessage_; }

Q_SIGNALS:
    void Done(int notifyCode);

private:
    void open();
    void play();
    void halt(int64_t positionAfter); // -1: stays where it stopped
    void close();
    bool playing() const;
    void post(int code);
    void ended(uint64_t serial);
    void fail(int code, const QString& message);
    int64_t msToFrames(int64_t ms) const;

    AudioEngine& engine_;
    SoundCache& cache_;
    int voice_ = 0;
    std::shared_ptr<const Clip> clip_;
    uint64_t serial_ = 0;     // of this control's last play
    bool playNotify_ = false; // Notify as it was when that play started
    int64_t seekFrames_ = 0;  // where the next play starts when no play has moved it
    bool seekSet_ = true;

    QString deviceType_;
    QString fileName_;
    QString command_;
    bool notify_ = false;
    bool wait_ = false;
    bool shareable_ = false;
    int timeFormat_ = 0;
    int64_t from_ = -1;
    int64_t to_ = -1;
    int error_ = 0;
    QString errorMessage_;
};

} // namespace vt
