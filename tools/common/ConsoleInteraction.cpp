// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConsoleInteraction.h"

#include <iostream>

namespace quorel
{

ConsoleInteraction::ConsoleInteraction(const juce::String& toolName)
    : tool(toolName)
{
}

void ConsoleInteraction::alert(const juce::String& title, const juce::String& text)
{
    auto words = juce::StringArray::fromTokens(text, "\r\n", "");
    words.removeEmptyStrings();
    juce::ignoreUnused(title);
    std::cerr << tool << ": " << words.joinIntoString(" ") << std::endl;
    ++alerts;
}

bool ConsoleInteraction::confirm(const juce::String&, const juce::String&)
{
    return false;
}

juce::String ConsoleInteraction::askText(const juce::String&, const juce::String&, const juce::String&)
{
    return {};
}

juce::File ConsoleInteraction::chooseFolder(const juce::String&, const juce::File&)
{
    return {};
}

juce::File ConsoleInteraction::chooseFileToOpen(const juce::String&, const juce::File&, const juce::String&)
{
    return {};
}

juce::File ConsoleInteraction::chooseFileToSave(const juce::String&, const juce::File&, const juce::String&)
{
    return {};
}

void ConsoleInteraction::progress(const juce::String&, const juce::String&)
{
}

} // namespace quorel
