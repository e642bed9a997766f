// SPDX-License-Identifier: GPL-3.0-or-later
// Layouts and controller tables as files, chosen from their menus: what is written, what any file at all
// does, and what the user is told.
#include "engine/EcsMenu.h"
#include "engine/LayoutMenu.h"
#include "parameters/IntegerLines.h"
#include "parameters/ParameterCodings.h"
#include "presets/LineFiles.h"
#include "support/OddFiles.h"
#include "support/ProcessorRig.h"

#include <gtest/gtest.h>

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

    static MenuEntry rowOf(const MenuEntries& menu, const juce::String& text)
    {
        for (const auto& entry : menu)
            if (entry.text == text)
                return entry;

        ADD_FAILURE() << "no row " << text;
        return {};
    }

    static MenuEntry command(int id) { return MenuEntry::command(id, {}); }

    ProcessorRig rig;
};

TEST_F(LineFileTest, LayoutsAreSavedLoadedSharedAndDeleted)
{
    EXPECT_TRUE(layoutMenu(rig.processor, 0).empty());
    chooseLayout(rig.processor, 0, command(lineFileMenuId::save));
    ASSERT_TRUE(rig.load(0, "Hexley-Mini"));
    ASSERT_TRUE(rig.load(1, "Hexley"));
    ASSERT_TRUE(rig.load(2, "Tarn"));
    EXPECT_EQ(rows(layoutMenu(rig.processor, 0)), "Default Layout|Save Layout|Delete Layout");

    // The default mapping backwards.
    const auto& defaults = findInstrument("Hexley")->easyMapping;

    for (size_t easy = 0; easy < defaults.size(); ++easy)
        rig.setLayer(0, layerSlot::easyMapping + static_cast<int>(easy), encodeParamInt(defaults[11 - easy]));

    rig.interaction.chosenFile = layout("Mine.hexley");
    rig.processor.getSession().markSaved();
    chooseLayout(rig.processor, 0, command(lineFileMenuId::save));
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

    chooseLayout(rig.processor, 1, rowOf(layoutMenu(rig.processor, 1), "Mine"));
    EXPECT_EQ(mapping(1, 11), 61);
    EXPECT_NEAR(rig.getLayer(1, layerSlot::easyValue + 5), 0.875f, 1e-3f);
    EXPECT_EQ(rig.processor.getLayer(1).layoutName, "Mine.hexley");
    chooseLayout(rig.processor, 1, command(lineFileMenuId::reset));
    EXPECT_EQ(mapping(1, 11), 95);
    EXPECT_EQ(rig.processor.getLayer(1).layoutName, "");

    // A name without the ending gets it, and an old file of that name is asked about.
    rig.interaction.chosenFile = layout("Mine");
    chooseLayout(rig.processor, 1, command(lineFileMenuId::save));
    EXPECT_EQ(rig.interaction.questions[0], "|Mine.hexley already exists. Replace ?");
    EXPECT_EQ(mapping(0, 0), 95);
    EXPECT_TRUE(layout("Mine.hexley").loadFileAsString().startsWith("95\r"));

    // Deleting asks, and a "no" changes nothing.
    chooseLayout(rig.processor, 0, command(lineFileMenuId::remove));
    EXPECT_EQ(rig.interaction.questions[1], "|Delete Layout   Mine.hexley ?");
    EXPECT_TRUE(layout("Mine.hexley").existsAsFile());
    EXPECT_EQ(mapping(0, 0), 95);
    EXPECT_EQ(rig.processor.getLayer(0).layoutName, "Mine.hexley");
    rig.interaction.confirmAnswer = true;
    // Without a layout in use there is nothing to delete.
    chooseLayout(rig.processor, 1, command(lineFileMenuId::remove));
    EXPECT_EQ(rig.interaction.questions[2], "|Delete Layout    ?");
    EXPECT_TRUE(layout("Mine.hexley").existsAsFile());
    chooseLayout(rig.processor, 0, command(lineFileMenuId::remove));
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

    struct Case
    {
        juce::String text;
        int first, second, third;
    };

    const std::vector<Case> cases{{"11\r12\r13\r", 11, 12, 13},
                                  {"11\n12\n13", 11, 12, 13},
                                  {"11\r\n12\r\n13\r\n", 11, 12, 13},
                                  {"", 1, 2, 3},
                                  {"9\r", 9, 2, 3},
                                  {"nonsense\r\r  14 \r", 0, 0, 14},
                                  {"99999999999999999999\r-5\r-99999999999\r", 32767, -5, -32767},
                                  {"12abc\r+3\r1e3\r", 12, 0, 1},
                                  {tooMany, 7, 7, 7},
                                  {huge, 1, 2, 3}};

    for (const auto& [text, first, second, third] : cases)
    {
        SCOPED_TRACE(text.substring(0, 40));
        chooseLayout(rig.processor, 0, command(lineFileMenuId::reset));
        rig.setLayer(0, layerSlot::easyMapping + numEasyParameters, 0.125f);
        rig.user.scratch.write("data/Layouts/Case.tarn", text);
        chooseLayout(rig.processor, 0, rowOf(layoutMenu(rig.processor, 0), "Case"));
        EXPECT_EQ(mapping(0, 0), first);
        EXPECT_EQ(mapping(0, 1), second);
        EXPECT_EQ(mapping(0, 2), third);
        EXPECT_EQ(rig.getLayer(0, layerSlot::easyMapping + numEasyParameters), 0.125f);
    }

    // Ids that no menu has.
    chooseLayout(rig.processor, 0, command(lineFileMenuId::reset));

    for (const int id : {1000, 0, -3})
        chooseLayout(rig.processor, 0, command(id));

    EXPECT_EQ(mapping(0, 0), 1);
    EXPECT_EQ(rig.processor.getLayer(0).layoutName, "");
}

