// SPDX-License-Identifier: GPL-3.0-or-later
// The preset manager under mouse and keyboard, on real files and a real processor.
#include "EditorRig.h"

#include "platform/FileNames.h"
#include "presets/PresetFiles.h"
#include "presets/PresetNames.h"
#include "presets/PresetNotes.h"
#include "presets/StateChunk.h"
#include "ui/EditorColours.h"
#include "ui/Geometry.h"
#include "ui/PresetManagerPage.h"

#include <gtest/gtest.h>

namespace quorel::test
{

namespace
{
constexpr int ctrl = juce::ModifierKeys::ctrlModifier;

/** The page where the editor has it. */
class Surroundings : public juce::Component
{
public:
    explicit Surroundings(EditorRig& editorRig)
        : rig(editorRig)
        , page(rig.processor, rig.host, rig.images)
    {
        setSize(geometry::width, geometry::height);
        page.setBounds(getLocalBounds());
        page.refresh();
        addAndMakeVisible(page);
        rig.host.onRefresh = [this] { page.refresh(); };
    }

    void paint(juce::Graphics& g) override { rig.images.pages[2].paint(g, getLocalBounds().toFloat()); }

    EditorRig& rig;
    PresetManagerPage page;
};

class PresetManagerTest : public testing::Test
{
protected:
    PresetManagerTest()
    {
        for (int i = 0; i < 200; ++i)
            addPreset("Alpha", "A" + juce::String(i).paddedLeft('0', 3), i % 2 == 0 ? 2 : 6);

        addPreset("Beta", "Warm Bass", 2);
        addPreset("Beta", "warm pad", 0);

        for (int i = 0; i < 60; ++i)
            childNamed(banks, "Folder " + juce::String(i).paddedLeft('0', 2)).createDirectory();

        rig.processor.setNames("A000", "Alpha");
        surroundings = std::make_unique<Surroundings>(rig);
        window = std::make_unique<TestWindow>(*surroundings);
    }

    ~PresetManagerTest() override
    {
        window = nullptr;
        surroundings = nullptr;
    }

    /** A preset with these bits of the first category parameter. */
    void addPreset(const juce::String& folder, const juce::String& name, int bits)
    {
        StateChunk chunk;
        chunk.parameters.assign(numHostParameters, 0.5f);
        chunk.parameters[firstCategoryParameter] = (static_cast<float>(bits) + 0.5f) / 4096.0f;

        for (int i = 1; i < numCategoryParameters; ++i)
            chunk.parameters[static_cast<size_t>(firstCategoryParameter + i)] = 0.0f;

        juce::MemoryBlock bytes;
        writeStateChunk(chunk, bytes);
        const auto file = presetFileFor(banks, folder, name);
        file.getParentDirectory().createDirectory();
        file.replaceWithData(bytes.getData(), bytes.getSize());
    }

    PresetManagerPage& page() { return surroundings->page; }

    template <typename Type>
    Type& shown()
    {
        Type* found = nullptr;

        for (auto* child : page().getChildren())
            if (auto* match = dynamic_cast<Type*>(child); match != nullptr && match->isVisible())
                found = match;

        EXPECT_NE(found, nullptr);
        return *found;
    }

    juce::Component& titled(const juce::String& title)
    {
        if (auto* found = window->findTitled(title); found != nullptr && found->isVisible())
            return *found;

        ADD_FAILURE() << "no " << title;
        return page();
    }

    void clickTitled(const char* title)
    {
        window->click(titled(title));
        TestWindow::pump(60);
    }

    void waitForPreset()
    {
        EXPECT_TRUE(
            rig.engine.playUntil([this] { return !rig.processor.getSoundChange().isUnderWay(); }, 30000));
        page().refresh();
    }

    void clickEntry(RowGrid& grid, int index, int keys = 0)
    {
        ASSERT_FALSE(grid.boundsOf(index).isEmpty()) << index << " is out of view";
        window->click(grid, grid.boundsOf(index).getCentre(), TestWindow::leftButton + keys);
        TestWindow::pump(30);
    }

