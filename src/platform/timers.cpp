#include "platform/timers.h"

#include <QCoreApplication>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <limits>

namespace vt {

void Timer::SetInterval(int ms) {
    interval_ = ms < 0 ? 0 : ms;
    if (enabled_) arm();
}

void Timer::SetEnabled(bool on) {
    enabled_ = on;
    if (on)
        arm();
    else
        disarm();
}

void Timer::Fire() {
    if (OnTick) OnTick();
}

namespace {

class QtTimer final : public Timer {
public:
    explicit QtTimer(QObject* parent) : Timer(parent), timer_(this) {
        timer_.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer_, &QTimer::timeout, this, [this] { Fire(); });
    }

protected:
    void arm() override {
        if (Interval() <= 0) {
            timer_.stop();
            return;
        }
        timer_.start(Interval());
    }
    void disarm() override { timer_.stop(); }

private:
    QTimer timer_;
};

qint64 steadyNs() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

} // namespace

QtTimeService::QtTimeService() : startNs_(steadyNs()) {}

Timer* QtTimeService::CreateTimer(QObject* parent, const QString& name, int intervalMs,
                                  bool enabled) {
    auto* t = new QtTimer(parent);
    t->setObjectName(name);
    t->SetInterval(intervalMs);
    t->SetEnabled(enabled);
    return t;
}

QDateTime QtTimeService::Now() const {
    return QDateTime::currentDateTime();
}
QTimeZone QtTimeService::Zone() const {
    return QTimeZone::systemTimeZone();
}
qint64 QtTimeService::SteadyMs() const {
    return (steadyNs() - startNs_) / 1'000'000;
}

class VirtualTimer final : public Timer {
public:
    VirtualTimer(VirtualClock* clock, QObject* parent) : Timer(parent), clock_(clock) {}
    ~VirtualTimer() override {
        if (clock_) clock_->disarm(this);
    }
    qint64 due = 0;
    quint64 sequence = 0;
    bool armed = false;
    VirtualClock* clock_;

protected:
    void arm() override { clock_->arm(this); }
    void disarm() override { clock_->disarm(this); }
};

VirtualClock::VirtualClock(QDateTime start, QTimeZone zone)
    : start_(std::move(start)), zone_(std::move(zone)) {}

VirtualClock::~VirtualClock() {
    for (VirtualTimer* t : armed_) {
        t->armed = false;
        t->clock_ = nullptr;
    }
}

Timer* VirtualClock::CreateTimer(QObject* parent, const QString& name, int intervalMs,
                                 bool enabled) {
    auto* t = new VirtualTimer(this, parent);
    t->setObjectName(name);
    t->SetInterval(intervalMs);
    t->SetEnabled(enabled);
    return t;
}

QDateTime VirtualClock::Now() const {
    return start_.addMSecs(nowMs_).toTimeZone(zone_);
}

void VirtualClock::SetNow(const QDateTime& t) {
    start_ = t.addMSecs(-nowMs_);
}

void VirtualClock::arm(VirtualTimer* t) {
    disarm(t);
    if (t->Interval() <= 0) return;
    t->due = nowMs_ + t->Interval();
    t->sequence = ++sequence_;
    t->armed = true;
    armed_.push_back(t);
}

void VirtualClock::disarm(VirtualTimer* t) {
    if (!t->armed) return;
    t->armed = false;
    armed_.erase(std::remove(armed_.begin(), armed_.end(), t), armed_.end());
}

VirtualTimer* VirtualClock::nextDue() const {
    VirtualTimer* best = nullptr;
    for (VirtualTimer* t : armed_) {
        if (!best || t->due < best->due || (t->due == best->due && t->sequence < best->sequence))
            best = t;
    }
    return best;
}

void VirtualClock::DeliverPosted() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

bool VirtualClock::FireNext() {
    VirtualTimer* t = nextDue();
    if (!t) return false;
    nowMs_ = std::max(nowMs_, t->due);
    // A periodic timer counts its next interval from this tick, unless the tick changes it.
    t->due = nowMs_ + t->Interval();
    t->sequence = ++sequence_;
    QPointer<Timer> guard(t);
    t->Fire();
    DeliverPosted();
    return true;
}

void VirtualClock::Advance(qint64 ms) {
    const qint64 target = nowMs_ + ms;
    DeliverPosted();
    for (;;) {
        VirtualTimer* t = nextDue();
        if (!t || t->due > target) break;
        FireNext();
    }
    nowMs_ = target;
}

qint64 VirtualClock::RunUntilIdle(qint64 maxMs) {
    const qint64 begin = nowMs_;
    DeliverPosted();
    for (;;) {
        VirtualTimer* t = nextDue();
        if (!t || t->due - begin > maxMs) break;
        FireNext();
    }
    return nowMs_ - begin;
}

} // namespace vt
