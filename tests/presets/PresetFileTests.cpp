// SPDX-License-Identifier: GPL-3.0-or-later
// Names and files: what users type, and what lies on disks.
#include "presets/PresetFiles.h"

#include "platform/FileNames.h"
#include "platform/FileOperations.h"
#include "presets/PresetIndex.h"
#include "presets/PresetNames.h"
#include "support/FileTools.h"
#include "support/OddFiles.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace quorel::test
{

namespace
{
juce::String utf8(const char* text)
{
    return juce::String::fromUTF8(text);
}

/** A preset file that is nothing but its category values. */
void writePreset(const juce::File& file, std::array<float, 6> categories, size_t size = 168)
{
    juce::MemoryBlock bytes(size, true);

    if (size > 144)
        bytes.copyFrom(categories.data(), 144, std::min<size_t>(size - 144, 24));

    ASSERT_TRUE(replaceFile(file, bytes)) << file.getFullPathName();
}

PresetQuery query(const char* text, const CategoryFlags& categories = {}, int folder = -1)
{
    PresetQuery wanted;
    wanted.text = utf8(text);
    wanted.categories = categories;
    wanted.folderIndex = folder;
    return wanted;
}

juce::String namesOf(const PresetIndex& index, const PresetQuery& wanted)
{
    juce::StringArray names;

    for (const int i : index.find(wanted))
        names.add(index.getEntries()[static_cast<size_t>(i)].name);

    return names.joinIntoString("|");
}
} // namespace

TEST(PresetNames, FiltersKeepToTheirRules)
{
    struct Case
    {
        const char* typed;
        const char* preset;
        const char* other;
    };

    constexpr Case cases[] = {
        {"  spaces round  ", "spaces round", "spaces round"},
        {"12.3", "_2_3", "123"},
        {"abcdefghijklmnopqrstuvwxyz1234", "abcdefghijklmnopqrstuvwx", "ghijklmnopqrstuvwxyz1234"},
        // The cut lands on a blank.
        {"123456 bcdefghijklmnopqrstuvwx", "_23456 bcdefghijklmnopqr", "_bcdefghijklmnopqrstuvwx"},
        {"\\/:*?\"<>|'", "_default", "default"},
        {"...", "___", "default"},
        {"~root", "_root", "_root"},
        {"nul", "_nul", "_nul"},
        {"LPT9.x", "LPT9_x", "LPT9x"},
        {"Command", "Command", "Command"},
        {"a\tb\nc\x7f", "abc", "abc"},
        {"\xc3\xa9t\xc3\xa9 \xe6\xb3\xa2 \xf0\x9f\x8e\xb9", "\xc3\xa9t\xc3\xa9 \xe6\xb3\xa2 \xf0\x9f\x8e\xb9",
         "\xc3\xa9t\xc3\xa9 \xe6\xb3\xa2 \xf0\x9f\x8e\xb9"},
    };

    for (const auto& [typed, preset, other] : cases)
    {
        EXPECT_EQ(cleanPresetName(utf8(typed)), utf8(preset)) << typed;
        EXPECT_EQ(cleanTypedName(utf8(typed)), utf8(other)) << typed;
    }

    EXPECT_EQ(cleanPresetName({}), "");
}

TEST(PresetNames, NothingTypedLeavesTheBanksFolder)
{
    const ScratchFolder scratch;
    const auto banks = scratch.child("Banks");
    juce::Random random(31);
    const auto alphabet = utf8("./\\~:* \t\n\x7f"
                               "CONaux1'\xc2\xa0\xe2\x80\xae\xf0\x9f\x8e\xb9");

    for (int round = 0; round < 4000; ++round)
    {
        juce::String typed;

        for (int i = random.nextInt(12); i >= 0; --i)
            typed += alphabet[random.nextInt(alphabet.length())];

        for (const auto& name : {cleanPresetName(typed), cleanTypedName(typed)})
        {
            const auto file = presetFileFor(banks, name, name);
            ASSERT_EQ(file.getParentDirectory().getParentDirectory(), banks) << typed;
            ASSERT_LE(name.length(), longestTypedName + 1);
        }
    }

    for (const char* name : {"", ".", "..", "../x", "/etc", "a/b"})
        EXPECT_EQ(presetFileFor(banks, name, "x"), juce::File()) << name;

    EXPECT_EQ(childNamed(banks, "~root").getParentDirectory(), banks);
    EXPECT_EQ(childNamed({}, "x"), juce::File());
}

TEST(PresetFiles, ListsHoldPresetsAlone)
{
    const ScratchFolder scratch;
    const auto banks = scratch.child("Banks");
    const auto folder = banks.getChildFile("B");
    const juce::StringArray good{"a",   "Z",     ".b", utf8("\xd0\x9f\xd0\xb0\xd0\xb4"), utf8("\xe9\x9f\xb3"),
                                 "x.y", "~tilde"};

    for (const auto& name : good)
        ASSERT_TRUE(replaceFile(childNamed(folder, name + ".qrl"), blockOf("x")));

    for (const char* name : {"upper.QRL", "a.qrl.bak", "qrl", "readme.txt", ".hidden.qrl"})
        ASSERT_TRUE(replaceFile(childNamed(folder, name), blockOf("x")));

    ASSERT_TRUE(folder.getChildFile("folder.qrl").createDirectory());
    ASSERT_TRUE(banks.getChildFile("A").createDirectory());
    ASSERT_TRUE(banks.getChildFile(".Trash-0").createDirectory());
    ASSERT_TRUE(replaceFile(banks.getChildFile("stray.qrl"), blockOf("x")));
    juce::StringArray folders{"A", "B"};
    const bool hasOdd = addOddFiles(folder);

    if (hasOdd)
        folders.add("Self");

    EXPECT_EQ(listPresetFolders(banks).joinIntoString("|"), folders.joinIntoString("|"));
    auto expected = good;
    expected.removeString(".b");
    expected.sort(false);
    EXPECT_EQ(listPresets(folder).joinIntoString("|"), expected.joinIntoString("|"));

    PresetIndex index;
    index.build(banks);
    EXPECT_EQ(index.getEntries().size(), static_cast<size_t>(expected.size()) + (hasOdd ? 1u : 0u));

    for (const auto& name : expected)
    {
        juce::MemoryBlock bytes;
        EXPECT_TRUE(readWholeFile(findPresetFile(banks, "B", name), bytes)) << name;
    }

    for (const char* name : {"A", "upper", "folder", "loop", "pipe", "../B/a"})
        EXPECT_EQ(findPresetFile(banks, "B", name), juce::File()) << name;

    EXPECT_TRUE(listPresetFolders({}).isEmpty());
    EXPECT_TRUE(listPresets(banks.getChildFile("gone")).isEmpty());
}

TEST(PresetFiles, IndexReadsFlagsAndFindsNames)
{
    const ScratchFolder scratch;
    const auto banks = scratch.child("Banks");
    // "Bass" and "Sub Bass" are bits 1 and 2 of the first value, "Dark" bit 0 of the fifth, "Legato" bit 2 of
    // the fourth.
    const auto value = [](int bits) { return (static_cast<float>(bits) + 0.5f) / 4096.0f; };
    const float nan = std::numeric_limits<float>::quiet_NaN();
    writePreset(banks.getChildFile("1/Deep.qrl"), {value(0b110), 0, 0, value(0b100), value(1), 0});
    writePreset(banks.getChildFile("1/BASS one.qrl"), {value(0b010), 0, 0, 0, 0, value(1 << 10)});
    writePreset(banks.getChildFile("2/short bass.qrl"),
                {value(0b010), value(1), value(1), value(0b100), 0, 0}, 150);
    writePreset(banks.getChildFile("2/empty.qrl"), {}, 0);
    writePreset(banks.getChildFile("2/odd.qrl"), {nan, -3.0f, 1e30f, 1.0f, -0.0f, -nan});
    writePreset(banks.getChildFile("2/-- Select Preset --.qrl"), {value(0b110), 0, 0, 0, 0, 0});
    writePreset(banks.getChildFile(utf8("2/\xc3\x89T\xc3\x89 \xce\xa3\xce\x9f \xd0\x9f\xd0\x81\xd0\x94.qrl")),
                {});

    PresetIndex index;
    index.build(banks);
    ASSERT_EQ(index.getEntries().size(), 7u);

    const auto found = [&](const char* text, int folder = -1)
    { return namesOf(index, query(text, {}, folder)); };
    EXPECT_EQ(found("bAsS"), "BASS one|short bass");
    EXPECT_EQ(found("bass", 1), "short bass");
    EXPECT_EQ(index.find({}).size(), 6u) << "the placeholder is no preset";
    EXPECT_EQ(index.find(query("\xc3\xa9t\xc3\xa9 \xcf\x83\xce\xbf \xd0\xbf\xd1\x91\xd0\xb4")).size(), 1u);

    const auto filtered = [&](std::initializer_list<const char*> words)
    {
        CategoryFlags wanted{};

        for (const char* word : words)
            wanted[static_cast<size_t>(*findCategory(word))] = 1;

        return namesOf(index, query("", wanted));
    };
    EXPECT_EQ(filtered({"bass"}), "BASS one|Deep|short bass") << "six bytes of a value are enough for it";
    EXPECT_EQ(filtered({"Dark", "Legato", "Sub Bass"}), "Deep");
    EXPECT_EQ(filtered({"Legato"}), "Deep") << "what a short file lacks is off";
}

TEST(PresetFiles, EveryFlagKeepsToItself)
{
    std::array<float, 6> values{};

    for (const bool on : {true, false})
        for (int flag = 0; flag < numCategories; ++flag)
        {
            auto& value = values[static_cast<size_t>(categoryParameter(flag) - firstCategoryParameter)];
            value = withCategory(value, flag, on);
            const auto flags = unpackCategories(values);

            for (int other = 0; other < numCategories; ++other)
                ASSERT_EQ(flags[static_cast<size_t>(other)] != 0, (other <= flag) == on)
                    << flag << " " << other;
        }

    EXPECT_EQ(unpackCategories({1, 1, 1, 1, 1, 1}), CategoryFlags{})
        << "a full value is the twelfth bit alone";
}

} // namespace quorel::test
