// SPDX-License-Identifier: GPL-3.0-or-later
// The controls in a real window, under mouse and keyboard.
#include "EditorRig.h"

#include "parameters/ParameterCodings.h"
#include "ui/EditorColours.h"
#include "ui/widgets/BitmapText.h"
#include "ui/widgets/meterHorizontal.h"
#include "ui/widgets/myBgMenu.h"
#include "ui/widgets/myBgMenu2.h"
#include "ui/widgets/myButton1.h"
#include "ui/widgets/myIntBox.h"
#include "ui/widgets/myIntBox2.h"
#include "ui/widgets/myKickTextButton.h"
#include "ui/widgets/myKnob.h"
#include "ui/widgets/myLabel.h"
#include "ui/widgets/myLabelB.h"
#include "ui/widgets/myLabelFont.h"
#include "ui/widgets/myOnOff.h"
#include "ui/widgets/mySlider2.h"

#include <gtest/gtest.h>

#include <map>

namespace quorel::test
{

namespace
{
constexpr int pan = layerParameter(0, layerSlot::pan);
constexpr int volume = layerParameter(0, layerSlot::volume);
constexpr int solo = layerParameter(0, layerSlot::solo);
constexpr float tolerance = 1e-5f;

/** A page as the editor's are, with controls laid out by the test. */
class Bench : public ControlPage
{
public:
    explicit Bench(EditorRig& rig)
        : ControlPage(rig.processor, rig.host, rig.images)
    {
        setSize(400, 300);
        setWantsKeyboardFocus(true);
    }

    void refresh() override {}

    void buttonClicked(juce::Button* button) override
    {
        clicks.add(button->isDown() ? "down" : "up");
        ControlPage::buttonClicked(button);
    }

    void comboBoxChanged(juce::ComboBox* box) override { choices.add(box->getText()); }

    juce::StringArray clicks;
    juce::StringArray choices;
};

class WidgetTest : public testing::Test
{
protected:
    template <typename Widget>
    Widget& show(Widget& widget)
    {
        bench.addAndMakeVisible(widget);
        return widget;
    }

    /** Opaque pixels of the same colour. */
    static bool samePicture(const juce::Image& a, const juce::Image& b)
    {
        if (a.getBounds() != b.getBounds())
            return false;
        for (int y = 0; y < a.getHeight(); ++y)
            for (int x = 0; x < a.getWidth(); ++x)
                if (a.getPixelAt(x, y) != b.getPixelAt(x, y))
                    return false;
        return true;
    }

    static juce::Image frameOf(const CBitmap& film, int frames, int frame)
    {
        const int height = film.getHeight() / frames;
        juce::Image picture(juce::Image::ARGB, film.getWidth(), height, true);
        juce::Graphics g(picture);
        film.draw(g, picture.getBounds().toFloat(), {0, frame * height, film.getWidth(), height});
        return picture;
    }

    static int ink(const juce::Image& picture, juce::Rectangle<int> area)
    {
        int pixels = 0;
        for (int y = area.getY(); y < area.getBottom(); ++y)
            for (int x = area.getX(); x < area.getRight(); ++x)
                pixels += picture.getPixelAt(x, y).getAlpha() > 64 ? 1 : 0;
        return pixels;
    }

