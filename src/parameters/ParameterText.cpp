// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameters/ParameterText.h"

#include "parameters/ParameterCodings.h"

#include <string>

namespace quorel
{

void writeParamText(ParameterAccess& parameters, int first, const juce::String& text, int count)
{
    for (int i = 0; i < count; ++i)
        parameters.writeParameter(first + i, 0.0f);

    const std::string bytes = text.toStdString();

    for (int i = 0; i < count - 1 && i < static_cast<int>(bytes.size()); ++i)
        parameters.writeParameter(first + i, encodeParamChar(bytes[static_cast<size_t>(i)]));
}

juce::String readParamText(const ParameterAccess& parameters, int first, int count)
{
    juce::String text;

    for (int i = 0; i <= count; ++i)
    {
        const char character = decodeParamChar(parameters.readParameter(first + i));

        if (character == 0)
            break;

        // A damaged chunk may have brought in any byte: each counts as one Latin-1 character.
        text +=
            juce::String::charToString(static_cast<juce::juce_wchar>(static_cast<unsigned char>(character)));
    }

    return text;
}

} // namespace quorel
