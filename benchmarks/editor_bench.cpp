// SPDX-License-Identifier: GPL-3.0-or-later
// Cost of the editor, in a real window: opening, turning pages, following the processor, painting, idling.
#include "resources/CBitmap.h"
#include "support/ProcessorRig.h"
#include "ui/Geometry.h"
#include "ui/PluginEditor.h"

#include <benchmark/benchmark.h>
#include <ctime>
#include <memory>

namespace juce
{
/** Of JUCE's message loop, which offers polling alone to whoever wants to leave it again. */
bool dispatchNextMessageOnSystemQueue(bool returnIfNoPendingMessages);
} // namespace juce

namespace
{
using namespace quorel;
using quorel::test::ProcessorRig;

/** An editor on the display. */
class OpenEditor
{
public:
    explicit OpenEditor(ProcessorRig& rig)
        : editor(rig.processor)
    {
        editor.addToDesktop(juce::ComponentPeer::windowHasTitleBar);
        editor.setVisible(true);
        paint();
    }

    /** Paints all of it, as a window that was covered has to. */
    void paint()
    {
        const juce::Graphics::ScopedSaveState state(graphics);
        editor.paintEntireComponent(graphics, true);
    }

    SubhostView& view() { return editor.getView(); }

    PluginEditor editor;

private:
    juce::Image picture{juce::Image::RGB, geometry::width, geometry::height, false};
    juce::Graphics graphics{picture};
};

bool hasDisplay(benchmark::State& state)
{
    if (!juce::Desktop::getInstance().getDisplays().displays.isEmpty())
        return true;

    state.SkipWithError("no display: run it with tests/ui/with-display.sh");
    return false;
}

void setUpLayers(ProcessorRig& rig)
{
    constexpr const char* instruments[] = {"Orlen", "Tarn", "Hexley2", "Dorvik"};

    for (int layer = 0; layer < numLayers; ++layer)
        rig.load(layer, instruments[layer]);

    rig.set(slot::view, 0.0f);
}

/** From the host's call to the first picture, with four instruments. Cold: no image has been decoded. */
void openEditor(benchmark::State& state)
{
    if (!hasDisplay(state))
        return;

    const bool warm = state.range(0) != 0;
    ProcessorRig rig;
    setUpLayers(rig);
    std::unique_ptr<juce::SharedResourcePointer<ImageStore>> images;

    if (warm)
    {
        images = std::make_unique<juce::SharedResourcePointer<ImageStore>>();
        const OpenEditor first(rig);
    }

    for (auto _ : state)
    {
        auto editor = std::make_unique<OpenEditor>(rig);
        state.PauseTiming();
        editor = nullptr;
        rig.pump(5);
        state.ResumeTiming();
    }
}

/** Turning to a page and painting it. The page was seen before. */
void turnPage(benchmark::State& state)
{
    if (!hasDisplay(state))
        return;

    ProcessorRig rig;
    setUpLayers(rig);
    OpenEditor open(rig);
    const auto page = static_cast<int>(state.range(0));

    for (auto _ : state)
    {
        rig.set(slot::view, viewOf(static_cast<Page>(page)));
        open.view().fullRefresh();
        open.paint();
        state.PauseTiming();
        rig.set(slot::view, viewOf(static_cast<Page>((page + 1) % numPages)));
        open.view().fullRefresh();
        open.paint();
        state.ResumeTiming();
    }
}

/** One pass of 50 milliseconds with nothing changed, or with every flag set. */
void followProcessor(benchmark::State& state)
{
    if (!hasDisplay(state))
        return;

    ProcessorRig rig;
    setUpLayers(rig);
    OpenEditor open(rig);
    open.view().followProcessor();
    auto& table = rig.processor.getParameterTable();
    const bool all = state.range(0) != 0;

    for (auto _ : state)
    {
        if (all)
            for (int parameter = 1; parameter < numHostParameters; ++parameter)
                table.markDirty(parameter);

        open.view().followProcessor();
    }
}

/** Painting one knob at one or two pixels to a layout pixel. */
void paintKnob(benchmark::State& state)
{
    if (!hasDisplay(state))
        return;

    ProcessorRig rig;
    setUpLayers(rig);
    OpenEditor open(rig);
    const auto scale = static_cast<int>(state.range(0));
    const auto volume = juce::String(layerParameter(0, layerSlot::volume));
    juce::Component* knob = nullptr;

    std::function<void(juce::Component&)> find = [&](juce::Component& parent)
    {
        for (auto* child : parent.getChildren())
        {
            if (child->getComponentID() == volume)
                knob = child;

            find(*child);
        }
    };
    find(open.view());
    juce::Image image(juce::Image::ARGB, knob->getWidth() * scale, knob->getHeight() * scale, true);

    for (auto _ : state)
    {
        juce::Graphics g(image);
        g.addTransform(juce::AffineTransform::scale(static_cast<float>(scale)));
        knob->paintEntireComponent(g, true);
        benchmark::ClobberMemory();
    }
}

/** What the images of all pages hold, at one or two pixels to a layout pixel. */
void imageMemory(benchmark::State& state)
{
    if (!hasDisplay(state))
        return;

    ProcessorRig rig;
    setUpLayers(rig);
    const juce::SharedResourcePointer<ImageStore> images;
    const auto scale = static_cast<float>(state.range(0));
    OpenEditor open(rig);

    for (auto _ : state)
    {
        for (int page = 0; page < 4; ++page)
        {
            rig.set(slot::view, viewOf(static_cast<Page>(page)));
            open.view().fullRefresh();
            benchmark::DoNotOptimize(
                open.editor.createComponentSnapshot(open.editor.getLocalBounds(), true, scale));
        }
    }

    state.counters["megabytes"] = static_cast<double>(images->numBytes()) / 1e6;
}

/** Blocks of silence at their time, as a host plays them. */
class RunningAudio : private juce::Thread
{
public:
    explicit RunningAudio(ProcessorRig& processorRig)
        : juce::Thread("blocks")
        , rig(processorRig)
    {
        startThread();
    }