TEST_F(LineFileTest, MenusLoadTheFileThatWasClicked)
{
    ASSERT_TRUE(rig.load(0, "Tarn"));
    const std::pair<const char*, const char*> files[] = {
        {"B.tarn", "11\r"}, {"C.tarn", "12\r"}, {"D.hexley", "13\r"}};

    for (const auto& [name, text] : files)
        rig.user.scratch.write("data/Layouts/" + juce::String(name), text);

    rig.user.scratch.write("data/ECS/B.ecs", "200\r");
    rig.user.scratch.write("data/ECS/C.ecs", "201\r");
    const auto layouts = layoutMenu(rig.processor, 0);
    const auto tables = ecsMenu(rig.processor);

    // Behind the open menus a file comes before the others, and one goes.
    rig.user.scratch.write("data/Layouts/A.tarn", "99\r");
    rig.user.scratch.write("data/ECS/A.ecs", "299\r");
    chooseLayout(rig.processor, 0, rowOf(layouts, "B"));
    chooseEcs(rig.processor, rowOf(tables, "B"));
    EXPECT_EQ(mapping(0, 0), 11);
    EXPECT_EQ(boundTo(0), 200);
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
        chooseEcs(rig.processor, rowOf(ecsMenu(rig.processor), "Desk"));
        chooseEcs(rig.processor, command(lineFileMenuId::remove));
        EXPECT_FALSE(ecs("Desk.ecs").exists());
    };
    rig.interaction.confirmAnswer = true;
    deleteDesk();
    EXPECT_EQ(rig.interaction.questions.size(), 1);

    // What isn't there, or is none of ours, is told.
    chooseEcs(rig.processor, command(lineFileMenuId::remove));
    rig.processor.getSession().setEcsName("Gone.ecs");
    chooseEcs(rig.processor, command(lineFileMenuId::remove));
    EXPECT_EQ(rig.interaction.alerts.joinIntoString("\n"),
              "|No ECS file is in use: there is nothing to delete.\n"
              "|Could not delete ECS file: Gone.ecs (No such file or directory)");

    if (!trash)
        return;

    EXPECT_EQ(trash->getChildFile("files/Desk.ecs").loadFileAsString(), "200\r");
    // Without a trash there is a second question.
    trash->deleteRecursively();
    deleteDesk();
    EXPECT_EQ(rig.interaction.questions[rig.interaction.questions.size() - 1],
              "|Desk.ecs can't be moved to the trash. Delete it for good ?");
}

