#pragma once
// Randomize and Rnd: one uniform generator. The program seeds it from the clock at each
// Randomize; tests fix the seed, and Randomize then leaves the sequence alone.

#include <cstdint>
#include <random>

namespace vt {

class Random {
public:
    virtual ~Random() = default;
    virtual void Randomize() = 0;
    // A fraction in [0, 1).
    virtual double Rnd() = 0;
    // Int(Rnd * n) + 1: a pick from 1..n.
    int Pick(int n) { return static_cast<int>(Rnd() * n) + 1; }
};

class ClockRandom final : public Random {
public:
    ClockRandom();
    void Randomize() override;
    double Rnd() override;

private:
    std::mt19937_64 engine_;
};

class SeededRandom final : public Random {
public:
    explicit SeededRandom(uint64_t seed = 1) : engine_(seed) {}
    void Randomize() override {}
    double Rnd() override;
    void Reseed(uint64_t seed) { engine_.seed(seed); }

private:
    std::mt19937_64 engine_;
};

} // namespace vt
