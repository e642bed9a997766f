// SPDX-License-Identifier: GPL-3.0-or-later
#include "adapters/MessageBoard.h"

#include <algorithm>
#include <functional>
#include <iostream>
#include <numeric>

namespace quorel
{

namespace
{
/** Different texts that are kept; of what comes beyond only the number is. */
constexpr size_t maxNotes = 100;

constexpr int windowWidth = 520;
constexpr int windowHeight = 300;
constexpr int margin = 12;
constexpr int buttonWidth = 96;
constexpr int buttonHeight = 28;

/** The messages and a button that closes them. */
class Page final : public juce::Component
{
public:
    explicit Page(std::function<void()> close)
    {
        messages.setMultiLine(true);
        messages.setReadOnly(true);
        messages.setCaretVisible(false);
        button.onClick = std::move(close);
        button.addShortcut(juce::KeyPress(juce::KeyPress::returnKey));
        button.addShortcut(juce::KeyPress(juce::KeyPress::escapeKey));
        addAndMakeVisible(messages);
        addAndMakeVisible(button);
        setSize(windowWidth, windowHeight);
    }

    void show(const juce::String& text) { messages.setText(text, false); }

    void resized() override
    {
        auto area = getLocalBounds().reduced(margin);
        button.setBounds(
            area.removeFromBottom(buttonHeight).withSizeKeepingCentre(buttonWidth, buttonHeight));
        area.removeFromBottom(margin);
        messages.setBounds(area);
    }

private:
    juce::TextEditor messages;
    juce::TextButton button{"OK"};
};
} // namespace

/** Neither modal nor the taker of anybody's keyboard focus. */
class MessageBoard::Window final : public juce::DocumentWindow
{
public:
    Window(juce::LookAndFeel& look, std::function<void()> close)
        : juce::DocumentWindow("Quorel", look.findColour(juce::ResizableWindow::backgroundColourId),
                               juce::DocumentWindow::closeButton)
        , dismissed(std::move(close))
        , page(dismissed)
    {
        setLookAndFeel(&look);
        setUsingNativeTitleBar(true);
        setContentNonOwned(&page, true);
        setResizable(true, false);
        // A host keeps its plug-ins' windows on top: this one would be opened behind them.
        setAlwaysOnTop(true);
        centreWithSize(getWidth(), getHeight());
        setVisible(true);
    }

    ~Window() override { setLookAndFeel(nullptr); }

    void show(const juce::String& text) { page.show(text); }

    void closeButtonPressed() override { dismissed(); }

private:
    const std::function<void()> dismissed;
    Page page;
};

MessageBoard::MessageBoard()
    : displayed(!juce::Desktop::getInstance().getDisplays().displays.isEmpty())
{
}

MessageBoard::~MessageBoard()
{
    cancelPendingUpdate();
}

void MessageBoard::post(const void* sender, const juce::String& title, const juce::String& text)
{
    const auto whole = title.isEmpty() ? text : title + ": " + text;
    const juce::ScopedLock scope(lock);

    if (!displayed)
    {
        print(whole);
        return;
    }

    note(sender, whole);
    triggerAsyncUpdate();
}

void MessageBoard::print(const juce::String& text)
{
    if (printed.insert(text).second)
        std::cerr << "Quorel: " << text << std::endl;
}

void MessageBoard::note(const void* sender, const juce::String& text)
{
    const auto same =
        std::find_if(notes.begin(), notes.end(), [&](const Note& other) { return other.text == text; });

    if (same == notes.end())
    {
        if (notes.size() < maxNotes)
            notes.push_back({text, {{sender, 1}}});
        else
            ++numMore;

        return;
    }

    auto& senders = same->senders;
    const auto known = std::find_if(senders.begin(), senders.end(),
                                    [&](const auto& entry) { return entry.first == sender; });

    if (known == senders.end())
        senders.emplace_back(sender, 1);
    else
        ++known->second;
}

void MessageBoard::withdraw(const void* sender)
{
    {
        const juce::ScopedLock scope(lock);

        for (auto& entry : notes)
            entry.senders.erase(std::remove_if(entry.senders.begin(), entry.senders.end(),
                                               [&](const auto& item) { return item.first == sender; }),
                                entry.senders.end());

        notes.erase(std::remove_if(notes.begin(), notes.end(),
                                   [](const Note& entry) { return entry.senders.empty(); }),
                    notes.end());
    }

    if (window != nullptr)
        handleAsyncUpdate();
}

void MessageBoard::dismiss()
{
    {
        const juce::ScopedLock scope(lock);
        notes.clear();
        numMore = 0;
    }

    // Later: it is the window's own button that asks.
    triggerAsyncUpdate();
}

juce::String MessageBoard::wholeText() const
{
    juce::StringArray lines;

    for (const auto& entry : notes)
    {
        const int times = std::accumulate(entry.senders.begin(), entry.senders.end(), 0,
                                          [](int sum, const auto& item) { return sum + item.second; });
        lines.add(times == 1 ? entry.text : entry.text + "  (" + juce::String(times) + " times)");
    }

    if (numMore > 0)
        lines.add("... and " + juce::String(numMore) + " more");

    return lines.joinIntoString("\n");
}

void MessageBoard::handleAsyncUpdate()
{
    juce::String text;
    {
        const juce::ScopedLock scope(lock);

        if (notes.empty())
            numMore = 0;

        text = wholeText();
    }

    if (text.isEmpty())
    {
        window = nullptr;
        return;
    }

    if (window == nullptr)
        window = std::make_unique<Window>(look, [this] { dismiss(); });

    window->show(text);
}

} // namespace quorel
