#pragma once
// Timers and the time of day, behind one service. The program uses QTimer and the system clock;
// tests use VirtualClock, which fires due timers in time order when it is advanced, so a
// five-minute wait runs in microseconds and always in the same order.

#include <QDateTime>
#include <QObject>
#include <QPointer>
#include <QTimeZone>
#include <functional>
#include <memory>
#include <vector>

namespace vt {

// A form's timer: Interval in milliseconds, Enabled, and a tick. Enabling restarts the count.
// An interval of 0 never ticks. A timer that stands for a delay disables itself in its tick.
class Timer : public QObject {
    Q_OBJECT
public:
    std::function<void()> OnTick;

    int Interval() const { return interval_; }
    bool Enabled() const { return enabled_; }
    void SetInterval(int ms);
    void SetEnabled(bool on);

    // Runs the tick now, as the runtime does when the interval has passed.
    void Fire();

protected:
    explicit Timer(QObject* parent) : QObject(parent) {}
    virtual void arm() = 0;    // (re)start counting from now
    virtual void disarm() = 0; // stop counting

private:
    int interval_ = 0;
    bool enabled_ = false;
};

class TimeService {
public:
    virtual ~TimeService() = default;
    // A new timer owned by parent (usually the form), named like the control ("Timer1").
    virtual Timer* CreateTimer(QObject* parent, const QString& name, int intervalMs,
                               bool enabled) = 0;
    // The local date and time now.
    virtual QDateTime Now() const = 0;
    // The local time zone in force now.
    virtual QTimeZone Zone() const = 0;
    // Milliseconds on a steady clock, for measuring and for the sound output's pace.
    virtual qint64 SteadyMs() const = 0;
};

class QtTimeService final : public TimeService {
public:
    QtTimeService();
    Timer* CreateTimer(QObject* parent, const QString& name, int intervalMs, bool enabled) override;
    QDateTime Now() const override;
    QTimeZone Zone() const override;
    qint64 SteadyMs() const override;

private:
    qint64 startNs_;
};

class VirtualTimer;

// The tests' clock. Time stands still until Advance moves it; then each due timer fires at its
// own moment, earliest first (ties in the order they were armed), and events posted by a tick
// are delivered before the next one fires.
class VirtualClock final : public TimeService {
public:
    explicit VirtualClock(QDateTime start = QDateTime(QDate(2026, 11, 23), QTime(9, 30),
                                                      QTimeZone::utc()),
                          QTimeZone zone = QTimeZone::utc());
    ~VirtualClock() override;

    Timer* CreateTimer(QObject* parent, const QString& name, int intervalMs, bool enabled) override;
    QDateTime Now() const override;
    QTimeZone Zone() const override { return zone_; }
    qint64 SteadyMs() const override { return nowMs_; }

    // Moves time on by ms, firing every timer that falls due on the way.
    void Advance(qint64 ms);
    // Moves on until no timer is due within maxMs, or maxMs has passed. Returns the time used.
    qint64 RunUntilIdle(qint64 maxMs = 60'000);
    // Fires only the next due timer, whenever it is. False when none is armed.
    bool FireNext();
    qint64 Elapsed() const { return nowMs_; }
    void SetZone(QTimeZone zone) { zone_ = std::move(zone); }
    void SetNow(const QDateTime& t);

    // Delivers posted events and deferred deletes, as the event loop would between handlers.
    static void DeliverPosted();

private:
    friend class VirtualTimer;
    void arm(VirtualTimer* t);
    void disarm(VirtualTimer* t);
    VirtualTimer* nextDue() const;

    QDateTime start_;
    QTimeZone zone_;
    qint64 nowMs_ = 0;
    quint64 sequence_ = 0;
    std::vector<VirtualTimer*> armed_;
};

} // namespace vt
