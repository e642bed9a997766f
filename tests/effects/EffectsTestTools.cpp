// SPDX-License-Identifier: GPL-3.0-or-later
#include "EffectsTestTools.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <new>
#include <random>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace quorel::test
{
namespace
{
#if defined(__linux__)
void* takePages(std::size_t bytes)
{
    void* pages = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED)
        throw std::bad_alloc();

    return pages;
}

void returnPages(void* pages, std::size_t bytes) noexcept
{
    munmap(pages, bytes);
}

/** Straight from the system, as the engine takes them, so that tests see what a slot touches. */
constexpr FxPages emptyPages = {takePages, returnPages};
#else
const FxPages& emptyPages = heapPages;
#endif
} // namespace

std::unique_ptr<FxSlot> makeSlot(int type, float sampleRate)
{
    auto slot = std::make_unique<FxSlot>();
    fxConstruct(*slot, emptyPages);
    slot->type = type;
    fxInit(*slot, sampleRate);
    fxSetMix(*slot, 0.75f, 1.0f, 0.5f);
    return slot;
}

void changeType(FxSlot& slot, int type)
{
    slot.type = type;
    fxInit(slot, slot.sampleRate);
}

Stereo run(FxSlot& slot, const std::vector<float>& p, Stereo signal, float bpm)
{
    std::array<float, fxParameterCount> all{};
    std::copy(p.begin(), p.end(), all.begin());

    for (std::size_t start = 0; start < signal.left.size(); start += 64)
    {
        fxUpdate(slot, all.data(), bpm);
        const auto num = std::min<std::size_t>(64, signal.left.size() - start);
        fxProcessBlock(slot, &signal.left[start], &signal.right[start], static_cast<int>(num));
    }

    return signal;
}

Stereo runAfter(int silent, FxSlot& slot, const std::vector<float>& p, Stereo signal, float bpm)
{
    run(slot, p, silence(silent), bpm);
    return run(slot, p, std::move(signal), bpm);
}

static Stereo make(int length, const std::function<float(int)>& value)
{
    Stereo s = silence(length);
    for (int i = 0; i < length; ++i)
        s.left[static_cast<std::size_t>(i)] = s.right[static_cast<std::size_t>(i)] = value(i);
    return s;
}

Stereo constant(int length, float value)
{
    const std::vector<float> samples(static_cast<std::size_t>(length), value);
    return {samples, samples};
}

Stereo silence(int length)
{
    return constant(length, 0.0f);
}

Stereo impulse(int length, float left, float right)
{
    Stereo s = silence(length);
    s.left[0] = left;
    s.right[0] = right;
    return s;
}

Stereo sine(int length, double hz, float amplitude, double sampleRate)
{
    return make(length,
                [=](int i) {
                    return amplitude * static_cast<float>(std::sin(6.283185307179586 * hz * i / sampleRate));
                });
}

Stereo noise(int length, float amplitude, unsigned seed)
{
    std::mt19937 engine(seed);
    std::uniform_real_distribution<float> values(-amplitude, amplitude);
    Stereo s = silence(length);
    for (std::size_t i = 0; i < s.left.size(); ++i)
    {
        s.left[i] = values(engine);
        s.right[i] = values(engine);
    }
    return s;
}

Stereo square(int length, int period, float amplitude)
{
    return make(length, [=](int i) { return i % period < period / 2 ? amplitude : -amplitude; });
}

std::complex<double> component(const std::vector<float>& x, std::size_t from, double hz, double sampleRate)
{
    std::complex<double> sum = 0.0;
    double weight = 0.0;
    const double length = static_cast<double>(x.size() - from);

    for (std::size_t i = from; i < x.size(); ++i)
    {
        const double t = static_cast<double>(i - from);
        const double window = 0.5 - 0.5 * std::cos(6.283185307179586 * t / length);
        const double angle = 6.283185307179586 * hz * static_cast<double>(i) / sampleRate;
        sum += window * static_cast<double>(x[i]) * std::polar(1.0, -angle);
        weight += window;
    }

    return 2.0 * sum / weight;
}

double gainAt(const std::vector<float>& impulseResponse, double hz, double sampleRate)
{
    std::complex<double> sum = 0.0;
    for (std::size_t n = 0; n < impulseResponse.size(); ++n)
        sum += static_cast<double>(impulseResponse[n]) *
               std::polar(1.0, -6.283185307179586 * hz * static_cast<double>(n) / sampleRate);
    return std::abs(sum);
}

double peak(const std::vector<float>& x, std::size_t from)
{
    double most = 0.0;
    for (std::size_t i = from; i < x.size(); ++i)
        most = std::isfinite(x[i]) ? std::max(most, std::abs(static_cast<double>(x[i]))) : INFINITY;
    return most;
}

double rms(const std::vector<float>& x, std::size_t from, std::size_t to)
{
    const std::size_t end = to == 0 ? x.size() : to;
    double sum = 0.0;
    for (std::size_t i = from; i < end; ++i)
        sum += static_cast<double>(x[i]) * static_cast<double>(x[i]);
    return std::sqrt(sum / static_cast<double>(end - from));
}

std::size_t peakPosition(const std::vector<float>& x, std::size_t from, std::size_t to)
{
    const auto begin = x.begin() + static_cast<std::ptrdiff_t>(from);
    const auto end = to == 0 ? x.end() : x.begin() + static_cast<std::ptrdiff_t>(to);
    const auto most =
        std::max_element(begin, end, [](float a, float b) { return std::abs(a) < std::abs(b); });
    return static_cast<std::size_t>(most - x.begin());
}

double decibels(double gain)
{
    return 20.0 * std::log10(gain);
}
} // namespace quorel::test
