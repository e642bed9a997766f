// SPDX-License-Identifier: GPL-3.0-or-later
#include "Synth.h"

#include <algorithm>

namespace quorel
{

constexpr float bendRange = 2.0f;    // semitones
constexpr float vibratoRate = 5.4f;  // Hz
constexpr float vibratoRange = 0.5f; // semitones each way

std::unique_ptr<VoiceEngine> makeEngine(EngineKind kind, int voicing)
{
    switch (kind)
    {
    case EngineKind::fm:
        return makeFmEngine(voicing);
    case EngineKind::string:
        return makeStringEngine(voicing);
    case EngineKind::modal:
        return makeModalEngine(voicing);
    case EngineKind::organ:
        return makeOrganEngine(voicing);
    case EngineKind::drums:
        return makeDrumEngine(voicing);
    case EngineKind::analogue:
        break;
    }
    return makeAnalogueEngine(voicing);
}

Synth::Synth(EngineKind engineKind, int voicing, float level)
    : kind(engineKind)
    , engine(makeEngine(engineKind, voicing))
    , specs(parameterSpecs(engineKind))
    , trim(level)
{
    prepare(44100.0);
}

void Synth::prepare(double rate)
{
    const auto hz = static_cast<float>(std::max(rate, 1000.0));
    controls.rate = hz;
    smoothShare = 1.0f - std::exp(-static_cast<float>(controlInterval) / (0.012f * hz));
    fadeStep = 1.0f / (0.005f * hz);
    residueFactor = std::exp(-1.0f / (0.002f * hz));
    engine->prepare(hz);
    reset();
}

void Synth::reset()
{
    slots.fill(Slot{});
    residueLeft = residueRight = 0.0f;
    vibratoPhase = tremoloPhase = 0.0;
    resetControllers();
    jumpNext = true;
    untilControl = 0;
}

void Synth::resetControllers()
{
    bend = wheel = 0.0f;
    setPedal(false);
}

void Synth::setTargets(const std::array<float, numLiveParameters>& normalised)
{
    targets = normalised;
}

void Synth::handleMidi(std::uint8_t status, std::uint8_t data1, std::uint8_t data2)
{
    const int first = data1 & 0x7f;
    const int second = data2 & 0x7f;
    switch (status & 0xf0)
    {
    case 0x80:
        noteOff(first);
        break;
    case 0x90:
        second > 0 ? noteOn(first, second) : noteOff(first);
        break;
    case 0xe0:
        bend = std::min(1.0f, static_cast<float>(first + 128 * second - 8192) / 8191.0f);
        break;
    case 0xb0:
        if (first == 1)
            wheel = static_cast<float>(second) / 127.0f;
        else if (first == 64)
            setPedal(second >= 64);
        else if (first == 120)
            fadeAll();
        else if (first == 121)
            resetControllers();
        else if (first >= 123)
            releaseAll();
        break;
    default:
        break;
    }
}

void Synth::noteOn(int note, int velocity)
{
    bool sounding = false;
    for (auto& slot : slots)
    {
        if (slot.active && !slot.fading && engine->cutsOff(note, slot.note))
            slot.fading = true;
        sounding = sounding || slot.active;
    }
    if (!sounding)
    {
        jumpNext = true;
        updateControls();
    }
    const int index = takeSlot();
    auto& slot = slots[static_cast<std::size_t>(index)];
    slot = Slot{};
    slot.note = note;
    slot.age = ++noteCount;
    NoteStart start;
    start.note = note;
    start.velocity = static_cast<float>(velocity) / 127.0f;
    start.seed = static_cast<std::uint32_t>(noteCount * 2654435761u) | 1u;
    slot.active = slot.keyDown = engine->start(index, start, controls);
}

int Synth::takeSlot()
{
    int sounding = 0;
    Slot* oldest = nullptr;
    Slot* unused = nullptr;
    Slot* mostFaded = nullptr;
    for (auto& slot : slots)
    {
        if (!slot.active)
        {
            unused = &slot;
            continue;
        }
        if (slot.fading)
        {
            if (mostFaded == nullptr || slot.fade < mostFaded->fade)
                mostFaded = &slot;
            continue;
        }
        ++sounding;
        const bool free = !slot.keyDown;
        const bool oldestFree = oldest != nullptr && !oldest->keyDown;
        if (oldest == nullptr || (free && !oldestFree) || (free == oldestFree && slot.age < oldest->age))
            oldest = &slot;
    }
    if (sounding >= polyphony && oldest != nullptr)
        oldest->fading = true;
    if (unused != nullptr)
        return static_cast<int>(unused - slots.data());
    // All spare voices are still fading: the faintest is cut, and its last value dies away on its own.
    auto& cut = mostFaded != nullptr ? *mostFaded : slots.front();
    residueLeft += cut.lastLeft;
    residueRight += cut.lastRight;
    return static_cast<int>(&cut - slots.data());
}

void Synth::noteOff(int note)
{
    for (std::size_t i = 0; i < slots.size(); ++i)
    {
        auto& slot = slots[i];
        if (!slot.active || !slot.keyDown || slot.note != note)
            continue;
        slot.keyDown = false;
        slot.pedalHeld = pedal;
        if (!pedal)
            engine->release(static_cast<int>(i));
    }
}

void Synth::setPedal(bool down)
{
    pedal = down;
    for (std::size_t i = 0; i < slots.size() && !down; ++i)
    {
        if (slots[i].active && slots[i].pedalHeld)
            engine->release(static_cast<int>(i));
        slots[i].pedalHeld = false;
    }
}

void Synth::releaseAll()
{
    for (std::size_t i = 0; i < slots.size(); ++i)
    {
        if (slots[i].active)
            engine->release(static_cast<int>(i));
        slots[i].keyDown = slots[i].pedalHeld = false;
    }
}

void Synth::fadeAll()
{
    for (auto& slot : slots)
        slot.fading = slot.active;
}

void Synth::updateControls()
{
    const float share = jumpNext ? 1.0f : smoothShare;
    controls.changed = false;
    for (std::size_t i = 0; i < targets.size(); ++i)
    {
        const float difference = targets[i] - smoothed[i];
        if (difference == 0.0f && !jumpNext)
            continue;
        smoothed[i] = std::abs(difference) < 1.0e-4f ? targets[i] : smoothed[i] + difference * share;
        controls.value[i] = physicalValue(specs[i], smoothed[i]);
        controls.changed = true;
    }
    smoothedBend += (bend - smoothedBend) * share;
    smoothedWheel += (wheel - smoothedWheel) * share;
    if (std::abs(smoothedWheel) < 1.0e-5f)
        smoothedWheel = 0.0f;
    controls.modWheel = smoothedWheel;

    const auto turn = [this](double& phase, float hz)
    {
        phase += static_cast<double>(hz) * controlInterval / static_cast<double>(controls.rate);
        phase -= std::floor(phase);
        return static_cast<float>(phase);
    };
    float depth = kind == EngineKind::drums ? 0.0f : smoothedWheel;
    if (const int index = vibratoParameter(kind); index >= 0)
        depth += controls.value[static_cast<std::size_t>(index)];
    const float vibrato = vibratoRange * depth * sineOfTurns(turn(vibratoPhase, vibratoRate));
    controls.pitchRatio = std::exp2((bendRange * smoothedBend + vibrato) / 12.0f);
    if (const int index = tremoloRateParameter(kind); index >= 0)
    {
        const float phase = turn(tremoloPhase, controls.value[static_cast<std::size_t>(index)]);
        controls.tremolo = sineOfTurns(phase);
        controls.tremoloSide = sineOfTurns(phase + 0.25f);
    }
    const float gain = controls.value[volumeParameter] / 0.8f;
    const float target = trim * gain * gain;
    jumpNext ? volume.jump(target) : volume.aim(target);
    jumpNext = false;
}

void Synth::render(float* left, float* right, int n)
{
    while (n > 0)
    {
        if (untilControl == 0)
        {
            updateControls();
            for (std::size_t i = 0; i < slots.size(); ++i)
            {
                if (slots[i].active)
                    engine->control(static_cast<int>(i), controls);
            }
            untilControl = controlInterval;
        }
        const int length = std::min(n, untilControl);
        renderSegment(left, right, length);
        left += length;
        right += length;
        n -= length;
        untilControl -= length;
    }
}

void Synth::renderSegment(float* left, float* right, int n)
{
    // Voices end only on the control grid; otherwise their last faint samples would depend on the block size.
    const bool controlDue = n == untilControl;
    float sumLeft[controlInterval]{}, sumRight[controlInterval]{};
    float voiceLeft[controlInterval], voiceRight[controlInterval];
    for (std::size_t i = 0; i < slots.size(); ++i)
    {
        auto& slot = slots[i];
        if (!slot.active)
            continue;
        const bool alive = engine->render(static_cast<int>(i), voiceLeft, voiceRight, n);
        for (int s = 0; s < n; ++s)
        {
            if (slot.fading)
                slot.fade = std::max(0.0f, slot.fade - fadeStep);
            sumLeft[s] += voiceLeft[s] * slot.fade;
            sumRight[s] += voiceRight[s] * slot.fade;
        }
        slot.lastLeft = voiceLeft[n - 1] * slot.fade;
        slot.lastRight = voiceRight[n - 1] * slot.fade;
        slot.active = (alive || !controlDue) && slot.fade > 0.0f;
    }
    for (int s = 0; s < n; ++s)
    {
        residueLeft *= residueFactor;
        residueRight *= residueFactor;
        const float gain = volume.next();
        left[s] += gain * (sumLeft[s] + residueLeft);
        right[s] += gain * (sumRight[s] + residueRight);
    }
    if (std::abs(residueLeft) + std::abs(residueRight) < 1.0e-9f)
        residueLeft = residueRight = 0.0f;
}

} // namespace quorel
