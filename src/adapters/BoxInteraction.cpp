// SPDX-License-Identifier: GPL-3.0-or-later
#include "adapters/BoxInteraction.h"

#include "ui/DialogLook.h"
#include "ui/EditorKeyboard.h"
#include "ui/EditorLook.h"

#include <optional>

namespace quorel
{

namespace
{
constexpr int declined = 0;
constexpr int accepted = 1;

/** What the button says that does what a question asks. */
juce::String actionIn(const juce::String& question)
{
    const auto firstWord = [](const juce::String& text)
    { return text.trimStart().upToFirstOccurrenceOf(" ", false, false); };
    const juce::StringArray beginnings{"Delete", "Import", "Take", "Give", "Untie"};

    // Names may hold full stops.
    if (const auto first = firstWord(question); beginnings.contains(first))
        return first;

    return firstWord(question.contains(". ") ? question.fromLastOccurrenceOf(". ", false, false) : question);
}
} // namespace

//==============================================================================================================

/** Where a box is shown: in the editor where there is one, else on the desktop. Boxes come and go while it lives. */
class BoxInteraction::Stage
{
public:
    explicit Stage(const BoxInteraction& asker)
        : askerIsHere(asker.here)
        , editor(asker.findEditor())
        , inEditor(editor != nullptr)
    {
    }

    ~Stage()
    {
        if (editor != nullptr)
            EditorKeyboard::leave(*editor);
    }

    juce::Component* parent() const { return editor.getComponent(); }

    juce::LookAndFeel& editorLook() { return look.get(); }

    /** In the middle. */
    void place(juce::Component& box) const
    {
        if (editor == nullptr)
            return;

        editor->addChildComponent(box);
        box.setCentrePosition(editor->getLocalBounds().getCentre());
        box.setVisible(true);
    }

    /** Shows a box until it is answered. 0 if the asker or the editor goes before that, or the message thread is to
        end: a host that opens an editor or a further instance waits for that. */
    int ask(juce::Component& box, juce::Component* firstToType) const
    {
        place(box);
        // The box may tell after its asker has left.
        const auto answer = std::make_shared<std::optional<int>>();
        constexpr bool deleteWhenDismissed = false;
        box.enterModalState(true,
                            juce::ModalCallbackFunction::create([answer](int result) { *answer = result; }),
                            deleteWhenDismissed);

        if (firstToType != nullptr)
            firstToType->grabKeyboardFocus();

        constexpr int roundMillis = 20;

        while (!answer->has_value() && mayStay())
            if (!juce::MessageManager::getInstance()->runDispatchLoopUntil(roundMillis))
                return declined;

        return mayStay() ? answer->value_or(declined) : declined;
    }

private:
    bool mayStay() const
    {
        return askerIsHere->load() && (!inEditor || editor != nullptr) &&
               !juce::Thread::currentThreadShouldExit();
    }

    const std::shared_ptr<std::atomic<bool>> askerIsHere;
    EditorLook look;
    const juce::Component::SafePointer<juce::Component> editor;
    const bool inEditor;
};

/** What is shown of long work. */
struct BoxInteraction::Progress
{
    Progress(const BoxInteraction& owner, const juce::String& title, const juce::String& text)
        : stage(owner)
        , window(title, text, juce::MessageBoxIconType::NoIcon)
    {
        window.setLookAndFeel(&stage.editorLook());
        stage.place(window);
        window.setVisible(true);
    }

    ~Progress() { window.setLookAndFeel(nullptr); }

