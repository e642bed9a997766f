// SPDX-License-Identifier: GPL-3.0-or-later
// Messages and questions on a screen, and what becomes of them when the instance that they are from goes.
#include "adapters/BoxInteraction.h"
#include "support/TestLoop.h"

#include <gtest/gtest.h>

namespace quorel::test
{

namespace
{
int numWindows()
{
    return juce::Desktop::getInstance().getNumComponents();
}

/** The text in the only window; empty where there is none. */
juce::String windowText()
{
    std::function<juce::String(juce::Component&)> textIn = [&](juce::Component& parent)
    {
        juce::String text;

        for (auto* child : parent.getChildren())
        {
            const auto* editor = dynamic_cast<juce::TextEditor*>(child);
            text += editor != nullptr ? editor->getText() : textIn(*child);
        }

        return text;
    };
    return numWindows() == 1 ? textIn(*juce::Desktop::getInstance().getComponent(0)) : juce::String();
}

bool comesTo(const std::function<bool()>& done)
{
    return pumpUntil(done, 5000);
}
} // namespace

TEST(BoxInteraction, PutsTheMessagesOfAllIntoOneWindowThatGoesWithThem)
{
    auto first = std::make_unique<BoxInteraction>();
    auto second = std::make_unique<BoxInteraction>();
    first->alert({}, "both");
    first->alert("Title", "of the first");
    std::thread([&] { second->alert({}, "both"); }).join();
    EXPECT_TRUE(comesTo([] { return windowText() == "both  (2 times)\nTitle: of the first"; }))
        << windowText();
    EXPECT_EQ(juce::Component::getCurrentlyModalComponent(), nullptr);

    second->alert({}, "later");
    EXPECT_TRUE(comesTo([] { return windowText().endsWith("\nlater"); }));
    first = nullptr;
    EXPECT_EQ(windowText(), "both\nlater");

    for (int i = 0; i < 1000; ++i)
        second->alert({}, "number " + juce::String(i));

    EXPECT_TRUE(comesTo([] { return windowText().endsWith("\n... and 902 more"); })) << windowText();

    dynamic_cast<juce::DocumentWindow&>(*juce::Desktop::getInstance().getComponent(0)).closeButtonPressed();
    EXPECT_TRUE(comesTo([] { return numWindows() == 0; }));
    second->alert({}, "again");
    EXPECT_TRUE(comesTo([] { return windowText() == "again"; })) << windowText();

    // The last one goes with a message on its way.
    second->alert({}, "too late");
    second = nullptr;
    EXPECT_EQ(numWindows(), 0);
    pumpFor(50);
    EXPECT_EQ(numWindows(), 0);
}

TEST(BoxInteraction, ClosesAQuestionWhoseAskerGoes)
{
    using Question = std::function<bool(BoxInteraction&)>;
    const auto folder = juce::File::getSpecialLocation(juce::File::tempDirectory);
    const std::vector<Question> questions{
        [](BoxInteraction& box) { return box.confirm("Sure", "Really?"); },
        [](BoxInteraction& box) { return box.askText("Name", "new name", "old").isNotEmpty(); },
        [&](BoxInteraction& box) { return box.chooseFolder("Folder", folder) != juce::File(); },
        [&](BoxInteraction& box) { return box.chooseFileToOpen("Open", folder, "*.qrl") != juce::File(); },
        [&](BoxInteraction& box) { return box.chooseFileToSave("Save", folder, "*.qrl") != juce::File(); }};

    for (const auto& ask : questions)
    {
        auto box = std::make_unique<BoxInteraction>();
        bool wasOpen = false;
        juce::Timer::callAfterDelay(
            500,
            [&]
            {
                wasOpen = juce::ModalComponentManager::getInstance()->getNumModalComponents() > 0;
                box = nullptr;
            });
        EXPECT_FALSE(ask(*box));
        EXPECT_TRUE(wasOpen);
        EXPECT_EQ(box, nullptr);
        EXPECT_TRUE(comesTo([] { return numWindows() == 0; }));
    }
}

TEST(BoxInteraction, AsksInTheEditorAndGoesWithIt)
{
    auto editor = std::make_unique<juce::Component>();
    editor->setSize(1000, 700);
    editor->addToDesktop(juce::ComponentPeer::windowHasTitleBar);
    editor->setVisible(true);
    BoxInteraction box;
    box.findEditor = [&] { return editor.get(); };

    juce::String seen;
    const auto soon = [](std::function<void()> act) { juce::Timer::callAfterDelay(500, std::move(act)); };
    const auto look = [&](const juce::KeyPress& key)
    {
        auto* window = dynamic_cast<juce::AlertWindow*>(juce::Component::getCurrentlyModalComponent());
        ASSERT_NE(window, nullptr);
        EXPECT_EQ(window->getParentComponent(), editor.get());
        EXPECT_EQ(window->getBounds().getCentre(), editor->getLocalBounds().getCentre());

        for (auto* child : window->getChildren())
            if (const auto* button = dynamic_cast<juce::Button*>(child))
                seen << button->getButtonText() << "|";

        if (auto* field = window->getTextEditor("text"))
            seen << (field->hasKeyboardFocus(true) ? field->getHighlightedText() : "no focus");

        juce::Component::getCurrentlyModalComponent()->keyPressed(key);
    };
    const juce::KeyPress enter(juce::KeyPress::returnKey), escape(juce::KeyPress::escapeKey);
    soon([&] { look(enter); });
    EXPECT_TRUE(box.confirm({}, "Delete preset A. B ?"));
    soon([&] { look(escape); });
    EXPECT_FALSE(box.confirm({}, "preset Harp already exists. Replace ?"));
    soon([&] { look(enter); });
    EXPECT_EQ(box.askText("Rename preset", "Enter new name for: Harp", "Harp"), "Harp");
    EXPECT_EQ(seen, "Delete|Cancel|Replace|Cancel|OK|Cancel|Harp");
    soon([&] { look(escape); });
    EXPECT_EQ(box.askText("Rename preset", "Enter new name for: Harp", "Harp"), "");

    // A host may close the editor under any question.
    soon([&] { editor = nullptr; });
    EXPECT_FALSE(box.confirm({}, "Delete preset Harp ?"));
    EXPECT_EQ(editor, nullptr);
    EXPECT_EQ(juce::ModalComponentManager::getInstance()->getNumModalComponents(), 0);
}

} // namespace quorel::test
