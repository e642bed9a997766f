// SPDX-License-Identifier: GPL-3.0-or-later
#include "adapters/BoxInteraction.h"

namespace quorel
{

namespace
{
constexpr int declined = 0;
constexpr int accepted = 1;

/** What a question comes to. A box may tell after its asker has left, hence shared with it. */
template <typename Result>
struct Answer
{
    bool given = false;
    Result result{};
};

/** Runs messages until the question is answered. False if its asker goes before that, or the message thread is
    to end: a host that opens an editor or a further instance waits for that. */
template <typename Result>
bool waitFor(const Answer<Result>& answer, const std::atomic<bool>& askerIsHere)
{
    constexpr int roundMillis = 20;

    while (!answer.given && askerIsHere.load() && !juce::Thread::currentThreadShouldExit())
        if (!juce::MessageManager::getInstance()->runDispatchLoopUntil(roundMillis))
            return false;

    return answer.given && askerIsHere.load();
}
} // namespace

BoxInteraction::~BoxInteraction()
{
    here->store(false);
    board->withdraw(this);
}

void BoxInteraction::alert(const juce::String& title, const juce::String& text)
{
    board->post(this, title, text);
}

bool BoxInteraction::canAsk() const
{
    return board->hasDisplay() && juce::MessageManager::existsAndIsCurrentThread();
}

// From here on nothing touches this object once the messages have run: it may be gone.

bool BoxInteraction::ask(juce::AlertWindow& window)
{
    const auto asker = here;
    const auto answer = std::make_shared<Answer<int>>();
    constexpr bool deleteWhenDismissed = false;
    window.enterModalState(true,
                           juce::ModalCallbackFunction::create(
                               [answer](int result)
                               {
                                   answer->result = result;
                                   answer->given = true;
                               }),
                           deleteWhenDismissed);
    return waitFor(*answer, *asker) && answer->result == accepted;
}

juce::File BoxInteraction::choose(juce::FileChooser& chooser, int flags)
{
    const auto asker = here;
    const auto answer = std::make_shared<Answer<juce::File>>();
    chooser.launchAsync(flags,
                        [answer](const juce::FileChooser& chosen)
                        {
                            answer->result = chosen.getResult();
                            answer->given = true;
                        });
    return waitFor(*answer, *asker) ? answer->result : juce::File();
}

bool BoxInteraction::confirm(const juce::String& title, const juce::String& text)
{
    if (!canAsk())
    {
        alert(title, text + " No");
        return false;
    }

    juce::AlertWindow window(title, text, juce::MessageBoxIconType::QuestionIcon);
    window.addButton("Yes", accepted, juce::KeyPress(juce::KeyPress::returnKey));
    window.addButton("No", declined, juce::KeyPress(juce::KeyPress::escapeKey));
    return ask(window);
}

juce::String BoxInteraction::askText(const juce::String& title, const juce::String& prompt,
                                     const juce::String& current)
{
    if (!canAsk())
        return {};

    juce::AlertWindow window(title, {}, juce::MessageBoxIconType::NoIcon);
    window.addTextEditor("text", current, prompt);
    window.addButton("OK", accepted, juce::KeyPress(juce::KeyPress::returnKey));
    window.addButton("Cancel", declined, juce::KeyPress(juce::KeyPress::escapeKey));
    return ask(window) ? window.getTextEditorContents("text") : juce::String();
}

juce::File BoxInteraction::chooseFolder(const juce::String& title, const juce::File& start)
{
    if (!canAsk())
        return {};

    juce::FileChooser chooser(title, start);
    return choose(chooser,
                  juce::FileBrowserComponent::openMode | juce::FileBrowserComponent::canSelectDirectories);
}

juce::File BoxInteraction::chooseFileToOpen(const juce::String& title, const juce::File& start,
                                            const juce::String& pattern)
{
    if (!canAsk())
        return {};

    juce::FileChooser chooser(title, start, pattern);
    return choose(chooser, juce::FileBrowserComponent::openMode | juce::FileBrowserComponent::canSelectFiles);
}

juce::File BoxInteraction::chooseFileToSave(const juce::String& title, const juce::File& suggested,
                                            const juce::String& pattern)
{
    if (!canAsk())
        return {};

    juce::FileChooser chooser(title, suggested, pattern);
    return choose(chooser, juce::FileBrowserComponent::saveMode | juce::FileBrowserComponent::canSelectFiles |
                               juce::FileBrowserComponent::warnAboutOverwriting);
}

void BoxInteraction::progress(const juce::String& title, const juce::String& text)
{
    if (text.isEmpty() || !board->hasDisplay())
    {
        progressWindow = nullptr;
        return;
    }

    if (progressWindow == nullptr)
    {
        progressWindow = std::make_unique<juce::AlertWindow>(title, text, juce::MessageBoxIconType::NoIcon);
        progressWindow->setVisible(true);
    }

    progressWindow->setMessage(text);

    // A scan holds the message thread: paint now, or the window stays empty until it is over.
    if (auto* peer = progressWindow->getPeer())
        peer->performAnyPendingRepaintsNow();
}

} // namespace quorel