    EditorRig rig;
    Bench bench{rig};
};

} // namespace

TEST_F(WidgetTest, KnobFollowsEveryGesture)
{
    myKnob knob({40, 40, 0, 0}, &bench, pan, &rig.images.knobPan, rig.processor);
    show(knob);
    TestWindow window(bench);
    ASSERT_EQ(knob.getBounds(), juce::Rectangle<int>(40, 40, 47, 47));
    ASSERT_EQ(window.find(pan), &knob);
    const juce::Point<int> middle{23, 23};
    knob.setDoubleClickReturnValue(true, 0.5);

    const auto dragUp = [&](int pixels, int keys)
    {
        knob.setValue(0.5, juce::dontSendNotification);
        window.drag(knob, middle, middle.translated(0, -pixels), TestWindow::leftButton + keys);
        return rig.get(pan);
    };
    const GestureCount gestures(rig.processor);
    // 250 pixels are the whole range.
    EXPECT_NEAR(dragUp(25, 0), 0.6f, tolerance);
    EXPECT_NEAR(dragUp(-50, 0), 0.3f, tolerance);
    EXPECT_NEAR(dragUp(25, TestWindow::shift), 0.51f, tolerance);
    EXPECT_EQ(gestures.begun, 3);
    EXPECT_EQ(gestures.ended, 3);

    knob.setValue(0.2);
    window.doubleClick(knob, middle);
    EXPECT_FLOAT_EQ(rig.get(pan), 0.5f);
    window.wheel(knob, middle, 0.5f);
    EXPECT_NEAR(rig.get(pan), 0.575f, tolerance);

    // The keyboard is the presets' until the user tabs to the knob.
    window.click(knob, middle);
    EXPECT_FALSE(knob.hasKeyboardFocus(true));
    knob.grabKeyboardFocus();
    knob.setValue(0.5);
    window.key(juce::KeyPress(juce::KeyPress::upKey));
    EXPECT_NEAR(rig.get(pan), 0.51f, tolerance);
    window.key(juce::KeyPress(juce::KeyPress::leftKey));
    EXPECT_NEAR(rig.get(pan), 0.5f, tolerance);
    EXPECT_TRUE(rig.processor.getSession().isEdited());
}

TEST_F(WidgetTest, DisabledKnobTakesNoMouse)
{
    myKnob knob({40, 40, 0, 0}, &bench, pan, &rig.images.knobPan, rig.processor);
    show(knob);
    TestWindow window(bench);
    // A drag before must not live on.
    window.drag(knob, {23, 23}, {23, 13});
    const float before = rig.get(pan);
    knob.setEnabled(false);

    window.drag(knob, {23, 23}, {23, 3});
    window.wheel(knob, {23, 23}, 0.5f);
    window.doubleClick(knob, {23, 23});
    window.click(knob, TestWindow::rightButton);
    EXPECT_FALSE(TestWindow::menuIsOpen());
    EXPECT_EQ(rig.get(pan), before);
}

TEST_F(WidgetTest, FaderGoesToTheMouseAndWithShiftFromWhereItIs)
{
    mySlider2 fader({40, 40, 0, 0}, &bench, slot::multiFader, &rig.images.bigFader, 142, rig.processor);
    show(fader);
    TestWindow window(bench);
    ASSERT_EQ(fader.getHeight(), 169);

    window.click(fader, {20, 84});
    EXPECT_NEAR(rig.get(slot::multiFader), 0.5f, 0.01f);
    window.drag(fader, {20, 84}, {20, -100});
    EXPECT_FLOAT_EQ(rig.get(slot::multiFader), 1.0f);
    fader.setValue(0.5);
    window.drag(fader, {20, 150}, {20, 125}, TestWindow::leftButton + TestWindow::shift);
    EXPECT_NEAR(rig.get(slot::multiFader), 0.51f, tolerance);
}

TEST_F(WidgetTest, ValuesChooseFrames)
{
    myKnob knob({0, 0, 0, 0}, &bench, pan, &rig.images.knobPan, rig.processor);
    mySlider2 fader({100, 0, 0, 0}, &bench, slot::multiFader, &rig.images.easyFader, 82, rig.processor);
    myOnOff toggle({200, 0, 0, 0}, &bench, solo, &rig.images.onOff, rig.processor);
    show(knob);
    show(fader);
    show(toggle);

    const std::map<double, int> knobFrames{{0.0, 0}, {0.5, 68}, {0.999, 135}, {1.0, 136}};
    for (const auto& [value, frame] : knobFrames)
    {
        knob.setValue(value, juce::dontSendNotification);
        EXPECT_TRUE(samePicture(TestWindow::picture(knob), frameOf(rig.images.knobPan, 137, frame))) << value;
    }
    fader.setValue(1.0, juce::dontSendNotification);
    EXPECT_TRUE(samePicture(TestWindow::picture(fader), frameOf(rig.images.easyFader, 82, 81)));

    EXPECT_EQ(toggle.getBounds().getHeight(), 20);
    EXPECT_TRUE(samePicture(TestWindow::picture(toggle), frameOf(rig.images.onOff, 2, 0)));
    toggle.setToggleState(true, juce::dontSendNotification);
    EXPECT_FALSE(samePicture(TestWindow::picture(toggle), frameOf(rig.images.onOff, 2, 0)));
}

TEST_F(WidgetTest, MeterShowsDecibelsAndOverload)
{
    meterHorizontal meter({40, 40, 59, 8});
    show(meter);
    const juce::Colour ground(0xff111112);
    const auto pixels = [&](int x, float left, float right)
    {
        meter.left = left;
        meter.right = right;
        meter.follow();
        TestWindow::pump(120);
        const auto picture = TestWindow::picture(meter);
        return std::make_pair(picture.getPixelAt(x, 1), picture.getPixelAt(x, 6));
    };
    // 57 pixels for 70 dB: -20 dB ends after 40 of them.
    EXPECT_EQ(pixels(40, 0.1f, 0.11f), std::make_pair(ground, colours::amber));
    EXPECT_EQ(pixels(39, 0.1f, 0.0f), std::make_pair(colours::amber, ground));
    // The last two pixels are for what is over.
    EXPECT_EQ(pixels(58, 0.999f, 1.0f), std::make_pair(ground, juce::Colour(0xffc30000)));
    EXPECT_EQ(pixels(57, 30.0f, 0.0f), std::make_pair(juce::Colour(0xffc30000), ground));
}

TEST_F(WidgetTest, RightClickOpensTheMenuOfTheParameter)
{
    myKnob knob({40, 40, 0, 0}, &bench, volume, &rig.images.knobVolume, rig.processor);
    myKnob unbound({100, 40, 0, 0}, &bench, 0, &rig.images.knobVolume, rig.processor);
    show(knob);
    show(unbound);
    knob.setDoubleClickReturnValue(true, 0.63);
    rig.set(volume, 0.2f);
    TestWindow window(bench);

    const auto choose = [&](const juce::String& text)
    {
        window.click(knob, TestWindow::rightButton);
        return window.chooseFromMenu(text);
    };

    window.click(knob, TestWindow::rightButton);
    const auto texts = window.menuTexts();
    EXPECT_EQ(
        texts.joinIntoString("|"),
        "(Layer1 Volume)|(-29 db)|(Not Latched)|Set To Default|Set To Minimum|Set To Maximum|Set To Mid|"
        "Set To Random|Increase|Decrease|Set Value|Latch To Midi|Unlatch Midi|Set Midi CC|Clear Midi");
    ASSERT_TRUE(window.chooseFromMenu("Set To Default"));
    EXPECT_FLOAT_EQ(rig.get(volume), 0.63f);
    rig.interaction.typedText = "-6";
    ASSERT_TRUE(choose("Set Value"));
    EXPECT_NEAR(rig.get(volume), 0.5f, 0.001f);

    // Learning: the next controller that arrives is bound, and moves the knob at once.
    ASSERT_TRUE(choose("Latch To Midi"));
    rig.engine.send(juce::MidiMessage::controllerEvent(3, 7, 127));
    rig.engine.play();
    EXPECT_FLOAT_EQ(rig.get(volume), 1.0f);
    window.click(knob, TestWindow::rightButton);
    EXPECT_EQ(window.menuTexts()[2], "(Midi CC : 7)");
    TestWindow::closeMenus();

    window.click(unbound, TestWindow::rightButton);
    EXPECT_FALSE(TestWindow::menuIsOpen());
}

TEST_F(WidgetTest, KnobCanGoWhileItsMenuIsOpen)
{
    auto knob = std::make_unique<myKnob>(juce::Rectangle<int>(40, 40, 0, 0), &bench, volume,
                                         &rig.images.knobVolume, rig.processor);
    show(*knob);
    TestWindow window(bench);
    window.click(*knob, TestWindow::rightButton);
    ASSERT_FALSE(window.menuTexts().isEmpty());
    const float before = rig.get(volume);
    knob.reset();
    window.chooseFromMenu("Set To Maximum");
    TestWindow::closeMenus();
    EXPECT_EQ(rig.get(volume), before);
}

TEST_F(WidgetTest, GlowTellsOfMidiControl)
{
    myKnob knob({40, 40, 0, 0}, &bench, volume, &rig.images.knobVolume, rig.processor);
    show(knob);
    TestWindow window(bench);
    constexpr int twoTicks = 250;
    const auto glow = [&]
    {
        TestWindow::pump(twoTicks);
        return knob.getComponentEffect() != nullptr;
    };

    EXPECT_FALSE(glow());
    auto& map = rig.processor.getControllerMap();
    map.latch(volume);
    EXPECT_TRUE(glow());
    const auto waiting = TestWindow::picture(knob);
    map.controllerReceived(20, 64);
    knob.setValue(rig.get(volume), juce::dontSendNotification);
    EXPECT_TRUE(glow());
    // From red to green.
    const auto redness = [](const juce::Image& picture)
    {
        int sum = 0;
        for (int y = 0; y < picture.getHeight(); ++y)
            for (int x = 0; x < picture.getWidth(); ++x)
                sum += picture.getPixelAt(x, y).getRed() - picture.getPixelAt(x, y).getGreen();
        return sum;
    };
    EXPECT_GT(redness(waiting), redness(TestWindow::picture(knob)));
    map.unlatch(volume);
    EXPECT_FALSE(glow());
}

TEST_F(WidgetTest, IntegerBoxesReadNumbersAndNotes)
{
    constexpr int keyMin = layerParameter(0, layerSlot::keyMin);
    constexpr int transpose = layerParameter(0, layerSlot::transpose);
    myIntBox2 key({40, 40, 44, 0}, &bench, keyMin, &rig.images.readout30, rig.processor);
    myIntBox2 steps({100, 40, 0, 0}, &bench, transpose, &rig.images.readout60, rig.processor, -16);
    myIntBox tempo({200, 40, 60, 14}, &bench, &rig.images.readout60, "BPM ", rig.processor);
    key.noteNames = true;
    steps.minimum = -24;
    steps.maximum = 24;
    tempo.minimum = 30;
    tempo.maximum = 500;
    show(key);
    show(steps);
    show(tempo);
    TestWindow window(bench);
    const auto text = [](juce::Slider& box)
    { return dynamic_cast<juce::Label&>(*box.getChildComponent(0)).getText(); };

    const std::map<float, juce::String> notes{
        {0.0f, "C-2"}, {60.5f / 127.0f, "C3"}, {61.5f / 127.0f, "C#3"}, {1.0f, "G8"}, {2.0f, "G8"}};
    for (const auto& [value, name] : notes)
    {
        key.update(value);
        EXPECT_EQ(text(key), name) << value;
    }
    steps.update(0.5f);
    EXPECT_EQ(text(steps), "0");
    EXPECT_EQ(steps.getChildComponent(0)->getWidth(), steps.getWidth() - 16);
    tempo.update(1.0f);
    EXPECT_EQ(text(tempo), "BPM 500");
    EXPECT_EQ(tempo.getComponentID(), juce::String(noParameter));

    // The text takes no mouse: the drag goes through it, and shows what it does.
    window.drag(steps, {10, 8}, {10, -17});
    EXPECT_NEAR(rig.get(transpose), 0.6f, tolerance);
    EXPECT_EQ(text(steps), "4");
    steps.grabKeyboardFocus();
    for (int number = 3; number >= -26; --number)
    {
        window.key(juce::KeyPress(juce::KeyPress::downKey));
        EXPECT_EQ(text(steps), juce::String(juce::jmax(-24, number)));
        EXPECT_EQ(paramToInt(rig.get(transpose), -24, 24), juce::jmax(-24, number));
    }
}

TEST_F(WidgetTest, NumbersAreSteppedTypedAndHaveAMenu)
{
    constexpr int keyMin = layerParameter(0, layerSlot::keyMin);
    myIntBox2 key({40, 40, 44, 0}, &bench, keyMin, &rig.images.readout30, rig.processor);
    key.noteNames = true;
    show(key);
    TestWindow window(bench);
    const juce::Point<int> middle{20, 8};
    const auto note = [&] { return paramToInt(rig.get(keyMin), 0, 127); };
    const auto type = [&](const juce::String& text)
    {
        window.doubleClick(key, middle);
        window.type(text);
        window.key(juce::KeyPress(juce::KeyPress::returnKey));
        return note();
    };

    const std::pair<const char*, int> notes[] = {{"60", 60}, {"C4", 72},  {"bb-1", 22}, {"F#3", 66},
                                                 {"H2", 66}, {"", 66},    {"x1", 66},   {"200", 127},
                                                 {"-5", 0},  {"G9", 127}, {" 24 ", 24}, {"1.2.3", 24}};
    for (const auto& [text, number] : notes)
        EXPECT_EQ(type(text), number) << text;

    // Escape leaves all as it was.
    window.doubleClick(key, middle);
    window.key(juce::KeyPress('9', 0, '9'));
    window.key(juce::KeyPress(juce::KeyPress::escapeKey));
    EXPECT_EQ(note(), 24);

    window.wheel(key, middle, 0.1f);
    EXPECT_EQ(note(), 25);
    window.wheel(key, middle, -2.0f);
    EXPECT_EQ(note(), 24);
    key.update(0.5f);
    window.drag(key, middle, middle.translated(0, -25), TestWindow::leftButton + TestWindow::shift);
    EXPECT_NEAR(rig.get(keyMin), 0.51f, tolerance);

    window.click(key, TestWindow::rightButton);
    const auto texts = window.menuTexts();
    EXPECT_EQ(texts[0], "(Layer1 Keyboard Range Min)");
    EXPECT_EQ(texts[1], "(E3)");
    ASSERT_TRUE(window.chooseFromMenu("Increase"));
    EXPECT_EQ(note(), 65);
    window.click(key, TestWindow::rightButton);
    ASSERT_TRUE(window.chooseFromMenu("Set To Default"));
    EXPECT_EQ(note(), 24);
}

TEST_F(WidgetTest, SwitchesAreTiedToControllersByTheirMenu)
{
    myOnOff toggle({40, 40, 0, 0}, &bench, solo, &rig.images.onOff, rig.processor);
    myOnOff selector({100, 40, 0, 0}, &bench, layerParameter(0, layerSlot::drumPage), &rig.images.onOff,
                     rig.processor);
    show(toggle);
    show(selector);
    TestWindow window(bench);

    window.click(toggle, TestWindow::rightButton);
    EXPECT_EQ(window.menuTexts().joinIntoString("|"),
              "(Layer1 Solo)|(Off)|(Not Latched)|Latch To Midi|Unlatch Midi|Set Midi CC|Clear Midi");
    ASSERT_TRUE(window.chooseFromMenu("Latch To Midi"));
    EXPECT_FALSE(toggle.getToggleState()) << "the right button switches nothing";
    EXPECT_TRUE(pumpUntil([&] { return toggle.getComponentEffect() != nullptr; }, 1000));
    rig.engine.send(juce::MidiMessage::controllerEvent(1, 30, 127));
    rig.engine.play();
    EXPECT_EQ(rig.get(solo), 1.0f);

    window.click(selector, TestWindow::rightButton);
    EXPECT_FALSE(TestWindow::menuIsOpen());
}

TEST_F(WidgetTest, ButtonsActWhenTheMouseGoesDown)
{
    myOnOff toggle({40, 40, 0, 0}, &bench, solo, &rig.images.onOff, rig.processor);
    myButton1 note({100, 40, 0, 0}, &bench, &rig.images.iconNote);
    myKickTextButton word({150, 40, 60, 18}, &bench, "WARM", &rig.images.textStripA, juce::Colours::white,
                          juce::Colours::black);
    show(toggle);
    show(note);
    show(word);
    TestWindow window(bench);

    window.press(toggle, {5, 5});
    EXPECT_EQ(rig.get(solo), 1.0f);
    window.release(toggle, {5, 5});
    window.click(toggle);
    EXPECT_EQ(rig.get(solo), 0.0f);

    bench.clicks.clear();
    window.press(note, note.getLocalBounds().getCentre());
    EXPECT_EQ(bench.clicks.joinIntoString(" "), "down");
    // The release counts wherever it comes.
    window.release(note, {100, 5});
    EXPECT_EQ(bench.clicks.joinIntoString(" "), "down up");
    note.grabKeyboardFocus();
    window.key(juce::KeyPress(juce::KeyPress::returnKey));
    TestWindow::pump(300);
    EXPECT_EQ(bench.clicks.joinIntoString(" "), "down up down up");

    bench.clicks.clear();
    window.click(word);
    EXPECT_EQ(bench.clicks.size(), 1);
}

TEST_F(WidgetTest, MenusOpenByMouseAndKeyboard)
{
    constexpr int mapping = layerParameter(0, layerSlot::easyMapping);
    myBgMenu channel({40, 40, 0, 0}, &bench, layerParameter(0, layerSlot::midiChannel), {},
                     &rig.images.readout60, rig.processor);
    myBgMenu2 easy({140, 40, 52, 36}, &bench, mapping, {}, &rig.images.readout30, rig.processor);
    for (auto* menu : {static_cast<juce::ComboBox*>(&channel), static_cast<juce::ComboBox*>(&easy)})
    {
        menu->addItemList({"Omni", "1", "2"}, 1);
        show(*menu);
    }
    EXPECT_EQ(channel.getTextWhenNothingSelected(), " --- ");
    TestWindow window(bench);

    for (auto* menu : {static_cast<juce::ComboBox*>(&channel), static_cast<juce::ComboBox*>(&easy)})
    {
        bench.choices.clear();
        window.click(*menu);
        EXPECT_EQ(window.menuTexts().joinIntoString("|"), "Omni|1|2");
        ASSERT_TRUE(window.chooseFromMenu("2"));
        TestWindow::pump();
        EXPECT_EQ(bench.choices.joinIntoString("|"), "2");

        menu->grabKeyboardFocus();
        window.key(juce::KeyPress(juce::KeyPress::returnKey));
        EXPECT_EQ(window.menuTexts().size(), 3);
        TestWindow::closeMenus();
        EXPECT_EQ(menu->getText(), "2");
    }
}

TEST_F(WidgetTest, BitmapFontsStandInForWhatTheyLack)
{
    EXPECT_EQ(glyphRow(GlyphSet::first, 'a'), 0);
    EXPECT_EQ(glyphRow(GlyphSet::first, '8'), 34);
    EXPECT_EQ(glyphRow(GlyphSet::first, '9'), 36);
    EXPECT_EQ(glyphRow(GlyphSet::first, ':'), 36);
    EXPECT_EQ(glyphRow(GlyphSet::first, ' '), -1);
    EXPECT_EQ(glyphRow(GlyphSet::second, '9'), 35);
    EXPECT_EQ(glyphRow(GlyphSet::second, ':'), 38);
    EXPECT_EQ(glyphRow(GlyphSet::second, 0xe9), 36);

    // Second letter of "1 7" and the like: a blank draws nothing and takes its place.
    const int step = rig.images.textStripA.getWidth() - 4;
    myLabelB label({0, 0, 100, 20}, "W W", &rig.images.textStripA);
    const auto picture = TestWindow::picture(label);
    EXPECT_GT(ink(picture, {0, 0, step, 20}), 0);
    EXPECT_EQ(ink(picture, {step + 2, 0, step - 2, 20}), 0);
    EXPECT_GT(ink(picture, {2 * step, 0, step, 20}), 0);

    // The colour is the text's own, whatever the strip's.
    myLabelFont red({0, 0, 50, 10}, "VOL", &rig.images.labelTextStrip, juce::Colours::red);
    const auto small = TestWindow::picture(red);
    int brightest = 0;
    for (int x = 0; x < small.getWidth(); ++x)
        for (int y = 0; y < small.getHeight(); ++y)
        {
            const auto pixel = small.getPixelAt(x, y);
            brightest = juce::jmax(brightest, static_cast<int>(pixel.getRed()));
            EXPECT_EQ(pixel.getGreen(), 0);
        }
    EXPECT_GT(brightest, 128);
}

TEST_F(WidgetTest, ScreenReadersHearNamesAndValues)
{
    myKnob knob({40, 40, 0, 0}, &bench, volume, &rig.images.knobVolume, rig.processor);
    myOnOff toggle({100, 40, 0, 0}, &bench, solo, &rig.images.onOff, rig.processor);
    myBgMenu menu({150, 40, 0, 0}, &bench, slot::fxType, {}, &rig.images.readout60, rig.processor);
    show(knob);
    show(toggle);
    show(menu);
    TestWindow window(bench);
    rig.set(volume, 0.63f);

    EXPECT_EQ(knob.getAccessibilityHandler()->getTitle(), "Layer1 Volume");
    auto* value = knob.getAccessibilityHandler()->getValueInterface();
    EXPECT_EQ(value->getCurrentValueAsString(), "0 db");
    value->setValue(0.25);
    EXPECT_EQ(rig.get(volume), 0.25f);
    EXPECT_EQ(toggle.getAccessibilityHandler()->getTitle(), "Layer1 Solo");
    EXPECT_FALSE(toggle.getAccessibilityHandler()->getCurrentState().isChecked());
    EXPECT_EQ(menu.getAccessibilityHandler()->getTitle(), "FX1 Type");
}

TEST_F(WidgetTest, TallLabelsHoldSmallLines)
{
    // A long text at 25 pixels is one fitted line, at 26 it breaks into small ones from the top.
    const auto lowerInk = [](int height)
    {
        juce::Label label({}, "a long text that needs more than one line");
        label.setFont(juce::Font(static_cast<float>(height)));
        label.setSize(60, height);
        const auto picture = TestWindow::picture(label);
        return std::make_pair(ink(picture, {0, 0, 60, 10}), ink(picture, {0, 12, 60, 10}));
    };
    const auto tall = lowerInk(40);
    EXPECT_GT(tall.first, 0);
    EXPECT_GT(tall.second, 0);
    juce::Label small({}, "short");
    small.setSize(100, 40);
    EXPECT_EQ(ink(TestWindow::picture(small), {0, 20, 100, 20}), 0);
}

} // namespace quorel::test
