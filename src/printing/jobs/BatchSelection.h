#pragma once

#include <bitset>
#include <cstddef>

namespace quillmere {

/// What a batch prints: the schedules by their sections, the employees' forms, the employer's declaration.
enum class BatchTick : std::size_t { A, B, C, D, E, Cars, G, H, I, J, K, L, M, N, P11D, P11DB };
inline constexpr std::size_t BatchTicks = 16;

/// The ticks that the user has set.
class BatchSelection {
public:
    BatchSelection() = default;
    static BatchSelection All()
    {
        BatchSelection all;
        all.ticks.set();
        return all;
    }
    void Set(BatchTick tick, bool isSet = true) { ticks.set(static_cast<std::size_t>(tick), isSet); }
    bool Has(BatchTick tick) const { return ticks.test(static_cast<std::size_t>(tick)); }
    /// True if there is anything to print for an employee.
    bool HasPapersOfEmployees() const
    {
        auto others = ticks;
        others.reset(static_cast<std::size_t>(BatchTick::P11DB));
        return others.any();
    }

private:
    std::bitset<BatchTicks> ticks;
};

} // namespace quillmere
