// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ValueFile.h"

#include "platform/FileOperations.h"
#include "platform/FlatXml.h"

namespace quorel
{

namespace
{
constexpr const char* fileTag = "PROPERTIES";
constexpr const char* valueTag = "VALUE";
constexpr const char* nameAttribute = "name";
constexpr const char* valueAttribute = "val";
} // namespace

ValueFile::ValueFile(const juce::File& valueFile, Names names)
    : file(valueFile)
    , values(names == Names::anyCase)
    , broken(file.exists() && file.getSize() > 0 && !read())
{
}

bool ValueFile::read()
{
    juce::MemoryBlock bytes;

    if (!readWholeFile(file, bytes))
        return false;

    const auto xml = parseFlatXml(bytes.toString());

    if (xml == nullptr || !xml->hasTagName(fileTag))
        return false;

    for (const auto* value : xml->getChildWithTagNameIterator(valueTag))
        if (const auto name = value->getStringAttribute(nameAttribute); name.isNotEmpty())
            values.set(name, value->getStringAttribute(valueAttribute));

    return true;
}

juce::Result ValueFile::save() const
{
    juce::XmlElement xml(fileTag);

    for (const auto& name : values.getAllKeys())
    {
        auto* value = xml.createNewChildElement(valueTag);
        value->setAttribute(nameAttribute, name);
        value->setAttribute(valueAttribute, values[name]);
    }

    const auto text = xml.toString();
    return replaceFile(file, juce::MemoryBlock(text.toRawUTF8(), text.getNumBytesAsUTF8()));
}

} // namespace quorel