    ~RunningAudio() override { stopThread(1000); }

    /** Processor time of the blocks so far. */
    double seconds() const { return spent.load(); }

private:
    void run() override
    {
        while (!threadShouldExit())
        {
            rig.play();
            timespec time{};
            clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
            spent = static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
            wait(5);
        }
    }

    ProcessorRig& rig;
    std::atomic<double> spent{0.0};
};

/** Processor time without that of the blocks, in percent of a core, over some seconds in which messages are waited for,
    not polled. */
double percentOfCore(const RunningAudio& audio)
{
    constexpr double milliseconds = 8000.0;
    const auto seconds = [&] { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC - audio.seconds(); };
    const double start = seconds();
    const double end = juce::Time::getMillisecondCounterHiRes() + milliseconds;

    while (juce::Time::getMillisecondCounterHiRes() < end)
        juce::dispatchNextMessageOnSystemQueue(false);

    return 100.0 * (seconds() - start) / (milliseconds / 1000.0);
}

/** Share of a core that an open editor takes while silence is played, at 100 or 200 percent: what the process takes
    with it, less what it takes without. */
void idleEditor(benchmark::State& state)
{
    if (!hasDisplay(state))
        return;

    ProcessorRig rig;
    setUpLayers(rig);
    const RunningAudio audio(rig);
    const double without = percentOfCore(audio);
    OpenEditor open(rig);
    open.view().setScalePercent(static_cast<int>(state.range(0)));
    rig.pump(1000);

    for (auto _ : state)
        state.counters["percent"] = percentOfCore(audio) - without;
}

BENCHMARK(openEditor)->ArgName("warm")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(turnPage)->ArgName("page")->DenseRange(0, 3)->Unit(benchmark::kMillisecond);
BENCHMARK(followProcessor)->ArgName("allFlags")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);
BENCHMARK(paintKnob)->ArgName("scale")->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);
BENCHMARK(imageMemory)->ArgName("scale")->Arg(1)->Arg(2)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(idleEditor)->ArgName("scale")->Arg(100)->Arg(200)->Iterations(1)->Unit(benchmark::kMillisecond);
} // namespace