TEST_F(LineFileTest, ControllerTablesAreSavedLoadedAndDeleted)
{
    rig.set(slot::controllerMap + 7, encodeParamInt(233));
    rig.set(slot::controllerMap + 127, encodeParamInt(1354));
    EXPECT_EQ(rows(ecsMenu(rig.processor)), "Clear ECS|Save ECS|Delete ECS");
    rig.interaction.chosenFile = ecs("Desk.ecs");
    chooseEcs(rig.processor, command(lineFileMenuId::save));
    EXPECT_EQ(rig.interaction.fileQuestions[0],
              "Please select ECS filename to save...|" + ecs("default.ecs").getFullPathName() + "|*.ecs");
    EXPECT_EQ(rows(ecsMenu(rig.processor)), "Clear ECS|Save ECS|Delete ECS|-|*Desk");
    const auto text = ecs("Desk.ecs").loadFileAsString();
    EXPECT_EQ(juce::StringArray::fromTokens(text, "\r", {}).size(), 129);
    EXPECT_TRUE(text.endsWith("\r1354\r"));

    chooseEcs(rig.processor, command(lineFileMenuId::reset));
    EXPECT_EQ(rig.get(slot::controllerMap + 7), 0.5f);
    EXPECT_EQ(rig.processor.getSession().getEcsName(), "");
    chooseEcs(rig.processor, rowOf(ecsMenu(rig.processor), "Desk"));
    EXPECT_EQ(boundTo(7), 233);
    rig.send(juce::MidiMessage::controllerEvent(1, 7, 127));
    rig.play();
    EXPECT_EQ(rig.get(233), 1.0f) << "a table works at once";

    // Text, huge numbers, and more lines than there are controllers.
    rig.set(slot::controllerMap + numControllers, 0.25f);
    rig.user.scratch.write("data/ECS/Odd.ecs",
                           "x\r99999999999\r-1\r" + juce::String::repeatedString("300\r", 5000));
    chooseEcs(rig.processor, rowOf(ecsMenu(rig.processor), "Odd"));
    EXPECT_EQ(boundTo(0), 0);
    EXPECT_EQ(boundTo(1), 32767);
    EXPECT_EQ(boundTo(127), 300);
    EXPECT_EQ(rig.get(slot::controllerMap + numControllers), 0.25f);

    chooseEcs(rig.processor, command(lineFileMenuId::remove));
    EXPECT_EQ(rig.interaction.questions[0], "|Delete ECS   Odd.ecs ?");
    EXPECT_TRUE(ecs("Odd.ecs").existsAsFile());
    EXPECT_EQ(boundTo(127), 300);
    EXPECT_EQ(rig.processor.getSession().getEcsName(), "Odd.ecs");
    rig.interaction.confirmAnswer = true;
    chooseEcs(rig.processor, command(lineFileMenuId::remove));
    EXPECT_FALSE(ecs("Odd.ecs").existsAsFile());
    EXPECT_EQ(boundTo(127), 0);
    chooseEcs(rig.processor, command(lineFileMenuId::remove));
    EXPECT_EQ(rows(ecsMenu(rig.processor)), "Clear ECS|Save ECS|Delete ECS|-|Desk");
}

TEST_F(LineFileTest, FilesAreListedByName)
{
    for (const char* name : {"e", "b", "d", "a", "c"})
        rig.user.scratch.write("data/ECS/" + juce::String(name) + ".ecs", "1\r");

    EXPECT_EQ(rows(ecsMenu(rig.processor)), "Clear ECS|Save ECS|Delete ECS|-|a|b|c|d|e");
}

TEST_F(LineFileTest, AWriteThatFailsIsToldAndChangesNothing)
{
    ASSERT_TRUE(rig.load(0, "Tarn"));
    const auto blocked = rig.user.scratch.write("data/file", "in the way").getChildFile("below.ecs");
    const auto folder = ecs("Folder.ecs");
    folder.createDirectory();

    for (const auto& target : {blocked, folder})
    {
        rig.interaction.alerts.clear();
        rig.interaction.chosenFile = target;
        chooseEcs(rig.processor, command(lineFileMenuId::save));
        ASSERT_EQ(rig.interaction.alerts.size(), 1);
        EXPECT_TRUE(rig.interaction.alerts[0].startsWith(
            "|Could not save ECS file: " + target.getFullPathName() + " ("))
            << rig.interaction.alerts[0];
        EXPECT_EQ(rig.processor.getSession().getEcsName(), "");
    }

    EXPECT_TRUE(folder.isDirectory());
    rig.interaction.chosenFile = juce::File();
    chooseEcs(rig.processor, command(lineFileMenuId::save));
    chooseLayout(rig.processor, 0, command(lineFileMenuId::save));
    EXPECT_EQ(rig.interaction.alerts.size(), 1) << "whoever cancels is told nothing";
    EXPECT_EQ(rig.processor.getLayer(0).layoutName, "");
}

} // namespace quorel::test
