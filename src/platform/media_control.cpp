#include "platform/media_control.h"

#include "platform/audio_engine.h"
#include "platform/files.h"
#include "platform/sound_decoder.h"

#include <QMetaObject>

namespace vt {

namespace {
constexpr int kErrorNotOpen = 1;
constexpr int kErrorCannotOpen = 2;
constexpr int kErrorUnknownCommand = 3;
} // namespace

MMControl::MMControl(AudioEngine& engine, SoundCache& cache, QObject* parent)
    : QObject(parent), engine_(engine), cache_(cache) {
    // Called on the output's thread: only post. Events still queued for a control that is gone
    // are dropped with it, and after RemoveVoice nothing more is posted.
    voice_ = engine_.AddVoice([this](uint64_t serial) {
        QMetaObject::invokeMethod(
            this, [this, serial] { ended(serial); }, Qt::QueuedConnection);
    });
}

MMControl::~MMControl() {
    engine_.Stop(voice_);
    engine_.RemoveVoice(voice_);
}

void MMControl::SetCommand(const QString& command) {
    command_ = command;
    error_ = 0;
    errorMessage_.clear();
    const QString c = command.trimmed().toLower();
    if (c == u"open")
        open();
    else if (c == u"play")
        play();
    else if (c == u"stop")
        halt(-1);
    else if (c == u"prev")
        halt(0);
    else if (c == u"close")
        close();
    else
        fail(kErrorUnknownCommand, QStringLiteral("unknown command \"%1\"").arg(command));
}

void MMControl::fail(int code, const QString& message) {
    error_ = code;
    errorMessage_ = message;
}

void MMControl::post(int code) {
    QMetaObject::invokeMethod(
        this, [this, code] { Q_EMIT Done(code); }, Qt::QueuedConnection);
}

void MMControl::ended(uint64_t serial) {
    // A report of a play that a newer one replaced says nothing any more.
    if (serial != serial_ || !playNotify_) return;
    Q_EMIT Done(NotifySuccessful);
}

bool MMControl::playing() const {
    if (!clip_ || serial_ == 0) return false;
    const auto s = engine_.State(voice_);
    return s.serial == serial_ && s.playing;
}

int64_t MMControl::msToFrames(int64_t ms) const {
    return ms <= 0 ? 0 : (ms * engine_.Rate() + 500) / 1000;
}

void MMControl::open() {
    close();
    QString why;
    clip_ = cache_.Load(FileStore::Resolve(fileName_), &why);
    if (!clip_) {
        fail(kErrorCannotOpen, QStringLiteral("cannot open \"%1\": %2").arg(fileName_, why));
        return;
    }
    seekFrames_ = 0;
    seekSet_ = true;
}

void MMControl::play() {
    const int64_t from = from_;
    const int64_t to = to_;
    from_ = to_ = -1; // From and To serve one play only
    const bool wasPlaying = playing();
    const bool wasNotify = playNotify_;
    if (!clip_) {
        fail(kErrorNotOpen, QStringLiteral("nothing is open"));
        if (notify_) post(NotifyFailure);
        return;
    }
    int64_t start;
    if (from >= 0)
        start = msToFrames(from);
    else if (seekSet_)
        start = seekFrames_;
    else
        start = engine_.State(voice_).position;
    const int64_t end = to >= 0 ? msToFrames(to) : clip_->Frames();
    if (wasPlaying && wasNotify) post(NotifySuperseded);
    playNotify_ = notify_;
    seekSet_ = false;
    serial_ = engine_.Play(voice_, clip_, start, end);
}

void MMControl::halt(int64_t positionAfter) {
    if (!clip_) {
        fail(kErrorNotOpen, QStringLiteral("nothing is open"));
        return;
    }
    const bool wasPlaying = playing();
    engine_.Stop(voice_);
    if (wasPlaying && playNotify_) post(NotifyAborted);
    if (positionAfter >= 0) {
        seekFrames_ = positionAfter;
        seekSet_ = true;
    } else if (!seekSet_) {
        seekFrames_ = engine_.State(voice_).position;
        seekSet_ = true;
    }
}

void MMControl::close() {
    if (!clip_) return;
    const bool wasPlaying = playing();
    engine_.Stop(voice_);
    if (wasPlaying && playNotify_) post(NotifyAborted);
    clip_.reset();
    serial_ = 0;
    seekFrames_ = 0;
    seekSet_ = true;
}

int64_t MMControl::Position() const {
    if (!clip_) return 0;
    const int64_t frames = seekSet_ ? seekFrames_ : engine_.State(voice_).position;
    return (frames * 1000 + engine_.Rate() / 2) / engine_.Rate();
}

int64_t MMControl::Length() const {
    return clip_ ? clip_->LengthMs() : 0;
}

int MMControl::Mode() const {
    if (!clip_) return ModeNotOpen;
    return playing() ? ModePlaying : ModeStopped;
}

} // namespace vt
