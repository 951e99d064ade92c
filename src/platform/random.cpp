#include "platform/random.h"

#include <chrono>

namespace vt {

namespace {
double fraction(std::mt19937_64& e) {
    // 53 random bits: a value in [0, 1) that never rounds up to 1.
    return static_cast<double>(e() >> 11) * (1.0 / 9007199254740992.0);
}
} // namespace

ClockRandom::ClockRandom() {
    Randomize();
}

void ClockRandom::Randomize() {
    engine_.seed(static_cast<uint64_t>(
        std::chrono::high_resolution_clock::now().time_since_epoch().count()));
}

double ClockRandom::Rnd() {
    return fraction(engine_);
}
double SeededRandom::Rnd() {
    return fraction(engine_);
}

} // namespace vt