    Stage stage;
    juce::AlertWindow window;
};

//==============================================================================================================

BoxInteraction::BoxInteraction() = default;

BoxInteraction::~BoxInteraction()
{
    here->store(false);
    board->withdraw(this);
}

void BoxInteraction::alert(const juce::String& title, const juce::String& text)
{
    board->post(this, title, text);
}

bool BoxInteraction::canAsk() const
{
    return board->hasDisplay() && juce::MessageManager::existsAndIsCurrentThread();
}

// From here on nothing touches this object once the messages have run: it may be gone.

bool BoxInteraction::confirm(const juce::String& title, const juce::String& text)
{
    if (!canAsk())
    {
        alert(title, text + " No");
        return false;
    }

    Stage stage(*this);
    juce::AlertWindow window(title, text, juce::MessageBoxIconType::QuestionIcon);
    window.setLookAndFeel(&stage.editorLook());
    window.addButton(actionIn(text), accepted, juce::KeyPress(juce::KeyPress::returnKey));
    window.addButton("Cancel", declined, juce::KeyPress(juce::KeyPress::escapeKey));
    const bool agreed = stage.ask(window, nullptr) == accepted;
    window.setLookAndFeel(nullptr);
    return agreed;
}

juce::String BoxInteraction::askText(const juce::String& title, const juce::String& prompt,
                                     const juce::String& current)
{
    if (!canAsk())
        return {};

    Stage stage(*this);
    juce::AlertWindow window(title, {}, juce::MessageBoxIconType::NoIcon);
    window.setLookAndFeel(&stage.editorLook());
    window.addTextEditor("text", current, prompt);
    window.addButton("OK", accepted, juce::KeyPress(juce::KeyPress::returnKey));
    window.addButton("Cancel", declined, juce::KeyPress(juce::KeyPress::escapeKey));
    const bool answered = stage.ask(window, window.getTextEditor("text")) == accepted;
    window.setLookAndFeel(nullptr);
    return answered ? window.getTextEditorContents("text") : juce::String();
}

juce::File BoxInteraction::choose(const juce::String& title, const juce::File& start,
                                  const juce::String& pattern, int flags)
{
    if (!canAsk())
        return {};

    Stage stage(*this);
    DialogLook look;
    const juce::WildcardFileFilter filter(pattern, "*", {});
    juce::FileBrowserComponent browser(flags, start, &filter, nullptr);
    constexpr bool warnAboutOverwriting = false;
    juce::FileChooserDialogBox box(title, {}, browser, warnAboutOverwriting,
                                   look.findColour(juce::ResizableWindow::backgroundColourId),
                                   stage.parent());
    box.setLookAndFeel(&look);
    box.centreWithDefaultSize(stage.parent());
    const bool chosen = stage.ask(box, nullptr) == accepted;
    box.setLookAndFeel(nullptr);
    return chosen ? browser.getSelectedFile(0) : juce::File();
}

juce::File BoxInteraction::chooseFolder(const juce::String& title, const juce::File& start)
{
    return choose(title, start, "*",
                  juce::FileBrowserComponent::openMode | juce::FileBrowserComponent::canSelectDirectories);
}

juce::File BoxInteraction::chooseFileToOpen(const juce::String& title, const juce::File& start,
                                            const juce::String& pattern)
{
    return choose(title, start, pattern,
                  juce::FileBrowserComponent::openMode | juce::FileBrowserComponent::canSelectFiles);
}

juce::File BoxInteraction::chooseFileToSave(const juce::String& title, const juce::File& suggested,
                                            const juce::String& pattern)
{
    const auto isHere = here;
    auto file = suggested;

    for (;;)
    {
        file = choose(title, file, pattern,
                      juce::FileBrowserComponent::saveMode | juce::FileBrowserComponent::canSelectFiles);

        if (file == juce::File() || !file.existsAsFile() || !isHere->load())
            return file;

        const bool replace = confirm({}, file.getFileName() + " already exists. Replace ?");

        if (!isHere->load())
            return {};

        if (replace)
            return file;
    }
}

void BoxInteraction::progress(const juce::String& title, const juce::String& text)
{
    if (text.isEmpty() || !board->hasDisplay())
    {
        shownProgress = nullptr;
        return;
    }

    if (shownProgress == nullptr)
        shownProgress = std::make_unique<Progress>(*this, title, text);

    shownProgress->window.setMessage(text);

    // A scan holds the message thread: paint now, or the window stays empty until it is over.
    if (auto* peer = shownProgress->window.getPeer())
        peer->performAnyPendingRepaintsNow();
}

} // namespace quorel
