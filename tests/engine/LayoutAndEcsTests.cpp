// SPDX-License-Identifier: GPL-3.0-or-later
// Layouts and controller tables as files, chosen from their menus: what is written, what any file at all
// does, and what the user is told.
#include "PresetCommandRig.h"

#include "engine/EcsMenu.h"
#include "engine/LayoutMenu.h"
#include "parameters/ParameterCodings.h"
#include "presets/LineFiles.h"
#include "support/OddFiles.h"

namespace quorel::test
{

class LineFileTest : public testing::Test
{
protected:
    int mapping(int layer, int easy)
    {
        return decodeParamInt(rig.getLayer(layer, layerSlot::easyMapping + easy));
    }

    int boundTo(int controller) { return decodeParamInt(rig.get(slot::controllerMap + controller)); }

    juce::File layout(const juce::String& name) { return rig.user.scratch.child("data/Layouts/" + name); }

    juce::File ecs(const juce::String& name) { return rig.user.scratch.child("data/ECS/" + name); }

    /** Texts of a menu's rows, with "*" before the ticked one and "-" for a separator. */
    static juce::String rows(const MenuEntries& menu)
    {
        juce::StringArray texts;

        for (const auto& entry : menu)
            texts.add(entry.isSeparator() ? juce::String("-") : (entry.ticked ? "*" : "") + entry.text);

        return texts.joinIntoString("|");
    }

    void layoutCommand(int layer, int id) { chooseLayout(rig.processor, layer, MenuEntry::command(id, {})); }

    void chooseLayoutNamed(int layer, const juce::String& name)
    {
        chooseLayout(rig.processor, layer, rowOf(layoutMenu(rig.processor, layer), name));
    }

    void ecsCommand(int id) { chooseEcs(rig.processor, MenuEntry::command(id, {})); }

    void chooseEcsNamed(const juce::String& name)
    {
        chooseEcs(rig.processor, rowOf(ecsMenu(rig.processor), name));
    }

    juce::String lastQuestion() { return rig.interaction.questions[rig.interaction.questions.size() - 1]; }

