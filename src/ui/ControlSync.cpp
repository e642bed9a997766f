// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ControlSync.h"

#include "parameters/Switches.h"
#include "ui/ControlPage.h"
#include "ui/VirtualInstrumentUI.h"
#include "ui/widgets/myIntBox.h"
#include "ui/widgets/myIntBox2.h"

namespace quorel
{

namespace
{
/** EQ unit of a parameter; -1 for none. */
int eqUnitOf(int parameter)
{
    if (parameter >= slot::masterEq && parameter <= slot::masterEqEnd)
        return masterEqUnit;

    if (!isLayerParameter(parameter))
        return -1;

    const int n = numberInLayer(parameter);
    return n >= layerSlot::eq && n <= layerSlot::eqEnd ? layerOf(parameter) : -1;
}

bool isStripKey(int parameter)
{
    if (!isLayerParameter(parameter))
        return false;

    const int n = numberInLayer(parameter);
    return n == layerSlot::drumPage || n == layerSlot::drumMode;
}
} // namespace

ControlSync::Kind ControlSync::kindOf(const juce::Component& component, int parameter)
{
    // Menus on a read-out ("bgmenu") are left out on purpose: they follow at the next rebuild of the picture.
    const auto& name = component.getName();

    if (name == "knob")
        return Kind::knob;

    if (name == "slider")
        return Kind::slider;

    if (name == "myIntBox")
        return Kind::intBox;

    if (name == "myIntBox2")
        return Kind::intBox2;

    if (name == "menu")
        return Kind::menu;

    if (name == "kappel")
        return Kind::steps;

    if (name == "toggle" && parameter != slot::view)
        return isStripKey(parameter) ? Kind::stripKey : Kind::toggle;

    return Kind::none;
}

void ControlSync::rebuild(juce::Component& root)
{
    entries.clear();
    entryOf.fill(noEntry);
    eqScreens = {};
    collect(root, masterEqUnit);
}

void ControlSync::collect(juce::Component& component, int eqUnit)
{
    for (auto* child : component.getChildren())
    {
        if (!child->isVisible())
            continue;

        if (child->getName() == "EQlcd")
            eqScreens[static_cast<size_t>(eqUnit)] = child;

        if (const int parameter = ControlPage::parameterOf(*child); parameter > 0)
        {
            auto& entry = entryOf[static_cast<size_t>(parameter)];
            const auto kind = kindOf(*child, parameter);

            if (entry == noEntry && kind != Kind::none)
            {
                entry = static_cast<std::int16_t>(entries.size());
                entries.push_back({child, kind});
            }
        }

        const auto* strip = dynamic_cast<const VirtualInstrumentUI*>(child);
        collect(*child, strip != nullptr ? strip->getLayer() : eqUnit);
    }
}

void ControlSync::run()
{
    auto& table = processor.getParameterTable();

    for (int parameter = 1; parameter < numHostParameters; ++parameter)
    {
        // Reading a flag is far cheaper than taking it, and few are set.
        if (!table.isDirty(parameter))
            continue;

        table.takeDirty(parameter);
        update(parameter);
    }
}

void ControlSync::update(int parameter)
{
    if (const int unit = eqUnitOf(parameter); unit >= 0)
        if (auto* screen = eqScreens[static_cast<size_t>(unit)].getComponent())
            screen->repaint();

    const auto index = entryOf[static_cast<size_t>(parameter)];

    if (index == noEntry)
        return;

    const auto& entry = entries[static_cast<size_t>(index)];
    auto* component = entry.component.getComponent();

    if (component == nullptr || !component->isVisible())
        return;

    const float value = processor.readParameter(parameter);

    if (entry.kind == Kind::toggle)
        static_cast<juce::Button&>(*component)
            .setToggleState(isSwitchOn(parameter, value), juce::dontSendNotification);
    else
        show(entry.kind, *component, value);
}

void ControlSync::show(Kind kind, juce::Component& component, float value)
{
    switch (kind)
    {
    case Kind::knob:
    case Kind::slider:
        static_cast<juce::Slider&>(component).setValue(static_cast<double>(value),
                                                       juce::dontSendNotification);
        break;

    case Kind::intBox:
        static_cast<myIntBox&>(component).update(value);
        break;

    case Kind::intBox2:
        static_cast<myIntBox2&>(component).update(value);
        break;

    case Kind::menu:
    {
        auto& menu = static_cast<juce::ComboBox&>(component);

        if (const int count = menu.getNumItems(); count > 1)
            menu.setSelectedItemIndex(static_cast<int>(static_cast<float>(count - 1) * value),
                                      juce::dontSendNotification);

        break;
    }

    case Kind::stripKey:
        if (auto* strip = component.findParentComponentOfClass<VirtualInstrumentUI>())
            strip->followPanel();

        break;

    case Kind::steps:
        component.repaint();
        break;

    case Kind::toggle:
    case Kind::none:
        break;
    }
}

} // namespace quorel
