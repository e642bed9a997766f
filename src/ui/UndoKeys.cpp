// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/UndoKeys.h"

#include "ui/EditorColours.h"
#include "ui/widgets/WidgetTools.h"

namespace quorel
{

namespace
{
constexpr float corner = 3.0f;
constexpr float stroke = 1.8f;
constexpr float dimmed = 0.45f;

/** A bow that ends in an arrow to the left, in a unit square. */
juce::Path bow()
{
    juce::Path path;
    path.startNewSubPath(0.22f, 0.40f);
    path.lineTo(0.60f, 0.40f);
    path.cubicTo(0.86f, 0.40f, 0.86f, 0.76f, 0.60f, 0.76f);
    path.lineTo(0.42f, 0.76f);
    path.startNewSubPath(0.38f, 0.20f);
    path.lineTo(0.18f, 0.40f);
    path.lineTo(0.38f, 0.60f);
    return path;
}
} // namespace

UndoKeys::Arrow::Arrow(bool pointsBack)
    : juce::Button(pointsBack ? "undo" : "redo")
    , isBack(pointsBack)
{
    setUpControl(*this, "button", noParameter);
}

void UndoKeys::Arrow::paintButton(juce::Graphics& g, bool highlighted, bool down)
{
    const auto bounds = getLocalBounds().toFloat().reduced(0.5f);
    g.setColour(down ? colours::sunken : colours::raised.withMultipliedBrightness(highlighted ? 1.4f : 1.0f));
    g.fillRoundedRectangle(bounds, corner);

    const auto square = bounds.withSizeKeepingCentre(bounds.getHeight(), bounds.getHeight());
    auto place = juce::AffineTransform::scale(square.getWidth(), square.getHeight())
                     .translated(square.getX(), square.getY());

    if (!isBack)
        place = juce::AffineTransform::scale(-1.0f, 1.0f, 0.5f, 0.5f).followedBy(place);

    g.setColour((highlighted ? juce::Colours::white : colours::brightText)
                    .withMultipliedAlpha(isEnabled() ? 1.0f : dimmed));
    g.strokePath(bow(), juce::PathStrokeType(stroke), place);
}

UndoKeys::UndoKeys(juce::Rectangle<int> bounds, PluginProcessor& pluginProcessor)
    : processor(pluginProcessor)
{
    setBounds(bounds);
    setInterceptsMouseClicks(false, true);
    auto area = getLocalBounds();
    undoArrow.setBounds(area.removeFromLeft(area.getWidth() / 2).withTrimmedRight(2));
    redoArrow.setBounds(area.withTrimmedLeft(2));
    undoArrow.onClick = [this]
    {
        processor.getUndo().undo();
        update();
    };
    redoArrow.onClick = [this]
    {
        processor.getUndo().redo();
        update();
    };
    addAndMakeVisible(undoArrow);
    addAndMakeVisible(redoArrow);
    update();
}

void UndoKeys::show(Arrow& arrow, bool possible, const juce::String& text, const juce::String& nothing)
{
    arrow.setEnabled(possible);

    if (const auto& title = possible ? text : nothing; arrow.getTitle() != title)
    {
        arrow.setTitle(title);
        arrow.setTooltip(title);
    }
}

void UndoKeys::update()
{
    auto& history = processor.getUndo();

    if (std::exchange(shownRevision, history.getRevision()) == history.getRevision())
        return;

    show(undoArrow, history.canUndo(), history.undoText(), "Nothing to undo");
    show(redoArrow, history.canRedo(), history.redoText(), "Nothing to redo");
}

} // namespace quorel
