// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/MenuBox.h"

#include "ui/widgets/MenuMark.h"
#include "ui/widgets/ParameterAccessibility.h"
#include "ui/widgets/WidgetTools.h"

namespace quorel
{
namespace
{

/** A combo box's own handler gives the chosen text as the title, too; here the title says what is chosen. */
class MenuAccessibility : public juce::AccessibilityHandler
{
public:
    MenuAccessibility(juce::ComboBox& comboBox, int parameterNumber, PluginProcessor* pluginProcessor)
        : AccessibilityHandler(
              comboBox, juce::AccessibilityRole::comboBox,
              juce::AccessibilityActions()
                  .addAction(juce::AccessibilityActionType::press, [&comboBox] { comboBox.showPopup(); })
                  .addAction(juce::AccessibilityActionType::showMenu, [&comboBox] { comboBox.showPopup(); }),
              {std::make_unique<SpokenText>([&comboBox] { return comboBox.getText(); })})
        , box(comboBox)
        , parameter(parameterNumber)
        , processor(pluginProcessor)
    {
    }

    juce::AccessibleState getCurrentState() const override
    {
        const auto state = AccessibilityHandler::getCurrentState().withExpandable();
        return box.isPopupActive() ? state.withExpanded() : state.withCollapsed();
    }

    juce::String getTitle() const override
    {
        return processor != nullptr ? controlTitle(box, parameter, *processor) : box.getTitle();
    }

private:
    juce::ComboBox& box;
    const int parameter;
    PluginProcessor* const processor;
};

} // namespace

MenuBox::MenuBox(juce::Rectangle<int> bounds, juce::ComboBox::Listener* listener, const char* kind,
                 int parameterId, PluginProcessor* pluginProcessor)
    : processor(pluginProcessor)
    , parameter(parameterId)
{
    setUpControl(*this, kind, parameterId);
    setEditableText(false);
    setJustificationType(juce::Justification::centred);
    setTextWhenNothingSelected(" --- ");
    setBounds(bounds);
    if (listener != nullptr)
        addListener(listener);
}

std::unique_ptr<juce::AccessibilityHandler> MenuBox::createAccessibilityHandler()
{
    return std::make_unique<MenuAccessibility>(*this, parameter, processor);
}

void MenuBox::childrenChanged()
{
    // The label that shows the text is clicked as well, and mustn't take the arrow keys either.
    for (auto* child : getChildren())
        child->setMouseClickGrabsKeyboardFocus(false);
}

void MenuBox::parentHierarchyChanged()
{
    juce::ComboBox::parentHierarchyChanged();

    // JUCE lays the text out with the look that the box is made with, and tells of no other one that it comes under.
    if (const auto* present = &getLookAndFeel(); present != shownLook)
    {
        shownLook = present;
        lookAndFeelChanged();
        resized();
    }
}

ImageMenuBox::ImageMenuBox(juce::Rectangle<int> bounds, juce::ComboBox::Listener* listener, int parameterId,
                           juce::Rectangle<int> popupBounds, const CBitmap* backgroundImage,
                           PluginProcessor& pluginProcessor)
    : MenuBox(boundsOnImage(bounds, backgroundImage, 1), listener, "bgmenu", parameterId, &pluginProcessor)
    , popupArea(popupBounds)
    , image(backgroundImage)
{
}

void ImageMenuBox::paint(juce::Graphics& g)
{
    if (image != nullptr)
    {
        g.setOpacity(1.0f);
        image->paint(g, getLocalBounds().toFloat());
    }
    drawMenuMark(g, getLocalBounds());
    MenuBox::paint(g);
}

void ImageMenuBox::openPopup(int itemHeight)
{
    if (popupOpen)
        return;
    popupOpen = true;

    auto menu = *getRootMenu();
    if (menu.getNumItems() == 0)
        menu.addItem(1, getTextWhenNoChoicesAvailable(), false);
    for (juce::PopupMenu::MenuItemIterator item(menu, true); item.next();)
        item.getItem().isTicked = item.getItem().itemID != 0 && item.getItem().itemID == getSelectedId();
    menu.setLookAndFeel(&getLookAndFeel());

    auto options = juce::PopupMenu::Options()
                       .withTargetComponent(this)
                       .withInitiallySelectedItem(getSelectedId())
                       .withItemThatMustBeVisible(getSelectedId())
                       .withMinimumWidth(getWidth())
                       .withMaximumNumColumns(1);
    if (itemHeight > 0)
        options = options.withStandardItemHeight(itemHeight);
    if (!popupArea.isEmpty() && getParentComponent() != nullptr)
        options = options.withTargetScreenArea(getParentComponent()->localAreaToGlobal(popupArea));

    menu.showMenuAsync(options,
                       [box = SafePointer<ImageMenuBox>(this)](int id)
                       {
                           // The editor may have closed under its menu.
                           if (box == nullptr)
                               return;
                           box->popupOpen = false;
                           box->hidePopup();
                           if (id != 0)
                               box->setSelectedId(id, juce::sendNotificationAsync);
                       });
}

} // namespace quorel
