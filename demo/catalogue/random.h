#pragma once

#include <QtGlobal>

namespace demo {

// SplitMix64 (Steele, Lea, Flood: "Fast Splittable Pseudorandom Number Generators", 2014). Written
// out, because the distributions of the standard library give other numbers with each vendor, and
// a seed has to give the same catalogue everywhere.
class Random {
public:
    // Streams of one seed are independent, so that one table can grow without changing another.
    explicit Random(quint64 seed, quint64 stream = 0, quint64 index = 0)
        : state_(Mix(Mix(Mix(seed) + stream) + index)) {}

    quint64 Next() { return Mix(state_ += Gamma); }

    // 0 to limit - 1; `limit` at least 1.
    quint32 Below(quint32 limit) { return static_cast<quint32>(((Next() >> 32) * limit) >> 32); }

    quint32 Between(quint32 least, quint32 most) { return least + Below(most - least + 1); }

    bool Percent(quint32 percent) { return Below(100) < percent; }

private:
    static constexpr quint64 Gamma = 0x9E3779B97F4A7C15U;

    static constexpr quint64 Mix(quint64 z) {
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
        return z ^ (z >> 31);
    }

    quint64 state_;
};

// Algorithm S (Knuth, volume 2, 3.4.2): asked once for each of `slots` places in turn, it says yes
// exactly `wanted` times, each choice being as likely as any other.
class Selection {
public:
    Selection(quint64 wanted, quint64 slots) : wanted_(wanted), slots_(slots) {}

    bool Take(Random& random) {
        const bool taken = slots_ > 0 && random.Next() % slots_ < wanted_;
        --slots_;
        wanted_ -= taken ? 1 : 0;
        return taken;
    }

private:
    quint64 wanted_;
    quint64 slots_;
};

}  // namespace demo