    /** The ink of the text there; a single pixel of it may have none of that colour. */
    static bool hasInk(RowGrid& grid, juce::Rectangle<int> area, juce::Colour ink)
    {
        for (const auto& text : TestWindow::texts(grid))
            if (text.ink == ink && area.toFloat().contains(text.area.getCentre()))
                return true;

        return false;
    }

    static bool hasColour(const juce::Image& picture, juce::Rectangle<int> area, juce::Colour colour)
    {
        for (int y = area.getY(); y < area.getBottom(); ++y)
            for (int x = area.getX(); x < area.getRight(); ++x)
                if (picture.getPixelAt(x, y) == colour)
                    return true;

        return false;
    }

    juce::String names() { return rig.processor.getFolderName() + "/" + rig.processor.getPresetName(); }

    EditorRig rig;
    const juce::File banks = rig.engine.user.banksFolder();
    PresetLibrary& library = rig.processor.getPresetLibrary();
    std::unique_ptr<Surroundings> surroundings;
    std::unique_ptr<TestWindow> window;
};

} // namespace

TEST_F(PresetManagerTest, ClicksChooseAndSelect)
{
    auto& grid = shown<tarnPresetManager>();
    // Column by column, 38 rows of 15 pixels, 180 pixels apart.
    window->click(grid, {180 + 20, 15 * 3 + 7});
    TestWindow::pump(30);
    EXPECT_EQ(names(), "Alpha/A041");
    clickEntry(grid, 6);
    EXPECT_EQ(names(), "Alpha/A006") << "while another is on its way";
    waitForPreset();
    window->click(grid, grid.boundsOf(7).getCentre(), TestWindow::rightButton);
    EXPECT_EQ(window->menuTexts()[0], "favourite");
    EXPECT_TRUE(window->chooseFromMenu("favourite"));
    EXPECT_TRUE(library.marks.get({"Alpha", "A007"}).favourite);
    EXPECT_EQ(names(), "Alpha/A006");
    EXPECT_TRUE(library.getSelectedPresets().isEmpty());

    clickEntry(grid, 10, TestWindow::shift);
    EXPECT_TRUE(hasInk(grid, grid.boundsOf(10), colours::brightText));
    clickEntry(grid, 8, TestWindow::shift);
    clickEntry(grid, 60, ctrl);
    clickEntry(grid, 9, ctrl);
    EXPECT_EQ(library.getSelectedPresets(), (juce::Array<int>{10, 8, 60}));
    EXPECT_EQ(names(), "Alpha/A006");
    clickEntry(grid, 8);
    EXPECT_TRUE(library.getSelectedPresets().isEmpty());
    EXPECT_EQ(names(), "Alpha/A008");
    waitForPreset();
    EXPECT_TRUE(rig.interaction.alerts.isEmpty());

    auto& folders = shown<tarnBankManager>();
    clickEntry(folders, 2);
    EXPECT_EQ(names(), "Beta/Warm Bass");
    waitForPreset();
    window->click(grid, {20, 15 * 20});
    EXPECT_EQ(names(), "Beta/Warm Bass") << "there is no entry";
}

TEST_F(PresetManagerTest, BarWheelAndKeysScrollLongLists)
{
    auto& grid = shown<tarnPresetManager>();
    EXPECT_EQ(grid.firstVisible(), 0);
    juce::ScrollBar* bar = nullptr;

    for (auto* child : grid.getChildren())
        bar = dynamic_cast<juce::ScrollBar*>(child);

    ASSERT_TRUE(bar != nullptr && bar->isShowing());
    // 200 presets are five columns and ten.
    window->click(*bar, {bar->getWidth() - 2, 10}, TestWindow::rightButton);
    EXPECT_EQ(grid.firstVisible(), 0);
    window->click(*bar, {bar->getWidth() - 2, 10});
    EXPECT_EQ(grid.firstVisible(), 5 * 38);
    window->wheel(grid, {100, 100}, 0.25f);
    EXPECT_EQ(grid.firstVisible(), 4 * 38);
    window->drag(*bar, {bar->getWidth() - 10, 10}, {-3, 10});
    EXPECT_EQ(grid.firstVisible(), 0);
    window->wheel(grid, {100, 100}, -0.25f);
    EXPECT_EQ(grid.firstVisible(), 38);
    window->click(grid, {20, 7});
    EXPECT_EQ(names(), "Alpha/A038");
    waitForPreset();

    grid.grabKeyboardFocus();
    window->key(juce::KeyPress(juce::KeyPress::endKey));
    EXPECT_FALSE(grid.boundsOf(199).isEmpty());
    int repaints = 0;
    grid.setCachedComponentImage(new RepaintCount(repaints));
    repaints = 0;
    window->key(juce::KeyPress(juce::KeyPress::leftKey));
    EXPECT_GT(repaints, 0);
    grid.setCachedComponentImage(nullptr);
    const auto frame = grid.boundsOf(198).getBottomLeft().translated(0, -1);
    EXPECT_EQ(TestWindow::picture(grid).getPixelAt(frame.x, frame.y), colours::amber);
    window->key(juce::KeyPress(juce::KeyPress::spaceKey));
    EXPECT_EQ(library.getSelectedPresets(), (juce::Array<int>{198}));
    window->key(juce::KeyPress(juce::KeyPress::returnKey));
    EXPECT_EQ(names(), "Alpha/A198");
    waitForPreset();

    auto& folders = shown<tarnBankManager>();
    EXPECT_TRUE(folders.boundsOf(62).isEmpty());

    window->wheel(folders, {100, 100}, -0.25f);
    EXPECT_EQ(folders.firstVisible(), 3);

    for (int i = 0; i < 12; ++i)
        window->wheel(folders, {100, 100}, -0.25f);

    EXPECT_FALSE(folders.boundsOf(62).isEmpty());
    clickEntry(folders, 62);
    EXPECT_EQ(names(), "Folder 59/A198") << "an empty folder loads nothing";
    EXPECT_EQ(grid.firstVisible(), 0);
}

TEST_F(PresetManagerTest, SearchFollowsWhatIsTyped)
{
    clickEntry(shown<tarnPresetManager>(), 3, ctrl);
    EXPECT_EQ(library.getSelectedPresets(), (juce::Array<int>{3}));
    clickTitled("Search by name");
    EXPECT_TRUE(library.getSelectedPresets().isEmpty()) << "positions mean nothing in another list";
    EXPECT_EQ(page().getMode(), PresetManagerPage::searchByText);
    auto& grid = shown<tarnPresetManager>();
    EXPECT_EQ(library.getFilteredCount(), 203) << "an empty text finds all";
    window->click(titled("Search text"));

    for (const char letter : {'W', 'a', 'r', 'M'})
        window->key(juce::KeyPress(letter, {}, static_cast<juce::juce_wchar>(letter)));

    EXPECT_EQ(library.getFilteredCount(), 2) << "while it is typed";
    window->key(juce::KeyPress(juce::KeyPress::returnKey));
    TestWindow::pump(30);
    EXPECT_EQ(library.getSearchText(), "WarM");
    EXPECT_EQ(library.getFilteredCount(), 2);
    // Rows begin 35 pixels lower here.
    window->click(grid, {20, 35 + 15 + 7});
    EXPECT_EQ(names(), "Beta/warm pad");
    waitForPreset();

    auto& folders = shown<tarnBankManager>();
    clickEntry(folders, 1);
    EXPECT_EQ(library.getFilteredCount(), 0) << "none of that name in Alpha";
    EXPECT_EQ(grid.getAccessibilityHandler()->getValueInterface()->getCurrentValueAsString(),
              "No preset found in Alpha");
    EXPECT_TRUE(hasInk(grid, {5, 35, 170, 15}, colours::brightText));
    EXPECT_EQ(names(), "Beta/warm pad");
    clickEntry(folders, 1);
    EXPECT_EQ(library.getFilteredCount(), 2);
    // Categories and text count together, in both modes.
    clickTitled("Search by category");
    window->click(shown<CategoryManager>(), CategoryManager::wordBounds(0, 1).getCentre());
    TestWindow::pump(60);
    EXPECT_EQ(library.getFilteredCount(), 1);
    window->click(titled("Search text"));
    window->key(juce::KeyPress(juce::KeyPress::backspaceKey));

    for (const char letter : {'a', '1'})
        window->key(juce::KeyPress(letter, {}, static_cast<juce::juce_wchar>(letter)));

    EXPECT_EQ(library.getFilteredCount(), 100) << "all of A1..";
    window->key(juce::KeyPress(juce::KeyPress::escapeKey));
    clickTitled("Search by name");
    EXPECT_EQ(library.getFilteredCount(), 1);
    clickTitled("Only: Bass");
    EXPECT_EQ(library.getFilteredCount(), 2);
    clickTitled("Browse");
    EXPECT_EQ(library.getCurrentPresetIndex(), 1);
}

TEST_F(PresetManagerTest, MarksAndNotesAreSetAndShown)
{
    auto& marks = titled("Favourite and rating");
    const auto click = [&](int sign)
    {
        window->click(marks, PresetMarkRow::signBounds(sign).getCentre());
        TestWindow::pump(60);
    };
    const PresetPlace current{"Alpha", "A000"};
    click(4);
    click(0);
    EXPECT_EQ(library.marks.get(current).rating, 4);
    EXPECT_TRUE(library.marks.get(current).favourite);
    auto& grid = shown<tarnPresetManager>();
    auto signs = grid.boundsOf(0);
    EXPECT_TRUE(hasColour(TestWindow::picture(grid), signs.removeFromRight(50), colours::amber));
    EXPECT_FALSE(hasColour(TestWindow::picture(grid), grid.boundsOf(1), colours::amber));
    click(4);
    EXPECT_EQ(library.marks.get(current).rating, 0) << "a second click takes it off";

    window->click(titled("author"));

    for (const char letter : {'M', 'e'})
        window->key(juce::KeyPress(letter, {}, static_cast<juce::juce_wchar>(letter)));

    window->key(juce::KeyPress(juce::KeyPress::returnKey));
    TestWindow::pump(60);
    juce::MemoryBlock bytes;
    presetFileFor(banks, current.folder, current.name).loadFileAsData(bytes);
    EXPECT_EQ(readPresetNotes(bytes).author, "Me");
    EXPECT_EQ(readPresetNotes(bytes).comment, "");

    window->click(titled("Show: all"));
    EXPECT_TRUE(window->chooseFromMenu("favourites"));
    TestWindow::pump(60);
    EXPECT_EQ(page().getMode(), PresetManagerPage::searchByText);
    ASSERT_EQ(library.getFilteredCount(), 1);
    const auto box = grid.boundsOf(0);
    EXPECT_TRUE(hasColour(TestWindow::picture(grid, 2.0f), {box.getCentreX() * 2, box.getY() * 2, 120, 30},
                          juce::Colours::grey))
        << "its folder";
    clickTitled("Browse");
    window->click(titled("Sort: name"));
    EXPECT_TRUE(window->chooseFromMenu("date"));
    TestWindow::pump(60);
    EXPECT_EQ(library.getPresetNames()[0], "A000") << "changed last";
    EXPECT_TRUE(titled("Sort: date").isVisible());
}

TEST_F(PresetManagerTest, WordsFilterAndEdit)
{
    clickTitled("Search by category");
    auto& words = shown<CategoryManager>();
    EXPECT_EQ(library.getFilteredCount(), 203);
    window->click(words, CategoryManager::wordBounds(0, 1).getCentre());
    TestWindow::pump(30);
    EXPECT_EQ(library.getFilteredCount(), 201) << "Bass";
    window->click(words, CategoryManager::wordBounds(0, 2).getCentre());
    window->click(words, CategoryManager::wordBounds(4, 0).getCentre(), TestWindow::rightButton);
    TestWindow::pump(30);
    EXPECT_EQ(library.getFilteredCount(), 100) << "and Sub Bass";
    clickEntry(words.getGrid(), 2);
    EXPECT_EQ(names(), "Alpha/A005");
    window->click(words, CategoryManager::wordBounds(0, 2).getCentre());
    EXPECT_EQ(library.getFilteredCount(), 201) << "while a preset is on its way";
    waitForPreset();
    EXPECT_EQ(rig.get(10), 6.5f / 4096.0f);
    clickTitled("Clear categories");
    EXPECT_EQ(library.getFilteredCount(), 203);
    EXPECT_EQ(rig.get(10), 6.5f / 4096.0f);

    clickTitled("Edit categories");
    // The second word of each column, by its name.
    const std::pair<int, const char*> columns[] = {
        {0, "Bass"}, {1, "Chord"}, {2, "XY Live"}, {3, "Long Rel"}, {4, "Bright"}};

    for (const auto& [column, name] : columns)
    {
        const int flag = *findCategory(name);
        const bool before = hasCategory(rig.get(categoryParameter(flag)), flag);
        window->click(words, CategoryManager::wordBounds(column, 1).getCentre());
        EXPECT_EQ(hasCategory(rig.get(categoryParameter(flag)), flag), !before) << name;
    }

    EXPECT_TRUE(rig.processor.getSession().isEdited());
    clickEntry(words.getGrid(), 3, ctrl);
    const float value = rig.get(10);
    window->click(words, CategoryManager::wordBounds(0, 1).getCentre());
    EXPECT_EQ(rig.interaction.questions.joinIntoString("#"), "|Take Bass off preset A003 ?");
    EXPECT_EQ(rig.get(10), value);
    library.clearSelection();
    words.grabKeyboardFocus();
    int repaints = 0;
    words.setCachedComponentImage(new RepaintCount(repaints));
    repaints = 0;
    window->key(juce::KeyPress(juce::KeyPress::rightKey));
    EXPECT_GT(repaints, 0);
    words.setCachedComponentImage(nullptr);
    const int bass = *findCategory("Bass");
    const bool before = hasCategory(rig.get(10), bass);
    window->key(juce::KeyPress(juce::KeyPress::spaceKey));
    EXPECT_EQ(hasCategory(rig.get(10), bass), !before) << "the second word of the first column";
    EXPECT_EQ(words.getAccessibilityHandler()->getValueInterface()->getCurrentValueAsString(),
              before ? "Bass off" : "Bass on");
    clickTitled("Clear categories");

    for (int i = 0; i < numCategoryParameters; ++i)
        EXPECT_EQ(rig.get(firstCategoryParameter + i), 0.0f);
}

TEST_F(PresetManagerTest, CommandsStandWhereTheirModeHasThem)
{
    const auto visibleTitles = [this]
    {
        juce::StringArray titles;

        for (auto* child : page().getChildren())
            if (child->isVisible() && dynamic_cast<myButton*>(child) != nullptr)
                titles.add(child->getTitle());

        return titles.joinIntoString(",");
    };
    const juce::String presets =
        "new preset,rename preset,delete preset,copy preset,paste preset,load preset,"
        "save preset,save preset as,";
    const juce::String folders = "new folder,rename folder,delete folder,more for selected presets";
    const char* modes[] = {"Browse", "Search by name", "Search by category", "Edit categories"};

    for (int mode = 0; mode < 4; ++mode)
    {
        clickTitled(modes[mode]);
        EXPECT_EQ(visibleTitles(), (mode == 0 || mode == 3 ? presets : juce::String()) + folders) << mode;
    }

    clickTitled("Browse");
    rig.interaction.typedText = "Mine";
    clickTitled("new folder");
    EXPECT_EQ(names(), "Mine/A000");
    clickTitled("new preset");
    EXPECT_EQ(names(), "Mine/Mine");
    rig.interaction.typedText = "Other";
    clickTitled("rename preset");
    clickTitled("copy preset");
    clickTitled("paste preset");
    EXPECT_EQ(listPresets(childNamed(banks, "Mine")).joinIntoString("|"), "Other|Other_copy");
    EXPECT_EQ(names(), "Mine/Other_copy");
    waitForPreset();
    rig.interaction.confirmAnswer = true;
    clickTitled("delete preset");
    waitForPreset();
    EXPECT_EQ(names(), "Mine/Other");
    clickTitled("delete folder");
    EXPECT_EQ(names(), "99 Default Preset/Default Preset");
    EXPECT_FALSE(childNamed(banks, "Mine").exists());
    rig.interaction.chosenFile = presetFileFor(banks, "Beta", "Saved");
    clickTitled("save preset as");
    EXPECT_EQ(names(), "Beta/Saved");
    EXPECT_EQ(library.getPresetCount(), 3);
}

} // namespace quorel::test
