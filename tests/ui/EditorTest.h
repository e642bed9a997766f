// SPDX-License-Identifier: GPL-3.0-or-later
// The whole editor in a real window on a real processor.
#pragma once

#include "EditorRig.h"

#include "ui/PluginEditor.h"

namespace quorel::test
{

class EditorTest : public testing::Test
{
protected:
    static constexpr int viewParameter = 2;
    static constexpr float layersView = 0.0f;
    static constexpr float fxView = 0.1f;
    static constexpr float managerView = 0.2f;
    static constexpr float multiView = 0.3f;

    ~EditorTest() override { close(); }

    /** Opens the editor on a page, in a window. */
    void open(float view = layersView)
    {
        close();
        engine.set(viewParameter, view);
        editor = std::make_unique<PluginEditor>(engine.processor);
        window = std::make_unique<TestWindow>(*editor);
        passes();
    }

    void close()
    {
        window = nullptr;
        editor = nullptr;
    }

    /** Waits for the editor's passes that follow a change, of which the slowest comes every 100 ms. */
    static void passes() { TestWindow::pump(200); }

    SubhostView& view() { return editor->getView(); }

    VirtualInstrument& layer(int i) { return engine.processor.getLayer(i); }

    /** Calls `visit` for all parts, at any depth, that are shown. */
    template <typename Visit>
    static void walk(juce::Component& parent, Visit&& visit)
    {
        for (auto* child : parent.getChildren())
            if (child->isShowing())
            {
                visit(*child);
                walk(*child, visit);
            }
    }

    template <typename Type>
    Type& titled(const juce::String& title)
    {
        return window->titled<Type>(title);
    }

    juce::Button& button(const juce::String& title) { return titled<juce::Button>(title); }

    juce::ComboBox& menu(const juce::String& title) { return titled<juce::ComboBox>(title); }

    juce::String labelText(const juce::String& name)
    {
        const auto* label = dynamic_cast<juce::Label*>(window->find(name));
        return label != nullptr ? label->getText() : juce::String("no such label");
    }

    /** Waits until the preset that was asked for plays. */
    bool finishLoad()
    {
        constexpr int patienceMillis = 30000;
        return engine.playUntil([this] { return !engine.processor.getSoundChange().isUnderWay(); },
                                patienceMillis);
    }

    ProcessorRig engine;
    std::unique_ptr<PluginEditor> editor;
    std::unique_ptr<TestWindow> window;
};

} // namespace quorel::test
