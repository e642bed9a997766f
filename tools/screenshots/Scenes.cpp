// SPDX-License-Identifier: GPL-3.0-or-later
#include "Scenes.h"

#include "effects/FxTypes.h"
#include "ui/Geometry.h"
#include "ui/VirtualInstrumentUI.h"

#include <array>

namespace quorel
{

namespace
{
constexpr const char* splits = "01 Keys and Splits";
constexpr const char* drums = "03 Drums and Grooves";

/** Switches an EQ on and gives its curve something to show. */
void bendEq(EditorPictures& editor, int unit)
{
    constexpr std::array<float, numEqBands> gains{0.7f, 0.36f, 0.62f};
    editor.set(eqBase(unit) + eqSlot::on, 1.0f);
    for (int i = 0; i < numEqBands; ++i)
    {
        const int band = eqBase(unit) + eqSlot::bands + eqSlot::slotsPerBand * i;
        editor.set(band + eqSlot::bandOn, 1.0f);
        editor.set(band + eqSlot::bandWidth, 0.35f);
        editor.set(band + eqSlot::bandGain, gains[static_cast<std::size_t>(i)]);
    }
}

bool showPanels(EditorPictures& editor, int panel)
{
    editor.showPage(Page::layers);
    editor.showPanels(panel);
    return true;
}

void addLayers(std::vector<Scene>& scenes)
{
    using Panel = VirtualInstrumentUI;
    const auto add = [&](const char* name, const char* folder, const char* preset, int panel) {
        scenes.push_back({name, folder, preset, [panel](EditorPictures& e) { return showPanels(e, panel); }});
    };
    add("layers-empty", "", "", Panel::keyRange);
    add("layers-key-range", splits, "Four Corners", Panel::keyRange);
    add("layers-easy", splits, "Four Corners", Panel::easy);
    scenes.push_back({"layers-eq", splits, "Four Corners",
                      [](EditorPictures& e)
                      {
                          for (int layer = 0; layer < numLayers; ++layer)
                              bendEq(e, layer);
                          return showPanels(e, Panel::eq);
                      }});
    add("layers-midi", splits, "Four Corners", Panel::midi);

    scenes.push_back({"layers-zones", drums, "Room Kit",
                      [](EditorPictures& e)
                      {
                          for (int layer = 0; layer < numLayers; ++layer)
                              e.set(layerParameter(layer, layerSlot::drumMode), 1.0f);
                          return showPanels(e, Panel::zones);
                      }});
    scenes.push_back({"layers-mixed", splits, "Four Corners",
                      [](EditorPictures& e)
                      {
                          e.showPage(Page::layers);
                          bendEq(e, 2);
                          e.showPanel(0, Panel::keyRange);
                          e.showPanel(1, Panel::easy);
                          e.showPanel(2, Panel::eq);
                          e.showPanel(3, Panel::midi);
                          return true;
                      }});
}

void addEffects(std::vector<Scene>& scenes)
{
    const auto show = [](EditorPictures& e)
    {
        e.showPage(Page::effects);
        return true;
    };
    scenes.push_back({"fx-empty", "", "", show});
    scenes.push_back({"fx-preset", "06 Motion and Rhythm", "Kappel Chords",
                      [](EditorPictures& e)
                      {
                          bendEq(e, masterEqUnit);
                          e.showPage(Page::effects);
                          return true;
                      }});
    for (int first = 1; first < fxTypeCount; first += numFxBlocks)
    {
        scenes.push_back({"fx-types-" + juce::String(first).paddedLeft('0', 2), "", "",
                          [first](EditorPictures& e)
                          {
                              for (int k = 0; k < numFxBlocks; ++k)
                              {
                                  const int type = juce::jmin(first + k, fxTypeCount - 1);
                                  e.set(slot::fxOn + k, 1.0f);
                                  e.set(slot::fxType + k, static_cast<float>(type) / 32.0f);
                                  for (int j = 0; j < numFxParameters; ++j)
                                      e.set(fxParameter(k, j), 0.1f * static_cast<float>(j));
                              }
                              e.showPage(Page::effects);
                              return true;
                          }});
    }
}

void addManager(std::vector<Scene>& scenes)
{
    const auto add = [&](const char* name, const char* mode)
    {
        scenes.push_back({name, splits, "Four Corners",
                          [mode](EditorPictures& e)
                          {
                              e.showPage(Page::presetManager);
                              return e.click(mode);
                          }});
    };
    add("manager-browse", "Browse");
    add("manager-edit-categories", "Edit categories");
    add("manager-search-category", "Search by category");
    scenes.push_back({"manager-search-name", splits, "Four Corners",
                      [](EditorPictures& e)
                      {
                          e.showPage(Page::presetManager);
                          return e.click("Search by name") && e.type("Search text", "glass");
                      }});
}

void addOthers(std::vector<Scene>& scenes)
{
    scenes.push_back({"multi-control", splits, "Four Corners",
                      [](EditorPictures& e)
                      {
                          e.showPage(Page::multiControls);
                          return true;
                      }});
    scenes.push_back({"back-panel", splits, "Four Corners",
                      [](EditorPictures& e)
                      {
                          e.showBackPanel();
                          return true;
                      }});
}

void addMenus(std::vector<Scene>& scenes)
{
    const auto add = [&](const char* name, std::function<bool(EditorPictures&)> arrange)
    {
        scenes.push_back({name, splits, "Four Corners",
                          [arrange = std::move(arrange)](EditorPictures& e)
                          {
                              e.openWindow();
                              return arrange(e);
                          }});
    };
    const auto addMenu = [&](const char* name, Page page, auto control)
    {
        add(name,
            [page, control](EditorPictures& e)
            {
                e.showPage(page);
                return e.openMenu(control);
            });
    };
    addMenu("menu-folder", Page::layers, "Folder menu");
    addMenu("menu-preset", Page::layers, "Preset menu");
    addMenu("menu-layouts", Page::layers, "Layer 1 Easy layouts");
    addMenu("menu-instrument", Page::layers, "Layer 2 instrument");
    addMenu("menu-control", Page::layers, layerParameter(0, layerSlot::volume));
    addMenu("menu-effect", Page::effects, slot::fxType + 1);
    addMenu("menu-target", Page::multiControls, "Multi knob 1/2 target");
    add("menu-size",
        [](EditorPictures& e)
        {
            e.showBackPanel();
            return e.openMenu("Window Size");
        });
}
} // namespace

const std::vector<GuidePicture>& guidePictures()
{
    static const std::vector<GuidePicture> pictures{
        {"layers", "layers-mixed", {}}, {"zones", "layers-zones", geometry::strip::bounds(0)},
        {"effects", "fx-preset", {}},   {"manager", "manager-edit-categories", {}},
        {"multi", "multi-control", {}}, {"back", "back-panel", {}},
    };
    return pictures;
}

std::vector<Scene> allScenes(bool withMenus)
{
    std::vector<Scene> scenes;
    addLayers(scenes);
    addEffects(scenes);
    addManager(scenes);
    addOthers(scenes);
    if (withMenus)
        addMenus(scenes);
    return scenes;
}

} // namespace quorel
