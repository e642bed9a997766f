// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FlatXml.h"

#include <string>

namespace quorel
{

namespace
{
constexpr int deepestLevel = 64;
constexpr auto nowhere = std::string::npos;

/** Where the tag ends that begins at `start`: at the first ">" that is in no attribute. */
std::size_t endOfTag(const std::string& text, std::size_t start)
{
    char quote = 0;

    for (auto i = start; i < text.size(); ++i)
    {
        const char c = text[i];

        if (quote != 0)
            quote = c == quote ? char{0} : quote;
        else if (c == '"' || c == '\'')
            quote = c;
        else if (c == '>')
            return i;
    }

    return nowhere;
}

bool isFlat(const std::string& text)
{
    int level = 0;

    for (auto i = text.find('<'); i != nowhere; i = text.find('<', i))
    {
        const auto starts = [&](const char* what)
        { return text.compare(i, std::char_traits<char>::length(what), what) == 0; };

        if (starts("<!--"))
        {
            i = text.find("-->", i);
        }
        else if (starts("<?"))
        {
            i = text.find("?>", i);
        }
        else if (starts("<!"))
        {
            return false;
        }
        else
        {
            const auto end = endOfTag(text, i);

            if (starts("</"))
                --level;
            else if (end != nowhere && text[end - 1] != '/' && ++level > deepestLevel)
                return false;

            i = end;
        }

        if (i == nowhere)
            return false;
    }

    return true;
}
} // namespace

std::unique_ptr<juce::XmlElement> parseFlatXml(const juce::String& text)
{
    return isFlat(text.toStdString()) ? juce::parseXML(text) : nullptr;
}

} // namespace quorel
