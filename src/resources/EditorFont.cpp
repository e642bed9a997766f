// SPDX-License-Identifier: GPL-3.0-or-later
#include "resources/EditorFont.h"

#include "resources/BuiltInData.h"

#include <array>

namespace quorel
{
namespace
{

/** Both weights. They go with JUCE's own lists of typefaces, before the static data of the library. */
struct EditorTypefaces : private juce::DeletedAtShutdown
{
    EditorTypefaces()
    {
        const auto load = [](BuiltInBytes file)
        { return juce::Typeface::createSystemTypefaceFor(file.data, file.size); };
        typefaces = {load(regularFontFile()), load(boldFontFile())};
    }

    ~EditorTypefaces() override { clearSingletonInstance(); }

    std::array<juce::Typeface::Ptr, 2> typefaces;

    JUCE_DECLARE_SINGLETON(EditorTypefaces, false)
};

JUCE_IMPLEMENT_SINGLETON(EditorTypefaces)

} // namespace

juce::Typeface::Ptr editorTypeface(bool bold)
{
    return EditorTypefaces::getInstance()->typefaces[bold ? 1 : 0];
}

juce::Font editorFont(float height, bool bold)
{
    return juce::Font(editorTypeface(bold)).withHeight(height);
}

} // namespace quorel
