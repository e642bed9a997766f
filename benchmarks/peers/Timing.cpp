// SPDX-License-Identifier: GPL-3.0-or-later
#include "Timing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <ctime>
#include <limits>
#include <random>
#if defined(__SSE__)
#include <xmmintrin.h>
#endif

namespace quorel::peers
{
namespace
{
constexpr int longestBlock = 4096;

double processorSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

// Libraries built with fast mathematics switch denormal numbers off for the whole thread as they load.
void keepDenormals()
{
#if defined(__SSE__)
    constexpr unsigned atStart = 0x1f80;
    _mm_setcsr(atStart);
#endif
}

const std::vector<float>& noise()
{
    static const std::vector<float> samples = []
    {
        std::mt19937 engine(1);
        std::uniform_real_distribution<float> values(-0.5f, 0.5f);
        std::vector<float> made(96000);
        std::generate(made.begin(), made.end(), [&] { return values(engine); });
        return made;
    }();
    return samples;
}

/** Plays blocks of the source, its first half to the left and its second half to the right, over and over. */
struct Player
{
    Player(Candidate& effect, int length)
        : candidate(effect)
        , blockLength(length)
    {
    }

    void play(const std::vector<float>& source, int blocks)
    {
        const std::size_t half = source.size() / 2, length = static_cast<std::size_t>(blockLength);
        for (int i = 0; i < blocks; ++i)
        {
            if (from + length > half)
                from = 0;
            candidate.process(source.data() + from, source.data() + half + from, left.data(), right.data(),
                              blockLength);
            from += length;
        }
    }

    Candidate& candidate;
    int blockLength;
    std::size_t from = 0;
    std::array<float, longestBlock> left{}, right{};
};

double playRound(Player& player, double seconds)
{
    constexpr int blocksBetweenLooks = 32;
    long blocks = 0;
    double elapsed = 0.0;
    keepDenormals();
    const double start = processorSeconds();

    do
    {
        player.play(noise(), blocksBetweenLooks);
        blocks += blocksBetweenLooks;
        elapsed = processorSeconds() - start;
    } while (elapsed < seconds);

    return 1e9 * elapsed / (static_cast<double>(blocks) * player.blockLength);
}
} // namespace

std::vector<double> timeInTurn(const std::vector<Candidate*>& candidates, int blockLength,
                               const Rounds& rounds)
{
    std::vector<std::unique_ptr<Player>> players;
    for (Candidate* candidate : candidates)
    {
        players.push_back(candidate != nullptr ? std::make_unique<Player>(*candidate, blockLength) : nullptr);
        if (players.back() != nullptr)
            playRound(*players.back(), rounds.seconds); // fills lines and caches
    }

    std::vector<double> least(candidates.size(), std::numeric_limits<double>::max());

    for (int round = 0; round < rounds.count; ++round)
        for (std::size_t i = 0; i < players.size(); ++i)
            least[i] =
                players[i] != nullptr ? std::min(least[i], playRound(*players[i], rounds.seconds)) : 0.0;

    return least;
}

std::vector<double> timeSilence(const std::vector<Maker>& makers, int blockLength)
{
    constexpr int passes = 10, quarters = 80;
    const int blocks = static_cast<int>(sampleRate / 4.0) / blockLength;
    const std::vector<float> silence(96000, 0.0f);
    std::vector<std::array<double, quarters>> least(makers.size());
    for (auto& list : least)
        list.fill(std::numeric_limits<double>::max());

    for (int pass = 0; pass < passes; ++pass)
        for (std::size_t i = 0; i < makers.size(); ++i)
        {
            const auto candidate = makers[i](blockLength);
            Player player(*candidate, blockLength);
            keepDenormals();
            player.play(noise(), 2 * blocks);

            for (double& quarter : least[i])
            {
                const double start = processorSeconds();
                player.play(silence, blocks);
                quarter = std::min(quarter, processorSeconds() - start);
            }
        }

    std::vector<double> dearest;
    for (const auto& list : least)
        dearest.push_back(1e9 * *std::max_element(list.begin(), list.end()) /
                          (static_cast<double>(blocks) * blockLength));
    return dearest;
}

bool changesNoise(Candidate& candidate, int blockLength)
{
    Player player(candidate, blockLength);
    player.play(noise(), static_cast<int>(2.5 * sampleRate) / blockLength);
    const float* in = noise().data() + player.from - blockLength;
    double sum = 0.0, difference = 0.0;

    for (std::size_t i = 0; i < static_cast<std::size_t>(blockLength); ++i)
    {
        sum += std::abs(static_cast<double>(player.left[i]));
        difference += std::abs(static_cast<double>(player.left[i] - in[i]));
    }

    return std::isfinite(sum) && sum > 1e-6 && difference > 1e-6;
}
} // namespace quorel::peers