    ProcessorRig rig;
};

TEST_F(LineFileTest, LayoutsAreSavedLoadedSharedAndDeleted)
{
    EXPECT_TRUE(layoutMenu(rig.processor, 0).empty());
    layoutCommand(0, lineFileMenuId::save);
    ASSERT_TRUE(rig.load(0, "Hexley-Mini"));
    ASSERT_TRUE(rig.load(1, "Hexley"));

    // The default mapping backwards.
    const auto& defaults = findInstrument("Hexley")->easyMapping;

    for (size_t easy = 0; easy < defaults.size(); ++easy)
        rig.setLayer(0, layerSlot::easyMapping + static_cast<int>(easy), encodeParamInt(defaults[11 - easy]));

    rig.interaction.chosenFile = layout("Mine.hexley");
    rig.processor.getSession().markSaved();
    layoutCommand(0, lineFileMenuId::save);
    EXPECT_EQ(rig.interaction.fileQuestions[0], "Please select preset filename to save...|" +
                                                    layout("Layout.hexley").getFullPathName() + "|*.hexley");
    EXPECT_EQ(layout("Mine.hexley").loadFileAsString(), "95\r93\r92\r91\r73\r71\r70\r69\r64\r78\r62\r61\r");
    EXPECT_TRUE(rig.processor.getSession().isEdited());
    rig.user.scratch.write("data/Layouts/Other.Hexley", "1\r");
    rig.user.scratch.write("data/Layouts/Aside.tarn", "1\r");
    layout("Folder.hexley").createDirectory();
    EXPECT_EQ(rows(layoutMenu(rig.processor, 0)), "Default Layout|Save Layout|Delete Layout|-|*Mine");

    // The sibling of the same short name takes it too, and each Easy value shows its new parameter.
    {
        const InstanceAccess::Use plugin(rig.processor.getLayer(1).instanceAccess());
        plugin->setParameter(71, 0.875f);
    }

    chooseLayoutNamed(1, "Mine");
    EXPECT_EQ(mapping(1, 11), 61);
    EXPECT_NEAR(rig.getLayer(1, layerSlot::easyValue + 5), 0.875f, 1e-3f);
    layoutCommand(1, lineFileMenuId::reset);
    EXPECT_EQ(mapping(1, 11), 95);
    EXPECT_EQ(rig.processor.getLayer(1).layoutName, "");

    // A name without the ending gets it, and an old file of that name is asked about.
    rig.interaction.chosenFile = layout("Mine");
    layoutCommand(1, lineFileMenuId::save);
    EXPECT_EQ(lastQuestion(), "|Mine.hexley already exists. Replace ?");
    EXPECT_TRUE(layout("Mine.hexley").loadFileAsString().startsWith("95\r"));

    // Deleting asks, and a "no" changes nothing. Without a layout in use there is nothing to delete.
    layoutCommand(0, lineFileMenuId::remove);
    EXPECT_EQ(lastQuestion(), "|Delete Layout   Mine.hexley ?");
    EXPECT_TRUE(layout("Mine.hexley").existsAsFile());
    EXPECT_EQ(mapping(0, 0), 95);
    rig.interaction.confirmAnswer = true;
    layoutCommand(1, lineFileMenuId::remove);
    EXPECT_TRUE(layout("Mine.hexley").existsAsFile());
    layoutCommand(0, lineFileMenuId::remove);
    EXPECT_FALSE(layout("Mine.hexley").existsAsFile());
    EXPECT_EQ(mapping(0, 0), 61);
    EXPECT_EQ(rig.processor.getLayer(0).layoutName, "");
    EXPECT_TRUE(layout("").isDirectory());
}

TEST_F(LineFileTest, AnyFileIsTakenAsALayoutWithoutHarm)
{
    ASSERT_TRUE(rig.load(0, "Tarn"));
    const juce::String tooMany = juce::String::repeatedString("7\r", 400);
    const juce::String huge = juce::String::repeatedString("77777777", 20000) + "\r5\r";
    const std::vector<std::pair<juce::String, std::array<int, 3>>> cases{
        {"11\n12\n13", {11, 12, 13}},
        {"11\r\n12\r\n13\r\n", {11, 12, 13}},
        {"", {1, 2, 3}},
        {"9\r", {9, 2, 3}},
        {"nonsense\r\r  14 \r", {0, 0, 14}},
        {"99999999999999999999\r-5\r-99999999999\r", {32767, -5, -32767}},
        {"12abc\r+3\r1e3\r", {12, 0, 1}},
        {tooMany, {7, 7, 7}},
        {huge, {1, 2, 3}}};

    for (const auto& [text, numbers] : cases)
    {
        layoutCommand(0, lineFileMenuId::reset);
        rig.setLayer(0, layerSlot::easyMapping + numEasyParameters, 0.125f);
        rig.user.scratch.write("data/Layouts/Case.tarn", text);
        chooseLayoutNamed(0, "Case");
        EXPECT_EQ((std::array<int, 3>{mapping(0, 0), mapping(0, 1), mapping(0, 2)}), numbers)
            << text.substring(0, 40);
        EXPECT_EQ(rig.getLayer(0, layerSlot::easyMapping + numEasyParameters), 0.125f);
    }

    // Ids that no menu has.
    layoutCommand(0, lineFileMenuId::reset);

    for (const int id : {1000, 0, -3})
        layoutCommand(0, id);

    EXPECT_EQ(mapping(0, 0), 1);
    EXPECT_EQ(rig.processor.getLayer(0).layoutName, "");
}

TEST_F(LineFileTest, MenusLoadTheFileThatWasClicked)
{
    ASSERT_TRUE(rig.load(0, "Tarn"));
    const auto write = [this](const char* file, const char* text)
    { rig.user.scratch.write("data/" + juce::String(file), text); };

    for (const char* file : {"Layouts/D.hexley", "Layouts/C.tarn", "ECS/E.ecs", "ECS/C.ecs", "ECS/D.ecs"})
        write(file, "13\r");

    write("Layouts/B.tarn", "11\r");
    write("ECS/B.ecs", "200\r");
    const auto layouts = layoutMenu(rig.processor, 0);
    const auto tables = ecsMenu(rig.processor);
    EXPECT_EQ(rows(tables), "Clear ECS|Save ECS|Delete ECS|-|B|C|D|E") << "by name";

    // Behind the open menus a file comes before the others, and one goes.
    write("Layouts/A.tarn", "99\r");
    write("ECS/A.ecs", "299\r");
    chooseLayout(rig.processor, 0, rowOf(layouts, "B"));
    chooseEcs(rig.processor, rowOf(tables, "B"));
    EXPECT_EQ(rig.processor.getLayer(0).layoutName, "B.tarn");
    EXPECT_TRUE(rig.interaction.alerts.isEmpty());
    layout("C.tarn").deleteFile();
    ecs("C.ecs").deleteFile();
    chooseLayout(rig.processor, 0, rowOf(layouts, "C"));
    chooseEcs(rig.processor, rowOf(tables, "C"));
    EXPECT_EQ(mapping(0, 0), 11);
    EXPECT_EQ(boundTo(0), 200);
    ASSERT_EQ(rig.interaction.alerts.size(), 2);
    EXPECT_EQ(rig.interaction.alerts[0],
              "|Could not load Layout file: " + layout("C.tarn").getFullPathName() +
                  " (No such file or directory)");
    EXPECT_TRUE(rig.interaction.alerts[1].startsWith("|Could not load ECS file: "));

    // Another instrument has come into the layer.
    ASSERT_TRUE(rig.load(0, "Hexley"));
    const int first = mapping(0, 0);
    chooseLayout(rig.processor, 0, rowOf(layouts, "B"));
    EXPECT_EQ(mapping(0, 0), first);
}

TEST_F(LineFileTest, DeletedFilesGoToTheTrash)
{
    const auto trash = ownTrash();
    ASSERT_TRUE(!trash || trash->createDirectory());
    const auto deleteDesk = [this]
    {
        rig.user.scratch.write("data/ECS/Desk.ecs", "200\r");
        chooseEcsNamed("Desk");
        ecsCommand(lineFileMenuId::remove);
        EXPECT_FALSE(ecs("Desk.ecs").exists());
        EXPECT_EQ(boundTo(0), 0);
    };
    rig.interaction.confirmAnswer = true;
    deleteDesk();
    EXPECT_EQ(rig.interaction.questions.size(), 1);

    // What isn't there, or is none of ours, is told.
    ecsCommand(lineFileMenuId::remove);
    rig.processor.getSession().setEcsName("Gone.ecs");
    ecsCommand(lineFileMenuId::remove);
    EXPECT_EQ(rig.interaction.alerts.joinIntoString("\n"),
              "|No ECS file is in use: there is nothing to delete.\n"
              "|Could not delete ECS file: Gone.ecs (No such file or directory)");

    if (!trash)
        return;

    EXPECT_EQ(trash->getChildFile("files/Desk.ecs").loadFileAsString(), "200\r");
    // Without a trash there is a second question.
    trash->deleteRecursively();
    trash->replaceWithText("no folder");
    deleteDesk();
    EXPECT_EQ(lastQuestion(), "|Desk.ecs can't be moved to the trash. Delete it for good ?");
}

TEST_F(LineFileTest, ControllerTablesAreSavedAndLoaded)
{
    rig.set(slot::controllerMap + 7, encodeParamInt(233));
    rig.set(slot::controllerMap + 127, encodeParamInt(1354));
    rig.interaction.chosenFile = ecs("Desk.ecs");
    ecsCommand(lineFileMenuId::save);
    EXPECT_EQ(rig.interaction.fileQuestions[0],
              "Please select ECS filename to save...|" + ecs("default.ecs").getFullPathName() + "|*.ecs");
    const auto text = ecs("Desk.ecs").loadFileAsString();
    EXPECT_EQ(juce::StringArray::fromTokens(text, "\r", {}).size(), 129);
    EXPECT_TRUE(text.endsWith("\r1354\r"));

    ecsCommand(lineFileMenuId::reset);
    EXPECT_EQ(rig.get(slot::controllerMap + 7), 0.5f);
    EXPECT_EQ(rig.processor.getSession().getEcsName(), "");
    chooseEcsNamed("Desk");
    rig.send(juce::MidiMessage::controllerEvent(1, 7, 127));
    rig.play();
    EXPECT_EQ(rig.get(233), 1.0f) << "a table works at once";

    // Text, huge numbers, and more lines than there are controllers.
    rig.set(slot::controllerMap + numControllers, 0.25f);
    rig.user.scratch.write("data/ECS/Odd.ecs",
                           "x\r99999999999\r-1\r" + juce::String::repeatedString("300\r", 5000));
    chooseEcsNamed("Odd");
    EXPECT_EQ(boundTo(0), 0);
    EXPECT_EQ(boundTo(1), 32767);
    EXPECT_EQ(boundTo(127), 300);
    EXPECT_EQ(rig.get(slot::controllerMap + numControllers), 0.25f);
}

TEST_F(LineFileTest, AWriteThatFailsIsToldAndChangesNothing)
{
    const auto folder = ecs("Folder.ecs");
    folder.createDirectory();
    rig.interaction.chosenFile = folder;
    ecsCommand(lineFileMenuId::save);
    const auto told = rig.interaction.alerts.joinIntoString("#");
    EXPECT_TRUE(told.startsWith("|Could not save ECS file: " + folder.getFullPathName() + " (")) << told;
    EXPECT_EQ(rig.processor.getSession().getEcsName(), "");
    EXPECT_TRUE(folder.isDirectory());
    rig.interaction.chosenFile = juce::File();
    ecsCommand(lineFileMenuId::save);
    EXPECT_EQ(rig.interaction.alerts.size(), 1) << "whoever cancels is told nothing";
}

} // namespace quorel::test
