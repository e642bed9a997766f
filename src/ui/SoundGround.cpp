// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/SoundGround.h"

#include "engine/EffectClipboard.h"
#include "engine/LayerClipboard.h"
#include "ui/EditorColours.h"
#include "ui/widgets/ControlPopup.h"
#include "ui/widgets/WidgetTools.h"

#include <functional>

namespace quorel
{

/** What can be done with a place of a kind. */
struct GroundCommands
{
    const char* noun;
    void (*copy)(PluginProcessor&, int);
    bool (*hasCopied)() noexcept;
    bool (*paste)(PluginProcessor&, int);
    bool (*copyTo)(PluginProcessor&, int, int);
    bool (*swap)(PluginProcessor&, int, int);
    bool (*reset)(PluginProcessor&, int);
};

namespace
{
constexpr GroundCommands layerCommands{"Layer",     copyLayer,  hasCopiedLayer,    pasteLayer,
                                       copyLayerTo, swapLayers, resetLayerSettings};
constexpr GroundCommands effectCommands{"FX",         copyEffect,  hasCopiedEffect, pasteEffect,
                                        copyEffectTo, swapEffects, resetEffect};

constexpr int copyId = 1;
constexpr int pasteId = 2;
constexpr int resetId = 3;
/** Of the first place; the others follow. */
constexpr int swapWithId = 10;
constexpr int numPlaces = numLayers;
static_assert(numFxBlocks == numPlaces);

constexpr float frameWidth = 1.5f;
constexpr float frameCorner = 4.0f;
constexpr float draggedOpacity = 0.6f;
/** Pixels, so that a click isn't a drag. */
constexpr int dragBegins = 6;

/** Outside the click, as instruments take their time, and may run the message loop. */
void later(PluginProcessor& processor, std::function<void(PluginProcessor&)> action)
{
    juce::MessageManager::callAsync(
        [alive = juce::WeakReference<PluginProcessor>(&processor), action = std::move(action)]
        {
            if (alive != nullptr)
                action(*alive);
        });
}
} // namespace

SoundGround::SoundGround(Kind groundKind, int place, PluginProcessor& pluginProcessor)
    : kind(groundKind)
    , index(place)
    , commands(groundKind == Kind::layer ? layerCommands : effectCommands)
    , processor(pluginProcessor)
{
    setUpControl(*this, "ground", noParameter);
    // The display is for what can be set.
    setComponentID({});
    setWantsKeyboardFocus(true);
    setTitle(juce::String(commands.noun) + " " + juce::String(index + 1));
    setMouseCursor(juce::MouseCursor::DraggingHandCursor);
}

void SoundGround::paint(juce::Graphics& g)
{
    if (!hovered)
        return;

    g.setColour(colours::amber);
    g.drawRoundedRectangle(face.toFloat().reduced(frameWidth), frameCorner, frameWidth);
}

void SoundGround::mouseDown(const juce::MouseEvent& event)
{
    if (event.mods.isRightButtonDown())
        showMenu(true);
}

void SoundGround::mouseDrag(const juce::MouseEvent& event)
{
    auto* container = juce::DragAndDropContainer::findParentDragContainerFor(this);

    if (container == nullptr || container->isDragAndDropActive() || !event.mods.isLeftButtonDown() ||
        event.getDistanceFromDragStart() < dragBegins)
        return;

    auto* whole = getParentComponent();
    auto picture = whole->createComponentSnapshot(whole->getLocalArea(this, face));
    picture.multiplyAllAlphas(draggedOpacity);
    const auto fromMouse = face.getPosition() - event.getMouseDownPosition();
    container->startDragging(commands.noun, this, juce::ScaledImage(picture), false, &fromMouse);
}

bool SoundGround::keyPressed(const juce::KeyPress& key)
{
    return key == juce::KeyPress::returnKey && showMenu(false);
}

bool SoundGround::showMenu(bool atMouse)
{
    const juce::String noun = commands.noun;
    const auto nameOf = [&](int place) { return noun + " " + juce::String(place + 1); };
    MenuEntries others;

    for (int place = 0; place < numPlaces; ++place)
        if (place != index)
            others.push_back(MenuEntry::command(swapWithId + place, nameOf(place)));

    auto paste = MenuEntry::command(pasteId, "Paste");
    paste.enabled = commands.hasCopied();
    return showControlPopup(
        *this,
        {MenuEntry::command(copyId, "Copy " + nameOf(index)), paste, MenuEntry::rows("Swap With", others),
         MenuEntry::separator(), MenuEntry::command(resetId, "Reset " + nameOf(index))},
        atMouse ? PopupPlace::mouse : PopupPlace::control, [this](int id) { runMenuRow(id); });
}

void SoundGround::runMenuRow(int id)
{
    if (id == copyId)
        commands.copy(processor, index);
    else if (id == pasteId)
        commands.paste(processor, index);
    else if (id == resetId)
        commands.reset(processor, index);
    else
        commands.swap(processor, index, id - swapWithId);
}

//==============================================================================================================
// Dropping

bool SoundGround::isInterestedInDragSource(const SourceDetails& source)
{
    const auto* other = dynamic_cast<const SoundGround*>(source.sourceComponent.get());
    return other != nullptr && other != this && other->kind == kind && &other->processor == &processor;
}

void SoundGround::setHovered(bool isHovered)
{
    hovered = isHovered;
    repaint();
}

void SoundGround::itemDragEnter(const SourceDetails&)
{
    setHovered(true);
}

void SoundGround::itemDragExit(const SourceDetails&)
{
    setHovered(false);
}

void SoundGround::itemDropped(const SourceDetails& source)
{
    setHovered(false);
    const auto* other = dynamic_cast<const SoundGround*>(source.sourceComponent.get());

    if (other == nullptr)
        return;

    const auto act = juce::ModifierKeys::currentModifiers.isCtrlDown() ? commands.copyTo : commands.swap;
    later(processor,
          [act, from = other->index, to = index](PluginProcessor& target) { act(target, from, to); });
}

bool GroundHolder::isInterestedInDragSource(const SourceDetails& source)
{
    return dynamic_cast<const SoundGround*>(source.sourceComponent.get()) != nullptr;
}

SoundGround* GroundHolder::targetOf(const SourceDetails& source)
{
    auto* ground = groundAt(source.localPosition);
    return ground != nullptr && ground->isInterestedInDragSource(source) ? ground : nullptr;
}

void GroundHolder::hover(SoundGround* target, const SourceDetails& source)
{
    if (target == hovered)
        return;

    if (hovered != nullptr)
        hovered->itemDragExit(source);

    hovered = target;

    if (target != nullptr)
        target->itemDragEnter(source);
}

void GroundHolder::itemDragMove(const SourceDetails& source)
{
    hover(targetOf(source), source);
}

void GroundHolder::itemDragExit(const SourceDetails& source)
{
    hover(nullptr, source);
}

void GroundHolder::itemDropped(const SourceDetails& source)
{
    hover(nullptr, source);

    if (auto* target = targetOf(source))
        target->itemDropped(source);
}

} // namespace quorel
