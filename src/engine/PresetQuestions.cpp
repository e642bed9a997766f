// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/PresetQuestions.h"

#include "engine/PluginProcessor.h"

namespace quorel
{

namespace
{
constexpr const char* filePattern = "*.qrl";

bool isCancel(const juce::String& text)
{
    return text.isEmpty();
}

bool isCancel(bool answer)
{
    return !answer;
}

bool isCancel(const juce::File& file)
{
    return file == juce::File();
}
} // namespace

template <typename Ask>
auto PresetQuestions::ask(Ask&& question)
{
    auto& user = processor.userInteraction();
    const juce::WeakReference<PluginProcessor> alive(&processor);
    const auto preset = processor.getPresetName();
    const auto folder = processor.getFolderName();
    const int revision = processor.getSession().getRevision();
    std::optional<decltype(question(user))> answer = question(user);

    if (alive == nullptr || isCancel(*answer))
        return decltype(answer)();

    if (processor.getPresetName() != preset || processor.getFolderName() != folder ||
        processor.getSession().getRevision() != revision ||
        processor.getSoundChange().awaitedReason() == ChangeReason::project)
    {
        user.alert({}, "Another sound has come in meanwhile. Nothing was done.");
        return decltype(answer)();
    }

    return answer;
}

std::optional<juce::String> PresetQuestions::askName(const juce::String& title, const juce::String& prompt,
                                                     const juce::String& current)
{
    return ask([&](UserInteraction& user) { return user.askText(title, prompt, current); });
}

bool PresetQuestions::confirm(const juce::String& question)
{
    return ask([&](UserInteraction& user) { return user.confirm({}, question); }).has_value();
}

std::optional<juce::File> PresetQuestions::chooseToLoad(const juce::File& start)
{
    return ask([&](UserInteraction& user)
               { return user.chooseFileToOpen("Please select preset to load...", start, filePattern); });
}

std::optional<juce::File> PresetQuestions::chooseToSave(const juce::File& suggested)
{
    return chooseToWrite("Please select preset filename to save...", suggested, filePattern);
}

std::optional<juce::File> PresetQuestions::chooseToWrite(const juce::String& title,
                                                         const juce::File& suggested,
                                                         const juce::String& pattern)
{
    return ask([&](UserInteraction& user) { return user.chooseFileToSave(title, suggested, pattern); });
}

std::optional<juce::File> PresetQuestions::chooseFolder(const juce::String& title, const juce::File& start)
{
    return ask([&](UserInteraction& user) { return user.chooseFolder(title, start); });
}

void PresetQuestions::tell(const juce::String& text)
{
    processor.userInteraction().alert({}, text);
}

bool PresetQuestions::tellFailure(const juce::String& what, const juce::Result& result)
{
    if (result.failed())
        tell(what + " (" + result.getErrorMessage() + ")");

    return result.wasOk();
}

} // namespace quorel
